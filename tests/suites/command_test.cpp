// Menu commands and hooks.
#include "world.h"

namespace host::suites {

namespace {

A_Err update_menus(AEGP_GlobalRefcon, AEGP_UpdateMenuRefcon, AEGP_WindowType) {
    return 0;
}
A_Err run_command(AEGP_GlobalRefcon, AEGP_CommandRefcon, AEGP_Command, AEGP_HookPriority, A_Boolean, A_Boolean*) {
    return 0;
}

}  // namespace

class Commands : public World {
  public:
    const AEGP_CommandSuite1* commands = suite<AEGP_CommandSuite1>();
    const AEGP_RegisterSuite5* registry = suite<AEGP_RegisterSuite5>();

    AEGP_Command fresh() {
        AEGP_Command command = 0;
        EXPECT_EQ(commands->AEGP_GetUniqueCommand(&command), 0);
        return command;
    }
    AEGP_Command insert(const char* text, A_long after, AEGP_MenuID menu = AEGP_Menu_LAYER) {
        const AEGP_Command command = fresh();
        EXPECT_EQ(commands->AEGP_InsertMenuCommand(command, text, menu, after), 0);
        return command;
    }
    std::vector<std::string> menu(AEGP_MenuID menu) {
        std::vector<std::string> texts;
        for (const MenuItem& item : host.menu_items())
            if (item.menu == menu) texts.push_back(item.text);
        return texts;
    }
    A_Err register_command_hook() {
        return registry->AEGP_RegisterCommandHook(plugin, AEGP_HP_BeforeAE, AEGP_Command_ALL, run_command, nullptr);
    }
    A_Err register_update_menu_hook() { return registry->AEGP_RegisterUpdateMenuHook(plugin, update_menus, nullptr); }
};

using testing::ElementsAre;

TEST_F(Commands, are_numbered_freshly_and_never_zero) {
    const AEGP_Command first = fresh();
    const AEGP_Command second = fresh();
    EXPECT_NE(first, 0);
    EXPECT_NE(second, 0);
    EXPECT_NE(first, second);
    EXPECT_EQ(commands->AEGP_GetUniqueCommand(nullptr), kBadArgument);
}

TEST_F(Commands, start_disabled_and_belong_to_the_plug_in_being_visited) {
    const SuiteHost::Visit visit(host, plugin, PluginFunction::entry_point);
    const AEGP_Command command = insert("Do it", AEGP_MENU_INSERT_AT_BOTTOM);
    const MenuItem* item = host.menu_item(command);
    ASSERT_NE(item, nullptr);
    EXPECT_FALSE(item->enabled);
    EXPECT_EQ(item->plugin, "Tester");
    EXPECT_EQ(item->plugin_id, plugin);
    EXPECT_EQ(host.menu_item(command + 1), nullptr);
}

TEST_F(Commands, are_enabled_disabled_and_renamed) {
    const AEGP_Command command = insert("Do it", AEGP_MENU_INSERT_AT_BOTTOM);
    EXPECT_EQ(commands->AEGP_EnableCommand(command), 0);
    EXPECT_TRUE(host.menu_item(command)->enabled);
    EXPECT_EQ(commands->AEGP_SetMenuCommandName(command, "Do it twice"), 0);
    EXPECT_EQ(host.menu_item(command)->text, "Do it twice");
    EXPECT_EQ(commands->AEGP_DisableCommand(command), 0);
    EXPECT_FALSE(host.menu_item(command)->enabled);
    EXPECT_EQ(commands->AEGP_SetMenuCommandName(command, nullptr), kBadArgument);
    EXPECT_EQ(host.menu_item(command)->text, "Do it twice");
}

TEST_F(Commands, without_a_menu_item_cannot_be_changed) {
    const AEGP_Command command = fresh();
    EXPECT_EQ(commands->AEGP_EnableCommand(command), kBadArgument);
    EXPECT_EQ(commands->AEGP_DisableCommand(command), kBadArgument);
    EXPECT_EQ(commands->AEGP_SetMenuCommandName(command, "x"), kBadArgument);
}

TEST_F(Commands, go_to_the_bottom_the_top_or_behind_a_number_of_items_of_their_menu) {
    insert("elsewhere", AEGP_MENU_INSERT_AT_BOTTOM, AEGP_Menu_EDIT);
    insert("one", AEGP_MENU_INSERT_AT_BOTTOM);
    insert("two", AEGP_MENU_INSERT_AT_BOTTOM);
    insert("elsewhere too", AEGP_MENU_INSERT_AT_BOTTOM, AEGP_Menu_EDIT);
    insert("zero", AEGP_MENU_INSERT_AT_TOP);
    insert("between", 2);
    insert("last", 99);
    EXPECT_THAT(menu(AEGP_Menu_LAYER), ElementsAre("zero", "one", "between", "two", "last"));
    EXPECT_THAT(menu(AEGP_Menu_EDIT), ElementsAre("elsewhere", "elsewhere too"));
}

TEST_F(Commands, are_sorted_in_when_asked) {
    for (const char* text : {"m", "c", "x", "d"}) insert(text, AEGP_MENU_INSERT_SORTED);
    insert("a", AEGP_MENU_INSERT_SORTED, AEGP_Menu_EDIT);
    EXPECT_THAT(menu(AEGP_Menu_LAYER), ElementsAre("c", "d", "m", "x"));
}

TEST_F(Commands, are_inserted_once_into_a_menu_there_is) {
    const AEGP_Command command = insert("-", AEGP_MENU_INSERT_AT_BOTTOM);
    const auto try_to_insert = [&](AEGP_Command which, const A_char* text, AEGP_MenuID menu, A_long after) {
        return commands->AEGP_InsertMenuCommand(which, text, menu, after);
    };
    EXPECT_EQ(try_to_insert(command, "again", AEGP_Menu_LAYER, AEGP_MENU_INSERT_AT_BOTTOM), kBadArgument);
    EXPECT_EQ(try_to_insert(0, "zero", AEGP_Menu_LAYER, AEGP_MENU_INSERT_AT_BOTTOM), kBadArgument);
    EXPECT_EQ(try_to_insert(command + 1, "unknown", AEGP_Menu_LAYER, AEGP_MENU_INSERT_AT_BOTTOM), kBadArgument);
    const AEGP_Command other = fresh();
    EXPECT_EQ(try_to_insert(other, "x", AEGP_Menu_NONE, AEGP_MENU_INSERT_AT_BOTTOM), kBadArgument);
    EXPECT_EQ(try_to_insert(other, "x", AEGP_Menu_NEW + 1, AEGP_MENU_INSERT_AT_BOTTOM), kBadArgument);
    EXPECT_EQ(try_to_insert(other, "x", AEGP_Menu_LAYER, -3), kBadArgument);
    EXPECT_EQ(try_to_insert(other, nullptr, AEGP_Menu_LAYER, AEGP_MENU_INSERT_AT_BOTTOM), kBadArgument);
    EXPECT_THAT(menu(AEGP_Menu_LAYER), ElementsAre("-"));
}

TEST_F(Commands, keep_their_state_before_menus_are_updated) {
    const AEGP_Command command = insert("Do it", AEGP_MENU_INSERT_AT_BOTTOM);
    ASSERT_EQ(commands->AEGP_EnableCommand(command), 0);
    host.prepare_menus_for_update();
    EXPECT_TRUE(host.menu_item(command)->enabled);
}

TEST_F(Commands, are_disabled_before_menus_are_updated_if_the_rules_say_so) {
    project.rules().disable_menu_items_before_update = true;
    const AEGP_Command command = insert("Do it", AEGP_MENU_INSERT_AT_BOTTOM);
    ASSERT_EQ(commands->AEGP_EnableCommand(command), 0);
    host.prepare_menus_for_update();
    EXPECT_FALSE(host.menu_item(command)->enabled);
}

using Hooks = Commands;

TEST_F(Hooks, are_registered_in_the_entry_point) {
    const SuiteHost::Visit visit(host, plugin, PluginFunction::entry_point);
    EXPECT_EQ(register_command_hook(), 0);
    EXPECT_EQ(register_update_menu_hook(), 0);
    ASSERT_EQ(host.command_hooks().size(), 1U);
    EXPECT_EQ(host.command_hooks()[0].plugin_id, plugin);
    EXPECT_EQ(host.command_hooks()[0].function, &run_command);
    EXPECT_EQ(host.command_hooks()[0].command, AEGP_Command_ALL);
    ASSERT_EQ(host.update_menu_hooks().size(), 1U);
    EXPECT_EQ(host.update_menu_hooks()[0].function, &update_menus);
}

TEST_F(Hooks, are_refused_anywhere_else) {
    EXPECT_EQ(register_command_hook(), kNotAllowed);
    const SuiteHost::Visit visit(host, plugin, PluginFunction::command_hook);
    EXPECT_EQ(register_command_hook(), kNotAllowed);
    EXPECT_EQ(register_update_menu_hook(), kNotAllowed);
    EXPECT_EQ(last_complaint(), "Hooks can be registered in the entry point only.");
    EXPECT_TRUE(host.command_hooks().empty());
    EXPECT_TRUE(host.update_menu_hooks().empty());
}

TEST_F(Hooks, are_refused_again_when_an_inner_visit_is_over) {
    const SuiteHost::Visit outer(host, plugin, PluginFunction::command_hook);
    { const SuiteHost::Visit inner(host, plugin, PluginFunction::entry_point); }
    EXPECT_EQ(register_command_hook(), kNotAllowed);
}

TEST_F(Hooks, belong_to_the_plug_in_that_is_entered) {
    const AEGP_PluginID other = host.add_plugin("Other");
    EXPECT_NE(other, plugin);
    const SuiteHost::Visit visit(host, other, PluginFunction::entry_point);
    EXPECT_EQ(register_command_hook(), kBadArgument);
    EXPECT_EQ(register_update_menu_hook(), kBadArgument);
}

TEST_F(Hooks, for_commands_are_one_per_plug_in) {
    const SuiteHost::Visit visit(host, plugin, PluginFunction::entry_point);
    EXPECT_EQ(register_command_hook(), 0);
    EXPECT_EQ(register_command_hook(), kNotAllowed);
    EXPECT_EQ(host.command_hooks().size(), 1U);
    const AEGP_PluginID other = host.add_plugin("Other");
    const SuiteHost::Visit next(host, other, PluginFunction::entry_point);
    EXPECT_EQ(registry->AEGP_RegisterCommandHook(other, AEGP_HP_BeforeAE, AEGP_Command_ALL, run_command, nullptr), 0);
    EXPECT_EQ(host.command_hooks().size(), 2U);
}

TEST_F(Hooks, for_idle_moments_and_the_end_are_registered_likewise) {
    const auto idle = [](AEGP_GlobalRefcon, AEGP_IdleRefcon, A_long*) -> A_Err { return A_Err_NONE; };
    const auto death = [](AEGP_GlobalRefcon, AEGP_DeathRefcon) -> A_Err { return A_Err_NONE; };
    EXPECT_EQ(registry->AEGP_RegisterIdleHook(plugin, idle, nullptr), kNotAllowed);
    EXPECT_EQ(registry->AEGP_RegisterDeathHook(plugin, death, nullptr), kNotAllowed);
    {
        const SuiteHost::Visit visit(host, plugin, PluginFunction::entry_point);
        EXPECT_EQ(registry->AEGP_RegisterIdleHook(plugin, nullptr, nullptr), kBadArgument);
        EXPECT_EQ(registry->AEGP_RegisterDeathHook(plugin, nullptr, nullptr), kBadArgument);
        EXPECT_EQ(registry->AEGP_RegisterIdleHook(plugin, idle, nullptr), 0);
        EXPECT_EQ(registry->AEGP_RegisterDeathHook(plugin, death, nullptr), 0);
    }
    EXPECT_EQ(host.idle_hooks().size(), 1U);
    EXPECT_EQ(host.death_hooks().size(), 1U);
    host.drop_plugin(plugin);
    EXPECT_TRUE(host.idle_hooks().empty());
    EXPECT_TRUE(host.death_hooks().empty());
}

TEST_F(Hooks, are_functions) {
    const SuiteHost::Visit visit(host, plugin, PluginFunction::entry_point);
    EXPECT_EQ(registry->AEGP_RegisterCommandHook(plugin, AEGP_HP_BeforeAE, 0, nullptr, nullptr), kBadArgument);
    EXPECT_EQ(registry->AEGP_RegisterUpdateMenuHook(plugin, nullptr, nullptr), kBadArgument);
}

TEST_F(Hooks, and_menu_items_go_with_a_dropped_plug_in) {
    const AEGP_PluginID other = host.add_plugin("Other");
    {
        const SuiteHost::Visit visit(host, plugin, PluginFunction::entry_point);
        insert("mine", AEGP_MENU_INSERT_AT_BOTTOM);
        EXPECT_EQ(register_command_hook(), 0);
        EXPECT_EQ(register_update_menu_hook(), 0);
    }
    {
        const SuiteHost::Visit visit(host, other, PluginFunction::entry_point);
        insert("other", AEGP_MENU_INSERT_AT_BOTTOM);
    }
    host.drop_plugin(plugin);
    EXPECT_THAT(menu(AEGP_Menu_LAYER), ElementsAre("other"));
    EXPECT_TRUE(host.command_hooks().empty());
    EXPECT_TRUE(host.update_menu_hooks().empty());
}

}  // namespace host::suites
