// Which host is active; diagnostics.
#include "host_state.h"

#include <atomic>
#include <utility>

namespace host::suites {

namespace {

std::atomic<HostState*> newest = nullptr;

std::uint8_t next_number() {
    static std::uint8_t last = 0;
    if (++last == 0) last = 1;
    return last;
}

}  // namespace

HostState::HostState(model::Project& the_project, Ports the_ports)
    : project(the_project), ports(std::move(the_ports)), number(next_number()), ledger(number, now) {
    older = newest.exchange(this);
    slot_calls.resize(kSlotCount);
}

HostState::~HostState() {
    if (newest == this) {
        newest = older;
        return;
    }
    for (HostState* younger = newest; younger; younger = younger->older)
        if (younger->older == this) younger->older = older;
}

HostState* HostState::active() {
    return newest;
}

const std::string& HostState::plugin_name(AEGP_PluginID id) const {
    static const std::string unknown;
    return id >= 1 && static_cast<std::size_t>(id) <= plugin_names.size()
               ? plugin_names[static_cast<std::size_t>(id) - 1]
               : unknown;
}

void HostState::add_diagnostic(const SlotFacts& slot, std::uint64_t call, A_Err code, std::string sentence) {
    const std::lock_guard lock(diagnostics_mutex);
    diagnostics.push_back({call, full_name(slot), code, std::move(sentence)});
}

}  // namespace host::suites
