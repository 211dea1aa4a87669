// The fixed parts of a journal's lines, shared by reader and writer.
#pragma once

#include <string_view>

namespace host::journal {

inline constexpr std::string_view kFirstLine = "plug-in journal 1";
inline constexpr std::string_view kSession = "session(";
inline constexpr std::string_view kEnter = "enter ";
inline constexpr std::string_view kLeave = "leave ";
inline constexpr std::string_view kCall = "call ";
inline constexpr std::string_view kDone = "done ";
inline constexpr std::string_view kMemory = "memory(";
inline constexpr std::string_view kWrote = "wrote(";
inline constexpr std::string_view kEnd = "end";
inline constexpr std::string_view kInjected = " injected";
inline constexpr std::string_view kThrown = " thrown";
inline constexpr std::string_view kRemark = " # ";

}  // namespace host::journal
