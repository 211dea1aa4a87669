// What the command makes of what a host may settle one way or the other: menus, time, the selection, layers.
#include "host_rules.h"

using namespace end_to_end;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

// ---- Menu and undo

TEST(MenuBeforeUpdate, keeps_what_the_last_update_left_where_the_host_does_not_disable_it) {
    OneRun run(one_nest());
    EXPECT_TRUE(run.whole.run(run.comp, {1}, {}).is_enabled);
    run.comp.project().set_active_panel(host::model::ActivePanel::none);
    const auto outcome = run.on({1});
    EXPECT_TRUE(outcome.is_enabled);
    EXPECT_TRUE(outcome.is_handled);
    EXPECT_TRUE(outcome.has_failed()) << "there is no selection to count";
    EXPECT_EQ(run.whole.session().menu_items().at(0).text, "Exflate");
}

TEST(MenuBeforeUpdate, is_disabled_without_an_active_composition_where_the_host_disables_it) {
    OneRun run(one_nest(), [](HostRules& rules) { rules.disable_menu_items_before_update = true; });
    EXPECT_TRUE(run.whole.run(run.comp, {1}, {}).is_enabled) << "an update that finds a pre-comp layer enables it";
    run.comp.project().set_active_panel(host::model::ActivePanel::none);
    const auto outcome = run.on({1});
    EXPECT_FALSE(outcome.is_enabled);
    EXPECT_FALSE(outcome.is_handled);
    EXPECT_FALSE(outcome.has_failed());
    EXPECT_EQ(run.whole.session().menu_items().at(0).text, "Exflate") << "its text is not touched";
}

TEST(EmptyUndoGroup, of_a_run_that_found_no_composition_is_a_step_where_the_host_counts_it) {
    for (const bool counts : {false, true}) {
        OneRun run(one_nest(), [&](HostRules& rules) { rules.empty_undo_group_makes_a_step = counts; });
        run.whole.run(run.comp, {1}, {});
        run.comp.project().set_active_panel(host::model::ActivePanel::none);
        const auto outcome = run.on({1});
        EXPECT_TRUE(outcome.has_failed());
        EXPECT_EQ(outcome.undo_steps, counts ? std::vector<std::string>{"Exflate"} : std::vector<std::string>{});
    }
}

TEST(EmptyUndoGroup, is_not_opened_by_a_cancelled_run) {
    OneRun run(one_nest(), [](HostRules& rules) { rules.empty_undo_group_makes_a_step = true; });
    EXPECT_THAT(run.whole.run(run.comp, {1}, {}).undo_steps, IsEmpty());
}

// ---- Time

TEST(TimeScale, does_not_change_what_comes_out) {
    const std::string text = one_nest(R"("ip":15,"op":75,"st":10)", kMoving);
    std::vector<std::string> written;
    for (const std::int64_t scale : {120'000, 600, 30}) {
        OneRun run(text, [&](HostRules& rules) { rules.time_scale = scale; });
        ASSERT_FALSE(run.on({1}).has_failed()) << scale;
        EXPECT_FALSE(calls_of(run.whole, "/" + std::to_string(scale)).empty());
        EXPECT_EQ(run.named("Wheel").offset().ticks, 10 * 4000) << scale;
        EXPECT_EQ(run.named("Wheel").in_point().ticks, 15 * 4000) << scale;
        EXPECT_EQ(run.named("Wheel").duration().ticks, 60 * 4000) << scale;
        written.push_back(run.whole.document().write());
    }
    OneRun own_scale(text);
    own_scale.comp.override_time_scale(600);
    ASSERT_FALSE(own_scale.on({1}).has_failed());
    EXPECT_FALSE(calls_of(own_scale.whole, "/600").empty());
    written.push_back(own_scale.whole.document().write());
    EXPECT_EQ(written[0], written[1]);
    EXPECT_EQ(written[0], written[2]);
    EXPECT_EQ(written[0], written[3]);
}

// ---- Selection

TEST(SelectionOrder, is_the_order_of_the_passes) {
    const std::string text =
        animation({asset("one", {layer(1, "dot")}), asset("two", {layer(1, "line")})},
                  {nest(1, "Upper", "one", kFull), nest(2, "Lower", "two", kFull), layer(3, "Below")});
    OneRun by_selecting(text);
    ASSERT_FALSE(by_selecting.on({1, 0}).has_failed());
    const auto first = calls_of(by_selecting.whole, "CreateNullInComp(");
    ASSERT_EQ(first.size(), 2u);
    EXPECT_NE(first[0].find("{{Lower_exflate}}"), std::string::npos);
    EXPECT_THAT(by_selecting.selected(), ElementsAre("dot")) << "the copies of the nest handled last";

    OneRun by_place(text, [](HostRules& rules) { rules.selection_order = host::model::SelectionOrder::top_to_bottom; });
    ASSERT_FALSE(by_place.on({1, 0}).has_failed());
    const auto second = calls_of(by_place.whole, "CreateNullInComp(");
    ASSERT_EQ(second.size(), 2u);
    EXPECT_NE(second[0].find("{{Upper_exflate}}"), std::string::npos);
    EXPECT_THAT(by_place.selected(), ElementsAre("line"));

    EXPECT_EQ(by_selecting.stack(), by_place.stack());
}

// ---- The null

TEST(NewNull, has_the_name_of_its_own_or_of_its_source) {
    for (const bool own : {false, true}) {
        OneRun run(one_nest(kFull, kMoving), [&](HostRules& rules) { rules.null_layer_gets_own_name = own; });
        ASSERT_FALSE(run.on({1}).has_failed());
        Layer& null_layer = run.named("{{Intro_exflate}}");
        EXPECT_EQ(null_layer.own_name(), own ? "{{Intro_exflate}}" : "");
        EXPECT_EQ(null_layer.source()->name(), "{{Intro_exflate}}");
        EXPECT_THAT(run.stack(), ElementsAre("Above", "Wheel", "Cart", "{{Intro_exflate}}", "Below"));
    }
}

TEST(NewNull, keeps_the_size_colour_and_folder_that_the_host_gives_it) {
    OneRun usual(one_nest(kFull, kMoving));
    ASSERT_FALSE(usual.on({1}).has_failed());
    EXPECT_EQ(usual.named("{{Intro_exflate}}").source()->width(), 100);
    EXPECT_EQ(usual.named("{{Intro_exflate}}").source()->parent_folder()->name(), "Solids");

    OneRun other(one_nest(kFull, kMoving), [](HostRules& rules) {
        rules.null_size = 64;
        rules.solids_folder_name = "Pieces";
        rules.null_color = {1, 0, 0};
    });
    ASSERT_FALSE(other.on({1}).has_failed());
    host::model::Item& source = *other.named("{{Intro_exflate}}").source();
    EXPECT_EQ(source.width(), 64);
    EXPECT_EQ(source.height(), 64);
    EXPECT_EQ(source.parent_folder()->name(), "Pieces");
    EXPECT_EQ(source.footage().color, (std::array<double, 4>{1, 0, 0, 1}));
    EXPECT_EQ(usual.stack(), other.stack());
}

TEST(NewNull, takes_the_nests_opacity_whatever_it_had) {
    for (const double opacity : {100.0, 0.0}) {
        OneRun run(one_nest(kFull, kMoving), [&](HostRules& rules) { rules.null_opacity = opacity; });
        ASSERT_FALSE(run.on({1}).has_failed());
        EXPECT_EQ(static_number(run.named("{{Intro_exflate}}"), host::model::kOpacity), 80);
    }
}

TEST(NewNull, that_is_selected_changes_nothing_for_the_copies) {
    // The copies are looked for above the topmost selected layer, which is then the null at the very top.
    for (const bool selected : {false, true}) {
        OneRun run(one_nest(kFull, kMoving), [&](HostRules& rules) { rules.new_null_is_selected = selected; });
        ASSERT_FALSE(run.on({1}).has_failed());
        EXPECT_THAT(run.stack(), ElementsAre("Above", "Wheel", "Cart", "{{Intro_exflate}}", "Below"));
        EXPECT_THAT(run.selected(), testing::UnorderedElementsAre("Wheel", "Cart", "{{Intro_exflate}}"));
        EXPECT_EQ(run.named("Cart").parent(), &run.named("{{Intro_exflate}}"));
    }
}

// ---- Layers

TEST(NameCut, may_split_a_character_which_then_counts_for_one) {
    const std::string long_name = std::string(30, 'x') + "\xc3\xa9 tail";
    const std::string text =
        animation({asset("inner", {layer(1, long_name)})}, {nest(1, "Intro", "inner", kFull), layer(2, "Below")});
    OneRun at_byte(text);
    ASSERT_FALSE(at_byte.on({0}, {type("prefixInput", "p")}).has_failed());
    EXPECT_THAT(at_byte.stack(), ElementsAre("p_" + std::string(30, 'x') + "#", "Below"));

    OneRun at_character(text, [](HostRules& rules) { rules.cut_names_at_character = true; });
    ASSERT_FALSE(at_character.on({0}, {type("prefixInput", "p")}).has_failed());
    EXPECT_THAT(at_character.stack(), ElementsAre("p_" + std::string(30, 'x'), "Below"));
}

TEST(Reordering, to_a_final_index_or_before_a_layer_puts_the_copies_on_one_side_of_the_nest_or_the_other) {
    // Copies and null stand at the top; from there "Cart" and "Wheel" go to the nest's index, the lower one last.
    const auto before = [](HostRules& rules) { rules.reorder_meaning = host::model::ReorderMeaning::insert_before; };
    const auto keep = click("Keep pre-comp in composition");
    const std::vector<std::string> replaced = {"Above", "Wheel", "Cart", "Below"};

    OneRun final_index(one_nest());
    ASSERT_FALSE(final_index.on({1}).has_failed());
    EXPECT_EQ(final_index.stack(), replaced);
    OneRun kept_final_index(one_nest());
    ASSERT_FALSE(kept_final_index.on({1}, {keep}).has_failed());
    EXPECT_THAT(kept_final_index.stack(), ElementsAre("Above", "Intro", "Wheel", "Cart", "Below"));
    OneRun null_final_index(one_nest(kFull, kMoving));
    ASSERT_FALSE(null_final_index.on({1}, {keep}).has_failed());
    EXPECT_THAT(null_final_index.stack(), ElementsAre("Above", "Intro", "Wheel", "Cart", "{{Intro_exflate}}", "Below"));

    OneRun insert_before(one_nest(), before);
    ASSERT_FALSE(insert_before.on({1}).has_failed());
    EXPECT_EQ(insert_before.stack(), replaced);
    OneRun kept_insert_before(one_nest(), before);
    ASSERT_FALSE(kept_insert_before.on({1}, {keep}).has_failed());
    EXPECT_THAT(kept_insert_before.stack(), ElementsAre("Above", "Wheel", "Cart", "Intro", "Below"));
    OneRun null_insert_before(one_nest(kFull, kMoving), before);
    ASSERT_FALSE(null_insert_before.on({1}, {keep}).has_failed());
    EXPECT_THAT(null_insert_before.stack(),
                ElementsAre("Above", "Wheel", "Cart", "{{Intro_exflate}}", "Intro", "Below"));
}

TEST(IllegalTrim, is_cut_to_what_the_layer_allows_or_ends_the_run) {
    // Shifted by the nest's offset the layer lies behind the nest's end: what remains of it is less than nothing.
    const std::string text = animation({asset("inner", {layer(1, "Late", R"(,"ip":80)")})},
                                       {nest(1, "Intro", "inner", R"("ip":0,"op":30,"st":0)")});
    OneRun clamps(text);
    ASSERT_FALSE(clamps.on({0}).has_failed());
    EXPECT_EQ(clamps.named("Late").duration().ticks, 4000) << "one frame";

    OneRun refuses(text, [](HostRules& rules) { rules.illegal_trim = host::model::IllegalTrim::error; });
    expect_failed_in_one_step(refuses, refuses.on({0}), text);
}

TEST(LockedLayer, in_a_nest_is_extracted_or_ends_the_run) {
    OneRun edits(one_nest());
    edits.comp.layer_at(1).source()->comp()->layer_at(0).set_flag(host::model::kLocked, true);
    ASSERT_FALSE(edits.on({1}).has_failed());
    EXPECT_THAT(edits.stack(), ElementsAre("Above", "Wheel", "Cart", "Below"));

    for (const bool is_error : {false, true}) {
        OneRun refuses(one_nest(), [&](HostRules& rules) {
            rules.locked_layers_refuse_edits = true;
            rules.failing_script_is_an_error = is_error;
        });
        refuses.comp.layer_at(1).source()->comp()->layer_at(0).set_flag(host::model::kLocked, true);
        const std::string before = refuses.whole.document().write();
        const auto outcome = refuses.on({1});
        expect_failed_in_one_step(refuses, outcome, before);
        // The script cannot give the locked layer its name. Unless the host says so, the missing copies are noticed
        // only where there is no layer high enough.
        EXPECT_EQ(calls_of(refuses.whole, "AEGP_CollectionPushBack(").empty(), is_error);
    }
}

TEST(LockedNest, stays_when_it_refuses_edits_unless_its_source_is_deleted_with_it) {
    const auto lock = [](OneRun& run) {
        run.comp.layer_at(1).set_flag(host::model::kLocked, true);
        return run.whole.document().write();
    };
    const auto refuse = [](HostRules& rules) { rules.locked_layers_refuse_edits = true; };
    OneRun edits(one_nest());
    lock(edits);
    EXPECT_FALSE(edits.on({1}).has_failed());
    EXPECT_THAT(edits.stack(), ElementsAre("Above", "Wheel", "Cart", "Below"));

    for (const auto& actions :
         std::vector<std::vector<host::scriptui::Action>>{{}, {click("Keep pre-comp in composition")}}) {
        OneRun refuses(one_nest(), refuse);
        const std::string before = lock(refuses);
        const auto outcome = refuses.on({1}, actions);
        EXPECT_THAT(refuses.stack(), ElementsAre("Above", "Intro", "Wheel", "Cart", "Below")) << "it comes last";
        expect_failed_in_one_step(refuses, outcome, before);
    }

    OneRun deletes(one_nest(), refuse);
    lock(deletes);
    EXPECT_FALSE(deletes.on({1}, {click("Delete source after exflating")}).has_failed());
    EXPECT_THAT(deletes.stack(), ElementsAre("Above", "Wheel", "Cart", "Below"));
}

TEST(SuiteParenting, that_keeps_places_moves_the_copies_against_the_null) {
    // The null stands in the middle of the composition, 50 40, when the copies become its children.
    OneRun local(one_nest(kFull, kMoving));
    ASSERT_FALSE(local.on({1}).has_failed());
    EXPECT_EQ(static_number(local.named("Wheel"), host::model::kPosition, 0), 50);
    EXPECT_EQ(static_number(local.named("Wheel"), host::model::kPosition, 1), 40);

    OneRun compensates(one_nest(kFull, kMoving), [](HostRules& rules) { rules.suite_parenting_compensates = true; });
    ASSERT_FALSE(compensates.on({1}).has_failed());
    EXPECT_EQ(static_number(compensates.named("Wheel"), host::model::kPosition, 0), 0);
    EXPECT_EQ(static_number(compensates.named("Wheel"), host::model::kPosition, 1), 0);
    EXPECT_EQ(compensates.named("Wheel").parent(), &compensates.named("{{Intro_exflate}}"));
}

TEST(DeletedParent, leaves_the_nests_children_where_they_are_or_with_the_values_they_have) {
    const std::string text = animation({asset("inner", {layer(1, "Wheel")})},
                                       {nest(1, "Intro", "inner", kFull), layer(2, "Rider", R"(,"parent":1)")});
    for (const bool compensates : {true, false}) {
        OneRun run(text, [&](HostRules& rules) { rules.deleting_a_parent_compensates = compensates; });
        ASSERT_FALSE(run.on({0}).has_failed());
        EXPECT_EQ(run.named("Rider").parent(), nullptr);
        EXPECT_EQ(static_number(run.named("Rider"), host::model::kPosition, 0), compensates ? 100 : 50);
        EXPECT_EQ(static_number(run.named("Rider"), host::model::kPosition, 1), compensates ? 80 : 40);
    }
}

TEST(NumberedCopies, are_what_a_name_that_is_taken_leads_to) {
    const std::string text =
        animation({asset("inner", {layer(1, "dot")})},
                  {nest(1, "Left", "inner", kFull), nest(2, "Right", "inner", kFull), layer(3, "dot")});
    for (const bool numbered : {false, true}) {
        OneRun run(text, [&](HostRules& rules) { rules.copies_get_numbered_names = numbered; });
        ASSERT_FALSE(run.on({0, 1}).has_failed());
        EXPECT_THAT(run.stack(), numbered ? ElementsAre("dot 2", "dot 3", "dot") : ElementsAre("dot", "dot", "dot"));
        EXPECT_EQ(run.comp.layer_at(2).source(), nullptr);
    }
}

// "Shape" is cut out by "Matte" above it, which is copied first.
const std::string kCutOut = animation({asset("inner", {layer(1, "Matte", R"(,"td":1)"), layer(2, "Shape", R"(,"tt":1)"),
                                                       layer(3, "Child", R"(,"parent":2)")})},
                                      {nest(1, "Intro", "inner", kFull), layer(4, "Ground", R"(,"tt":1)")});

TEST(LinksOfCopies, to_layers_copied_before_are_kept_where_the_host_keeps_them) {
    for (const bool kept : {false, true}) {
        OneRun run(kCutOut, [&](HostRules& rules) {
            rules.copies_keep_links_to_present_partners = kept;
            rules.mattes_by_position = false;
        });
        ASSERT_FALSE(run.on({0}, {kDiscard}).has_failed());
        EXPECT_THAT(run.stack(), ElementsAre("Matte", "Shape", "Child", "Ground"));
        EXPECT_EQ(run.named("Shape").matte(), kept ? &run.named("Matte") : nullptr);
        EXPECT_EQ(run.named("Ground").matte(), nullptr);
        EXPECT_EQ(run.named("Child").parent(), &run.named("Shape")) << "parents are the command's own affair";
    }
}

TEST(MattesByPosition, are_those_of_the_copies_and_of_what_lay_below_the_nest) {
    OneRun run(kCutOut, [](HostRules&) {});
    ASSERT_FALSE(run.on({0}, {kDiscard}).has_failed());
    EXPECT_THAT(run.stack(), ElementsAre("Matte", "Shape", "Child", "Ground"));
    EXPECT_EQ(run.named("Shape").matte(), &run.named("Matte"));
    EXPECT_EQ(run.named("Ground").matte(), &run.named("Child"));
}

}  // namespace
