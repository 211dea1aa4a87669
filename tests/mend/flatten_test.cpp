// What flattening gives of whole animations.
#include "cli/flatten/flattening.h"

#include <gtest/gtest.h>

#include "cases.h"
#include "judged.h"

namespace {

using namespace test;

const host::runner::PluginModule& plugin() {
    static const host::runner::PluginModule kPlugin(PLUGIN_MODULE);
    return kPlugin;
}

// Whether the renderer of these tests, which counts whole frames inside of nests, cannot show what was there before.
bool shows_whole_frames_only(const cli::Flattened& flat) {
    using lottie::looks::Reason;
    return std::any_of(flat.nests.begin(), flat.nests.end(), [](const cli::FlattenedNest& nest) {
        return std::any_of(nest.mended.begin(), nest.mended.end(),
                           [](Reason reason) { return reason == Reason::time_remap || reason == Reason::stretch; });
    });
}

class EachCase : public testing::TestWithParam<Case> {};

TEST_P(EachCase, looks_the_same_however_much_of_it_became_flat) {
    const cli::Flattened flat = cli::flatten_animation(GetParam().animation, plugin(), {});
    const bool is_flat = flat.nests_left == 0;
    for (const cli::FlattenedNest& nest : flat.nests) {
        if (!nest.is_kept()) {
            EXPECT_NE(nest.verdict, lottie::looks::Verdict::changes);
        }
    }
    EXPECT_EQ(is_flat,
              std::none_of(flat.nests.begin(), flat.nests.end(), [](const auto& nest) { return nest.is_kept(); }));
    if (GetParam().pictures == Pictures::cannot_tell || shows_whole_frames_only(flat)) return;
    EXPECT_TRUE((Judged{GetParam().animation, flat.text, {}}).looks_equal()) << flat.text;
}

TEST_P(EachCase, changes_nothing_the_second_time) {
    const cli::Flattened once = cli::flatten_animation(GetParam().animation, plugin(), {});
    const cli::Flattened twice = cli::flatten_animation(once.text, plugin(), {});
    EXPECT_EQ(twice.text, once.text);
    EXPECT_EQ(cli::flatten_animation(GetParam().animation, plugin(), {}).text, once.text);
}

INSTANTIATE_TEST_SUITE_P(Reasons, EachCase, testing::ValuesIn(all_cases()), [](const auto& one) {
    std::string text(code(one.param.reason));
    std::replace(text.begin(), text.end(), '-', '_');
    return text + "__" + one.param.name;
});

TEST(Flatten, what_keeps_a_nest_that_fades_is_told) {
    const auto told = [](const std::vector<std::string>& layers, const std::string& why,
                         const std::string& ground = "#cccccc") {
        const std::string faded = transform({{"o", still("50")}});
        const std::string text =
            animation({.nest = {{"ks", faded}}, .inside = layers, .below = {solid(20, "ground", 100, 100, ground)}});
        const cli::Flattened flat = cli::flatten_animation(text, plugin(), {});
        ASSERT_EQ(flat.nests.size(), 1U);
        EXPECT_EQ(flat.nests[0].kept_because, "opacity: its opacity of 50 % would be in each layer's own, but " + why);
    };
    const auto square = [](int ind, double at_both) {
        return solid(ind, "square", 15, 15, "#0000ff", {{"ks", at(at_both, at_both)}});
    };
    std::vector<std::string> stripes;
    for (int i = 0; i < 30; ++i)
        stripes.push_back(solid(1 + i, "stripe", 1, 6, "#000000", {{"ks", at(10 + 1.5 * i, 20)}}));
    stripes.push_back(solid(50, "white", 46, 5, "#ffffff", {{"ks", at(9, 20.5)}}));
    told({solid(1, "faded", 15, 15, "#0000ff", {{"ks", transform({{"p", still("[20,20,0]")}, {"o", still("50")}})}}),
          square(2, 30)},
         "layers that lie over one another show through");
    told(stripes, "the edges along which layers lie over one another are so long that they show");
    told({square(1, 5), square(2, 80)},
         "the layers lie so far apart that some players draw them blurred as a group and sharp by themselves");
    told({red({{"ks", at(0, 0)}}), solid(2, "blue", 40, 40, "#0000ff", {{"ks", at(45, 45)}})},
         "the layers are so large that what players round shows");
    // Masks would not help these, and are not tried.
    told({red({{"ks", at(0, 0)}}), solid(2, "blue", 40, 40, "#0000ff", {{"ks", at(20, 20)}})},
         "layers that lie over one another show through");
    told({square(1, 20), square(2, 60)}, "some players draw what is black or nearly so darker without the group",
         "#000000");
}

TEST(Flatten, a_blend_mode_that_layers_took_is_told) {
    const cli::Flattened flat =
        cli::flatten_animation(animation({.nest = {{"bm", "1"}}, .inside = {red()}}), plugin(), {});
    ASSERT_EQ(flat.nests.size(), 1U);
    EXPECT_EQ(flat.nests[0].verdict, lottie::looks::Verdict::equal_to_the_eye);
    const auto& findings = flat.nests[0].findings;
    const auto found = std::find_if(findings.begin(), findings.end(),
                                    [](const auto& one) { return one.reason == lottie::looks::Reason::blend_mode; });
    ASSERT_NE(found, findings.end());
    EXPECT_EQ(
        in_words(*found),
        "blend-mode, slight: its blend mode, Multiply, is now that of its layers, one of which is seen at a time ->  "
        "[|bm|]");
}

// What was renamed asks for no more than it must.
TEST(Flatten, only_layers_that_would_be_mistaken_get_other_names) {
    const std::string asks_for_red = R"([{"ty":5,"nm":"control","mn":"ADBE Slider Control","ix":1,"en":1,"ef":[)"
                                     R"({"ty":0,"nm":"Slider","mn":"ADBE Slider Control-0001","ix":1,"v":)" +
                                     expression("thisComp.layer('red').transform.rotation") + "}]}]";
    const std::string asks_for_blue = "thisComp.layer('blue').transform.position";
    const auto asker = [&](int ind) {
        return solid(ind, "asker", 20, 20, "#00aa00",
                     {{"ks", transform({{"p", expression(asks_for_blue, "[0,0,0]")}})}});
    };
    Nesting nesting;
    nesting.nest = {{"ef", asks_for_red}};
    nesting.below = {solid(20, "blue", 30, 30, "#cccccc"), asker(21)};
    const cli::Flattened flat = cli::flatten_animation(animation(nesting), plugin(), {});
    EXPECT_EQ(flat.nests_left, 0U);
    for (const char* name : {"red", "blue 2", "blue", "asker"})
        EXPECT_NE(flat.text.find(R"("nm":")" + std::string(name) + '"'), std::string::npos) << name << flat.text;
    EXPECT_EQ(flat.text.find("red 2"), std::string::npos) << flat.text;
    EXPECT_EQ(flat.text.find("blue 2 2"), std::string::npos) << flat.text;
}

std::string masks(const std::vector<std::string>& vertices) {
    std::string all;
    for (const std::string& one : vertices) {
        all += (all.empty() ? "" : ",") +
               (R"({"inv":false,"mode":"a","pt":{"a":0,"k":{"i":[[0,0],[0,0],[0,0]],)" +
                (R"("o":[[0,0],[0,0],[0,0]],"v":)" + one)) +
               R"(,"c":true}},"o":{"a":0,"k":100},"x":{"a":0,"k":0},"nm":"Mask"})";
    }
    return "[" + all + "]";
}

const char* const kTriangle = "[[20,20],[80,30],[40,80]]";

// Players take for the first mask what follows masks that leave nothing of a layer in the picture, and only of the main
// composition it is known what that is.
TEST(Flatten, masks_stand_behind_others_in_the_main_composition_alone) {
    const std::string masked_red =
        red({{"hasMask", "true"}, {"masksProperties", masks({"[[0,0],[40,0],[10,40]]", "[[0,0],[30,10],[10,30]]"})}});
    const Members with_mask = {
        {"w", "100"}, {"h", "100"}, {"hasMask", "true"}, {"masksProperties", masks({kTriangle})}};
    Nesting nesting;
    nesting.nest = with_mask;
    nesting.inside = {masked_red, blue()};
    EXPECT_EQ(cli::flatten_animation(animation(nesting), plugin(), {}).nests_left, 0U);

    nesting.nest = {{"bm", "2"}};
    nesting.inside = {nest_layer(1, "Inner", "inner", with_mask), blue()};
    nesting.assets = {R"({"id":"inner","layers":[)" + masked_red + "," + blue() + "]}"};
    EXPECT_EQ(cli::flatten_animation(animation(nesting), plugin(), {}).nests_left, 2U);
}

// The frame would have to stand behind all of them.
TEST(Flatten, a_mask_and_the_frame_do_not_both_stand_behind_others) {
    Nesting nesting;
    nesting.nest = {{"w", "70"}, {"h", "70"}, {"hasMask", "true"}, {"masksProperties", masks({kTriangle})}};
    nesting.inside = {red({{"hasMask", "true"},
                           {"masksProperties", masks({"[[0,0],[40,0],[10,40]]", "[[0,0],[30,10],[10,30]]"})},
                           {"ks", at(50, 50)}}),
                      blue()};
    EXPECT_EQ(cli::flatten_animation(animation(nesting), plugin(), {}).nests_left, 1U);
}

TEST(Flatten, what_a_remedy_cannot_mend_is_told_rather_than_the_remedy) {
    const std::string shaded = R"([{"ty":25,"nm":"Shadow","mn":"ADBE Drop Shadow","en":1,"ef":[]}])";
    const cli::Flattened flat =
        cli::flatten_animation(inside({red({{"ef", shaded}}), blue()}, {{"w", "30"}, {"h", "30"}}), plugin(), {});
    ASSERT_EQ(flat.nests.size(), 1U);
    EXPECT_EQ(flat.nests[0].kept_because.substr(0, 5), "clip:") << flat.nests[0].kept_because;
}

TEST(Flatten, an_animation_without_nests_keeps_its_bytes) {
    const std::string text = flat_animation({red(), blue()});
    EXPECT_EQ(cli::flatten_animation(text, plugin(), {}).text, text);
}

// Inside of "Nest" is the nest "Inner"; a layer of the main composition may ask for either by name.
cli::Flattened asking(const std::string& call) {
    Nesting nesting;
    nesting.above = {null_layer(30, "asker", {{"ks", transform({{"p", expression(call, "[0,0,0]")}})}})};
    nesting.inside = {nest_layer(1, "Inner", "inner", {{"w", "100"}, {"h", "100"}})};
    nesting.assets = {R"({"id":"inner","layers":[)" + red() + "]}"};
    return cli::flatten_animation(animation(nesting), plugin(), {});
}

TEST(Flatten, a_composition_that_an_expression_asks_for_stays_with_all_its_layers) {
    EXPECT_EQ(asking("comp('Nest').layer('Inner').transform.position").nests_left, 2U);
    EXPECT_EQ(asking("comp(\\\"Nest\\\").layer(1).transform.position").nests_left, 2U);
    EXPECT_EQ(asking("comp('Inner').layer(1).transform.position").nests_left, 1U);  // moves out as it is
    EXPECT_EQ(asking("var n = 'Ne' + 'st';\\ncomp(n).layer(1).transform.position").nests_left, 2U);
    EXPECT_EQ(asking("var n;\\ntry { n = 'Nest'; comp(n).layer(1).transform.position; } catch (e) {}").nests_left, 2U);
    EXPECT_EQ(asking("var n;\\ntry { n = 'Nobody'; comp(n).layer(1).transform.position; } catch (e) {}").nests_left,
              0U);
    EXPECT_EQ(asking("var n = 'No';\\nn += 'body';\\ncomp(n).layer(1).transform.position").nests_left, 2U);
    EXPECT_EQ(asking("var n = 'No'; n = value;\\ncomp(n).layer(1).transform.position").nests_left, 2U);
    EXPECT_EQ(asking("comp('Nobody').layer(1).transform.position").nests_left, 0U);
    EXPECT_EQ(asking("[0, 0]").nests_left, 0U);
}

// What is inside of the nest asks the main composition, which holds "asked" and the nest.
cli::Flattened asking_around(const std::string& call, const std::string& name_inside = "blue") {
    Nesting nesting;
    nesting.below = {null_layer(30, "asked")};
    nesting.inside = {red({{"ks", transform({{"p", expression(call, "[0,0,0]")}})}}),
                      solid(2, name_inside, 40, 40, "#0000ff")};
    return cli::flatten_animation(animation(nesting), plugin(), {});
}

TEST(Flatten, layers_of_the_main_composition_may_be_asked_for_by_name) {
    EXPECT_EQ(asking_around("comp('Main').layer('asked').transform.position").nests_left, 0U);
    EXPECT_EQ(asking_around("comp('Main').layer('asked').effect('Where')('Point')").nests_left, 0U);
    EXPECT_EQ(asking_around("comp('Main').layer('nobody').transform.position").nests_left, 0U);
    EXPECT_EQ(asking_around("comp('Main').layer('asked').transform.position", "asked").nests_left, 1U);
    EXPECT_EQ(asking_around("comp('Main').layer('Nest').transform.position").nests_left, 1U);
    EXPECT_EQ(asking_around("comp('Main').layer('asked').index").nests_left, 1U);
    EXPECT_EQ(asking_around("comp('Main').layer(1).transform.position").nests_left, 1U);
    EXPECT_EQ(asking_around("comp('Main').layer('asked').transform.position; comp('Main').width").nests_left, 1U);
}

// A faded nest that shows nothing but another one, which ends in between.
cli::Flattened faded_around(const std::string& end, const std::string& opacity = "50") {
    Nesting nesting;
    nesting.nest = {{"ks", transform({{"o", still(opacity)}})}};
    nesting.inside = {nest_layer(1, "Inner", "inner", {{"w", "100"}, {"h", "100"}, {"op", end}})};
    nesting.assets = {R"({"id":"inner","layers":[)" + red() + "," + blue({{"ks", at(20, 40)}}) + "]}"};
    return cli::flatten_animation(animation(nesting), plugin(), {});
}

TEST(Flatten, what_fades_as_a_group_is_one_at_the_same_frames) {
    const auto stays = [](const cli::Flattened& flat, const std::string& name) {
        return std::any_of(flat.nests.begin(), flat.nests.end(),
                           [&](const auto& nest) { return nest.name == name && nest.is_kept(); });
    };
    EXPECT_TRUE(stays(faded_around("10"), "Inner"));
    EXPECT_FALSE(stays(faded_around("20"), "Inner"));
    EXPECT_FALSE(stays(faded_around("10", "100"), "Inner"));
}

// The main composition shows frames -10 to 9 of the outer nest, which stays; what is inside of the inner one would
// begin at -2.
cli::Flattened with_inner_from(const std::string& in) {
    Nesting nesting;
    nesting.nest = {{"st", "10"}, {"ks", transform({{"p", expression("[time, 0]", "[0,0,0]")}})}};
    nesting.inside = {nest_layer(1, "Inner", "inner", {{"w", "100"}, {"h", "100"}, {"ip", in}, {"st", "16"}})};
    nesting.assets = {R"({"id":"inner","layers":[)" + red({{"ip", "-18"}}) + "]}"};
    return cli::flatten_animation(animation(nesting), plugin(), {});
}

TEST(Flatten, what_a_composition_shows_before_its_frame_0_counts) {
    for (const auto& [in, begins] : {std::pair("-7", "-2"), std::pair("-1", "-1")}) {
        const cli::Flattened flat = with_inner_from(in);
        EXPECT_EQ(flat.nests_left, 1U);
        EXPECT_NE(flat.text.find(R"("ip":)" + std::string(begins) + ","), std::string::npos) << flat.text;
    }
}

// A turned square in a nest that is taller than wide by a hair, within a composition that the picture enlarges.
cli::Flattened uneven_by_a_hair(const std::string& enlarged) {
    Nesting nesting;
    nesting.nest = {{"ks", transform({{"s", still("[" + enlarged + "," + enlarged + ",100]")}})}};
    nesting.inside = {nest_layer(1, "Inner", "inner",
                                 {{"w", "100"}, {"h", "100"}, {"ks", transform({{"s", still("[100,100.4,100]")}})}})};
    const std::string turned = transform({{"p", still("[5,5,0]")}, {"r", still("45")}, {"a", still("[4,4,0]")}});
    nesting.assets = {R"({"id":"inner","layers":[)" + solid(1, "turned", 8, 8, "#ff0000", {{"ks", turned}}) + "]}"};
    return cli::flatten_animation(animation(nesting), plugin(), {});
}

TEST(Flatten, what_shows_only_as_a_whole_is_mended_or_stays) {
    const cli::Flattened small = uneven_by_a_hair("100");
    EXPECT_EQ(small.nests_left, 0U);
    EXPECT_EQ(small.nests.front().verdict, lottie::looks::Verdict::equal_to_the_eye);
    const cli::Flattened large = uneven_by_a_hair("1800");
    EXPECT_EQ(large.nests_left, 0U);
    EXPECT_EQ(large.nests.front().name, "Inner");
    EXPECT_EQ(large.nests.front().verdict, lottie::looks::Verdict::exact);
    EXPECT_EQ(cli::flatten_animation(large.text, plugin(), {}).text, large.text);
}

// A clock that eases over so many frames, over so many layers that move all the time.
cli::Flattened eased_over(int frames, int layers) {
    const std::string last = std::to_string(frames);
    const std::string eased = R"({"a":1,"k":[{"i":{"x":[0.6],"y":[1]},"o":{"x":[0.4],"y":[0]},"t":0,"s":[0]},{"t":)" +
                              last + R"(,"s":[9]}]})";
    Nesting nesting;
    nesting.nest = {{"tm", eased}, {"op", last}};
    nesting.inside.clear();
    for (int i = 1; i <= layers; ++i)
        nesting.inside.push_back(solid(i, "dot", 3, 3, "#ff0000", {{"ks", moving_transform()}}));
    return cli::flatten_animation(animation(nesting), plugin(), {});
}

TEST(Flatten, a_clock_that_would_cut_keyframes_without_end_stays) {
    EXPECT_EQ(eased_over(20, 20).nests_left, 0U);
    EXPECT_EQ(eased_over(20'000, 20).nests_left, 1U);
}

TEST(Flatten, a_layer_without_a_transform_gets_none) {
    Nesting nesting;
    nesting.nest = {{"ks", moving_transform()}};
    nesting.below = {R"({"ddd":0,"ind":19,"ty":3,"nm":"bare","parent":10,"ip":0,"op":20,"st":0,"bm":0})",
                     solid(20, "on both", 9, 9, "#00aa00", {{"parent", "19"}})};
    const cli::Flattened flat = cli::flatten_animation(animation(nesting), plugin(), {});
    EXPECT_EQ(flat.nests_left, 0U);
    EXPECT_EQ(cli::flatten_animation(flat.text, plugin(), {}).text, flat.text);
}

TEST(Flatten, the_product_of_two_keyframed_opacities_has_keyframes_only_at_its_corners) {
    Nesting nesting;
    nesting.nest = {{"ks", transform({{"o", keyed({{0, "100"}, {10, "100"}, {20, "0"}})}})}};
    nesting.inside = {red({{"ks", transform({{"o", keyed({{0, "0"}, {10, "80"}, {20, "80"}})}})}})};
    const std::string flat = cli::flatten_animation(animation(nesting), plugin(), {}).text;
    const std::string straight = R"({"i":{"x":1,"y":1},"o":{"x":0,"y":0},"t":)";
    EXPECT_NE(flat.find(R"("ks":{"o":{"a":1,"k":[)" + straight + R"(0,"s":[0],"e":[80]},)" + straight +
                        R"(10,"s":[80],"e":[0]},{"t":20,"s":[0]}]})"),
              std::string::npos)
        << flat;
}

TEST(Flatten, keyframes_on_another_clock_are_no_more_than_before) {
    Nesting nesting;
    nesting.nest = {{"sr", "2"}};
    nesting.inside = {red({{"ks", transform({{"o", keyed({{2, "0"}, {8, "80"}})}})}})};
    const std::string flat = cli::flatten_animation(animation(nesting), plugin(), {}).text;
    EXPECT_NE(flat.find(R"("ks":{"o":{"a":1,"k":[{"i":{"x":[1],"y":[1]},"o":{"x":[0],"y":[0]},"t":4,"s":[0],"e":[80]},)"
                        R"({"t":16,"s":[80]}]})"),
              std::string::npos)
        << flat;
}

// Inside, it is on from frame 5 up to, but not at, frame 10; outside, after frame 5 and still at frame 10.
TEST(Flatten, a_clock_that_runs_backward_through_whole_frames_turns_the_ends_of_a_layer_around) {
    Nesting nesting;
    nesting.nest = {{"tm", keyed({{0, "0.6"}, {15, "0"}})}, {"op", "15"}};
    nesting.inside = {red({{"ip", "5"}, {"op", "10"}, {"ks", moving_transform()}}), blue()};
    const cli::Flattened flat = cli::flatten_animation(animation(nesting), plugin(), {});
    EXPECT_EQ(flat.nests_left, 0U);
    EXPECT_NE(flat.text.find(R"("ip":5.001,"op":10.001,)"), std::string::npos) << flat.text;
}

TEST(Flatten, a_nest_that_stays_takes_over_the_clock_around_it) {
    Nesting nesting;
    nesting.nest = {{"tm", keyed({{0, "0.00001"}, {5, "0.20001"}, {9, "0.20001"}, {18, "0.56001"}})}};
    nesting.inside = {
        nest_layer(1, "Inner", "both", {{"ks", transform({{"o", still("50")}})}, {"w", "100"}, {"h", "100"}})};
    nesting.assets = {R"({"id":"both","layers":[)" + red({{"ks", moving_transform()}}) + "," +
                      blue({{"ks", at(20, 40)}}) + "]}"};
    const std::string text = animation(nesting);
    const cli::Flattened flat = cli::flatten_animation(text, plugin(), {});
    EXPECT_EQ(flat.nests_left, 1U);
    EXPECT_NE(flat.text.find(R"("tm")"), std::string::npos);
    EXPECT_TRUE((Judged{text, flat.text, {}}).looks_equal()) << flat.text;
}

TEST(Flatten, a_nest_that_hangs_on_another_becomes_flat_with_it) {
    const std::string turning = transform({{"p", still("[50,50,0]")},
                                           {"a", still("[50,50,0]")},
                                           {"s", still("[60,90,100]")},
                                           {"r", keyed({{0, "0"}, {19, "80"}})}});
    Nesting nesting;
    nesting.nest = {{"ks", turning}};
    nesting.below.insert(
        nesting.below.begin(),
        nest_layer(11, "Rider", "other", {{"parent", "10"}, {"ks", turning}, {"w", "100"}, {"h", "100"}}));
    nesting.assets = {R"({"id":"other","layers":[)" + solid(1, "green", 30, 30, "#00ff00", {{"ks", at(5, 60)}}) + "]}"};
    const std::string text = animation(nesting);
    const cli::Flattened flat = cli::flatten_animation(text, plugin(), {});
    EXPECT_EQ(flat.nests_left, 0U);
    EXPECT_TRUE((Judged{text, flat.text, {}}).looks_equal()) << flat.text;
}

TEST(Flatten, compositions_that_nothing_shows_any_more_go_unless_they_are_to_stay) {
    const std::string text = animation({});
    EXPECT_EQ(cli::flatten_animation(text, plugin(), {}).text.find("refId"), std::string::npos);
    EXPECT_EQ(cli::flatten_animation(text, plugin(), {}).text.find("\"id\""), std::string::npos);
    cli::Options options;
    options.keep_unused = true;
    EXPECT_NE(cli::flatten_animation(text, plugin(), options).text.find("\"id\""), std::string::npos);
}

}  // namespace
