// What the suites need from other rooms; provided by the session's owner.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace host::suites {

struct ScriptReply {
    bool failed = false;
    std::string result;  // value of the last statement as text; empty if the script failed
    std::string error;   // why it failed
};

// Calls that need an empty port fail as not implemented. Exceptions from a port become error codes.
struct Ports {
    std::function<ScriptReply(std::string_view text)> run_script;                     // UTF-8
    std::function<void(std::string_view plugin_name, std::string_view text)> report;  // a message box of the plug-in
};

}  // namespace host::suites
