// The public interface of the host's state.
#include "suites/suite_host.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "handles/objects.h"
#include "host_state.h"
#include "tables/basic_suite.h"
#include "tables/suite_list.h"

namespace host::suites {

SuiteHost::SuiteHost(model::Project& project, Ports ports)
    : state_(std::make_unique<HostState>(project, std::move(ports))) {
    state_->suites_held.resize(suite_list().size());
}

SuiteHost::~SuiteHost() {
    for (void* block : state_->ledger.blocks()) std::free(block);
}

SPBasicSuite* SuiteHost::basic_suite() {
    return suites::basic_suite();
}

AEGP_PluginID SuiteHost::add_plugin(std::string name) {
    state_->plugin_names.push_back(std::move(name));
    return static_cast<AEGP_PluginID>(state_->plugin_names.size());
}

void SuiteHost::drop_plugin(AEGP_PluginID id) {
    const auto is_its = [id](const auto& each) { return each.plugin_id == id; };
    std::erase_if(state_->menu_items, is_its);
    std::erase_if(state_->command_hooks, is_its);
    std::erase_if(state_->update_menu_hooks, is_its);
    std::erase_if(state_->idle_hooks, is_its);
    std::erase_if(state_->death_hooks, is_its);
}

const std::string& SuiteHost::plugin_name(AEGP_PluginID id) const {
    return state_->plugin_name(id);
}

SuiteHost::Visit::Visit(SuiteHost& host, AEGP_PluginID id, PluginFunction function)
    : state_(host.state_.get()),
      previous_caller_(std::exchange(state_->caller, id)),
      previous_in_entry_point_(std::exchange(state_->in_entry_point, function == PluginFunction::entry_point)) {}

SuiteHost::Visit::Visit(SuiteHost& host, const PluginCall& call) : Visit(host, call.plugin, call.function) {
    for (Observer* observer : state_->observers) observer->entering(call);
}

void SuiteHost::Visit::returned(const PluginCall& call, A_Err result, bool has_thrown) const {
    for (auto observer = state_->observers.rbegin(); observer != state_->observers.rend(); ++observer)
        (*observer)->left(call, result, has_thrown);
}

SuiteHost::Visit::~Visit() {
    state_->caller = previous_caller_;
    state_->in_entry_point = previous_in_entry_point_;
}

const std::vector<MenuItem>& SuiteHost::menu_items() const {
    return state_->menu_items;
}

const MenuItem* SuiteHost::menu_item(AEGP_Command command) const {
    for (const MenuItem& item : state_->menu_items)
        if (item.command == command) return &item;
    return nullptr;
}

void SuiteHost::prepare_menus_for_update() {
    if (!state_->project.rules().disable_menu_items_before_update) return;
    for (MenuItem& item : state_->menu_items) item.enabled = false;
}

const std::vector<CommandHook>& SuiteHost::command_hooks() const {
    return state_->command_hooks;
}
const std::vector<UpdateMenuHook>& SuiteHost::update_menu_hooks() const {
    return state_->update_menu_hooks;
}
const std::vector<IdleHook>& SuiteHost::idle_hooks() const {
    return state_->idle_hooks;
}
const std::vector<DeathHook>& SuiteHost::death_hooks() const {
    return state_->death_hooks;
}

void SuiteHost::add_observer(Observer& observer) {
    state_->observers.push_back(&observer);
}
void SuiteHost::remove_observer(Observer& observer) {
    std::erase(state_->observers, &observer);
}

std::uint64_t SuiteHost::calls_made() const {
    return state_->calls;
}

std::vector<Diagnostic> SuiteHost::diagnostics() const {
    const std::lock_guard lock(state_->diagnostics_mutex);
    return state_->diagnostics;
}

LedgerReport SuiteHost::ledger() const {
    return state_->ledger.report();
}

std::vector<HeldSuite> SuiteHost::suites_held() const {
    std::vector<HeldSuite> held;
    for (std::size_t i = 0; i < state_->suites_held.size(); ++i) {
        if (state_->suites_held[i] == 0) continue;
        const Suite& suite = suite_list()[i];
        held.push_back({std::string(suite.structure), suite.name, suite.version, state_->suites_held[i]});
    }
    return held;
}

std::vector<SlotUse> SuiteHost::coverage() const {
    std::vector<SlotUse> uses;
    uses.reserve(kSlotCount);
    for (int i = 0; i < kSlotCount; ++i) {
        const SlotFacts& slot = slot_facts(i);
        uses.push_back({slot.suite, slot.function, is_implemented(i), state_->slot_calls[static_cast<std::size_t>(i)]});
    }
    return uses;
}

AEGP_ProjectH SuiteHost::project_handle() const {
    return handle_of(*state_, state_->project);
}
AEGP_ItemH SuiteHost::handle(const model::Item& item) const {
    return handle_of(*state_, item);
}
AEGP_CompH SuiteHost::comp_handle(const model::Comp& comp) const {
    return comp_handle_of(*state_, comp);
}
AEGP_LayerH SuiteHost::handle(const model::Layer& layer) const {
    return handle_of(*state_, layer);
}

}  // namespace host::suites
