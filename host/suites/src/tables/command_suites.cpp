// Command suite 1 and register suite 5.
#include <algorithm>

#include "calls/slot.h"
#include "refusals.h"
#include "tables/trapped_suite.h"

namespace host::suites {

namespace {

// Never 0, which is the host's own.
int unique_command(HostState& host) {
    return ++host.last_command;
}

auto find_item(HostState& host, AEGP_Command command) {
    return std::find_if(host.menu_items.begin(), host.menu_items.end(),
                        [command](const MenuItem& item) { return item.command == command; });
}

MenuItem& item_of(HostState& host, AEGP_Command command) {
    const auto item = find_item(host, command);
    if (item == host.menu_items.end()) refuse_argument("No menu item has command " + std::to_string(command) + ".");
    return *item;
}

// Where a new item goes: `after` is how many of its menu's items come before it, or one of the named positions.
std::vector<MenuItem>::iterator place_of(HostState& host, const MenuItem& item, A_long after) {
    auto& items = host.menu_items;
    if (after == AEGP_MENU_INSERT_AT_BOTTOM) return items.end();
    if (after == AEGP_MENU_INSERT_SORTED)
        return std::find_if(items.begin(), items.end(),
                            [&item](const MenuItem& each) { return each.menu == item.menu && each.text > item.text; });
    if (after < 0) refuse_argument("There is no menu position " + std::to_string(after) + ".");
    auto place = items.begin();
    for (A_long passed = 0; place != items.end(); ++place)
        if (place->menu == item.menu && passed++ == after) break;
    return place;
}

void insert_menu_item(HostState& host, AEGP_Command command, std::string text, AEGP_MenuID menu, A_long after) {
    if (command < 1 || command > host.last_command)
        refuse_argument("Command " + std::to_string(command) + " was never handed out.");
    if (find_item(host, command) != host.menu_items.end())
        refuse_argument("Command " + std::to_string(command) + " has a menu item already.");
    if (menu <= AEGP_Menu_NONE || menu > AEGP_Menu_NEW)
        refuse_argument("There is no menu " + std::to_string(menu) + ".");
    const MenuItem item{command, std::move(text), menu, false, host.plugin_name(host.caller), host.caller};
    host.menu_items.insert(place_of(host, item, after), item);
}

void set_text(HostState& host, AEGP_Command command, std::string text) {
    item_of(host, command).text = std::move(text);
}
void enable(HostState& host, AEGP_Command command) {
    item_of(host, command).enabled = true;
}
void disable(HostState& host, AEGP_Command command) {
    item_of(host, command).enabled = false;
}

void require_entry_point(const HostState& host, Caller caller) {
    if (!host.in_entry_point) refuse_state("Hooks can be registered in the entry point only.");
    if (caller.id != host.caller)
        refuse_argument("Plug-in " + std::to_string(caller.id) + " is not the one being entered.");
}

void register_command_hook(HostState& host, Caller caller, AEGP_HookPriority priority, AEGP_Command command,
                           AEGP_CommandHook hook, AEGP_CommandRefcon refcon) {
    require_entry_point(host, caller);
    if (!hook) refuse_null("hook");
    const bool has_one = std::any_of(host.command_hooks.begin(), host.command_hooks.end(),
                                     [caller](const CommandHook& each) { return each.plugin_id == caller.id; });
    if (has_one) refuse_state("The plug-in has a command hook already.");
    host.command_hooks.push_back({caller.id, priority, command, hook, refcon});
}

void register_update_menu_hook(HostState& host, Caller caller, AEGP_UpdateMenuHook hook, AEGP_UpdateMenuRefcon refcon) {
    require_entry_point(host, caller);
    if (!hook) refuse_null("hook");
    host.update_menu_hooks.push_back({caller.id, hook, refcon});
}

void register_idle_hook(HostState& host, Caller caller, AEGP_IdleHook hook, AEGP_IdleRefcon refcon) {
    require_entry_point(host, caller);
    if (!hook) refuse_null("hook");
    host.idle_hooks.push_back({caller.id, hook, refcon});
}

void register_death_hook(HostState& host, Caller caller, AEGP_DeathHook hook, AEGP_DeathRefcon refcon) {
    require_entry_point(host, caller);
    if (!hook) refuse_null("hook");
    host.death_hooks.push_back({caller.id, hook, refcon});
}

}  // namespace

template <>
AEGP_CommandSuite1 make_suite() {
    using Suite = AEGP_CommandSuite1;
    Suite s = trapped_suite<Suite>();
    s.AEGP_GetUniqueCommand = slot<&Suite::AEGP_GetUniqueCommand, unique_command>;
    s.AEGP_InsertMenuCommand = slot<&Suite::AEGP_InsertMenuCommand, insert_menu_item>;
    s.AEGP_SetMenuCommandName = slot<&Suite::AEGP_SetMenuCommandName, set_text>;
    s.AEGP_EnableCommand = slot<&Suite::AEGP_EnableCommand, enable>;
    s.AEGP_DisableCommand = slot<&Suite::AEGP_DisableCommand, disable>;
    return s;
}

template <>
AEGP_RegisterSuite5 make_suite() {
    using Suite = AEGP_RegisterSuite5;
    Suite s = trapped_suite<Suite>();
    s.AEGP_RegisterCommandHook = slot<&Suite::AEGP_RegisterCommandHook, register_command_hook>;
    s.AEGP_RegisterUpdateMenuHook = slot<&Suite::AEGP_RegisterUpdateMenuHook, register_update_menu_hook>;
    s.AEGP_RegisterIdleHook = slot<&Suite::AEGP_RegisterIdleHook, register_idle_hook>;
    s.AEGP_RegisterDeathHook = slot<&Suite::AEGP_RegisterDeathHook, register_death_hook>;
    return s;
}

}  // namespace host::suites
