// The state of one host, which suite functions work on.
#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "handles/ledger.h"
#include "model/project.h"
#include "suites/call.h"
#include "suites/menu.h"
#include "suites/ports.h"
#include "suites/suite_host.h"

namespace host::suites {

struct HostState {
    HostState(model::Project& the_project, Ports the_ports);
    ~HostState();
    HostState(const HostState&) = delete;

    // The host that calls go to: the newest alive; null if there is none.
    static HostState* active();

    model::Project& project;
    Ports ports;
    const std::thread::id main_thread = std::this_thread::get_id();
    const std::uint8_t number;  // part of this host's handles; never 0
    HostState* older = nullptr;

    Provenance now;  // the running call
    std::uint64_t calls = 0;
    HandleLedger ledger;

    AEGP_PluginID caller = 0;
    bool in_entry_point = false;
    std::vector<std::string> plugin_names;  // of plug-in i + 1

    AEGP_Command last_command = 0;
    std::vector<MenuItem> menu_items;
    std::vector<CommandHook> command_hooks;
    std::vector<UpdateMenuHook> update_menu_hooks;
    std::vector<IdleHook> idle_hooks;
    std::vector<DeathHook> death_hooks;

    std::vector<Observer*> observers;
    std::vector<std::uint64_t> slot_calls;   // by slot ordinal
    std::vector<std::uint64_t> suites_held;  // by place in the list of suites

    mutable std::mutex diagnostics_mutex;  // calls from other threads leave diagnostics too
    std::vector<Diagnostic> diagnostics;

    const std::string& plugin_name(AEGP_PluginID id) const;
    void add_diagnostic(const SlotFacts& slot, std::uint64_t call, A_Err code, std::string sentence);
};

}  // namespace host::suites
