// What the suites need from other rooms; whoever owns the session plugs it in.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace host::suites {

struct ScriptReply {
    bool failed = false;
    std::string result;  // text of the last statement's value; empty if the script failed
    std::string error;   // why it failed
};

// A port left empty makes the calls that need it fail as not implemented. Exceptions that leave a port become error
// codes.
struct Ports {
    std::function<ScriptReply(std::string_view text)> run_script;                     // UTF-8
    std::function<void(std::string_view plugin_name, std::string_view text)> report;  // a message box of the plug-in
};

}  // namespace host::suites
