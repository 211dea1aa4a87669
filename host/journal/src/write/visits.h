// Calls of the host into a plug-in as text.
#pragma once

#include <string>

#include "encoder.h"
#include "journal/journal.h"
#include "suites/call.h"

namespace host::journal {

// entry_point(plug-in's number, its name, major, minor) = (global refcon)
// update_menu_hook(hook, global refcon, refcon, window) = ()
// command_hook(hook, global refcon, refcon, command, priority, already handled) = (handled)
// idle_hook(hook, global refcon, refcon, longest sleep) = (longest sleep)
// death_hook(hook, global refcon, refcon) = ()
std::string arguments_text(HandleNamer& namer, const suites::PluginCall& call);
std::string results_text(HandleNamer& namer, const suites::PluginCall& call);

}  // namespace host::journal
