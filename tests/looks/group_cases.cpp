// Cases about the nest as a group: opacity, masks, mattes, blending, effects, switches.
#include <tuple>

#include "cases.h"

namespace test {
namespace {

std::string alone(const Members& nest, const std::vector<std::string>& layers = Nesting().inside) {
    Nesting nesting;
    nesting.nest = nest;
    nesting.inside = layers;
    nesting.below.clear();
    return animation(nesting);
}

std::string path(const std::string& vertices) {
    return still(R"({"i":[[0,0],[0,0],[0,0],[0,0]],"o":[[0,0],[0,0],[0,0],[0,0]],"v":)" + vertices + R"(,"c":true})");
}

std::string mask(const std::string& vertices, const std::string& mode, const std::string& opacity = "100",
                 const std::string& expansion = "0") {
    return R"({"inv":false,"mode":")" + mode + R"(","nm":"Mask 1","pt":)" + path(vertices) + R"(,"o":)" +
           still(opacity) + R"(,"x":)" + still(expansion) + "}";
}

Members masked(const std::string& masks) {
    return {{"hasMask", "true"}, {"masksProperties", "[" + masks + "]"}};
}

const std::string kQuarter = "[[0,0],[50,0],[50,50],[0,50]]";
const std::string kCorner = "[[0,0],[20,0],[20,20],[0,20]]";
const std::string kWhole = "[[0,0],[100,0],[100,100],[0,100]]";

std::string effect(const std::string& type, const std::string& match_name, const std::string& enabled = "1",
                   const std::string& parameters = "") {
    return R"([{"ty":)" + type + R"(,"nm":"Fx","mn":")" + match_name + R"(","np":3,"ix":1,"en":)" + enabled +
           R"(,"ef":[)" + parameters + "]}]";
}

// The parameters of an effect up to the one that says how much of it is drawn.
std::string amount(int others, const std::string& value) {
    std::string parameters;
    for (int i = 0; i < others; ++i) parameters += R"({"ty":0,"nm":"P","v":{"a":0,"k":0}},)";
    return parameters + R"({"ty":0,"nm":"Amount","v":)" + value + "}";
}

Nesting matte_above(const std::string& matte) {
    Nesting nesting;
    nesting.above = {matte};
    nesting.nest = {{"tt", "1"}};
    return nesting;
}

std::vector<Case> opacity_cases() {
    return {
        {Reason::opacity, "half", Weight::change, Pictures::differ, nest({{"ks", transform({{"o", still("50")}})}}), "",
         "ks.o", 0},
        {Reason::opacity, "fades_in", Weight::change, Pictures::differ,
         nest({{"ks", transform({{"o", keyed({{0, "100"}, {10, "100"}, {19, "0"}})}})}}), "", "ks.o", 11},
        {Reason::opacity, "full_all_along", std::nullopt, Pictures::equal, nest({})},
        {Reason::opacity, "keyed_but_full_while_seen", Weight::harmless, Pictures::equal,
         nest({{"ks", transform({{"o", keyed({{-20, "0"}, {-5, "100"}})}})}})},
        {Reason::opacity, "half_but_never_seen", Weight::harmless, Pictures::equal,
         nest({{"ip", "30"}, {"op", "40"}, {"ks", transform({{"o", still("50")}})}})},
        {Reason::opacity, "half_of_layers_that_an_expression_may_lead_over_one_another", Weight::change,
         Pictures::cannot_tell,
         inside({solid(1, "red", 9, 9, "#ff0000", {{"ks", transform({{"p", expression("[40, 40]", "[20,20,0]")}})}}),
                 solid(2, "blue", 9, 9, "#0000ff", {{"ks", at(40, 40)}})},
                {{"ks", transform({{"o", still("50")}})}}),
         "", "ks.o", 0},
        {Reason::opacity, "less_than_the_eye_sees", Weight::slight, Pictures::cannot_tell,
         nest({{"ks", transform({{"o", still("99.97")}})}})},
    };
}

std::vector<Case> mask_cases() {
    return {
        {Reason::mask, "quarter", Weight::change, Pictures::differ, nest(masked(mask(kQuarter, "a"))), "",
         "masksProperties"},
        {Reason::mask, "mode_none", Weight::change, Pictures::differ, nest(masked(mask(kQuarter, "n"))), "", "hasMask"},
        {Reason::mask, "mode_none_and_around_everything", Weight::harmless, Pictures::equal,
         nest(masked(mask(kQuarter, "n") + "," + mask(kWhole, "a")))},
        {Reason::mask, "around_everything", Weight::harmless, Pictures::equal, nest(masked(mask(kWhole, "a")))},
        {Reason::mask, "around_everything_and_faded_by_an_expression", Weight::change, Pictures::cannot_tell,
         nest(masked(mask(kWhole, "a", R"(100,"x":"30")"))), "", "masksProperties"},
        {Reason::mask, "around_everything_and_shrunk_by_an_expression", Weight::change, Pictures::cannot_tell,
         nest(masked(mask(kWhole, "a", "100", R"(0,"x":"-30")"))), "", "masksProperties"},
        {Reason::mask, "takes_nothing_away_but_for_an_expression", Weight::change, Pictures::cannot_tell,
         nest(masked(mask(kQuarter, "s", R"(0,"x":"30")"))), "", "masksProperties"},
        {Reason::mask, "shrunk", Weight::change, Pictures::cannot_tell, nest(masked(mask(kWhole, "a", "100", "-30"))),
         "", "masksProperties"},
        {Reason::mask, "takes_nothing_away", Weight::harmless, Pictures::cannot_tell,
         nest(masked(mask(kQuarter, "s", "0")))},
        {Reason::mask, "switched_off", std::nullopt, Pictures::cannot_tell,
         nest({{"hasMask", "false"}, {"masksProperties", "[" + mask(kQuarter, "a") + "]"}})},
        {Reason::mask, "switched_on_with_none", Weight::change, Pictures::differ, nest({{"hasMask", "true"}}), "",
         "hasMask"},
        {Reason::mask, "inside_cuts_out_and_the_nest_moves", Weight::change, Pictures::cannot_tell,
         inside({red(masked(mask(kCorner, "s"))), blue()}, {{"ks", moving_transform()}}), "red", "masksProperties"},
        {Reason::mask, "inside_cuts_out_and_the_nest_is_still", std::nullopt, Pictures::cannot_tell,
         inside({red(masked(mask(kCorner, "s"))), blue()})},
        {Reason::mask, "inside_adds_before_it_cuts_out", std::nullopt, Pictures::cannot_tell,
         inside({red(masked(mask(kWhole, "a") + "," + mask(kCorner, "s"))), blue()}, {{"ks", moving_transform()}})},
    };
}

std::vector<Case> matte_cases() {
    std::vector<Case> cases = {
        {Reason::matte_used, "small", Weight::change, Pictures::differ,
         animation(matte_above(solid(1, "stencil", 30, 30, "#ffffff", {{"td", "1"}, {"ks", at(20, 20)}}))), "", "tt"},
        {Reason::matte_used, "shows_everything", Weight::harmless, Pictures::cannot_tell,  // it rounds
         animation(matte_above(solid(1, "stencil", 100, 100, "#ffffff", {{"td", "1"}})))},
    };
    for (const auto& [name, key, property] :
         {std::tuple("shows_everything_but_for_an_expression_that_moves_it", "p", expression("[50, 0]", "[0,0,0]")),
          std::tuple("shows_everything_but_for_an_expression_that_fades_it", "o", expression("50", "100"))}) {
        cases.push_back({Reason::matte_used, name, Weight::change, Pictures::cannot_tell,
                         animation(matte_above(solid(1, "stencil", 100, 100, "#ffffff",
                                                     {{"td", "1"}, {"ks", transform({{key, property}})}}))),
                         "", "tt"});
    }
    Nesting given;
    given.nest = {{"td", "1"}};
    given.below = {solid(20, "ground", 100, 100, "#00ff00", {{"tt", "1"}})};
    cases.push_back(
        {Reason::matte_given, "shapes_the_ground", Weight::change, Pictures::differ, animation(given), "ground", "td"});
    given.nest = {{"td", "1"}, {"ip", "30"}, {"op", "40"}};
    given.below = {solid(20, "ground", 100, 100, "#00ff00")};
    cases.push_back({Reason::matte_given, "never_seen", Weight::harmless, Pictures::equal, animation(given)});
    const std::string stencil = solid(1, "stencil", 30, 30, "#ffffff", {{"td", "1"}, {"ks", at(20, 20)}});
    cases.push_back({Reason::matte_split, "a_pair_inside", std::nullopt, Pictures::equal,
                     inside({stencil, solid(2, "blue", 40, 40, "#0000ff", {{"tt", "1"}, {"ks", at(30, 30)}})})});
    cases.push_back({Reason::matte_split, "a_pair_with_a_layer_between", Weight::change, Pictures::cannot_tell,
                     inside({stencil, solid(3, "green", 9, 9, "#00ff00"),
                             solid(2, "blue", 40, 40, "#0000ff", {{"tt", "1"}, {"tp", "1"}, {"ks", at(30, 30)}})}),
                     "blue", "tt"});
    Nesting pair;
    pair.above = {stencil, solid(2, "hidden", 40, 40, "#00ff00", {{"tt", "1"}, {"ks", at(30, 30)}})};
    cases.push_back({Reason::matte_split, "a_pair_above_stays", std::nullopt, Pictures::equal, animation(pair)});
    return cases;
}

std::vector<Case> blend_cases() {
    const std::string multiplied = red({{"ks", at(20, 20)}, {"bm", "1"}});
    const std::string adjustment = null_layer(1, "grade", {{"ef", effect("22", "ADBE Tritone")}});
    return {
        {Reason::blend_mode, "multiplies_the_ground", Weight::change, Pictures::cannot_tell, nest({{"bm", "1"}}), "",
         "bm"},
        {Reason::blend_mode, "nothing_below", Weight::harmless, Pictures::equal, alone({{"bm", "1"}})},
        {Reason::blend_inside, "reaches_the_ground", Weight::change, Pictures::cannot_tell,
         inside({multiplied, blue()}), "red", "bm"},
        {Reason::blend_inside, "nothing_below", Weight::harmless, Pictures::equal, alone({}, {multiplied, blue()})},
        {Reason::adjustment_inside, "reaches_the_ground", Weight::change, Pictures::cannot_tell,
         inside({adjustment, blue()}), "grade", "ef"},
        {Reason::adjustment_inside, "nothing_below", Weight::harmless, Pictures::equal,
         alone({}, {adjustment, blue()})},
        {Reason::adjustment_inside, "only_controls", std::nullopt, Pictures::equal,
         inside({null_layer(1, "grade", {{"ef", effect("5", "ADBE Slider Control")}}), blue()})},
    };
}

// So small that one alone is hardly visible.
std::vector<std::string> specks(int count) {
    std::vector<std::string> layers;
    for (int i = 1; i <= count; ++i) layers.push_back(solid(i, "speck", 1, 1, "#ff0000", {{"ks", at(65, 9 * i)}}));
    return layers;
}

std::string on_a_layer(const Members& members, const std::vector<std::string>& layers) {
    Nesting nesting;
    nesting.above = {null_layer(30, "carrier", members)};
    nesting.nest = {{"parent", "30"}};
    nesting.inside = layers;
    return animation(nesting);
}

std::string on_a_layer_in_depth(const std::vector<std::string>& layers) {
    return on_a_layer({{"ddd", "1"}, {"ks", transform({{"ry", still("45")}})}}, layers);
}

std::vector<Case> clip_cases() {
    const Members small = {{"w", "60"}, {"h", "60"}, {"ks", at(20, 20)}};
    const std::string dot = R"({"ty":"el","p":{"a":0,"k":[0,0]},"s":{"a":0,"k":[56,56]}},)"
                            R"({"ty":"fl","c":{"a":0,"k":[1,0,0,1]},"o":{"a":0,"k":100}})";
    const std::string uneven =
        R"({"a":1,"k":[{"i":{"x":[0.2,0.9],"y":[1,0.5]},"o":{"x":[0.1,0.8],"y":[0,0.1]},"t":0,"s":[100,100,100]},)"
        R"({"t":19,"s":[50,70,100]}]})";
    const auto speck_like = [](Members ks) {
        ks["p"] = still("[65,9,0]");
        return std::vector{solid(1, "speck", 1, 1, "#ff0000", {{"ks", transform(ks)}})};
    };
    const auto led = [&](const std::string& key, const std::string& property, const Members& nest) {
        Members ks = {{key, property}};
        ks.try_emplace("p", still("[10,10,0]"));
        return inside({red({{"ks", transform(ks)}}), blue({{"ks", at(5, 5)}})}, nest);
    };
    const auto looped = [](const std::string& keys, const std::string& text) {
        return keys.substr(0, keys.size() - 1) + R"(,"x":")" + text + R"("})";
    };
    const auto sized_by = [](const std::string& text) {
        return shape_layer(1, "box",
                           R"({"ty":"rc","p":{"a":0,"k":[30,30]},"r":{"a":0,"k":0},"s":{"a":0,"k":[20,20],"x":")" +
                               text + R"("}},{"ty":"fl","c":{"a":0,"k":[1,0,0,1]},"o":{"a":0,"k":100}})");
    };
    const std::string moving = expression("[value[0] + time * 90, 10]", "[10,10,0]");
    const std::string slow = keyed({{0, "5,5,0"}, {8, "15,15,0"}});
    const std::string line =
        R"({"ty":"sh","ks":{"a":0,"k":{"i":[[0,0],[0,0]],"o":[[0,0],[0,0]],"v":[[5,5],[END,5]],)"
        R"("c":false}}},{"ty":"st","c":{"a":0,"k":[1,0,0,1]},"o":{"a":0,"k":100},"w":{"a":0,"k":2}})";
    const auto on_a_line_to = [&](const std::string& end) {
        std::string shapes = line;
        shapes.replace(shapes.find("END"), 3, end);
        const std::string text =
            "var $bm_rt;\\nvar a = thisComp.layer('line');\\nvar p = a('ADBE Root Vectors Group')(1)('Path');\\n"
            "$bm_rt = a.toComp(p.pointOnPath(time));";
        return inside({solid(1, "red", 9, 9, "#ff0000", {{"ks", transform({{"p", expression(text, "[5,5,0]")}})}}),
                       shape_layer(2, "line", shapes)},
                      small);
    };
    // A line that keeps 10 pixels from the edge, and what another layer says of its width.
    const auto as_wide_as = [&](const std::string& text, const std::string& value) {
        std::string shapes = line;
        shapes.replace(shapes.find("[[5,5],[END,5]]"), 15, "[[15,30],[45,30]]");
        shapes.replace(shapes.rfind("\"k\":2"), 5, R"("k":2,"x":"var $bm_rt;\n$bm_rt = )" + text + ";\"");
        const std::string slider = R"([{"ty":5,"nm":"stroke","np":3,"mn":"Pseudo/1","ix":1,"en":1,"ef":[)"
                                   R"({"ty":7,"nm":"Menu","mn":"Pseudo/1-1","ix":1,"v":)" +
                                   value + "}]}]";
        Nesting nesting;
        nesting.above = {null_layer(30, "control", {{"ef", slider}})};
        nesting.nest = small;
        nesting.inside = {shape_layer(1, "line", shapes), null_layer(2, "own", {{"ef", slider}})};
        return animation(nesting);
    };
    const std::string times_control =
        "$bm_mul($bm_div(value, 2), comp('Main').layer('control').effect('stroke')('Menu'))";
    const std::string overshooting = R"({"a":1,"k":[{"i":{"x":[0.5],"y":[9]},"o":{"x":[0.5],"y":[0]},"t":0,"s":[4]},)"
                                     R"({"t":9,"s":[12]}]})";
    return {
        {Reason::clip, "widened_within_it_by_a_control", std::nullopt, Pictures::cannot_tell,
         as_wide_as(times_control, still("16"))},
        {Reason::clip, "widened_over_it_by_a_control", Weight::change, Pictures::cannot_tell,
         as_wide_as(times_control, still("44")), "line", "w", 0},
        {Reason::clip, "widened_within_it_by_keyframes_of_a_control", std::nullopt, Pictures::cannot_tell,
         as_wide_as(times_control, keyed({{0, "2"}, {9, "16"}, {12, "4"}}))},
        {Reason::clip, "widened_over_it_by_a_keyframe_of_a_control", Weight::change, Pictures::cannot_tell,
         as_wide_as(times_control, keyed({{0, "2"}, {9, "44"}, {12, "4"}})), "line", "w", 0},
        {Reason::clip, "widened_over_it_between_keyframes_of_a_control", Weight::change, Pictures::cannot_tell,
         as_wide_as(times_control, overshooting), "line", "w", 0},
        {Reason::clip, "widened_by_a_control_that_an_expression_moves", Weight::change, Pictures::cannot_tell,
         as_wide_as(times_control, expression("time * 90", "2")), "line", "w", 0},
        {Reason::clip, "widened_within_it_by_a_control_beside_it", std::nullopt, Pictures::cannot_tell,
         as_wide_as("thisComp.layer('own').effect(1)(1)", still("16"))},
        {Reason::clip, "widened_by_a_control_of_a_nest", Weight::change, Pictures::cannot_tell,
         as_wide_as("comp('Nest').layer('own').effect('stroke')('Menu')", still("16")), "line", "w", 0},
        {Reason::clip, "widened_by_a_control_that_is_not_there", Weight::change, Pictures::cannot_tell,
         as_wide_as("thisComp.layer('own').effect('stroke')('Slider')", still("16")), "line", "w", 0},
        {Reason::clip, "widened_by_the_time", Weight::change, Pictures::cannot_tell,
         as_wide_as("$bm_mul(value, time)", still("16")), "line", "w", 0},
        {Reason::clip, "moved_over_it_by_an_expression", Weight::change, Pictures::cannot_tell, led("p", moving, small),
         "red", "w", 0},
        {Reason::clip, "moved_by_an_expression_where_all_of_the_picture_is_within", std::nullopt, Pictures::cannot_tell,
         led("p", moving, {})},
        {Reason::clip, "placed_within_it_by_numbers", std::nullopt, Pictures::cannot_tell,
         led("p", expression("[5, value[1]]", "[10,10,0]"), {{"w", "60"}, {"h", "60"}})},
        {Reason::clip, "placed_over_it_by_numbers", Weight::change, Pictures::cannot_tell,
         led("p", expression("[25, value[1]]", "[10,10,0]"), small), "red", "w", 0},
        {Reason::clip, "turned_over_it_by_an_expression", Weight::change, Pictures::cannot_tell,
         led("r", expression("time * 90"), small), "red", "w", 0},
        {Reason::clip, "turned_within_it_by_an_expression", std::nullopt, Pictures::cannot_tell,
         inside({red({{"ks",
                       transform(
                           {{"p", still("[30,30,0]")}, {"a", still("[20,20,0]")}, {"r", expression("time * 90")}})}})},
                small)},
        {Reason::clip, "scaled_over_it_by_an_expression", Weight::change, Pictures::cannot_tell,
         led("s", expression("[time * 900, 100]", "[100,100,100]"), small), "red", "w", 0},
        {Reason::clip, "that_plays_its_keyframes_again_within_it", std::nullopt, Pictures::cannot_tell,
         led("p", looped(slow, "loopOut('cycle')"), small)},
        {Reason::clip, "that_plays_its_keyframes_on_over_it", Weight::change, Pictures::cannot_tell,
         led("p", looped(slow, "loopOut('offset')"), small), "red", "w", 0},
        {Reason::clip, "that_plays_keyframes_again_which_lead_over_it_later", Weight::change, Pictures::cannot_tell,
         led("p", looped(keyed({{-20, "50,10,0"}, {-9, "10,10,0"}}), "loopOut('cycle')"), small), "red", "w", 0},
        {Reason::clip, "on_a_path_within_it", std::nullopt, Pictures::cannot_tell, on_a_line_to("45")},
        {Reason::clip, "on_a_path_that_leads_over_it", Weight::change, Pictures::cannot_tell, on_a_line_to("58"), "red",
         "w", 0},
        {Reason::clip, "grown_over_it_by_an_expression", Weight::change, Pictures::cannot_tell,
         inside({sized_by("[time * 900, 20]")}, small), "box", "w", 0},
        {Reason::clip, "unseen_but_for_an_expression", Weight::change, Pictures::cannot_tell,
         inside({red({{"ks", transform({{"p", still("[40,10,0]")}, {"o", expression("100")}})}})}, small), "red", "w",
         0},
        {Reason::clip, "in_a_nest_that_an_expression_leads_into_the_picture", Weight::change, Pictures::cannot_tell,
         on_a_layer({{"ks", transform({{"p", expression("[0, 0]", "[80,80,0]")}})}},
                    {red({{"ks", at(100, 20)}}), blue()}),
         "red", "w", 0},
        {Reason::clip, "cut_in_half", Weight::change, Pictures::differ, inside({red({{"ks", at(40, 10)}})}, small),
         "red", "w", 0},
        {Reason::clip, "cut_later", Weight::change, Pictures::differ,
         inside({red({{"ks", transform({{"p", keyed({{0, "10,10,0"}, {10, "20,10,0"}, {19, "56,10,0"}})}})}})}, small),
         "red", "w", 11},
        {Reason::clip, "a_path_of_one_point_draws_nothing", std::nullopt, Pictures::equal,
         inside({shape_layer(1, "point",
                             R"({"ty":"sh","ks":{"a":0,"k":{"i":[[0,0]],"o":[[0,0]],"v":[[70,10]],"c":false}}},)"
                             R"({"ty":"st","c":{"a":0,"k":[1,0,0,1]},"o":{"a":0,"k":100},"w":{"a":0,"k":4}})"),
                 blue({{"ks", at(5, 5)}})},
                small)},
        {Reason::clip, "everything_fits", std::nullopt, Pictures::equal, inside({red({{"ks", at(10, 10)}})}, small)},
        {Reason::clip, "outside_of_the_picture_anyway", std::nullopt, Pictures::equal,
         inside({red({{"ks", at(80, 80)}})})},
        {Reason::clip, "outside_of_the_picture_on_a_layer_in_depth", Weight::change, Pictures::cannot_tell,
         on_a_layer_in_depth({red({{"ks", at(80, 80)}})}), "red", "w", 0},
        {Reason::clip, "turned_so_that_only_the_rectangle_around_it_reaches_over", std::nullopt, Pictures::equal,
         inside({shape_layer(1, "dot", dot, {{"ks", transform({{"p", still("[30,30,0]")}, {"r", still("45")}})}})},
                small)},
        {Reason::clip, "by_a_hair", Weight::slight, Pictures::equal, inside({red({{"ks", at(20.02, 10)}})}, small)},
        {Reason::clip, "by_a_hair_that_players_scale_in_their_ways", Weight::change, Pictures::cannot_tell,
         inside({red({{"ks", transform({{"p", still("[20.02,10,0]")}, {"s", uneven}})}})}, small), "red", "w", 0},
        {Reason::clip, "one_speck", Weight::slight, Pictures::equal, inside(specks(1), small)},
        {Reason::clip, "one_speck_that_an_expression_turns", Weight::slight, Pictures::equal,
         inside(speck_like({{"r", expression("value", "0")}}), small)},
        {Reason::clip, "one_speck_that_players_scale_in_their_ways", Weight::change, Pictures::cannot_tell,
         inside(speck_like({{"s", uneven}}), small), "speck", "w", 0},
        {Reason::clip, "specks_over_the_whole_picture", Weight::change, Pictures::differ, inside(specks(6), small),
         "speck", "w", 0},
    };
}

std::vector<Case> effect_cases() {
    const Members tinted = {{"ef", effect("20", "ADBE Tint")}};
    const auto painted = [](const std::string& opacity) {
        return R"({"ty":"gr","it":[{"ty":"rc","p":{"k":[0,0]},"s":{"k":[40,40]},"r":{"k":0}},)"
               R"({"ty":"fl","c":{"k":[1,0,0,1]},"o":{"a":0,"k":)" +
               opacity +
               R"(}},{"ty":"tr","p":{"k":[0,0]},"a":{"k":[0,0]},"s":{"k":[100,100]},"r":{"k":0},"o":{"k":100}}]})";
    };
    const Members blurred = {{"ef", effect("29", "ADBE Gaussian Blur 2")}};
    return {
        {Reason::effects, "blur", Weight::change, Pictures::cannot_tell, nest(blurred), "", "ef"},
        {Reason::effects, "fill", Weight::slight, Pictures::equal, nest({{"ef", effect("21", "ADBE Fill")}})},
        {Reason::effects, "full_fill", Weight::slight, Pictures::equal,
         nest({{"ef", effect("21", "ADBE Fill", "1", amount(6, R"({"a":0,"k":1})"))}})},
        {Reason::effects, "fill_that_an_expression_paints", Weight::change, Pictures::cannot_tell,
         nest({{"ef", effect("21", "ADBE Fill", "1", amount(2, R"({"a":0,"k":[1,0,0,1],"x":"[index, 0, 0, 1]"})"))}}),
         "", "ef"},
        {Reason::effects, "faded_fill", Weight::change, Pictures::cannot_tell,
         nest({{"ef", effect("21", "ADBE Fill", "1", amount(6, R"({"a":0,"k":0.5})"))}}), "", "ef"},
        {Reason::effects, "fill_that_fades", Weight::change, Pictures::cannot_tell,
         nest({{"ef", effect("21", "ADBE Fill", "1", amount(6, R"({"a":1,"k":[{"t":0,"s":[1]},{"t":9,"s":[0]}]})"))}}),
         "", "ef"},
        // lottie-web draws the tinted picture over the original: translucent pixels become less so.
        {Reason::effects, "tint", Weight::slight, Pictures::equal, nest(tinted)},
        {Reason::effects, "tint_of_faded_layers", Weight::change, Pictures::cannot_tell,
         inside({red({{"ks", transform({{"o", still("50")}})}}), blue()}, tinted), "", "ef"},
        {Reason::effects, "tint_of_opaque_shapes", Weight::slight, Pictures::equal,
         inside({shape_layer(1, "dot", painted("100")), blue()}, tinted)},
        {Reason::effects, "tint_of_shapes_that_show_what_is_below", Weight::change, Pictures::cannot_tell,
         inside({shape_layer(1, "dot", painted("50")), blue()}, tinted), "", "ef"},
        {Reason::effects, "faded_tint", Weight::slight, Pictures::equal,
         nest({{"ef", effect("20", "ADBE Tint", "1", amount(2, R"({"a":0,"k":60})"))}})},
        {Reason::effects, "blur_of_one_layer", Weight::slight, Pictures::equal, inside({red()}, blurred)},
        {Reason::effects, "blur_of_one_layer_at_a_time", Weight::slight, Pictures::equal,
         inside({red({{"op", "10"}, {"ks", at(20, 20)}}), blue({{"ip", "10"}, {"ks", at(40, 40)}})}, blurred)},
        {Reason::effects, "blur_of_one_layer_that_is_turned", Weight::change, Pictures::cannot_tell,
         inside({red({{"ks", transform({{"p", still("[20,20,0]")}, {"r", still("20")}})}})}, blurred), "", "ef"},
        {Reason::effects, "blur_of_one_faded_layer", Weight::change, Pictures::cannot_tell,
         inside({red({{"ks", transform({{"o", still("50")}})}})}, blurred), "", "ef"},
        {Reason::effects, "blur_of_one_layer_that_the_frame_cuts_off", Weight::change, Pictures::cannot_tell,
         inside({red({{"ks", at(0, 0)}})}, {{"w", "60"}, {"h", "60"}, {"ef", effect("29", "ADBE Gaussian Blur 2")}}),
         "", "ef"},
        // lottie-web draws it all the same.
        {Reason::effects, "switched_off", Weight::change, Pictures::cannot_tell,
         nest({{"ef", effect("29", "ADBE Gaussian Blur 2", "0")}}), "", "ef"},
        {Reason::effects, "unknown_and_switched_off", Weight::harmless, Pictures::equal,
         nest({{"ef", effect("5", "ADBE Glo2", "0")}})},
        {Reason::effects, "controls", Weight::harmless, Pictures::equal,
         nest({{"ef", effect("5", "ADBE Slider Control")}})},
        {Reason::effects,
         "not_copied",
         Weight::change,
         Pictures::cannot_tell,
         nest({{"ef", effect("21", "ADBE Fill")}}),
         "",
         "ef",
         {},
         discard()},
        {Reason::layer_styles, "shadow", Weight::change, Pictures::cannot_tell,
         nest({{"sy", R"([{"ty":1,"nm":"Drop Shadow"}])"}}), "", "sy"},
        {Reason::layer_styles, "stroke_that_no_player_draws", Weight::slight, Pictures::equal,
         nest({{"sy", R"([{"ty":0,"nm":"Stroke"}])"}})},
        {Reason::layer_styles, "shadow_behind_a_stroke", Weight::change, Pictures::cannot_tell,
         nest({{"sy", R"([{"ty":0,"nm":"Stroke"},{"ty":1,"nm":"Drop Shadow"}])"}}), "", "sy"},
        {Reason::layer_styles, "switched_off", Weight::harmless, Pictures::equal,
         nest({{"sy", R"([{"ty":1,"nm":"Drop Shadow","en":0}])"}})},
    };
}

std::vector<Case> switch_cases() {
    return {
        {Reason::hidden, "its_layers_appear", Weight::change, Pictures::differ, nest({{"hd", "true"}}), "", "hd"},
        {Reason::hidden, "so_is_everything_inside", Weight::harmless, Pictures::equal,
         inside({red({{"ks", at(20, 20)}, {"hd", "true"}})}, {{"hd", "true"}})},
        {Reason::collapse, "no_player_looks_at_it", Weight::harmless, Pictures::equal, nest({{"ct", "1"}}), "", "ct"},
        {Reason::motion_blur, "moving", Weight::change, Pictures::cannot_tell,
         nest({{"mb", "true"}, {"ks", moving_transform()}}), "", "mb"},
        {Reason::motion_blur, "still", Weight::harmless, Pictures::equal, nest({{"mb", "true"}})},
    };
}

}  // namespace

std::vector<Case> group_cases() {
    std::vector<Case> cases;
    for (const auto& some :
         {opacity_cases(), mask_cases(), matte_cases(), blend_cases(), clip_cases(), effect_cases(), switch_cases()}) {
        cases.insert(cases.end(), some.begin(), some.end());
    }
    return cases;
}

}  // namespace test
