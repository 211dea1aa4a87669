// The example of a plug-in, loaded and run.
#include <gmock/gmock.h>

#include "nobody_there.h"
#include "runner/session.h"

using host::model::kVideoActive;

namespace {

TEST(SmallestPlugin, hides_the_selected_layers_in_one_undo_step) {
    host::model::Project project;
    host::model::Comp& comp = project.add_comp("Main");
    auto& hidden = comp.create_null("hidden", {});
    auto& shown = comp.create_null("shown", {});
    project.open_comp(&comp);
    comp.select({&hidden});
    auto settings = host::script::Settings::in_memory();
    test::NobodyThere nobody;
    const host::runner::PluginModule module(SMALLEST_PLUGIN);
    host::runner::Session session(project, settings, nobody);

    ASSERT_FALSE(session.start(module).has_failed());
    ASSERT_EQ(session.menu_items().size(), 1U);
    EXPECT_EQ(session.menu_items()[0].text, "Hide Layers");
    const auto outcome = session.run_command(session.menu_items()[0].command);

    EXPECT_FALSE(outcome.has_failed());
    EXPECT_THAT(outcome.undo_steps, testing::ElementsAre("Hide Layers"));
    EXPECT_THAT(outcome.log, testing::IsEmpty());
    EXPECT_FALSE(hidden.has_flag(kVideoActive));
    EXPECT_TRUE(shown.has_flag(kVideoActive));
    EXPECT_THAT(session.suites().ledger().never_disposed, testing::IsEmpty());
    EXPECT_THAT(session.suites().suites_held(), testing::IsEmpty());
}

}  // namespace
