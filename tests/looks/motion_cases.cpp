// Cases about depth, clocks, places and parents.
#include "cases.h"

namespace test {
namespace {

// The same animation with another end.
std::string with_end(int frame, std::string animation) {
    const std::string end = R"("ip":0,"op":20)";
    return animation.replace(animation.find(end), end.size(), R"("ip":0,"op":)" + std::to_string(frame));
}

std::vector<Case> depth_cases() {
    const auto spatial = [](const std::string& y) {
        return transform({{"rx", still("0")}, {"ry", still(y)}, {"rz", still("0")}, {"or", still("[0,0,0]")}});
    };
    const std::string along_a_curve =
        R"({"a":1,"k":[{"i":{"x":1,"y":1},"o":{"x":0,"y":0},"t":0,"s":[0,0,0],"to":[20,0,0],"ti":[0,-20,0]},)"
        R"({"t":19,"s":[30,30,0]}]})";
    return {
        {Reason::three_d, "turned", Weight::change, Pictures::cannot_tell, nest({{"ddd", "1"}, {"ks", spatial("45")}}),
         "", "ddd"},
        {Reason::three_d, "stays_in_its_plane", Weight::harmless, Pictures::equal,
         nest({{"ddd", "1"}, {"ks", spatial("0")}})},
        {Reason::three_d, "a_layer_inside_is_turned", Weight::change, Pictures::cannot_tell,
         inside({red({{"ddd", "1"}, {"ks", spatial("45")}}), blue()}), "red", "ddd"},
        {Reason::camera, "sees_a_turned_layer", Weight::change, Pictures::cannot_tell,
         inside({camera(1, "lens"), solid(2, "blue", 40, 40, "#0000ff", {{"ddd", "1"}, {"ks", spatial("45")}})}),
         "lens", "ty"},
        {Reason::camera, "sees_flat_layers_only", Weight::harmless, Pictures::equal,
         inside({camera(1, "lens"), blue()})},
        {Reason::auto_orient, "turns_along_its_path", Weight::change, Pictures::differ,
         nest({{"ao", "1"}, {"ks", transform({{"p", along_a_curve}})}}), "blue", "ks", 1},
        {Reason::auto_orient, "does_not_move", Weight::harmless, Pictures::equal, nest({{"ao", "1"}})},
    };
}

std::vector<Case> clock_cases() {
    const auto moving = red({{"ks", moving_transform()}, {"ip", "-50"}, {"op", "100"}});
    const auto standing = red({{"ks", at(20, 20)}, {"ip", "-50"}, {"op", "100"}});
    Nesting own_rate;
    own_rate.inside = {moving};
    own_rate.composition = {{"fr", "5"}};
    Nesting kept_rate = own_rate;
    kept_rate.composition = {{"fr", "5"}, {"pfr", "1"}};
    const std::string separated =
        R"({"s":true,"x":)" + keyed({{0, "20"}, {19, "60"}}) + R"(,"y":)" + keyed({{5, "50"}, {10, "30"}}) + "}";
    const std::string identity = keyed({{0, "0"}, {20, "0.8"}});
    return {
        {Reason::time_remap, "backwards", Weight::change, Pictures::differ,
         inside({moving}, {{"tm", keyed({{0, "0.76"}, {19, "0"}})}}), "red", "tm", 0},
        {Reason::time_remap, "identity", Weight::slight, Pictures::cannot_tell, inside({moving}, {{"tm", identity}})},
        {Reason::time_remap, "of_a_standing_picture", Weight::harmless, Pictures::equal,
         inside({standing}, {{"tm", keyed({{0, "0.76"}, {19, "0"}})}})},
        {Reason::stretch, "half_the_speed", Weight::change, Pictures::differ, inside({moving}, {{"sr", "2"}}), "red",
         "sr", 1},
        {Reason::stretch, "of_a_standing_picture", Weight::harmless, Pictures::equal,
         inside({standing}, {{"sr", "2"}})},
        {Reason::frame_rate, "kept", Weight::change, Pictures::cannot_tell, animation(kept_rate), "", "fr"},
        {Reason::frame_rate, "passed_over_by_players", Weight::harmless, Pictures::equal, animation(own_rate)},
        {Reason::start, "not_copied", Weight::change, Pictures::differ, inside({moving}, {{"st", "5"}}), "red", "st", 0,
         discard()},
        {Reason::start, "copied", std::nullopt, Pictures::equal, inside({moving}, {{"st", "5"}})},
        {Reason::start, "separated_dimensions_that_become_one", std::nullopt, Pictures::equal,
         inside({red({{"ks", transform({{"p", separated}})}})}, {{"ks", at(10, 5)}})},
        {Reason::fractional_start, "of_a_moving_picture", Weight::slight, Pictures::cannot_tell,
         inside({moving}, {{"st", "2.5"}}), "", "st"},
        {Reason::fractional_start, "of_a_standing_picture", Weight::harmless, Pictures::equal,
         inside({standing}, {{"st", "2.5"}})},
        {Reason::trim, "a_late_layer_is_cut_as_if_it_were_early", Weight::change, Pictures::differ,
         inside({red({{"ks", at(20, 20)}, {"ip", "5"}})}, {{"st", "10"}, {"ip", "10"}}), "red", "ip", 10},
        {Reason::trim, "a_few_frames_of_very_many", Weight::change, Pictures::differ,
         with_end(6000, inside({red({{"ks", at(20, 20)}, {"ip", "5"}, {"op", "9000"}})},
                               {{"st", "3001"}, {"ip", "3001"}, {"op", "6000"}})),
         "red", "ip", 3001},
        {Reason::trim, "late_but_so_faded_that_nobody_sees_it", Weight::slight, Pictures::equal,
         inside({red({{"ks", transform({{"o", still("0.1")}})}, {"ip", "5"}})}, {{"st", "10"}, {"ip", "10"}})},
        {Reason::trim, "late_and_faded_but_for_an_expression", Weight::change, Pictures::cannot_tell,
         inside({red({{"ks", transform({{"o", expression("100")}})}, {"ip", "5"}})}, {{"st", "10"}, {"ip", "10"}}),
         "red", "ip", 10},
        {Reason::trim, "at_both_ends", std::nullopt, Pictures::equal,
         inside({red({{"ks", at(20, 20)}, {"ip", "0"}, {"op", "20"}})}, {{"ip", "5"}, {"op", "15"}})},
    };
}

std::vector<Case> place_cases() {
    std::vector<Case> cases;
    Nesting nesting;
    nesting.below = {null_layer(19, "carrier", {{"ks", at(30, 0)}}), solid(20, "ground", 100, 100, "#cccccc")};
    nesting.nest = {{"parent", "19"}};
    cases.push_back(
        {Reason::parent, "elsewhere", Weight::change, Pictures::differ, animation(nesting), "red", "ks", 0});
    nesting.below[0] = null_layer(19, "carrier");
    cases.push_back({Reason::parent, "where_it_started", Weight::harmless, Pictures::equal, animation(nesting)});

    const std::string led_away = transform({{"p", expression("[time * 20, 0]", "[0,0,0]")}});
    nesting.below[0] = null_layer(19, "carrier", {{"ks", led_away}});
    cases.push_back({Reason::parent, "where_it_started_and_led_away_by_an_expression", Weight::change,
                     Pictures::cannot_tell, animation(nesting), "red", "ks", 0});
    cases.push_back(
        {Reason::place, "on_a_layer_below_that_an_expression_leads_away", Weight::change, Pictures::cannot_tell,
         inside({red({{"parent", "3"}}), blue(), null_layer(3, "carrier", {{"ks", led_away}})}), "red", "ks", 0});

    Nesting child;
    child.nest = {{"ks", moving_transform()}};
    child.above = {solid(1, "child", 20, 20, "#00ff00", {{"parent", "10"}, {"ks", at(20, 20)}})};
    cases.push_back(
        {Reason::children, "carried_along", Weight::change, Pictures::differ, animation(child), "child", "parent", 1});
    child.nest = {};
    cases.push_back({Reason::children, "of_a_nest_that_stands", Weight::harmless, Pictures::equal, animation(child),
                     "child", "parent"});

    const std::string turned = transform({{"p", still("[40,40,0]")}, {"r", still("45")}, {"a", still("[20,20,0]")}});
    const Members uneven = {{"ks", transform({{"s", still("[100,40,100]")}})}};
    cases.push_back({Reason::shear, "of_a_turned_layer", Weight::change, Pictures::differ,
                     inside({red({{"ks", turned}})}, uneven), "red", "ks", 0});
    cases.push_back(
        {Reason::shear, "of_an_upright_layer", Weight::harmless, Pictures::equal, inside({red()}, uneven), "", "ks.s"});
    cases.push_back({Reason::place, "not_copied", Weight::change, Pictures::differ, nest({{"ks", at(10, 20)}}), "red",
                     "ks", 0, discard()});
    cases.push_back({Reason::place, "copied", std::nullopt, Pictures::equal, nest({{"ks", at(10, 20)}})});

    const auto placed_by = [](const std::string& text) {
        return inside({red({{"ks", transform({{"p", expression(text, "[20,20,0]")}})}}), blue()}, {{"ks", at(10, 20)}});
    };
    cases.push_back({Reason::place, "by_numbers_of_an_expression", Weight::change, Pictures::cannot_tell,
                     placed_by("[20, 20 + time]"), "red", "ks.p"});
    cases.push_back(
        {Reason::place, "by_the_value_behind_an_expression", std::nullopt, Pictures::equal, placed_by("value")});
    cases.push_back({Reason::place, "by_the_value_and_more", Weight::change, Pictures::cannot_tell,
                     placed_by("[value[0], 20]"), "red", "ks.p"});
    cases.push_back({Reason::place, "by_a_point_of_the_composition", std::nullopt, Pictures::cannot_tell,
                     placed_by("$bm_rt = thisComp.layer('blue').toComp([5, 5]);")});
    cases.push_back({Reason::place, "by_a_point_of_the_composition_around", Weight::change, Pictures::cannot_tell,
                     placed_by("$bm_rt = comp('Main').layer('ground').transform.position;"), "red", "ks.p"});
    cases.push_back({Reason::place, "by_a_point_of_a_content", Weight::change, Pictures::cannot_tell,
                     placed_by("$bm_rt = thisComp.layer('blue').content('a').transform.position;"), "red", "ks.p"});
    const auto scaled = [](const std::string& scale, const Members& ks) {
        const std::string around =
            transform({{"p", still("[20,20,0]")}, {"a", still("[20,20,0]")}, {"s", still(scale)}});
        Members all = ks;
        all.try_emplace("p", still("[20,20,0]"));
        return inside({red({{"ks", transform(all)}})}, {{"ks", around}});
    };
    cases.push_back({Reason::place, "by_an_expression_from_where_the_nest_leaves_it", Weight::change,
                     Pictures::cannot_tell, scaled("[50,50,100]", {{"p", expression("[20 + time, 20]", "[20,20,0]")}}),
                     "red", "ks.p"});
    cases.push_back({Reason::place, "turned_by_an_expression_in_a_nest_that_grows_alike", std::nullopt,
                     Pictures::cannot_tell, scaled("[150,150,100]", {{"r", expression("value")}})});
    const Members turning = {{"r", expression("time * 9")}};
    cases.push_back({Reason::place, "turned_by_an_expression_in_a_nest_that_is_squeezed", Weight::change,
                     Pictures::cannot_tell, scaled("[150,140,100]", turning), "red", "ks.r"});
    cases.push_back({Reason::place, "turned_by_an_expression_in_a_nest_that_is_mirrored", Weight::change,
                     Pictures::cannot_tell, scaled("[-100,100,100]", turning), "red", "ks.r"});
    const auto turned_by = [](const std::string& text, const Members& nest) {
        return inside({red({{"ks", transform({{"r", expression(text)}})}}), blue()}, nest);
    };
    const Members moved = {{"ks", at(10, 20)}};
    const std::string position = "thisComp.layer('blue').position[0]";
    const std::string point = "thisComp.layer('blue').toComp([0, 0])[0]";
    cases.push_back({Reason::place, "of_which_an_expression_reads_a_position", Weight::change, Pictures::cannot_tell,
                     turned_by(position, moved), "red", "ks.r"});
    cases.push_back({Reason::place, "of_which_an_expression_reads_a_point", Weight::change, Pictures::cannot_tell,
                     turned_by(point, moved), "red", "ks.r"});
    cases.push_back({Reason::place, "that_stays_and_of_which_an_expression_reads_a_position", std::nullopt,
                     Pictures::cannot_tell, turned_by(position, {})});
    cases.push_back({Reason::place, "that_stays_and_of_which_an_expression_reads_a_point", std::nullopt,
                     Pictures::cannot_tell, turned_by(point, {})});

    Nesting links;
    links.above = {solid(1, "rider", 20, 20, "#00ff00", {{"parent", "20"}, {"ks", at(20, 20)}})};
    links.below = {solid(20, "ground", 100, 100, "#cccccc", {{"ks", moving_transform()}})};
    cases.push_back({Reason::lost_link, "of_a_layer_above", Weight::change, Pictures::differ, animation(links), "rider",
                     "parent", 1});
    links.below = {solid(20, "ground", 100, 100, "#cccccc", {{"ks", led_away}})};
    cases.push_back({Reason::lost_link, "of_a_layer_above_that_an_expression_leads_away", Weight::change,
                     Pictures::cannot_tell, animation(links), "rider", "parent", 0});
    const std::string nudged = transform({{"p", keyed({{0, "0,0,0"}, {10, "0.2,0,0"}})}});
    links.below = {solid(20, "ground", 100, 100, "#cccccc", {{"ks", nudged}})};
    links.above = {solid(1, "rider", 60, 60, "#00ff00", {{"parent", "20"}, {"ks", at(20, 20)}})};
    cases.push_back({Reason::lost_link, "by_a_hair_along_a_long_edge", Weight::change, Pictures::differ,
                     animation(links), "rider", "parent"});
    links.above = {solid(1, "rider", 2, 2, "#00ff00", {{"parent", "20"}, {"ks", at(20, 20)}})};
    cases.push_back({Reason::lost_link, "by_a_hair_along_a_short_edge", Weight::slight, Pictures::equal,
                     animation(links), "rider", "parent"});
    links.above = {solid(1, "rider", 20, 20, "#00ff00", {{"parent", "20"}, {"ks", at(20, 20)}})};
    links.below = {solid(20, "ground", 100, 100, "#cccccc")};
    cases.push_back({Reason::lost_link, "of_a_layer_above_that_stands", Weight::harmless, Pictures::equal,
                     animation(links), "rider", "parent"});
    return cases;
}

}  // namespace

std::vector<Case> motion_cases() {
    std::vector<Case> cases;
    for (const auto& some : {depth_cases(), clock_cases(), place_cases()}) {
        cases.insert(cases.end(), some.begin(), some.end());
    }
    return cases;
}

}  // namespace test
