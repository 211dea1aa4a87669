// What was handed out to plug-ins, and misuse of it.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace host::suites {

enum class HandleKind : std::uint8_t {
    // Owned by the host: never disposed of.
    project = 1,
    item,
    comp,
    layer,
    // Owned by the plug-in: to be disposed of.
    footage,
    collection,
    stream,
    stream_value,
    effect,
    memory,
    keyframe_batch,
    block,  // basic suite
};

std::string_view name_of(HandleKind kind);  // "stream value"

struct HandedOut {
    HandleKind kind;
    std::uint64_t made_by_call;  // its number
    std::string made_by;         // "StreamSuite4.AEGP_GetNewLayerStream"
    std::string what;            // in words
};

struct Misuse {
    HandleKind kind;
    std::uint64_t made_by_call;
    std::string made_by;
    std::uint64_t misused_by_call;
    std::string misused_by;
};

struct LedgerReport {
    std::map<HandleKind, std::uint64_t> handed_out;  // per kind, since the session began
    std::vector<HandedOut> never_disposed;           // oldest first
    std::vector<Misuse> disposed_twice;
    std::vector<Misuse> freed_while_locked;  // memory handles; tolerated
    std::vector<Misuse> used_after_disposal;
};

}  // namespace host::suites
