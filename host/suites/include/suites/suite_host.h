// Everything a plug-in can reach: the basic suite and, through it, all suite tables over one project.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "AE_GeneralPlug.h"
#include "model/project.h"
#include "suites/call.h"
#include "suites/ledger_report.h"
#include "suites/menu.h"
#include "suites/ports.h"

namespace host::suites {

struct HostState;

// A failed call, in words. Calls that observers refused are not included.
struct Diagnostic {
    std::uint64_t call;    // its number; 0 if it came from another thread
    std::string function;  // "LayerSuite5.AEGP_DeleteLayer"
    A_Err code;            // as returned to the plug-in
    std::string sentence;
};

struct HeldSuite {
    std::string structure;  // "AEGP_LayerSuite5"
    std::string name;       // "AEGP Layer Suite"
    std::int32_t version;   // the integer of AcquireSuite
    std::uint64_t count;    // of acquisitions not released
};

struct SlotUse {
    std::string_view suite;  // "AEGP_LayerSuite5"
    std::string_view function;
    bool is_implemented;
    std::uint64_t calls;
};

// Suite tables carry no context pointer, so calls go to the newest host alive; destroying it hands over to the one
// before. The thread that constructs a host is its main thread: calls from other threads are refused.
class SuiteHost {
  public:
    // The project must outlive the host.
    SuiteHost(model::Project& project, Ports ports);
    ~SuiteHost();
    SuiteHost(const SuiteHost&) = delete;

    SPBasicSuite* basic_suite();

    // Plug-ins
    AEGP_PluginID add_plugin(std::string name);  // distinct, from 1
    // Removes the menu items and hooks of a plug-in whose entry point failed.
    void drop_plugin(AEGP_PluginID id);
    const std::string& plugin_name(AEGP_PluginID id) const;  // empty for an unknown id

    // While it exists, calls count as coming from that plug-in. Hooks can be registered only in the entry point.
    class Visit {
      public:
        Visit(SuiteHost& host, AEGP_PluginID id, PluginFunction function);
        // Also notifies the observers: now, and from returned().
        Visit(SuiteHost& host, const PluginCall& call);
        ~Visit();
        Visit(const Visit&) = delete;

        void returned(const PluginCall& call, A_Err result, bool has_thrown) const;

      private:
        HostState* state_;
        AEGP_PluginID previous_caller_;
        bool previous_in_entry_point_;
    };

    // Items of a menu are in menu order, hooks in order of registration.
    const std::vector<MenuItem>& menu_items() const;
    const MenuItem* menu_item(AEGP_Command command) const;  // null if there is none
    // Call before each round of update-menu hooks: disables every item if the HostRules say so.
    void prepare_menus_for_update();
    const std::vector<CommandHook>& command_hooks() const;
    const std::vector<UpdateMenuHook>& update_menu_hooks() const;
    const std::vector<IdleHook>& idle_hooks() const;
    const std::vector<DeathHook>& death_hooks() const;

    // Only between calls.
    void add_observer(Observer& observer);
    void remove_observer(Observer& observer);

    // What happened
    std::uint64_t calls_made() const;
    std::vector<Diagnostic> diagnostics() const;
    LedgerReport ledger() const;
    std::vector<HeldSuite> suites_held() const;
    std::vector<SlotUse> coverage() const;  // all slots of all suites, in table order

    // The handles of the host's own objects, which never change.
    AEGP_ProjectH project_handle() const;
    AEGP_ItemH handle(const model::Item& item) const;
    AEGP_CompH comp_handle(const model::Comp& comp) const;
    AEGP_LayerH handle(const model::Layer& layer) const;

  private:
    std::unique_ptr<HostState> state_;
};

}  // namespace host::suites
