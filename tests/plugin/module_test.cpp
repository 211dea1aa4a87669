// The built module, loaded as the host loads it.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include "fake_host/fake_host.h"

TEST(Module, is_loaded_entered_and_asked_for_its_menu_item) {
    void* module = dlopen(EXFLATE_MODULE, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(module, nullptr) << dlerror();
    const auto enter = reinterpret_cast<AEGP_PluginInitFunc>(dlsym(module, "EntryPointFunc"));
    ASSERT_NE(enter, nullptr);
    EXPECT_EQ(dlsym(module, "CommandHook"), nullptr);

    fake::Host host;
    EXPECT_EQ(enter(host.basic(), 114, 0, 7, nullptr), A_Err_NONE);
    ASSERT_NE(host.update_menu_hook, nullptr);
    fake::Comp* comp = host.add_comp("main");
    comp->selection = {host.add_layer(comp, "nest", host.add_comp("inner")->item)};
    host.active_item = comp->item;
    EXPECT_EQ(host.update_menu_hook(nullptr, nullptr, AEGP_WindType_COMP), A_Err_NONE);
    EXPECT_EQ(host.count_of("Command1.EnableCommand(77)"), 1);

    // The script gives no result: as after Cancel.
    ASSERT_NE(host.command_hook, nullptr);
    A_Boolean handled = 0;
    EXPECT_EQ(host.command_hook(nullptr, nullptr, 77, AEGP_HP_BeforeAE, 0, &handled), A_Err_NONE);
    EXPECT_EQ(handled, 1);
    EXPECT_EQ(host.held, 0);
    dlclose(module);
}
