// Cases about expressions, names and the source.
#include <tuple>

#include "cases.h"

namespace test {
namespace {

std::string spinning(const std::string& text) {
    return transform({{"r", expression(text)}});
}

std::string layer_control(const std::string& number) {
    return R"([{"ty":5,"nm":"Layer","mn":"ADBE Layer Control","en":1,"ef":[)"
           R"({"ty":10,"nm":"Layer","mn":"ADBE Layer Control-0001","v":{"a":0,"k":)" +
           number + "}}]}]";
}

// The red layer's effect means the blue one.
std::string controlled(const std::string& text) {
    return inside({red({{"ks", spinning(text)}, {"ef", layer_control("2")}}), blue()});
}

std::vector<Case> naming_cases() {
    const auto with = [](const std::string& text, const Members& nest = {}) {
        return inside({red({{"ks", spinning(text)}}), blue()}, nest);
    };
    const Members smaller = {{"w", "80"}, {"h", "100"}};
    std::vector<Case> cases = {
        {Reason::transform_expression, "of_the_nest", Weight::change, Pictures::cannot_tell,
         nest({{"ks", spinning("time * 10")}}), "", "ks"},
        {Reason::transform_expression, "never_seen", Weight::harmless, Pictures::equal,
         nest({{"ks", spinning("time * 10")}, {"ip", "30"}, {"op", "40"}})},
        {Reason::time_in_expression, "another_time", Weight::change, Pictures::cannot_tell,
         with("time * 10", {{"st", "5"}}), "red", "ks.r"},
        {Reason::time_in_expression, "the_same_time", Weight::harmless, Pictures::equal, with("time * 10")},
        {Reason::time_in_expression, "another_beginning", Weight::change, Pictures::cannot_tell,
         with("inPoint * 10", {{"ip", "5"}}), "red", "ks.r"},
        {Reason::time_in_expression, "the_same_beginning", std::nullopt, Pictures::cannot_tell, with("inPoint * 10")},
        {Reason::composition_in_expression, "another_width", Weight::change, Pictures::cannot_tell,
         with("thisComp.width", smaller), "red", "ks.r"},
        {Reason::composition_in_expression, "the_same_height", Weight::harmless, Pictures::cannot_tell,
         with("thisComp.height", smaller), "red", "ks.r"},
        {Reason::index_in_expression, "another_number", Weight::change, Pictures::cannot_tell, with("index * 10"),
         "red", "ks.r"},
        {Reason::index_in_expression, "another_number_of_another_layer", Weight::change, Pictures::cannot_tell,
         with("thisComp.layer('blue').index * 10"), "red", "ks.r"},
        {Reason::index_in_expression, "of_a_keyframe", std::nullopt, Pictures::cannot_tell,
         with("nearestKey(0).index * 10")},
        {Reason::layer_reference, "by_number", Weight::change, Pictures::cannot_tell,
         with("thisComp.layer(2).transform.rotation"), "red", "ks.r"},
        {Reason::layer_reference, "by_number_in_the_composition_around", Weight::change, Pictures::cannot_tell,
         with("comp('Main').layer(2).transform.rotation"), "red", "ks.r"},
        {Reason::layer_reference, "by_number_in_a_composition_that_no_player_finds", std::nullopt, Pictures::equal,
         with("comp('Elsewhere').layer(1).transform.rotation")},
        {Reason::layer_reference, "by_a_name_in_the_composition_by_another_name", Weight::change, Pictures::cannot_tell,
         with("var c = thisComp; c.layer('blue').transform.rotation"), "red", "ks.r"},
        {Reason::layer_reference, "by_an_effect_that_an_expression_reads", Weight::change, Pictures::cannot_tell,
         controlled("effect('Layer')(1).transform.rotation"), "red", "ef"},
        {Reason::layer_reference, "by_an_effect_that_nobody_reads", std::nullopt, Pictures::equal, controlled("value")},
        {Reason::layer_reference, "by_a_name_that_comes_along", std::nullopt, Pictures::equal,
         with("thisComp.layer('blue').transform.rotation")},
        {Reason::composition_reference, "of_the_nest", Weight::change, Pictures::cannot_tell,
         with("comp('Nest').layer('blue').transform.rotation"), "red", "ks.r"},
        {Reason::composition_reference, "that_no_player_finds", Weight::harmless, Pictures::equal,
         with("comp('Elsewhere').layer('blue').transform.rotation"), "red", "ks.r"},
        {Reason::random, "wiggles", Weight::change, Pictures::cannot_tell, with("wiggle(2, 10)"), "red", "ks.r"},
        {Reason::random, "none", std::nullopt, Pictures::equal, with("value")},
    };
    Nesting clash;
    clash.above = {solid(3, "blue", 10, 10, "#00ff00")};
    clash.inside = {red({{"ks", spinning("thisComp.layer('blue').transform.rotation")}}), blue()};
    cases.push_back({Reason::name_clash, "a_layer_above_has_the_name", Weight::change, Pictures::cannot_tell,
                     animation(clash), "red", "ks.r"});
    clash.above = {};
    const std::string asks_for_blue = spinning("var c = thisComp; c.layer('blue').transform.rotation");
    clash.inside = {red(), blue()};
    clash.below = {solid(20, "asker", 100, 100, "#cccccc", {{"ks", asks_for_blue}})};
    cases.push_back({Reason::layer_reference, "from_beside_by_a_name_that_a_copy_has_now", Weight::change,
                     Pictures::cannot_tell, animation(clash), "asker", "ks.r"});
    clash.above = {solid(3, "blue", 10, 10, "#00ff00")};
    cases.push_back({Reason::layer_reference, "from_beside_by_a_name_that_the_same_layer_has_first", std::nullopt,
                     Pictures::cannot_tell, animation(clash)});
    clash.above = {};
    clash.inside = {red({{"ks", spinning("thisComp.layer('blue').transform.rotation")}}), blue()};
    clash.below = {solid(20, "blue", 100, 100, "#cccccc")};
    cases.push_back(
        {Reason::name_clash, "only_a_layer_below_has_the_name", std::nullopt, Pictures::equal, animation(clash)});
    const std::string asks_around = "comp('Main').layer('turner').transform.rotation";
    for (const auto& [reason, name, text] :
         {std::tuple(Reason::composition_in_expression, "how_many_layers_it_has_from_beside", "thisComp.numLayers"),
          std::tuple(Reason::composition_in_expression, "how_many_layers_it_has_by_another_name",
                     "var c = thisComp; c.numLayers"),
          std::tuple(Reason::layer_reference, "from_beside_by_a_number_that_is_worked_out",
                     "thisComp.layer(index - 10).transform.rotation"),
          std::tuple(Reason::layer_reference, "from_beside_by_a_name_that_is_put_together",
                     "thisComp.layer('Ne' + 'st').transform.rotation"),
          std::tuple(Reason::layer_reference, "from_beside_by_a_function_that_gives_layers",
                     "var l = thisComp.layer; l(10).transform.rotation")}) {
        clash.below = {solid(20, "asker", 100, 100, "#cccccc", {{"ks", spinning(text)}})};
        cases.push_back({reason, name, Weight::change, Pictures::cannot_tell, animation(clash), "asker", "ks.r"});
    }
    clash.below = {solid(20, "asker", 100, 100, "#cccccc",
                         {{"ks", spinning("effect('Layer')(1).transform.rotation")}, {"ef", layer_control("10")}})};
    cases.push_back({Reason::layer_reference, "to_the_nest_by_an_effect_beside", Weight::change, Pictures::cannot_tell,
                     animation(clash), "asker", "ef"});
    clash.below = {solid(20, "asker", 100, 100, "#cccccc",
                         {{"ks", spinning("effect('Layer')(1).transform.rotation")}, {"ef", layer_control("20")}})};
    cases.push_back({Reason::layer_reference, "to_a_layer_that_stays_by_an_effect_beside", std::nullopt,
                     Pictures::cannot_tell, animation(clash)});
    Nesting hung;
    for (const char* text : {"hasParent ? 30 : 0", "toComp([0, 0])[0]"}) {
        hung.below = {solid(20, "asker", 100, 100, "#cccccc", {{"parent", "10"}, {"ks", spinning(text)}})};
        cases.push_back({Reason::layer_reference,
                         std::string_view(text).starts_with("has") ? "to_the_parent_that_was_the_nest"
                                                                   : "to_where_a_layer_lies_that_hung_on_the_nest",
                         Weight::change, Pictures::cannot_tell, animation(hung), "asker", "ks.r"});
    }
    Nesting running;
    running.above = {null_layer(30, "asker", {{"ks", spinning("comp('Inner').layer('red').transform.rotation")}})};
    running.nest = {{"ip", "5"}, {"xt", "1"}};
    running.inside = {nest_layer(1, "Inner", "inner", {{"w", "100"}, {"h", "100"}})};
    running.assets = {R"({"id":"inner","layers":[)" + red() + "]}"};
    cases.push_back({Reason::composition_reference, "to_a_nest_inside_of_one_that_runs_while_it_is_off", Weight::change,
                     Pictures::cannot_tell, animation(running), "Nest"});
    running.nest = {{"xt", "1"}};
    cases.push_back({Reason::composition_reference, "to_a_nest_inside_of_one_that_is_always_on", Weight::harmless,
                     Pictures::cannot_tell, animation(running)});
    running.nest = {{"st", "5"}};
    running.inside = {nest_layer(1, "Inner", "inner", {{"w", "100"}, {"h", "100"}, {"xt", "1"}})};
    cases.push_back({Reason::composition_reference, "to_a_nest_that_runs_while_it_is_off_on_another_clock",
                     Weight::change, Pictures::cannot_tell, animation(running), "Nest"});
    Nesting around;
    around.below = {solid(20, "turner", 100, 100, "#cccccc")};
    around.inside = {red({{"ks", spinning(asks_around)}}), blue()};
    cases.push_back({Reason::name_clash, "in_the_composition_around_only_a_layer_that_stayed_has_the_name",
                     std::nullopt, Pictures::equal, animation(around)});
    around.inside = {red({{"ks", spinning(asks_around)}}), solid(2, "turner", 10, 10, "#00ff00")};
    cases.push_back({Reason::name_clash, "in_the_composition_around_a_copy_has_the_name_first", Weight::change,
                     Pictures::cannot_tell, animation(around), "turner"});
    cases.push_back({Reason::layer_reference, "to_the_nest_in_the_composition_around", Weight::change,
                     Pictures::cannot_tell, with("comp('Main').layer('Nest').transform.rotation"), "Nest"});
    const std::string long_name = "a layer with a name of more than 31 bytes";
    cases.push_back(
        {Reason::name_clash,
         "two_names_become_one_when_they_are_cut",
         Weight::change,
         Pictures::cannot_tell,
         inside({red({{"ks", spinning("thisComp.layer('" + long_name + "').transform.rotation")}}),
                 solid(3, long_name + ", the first", 10, 10, "#00ff00"), solid(2, long_name, 10, 10, "#0000ff")}),
         "red",
         "ks.r",
         {},
         prefix("new")});
    cases.push_back({Reason::layer_reference,
                     "by_a_name_that_is_read_and_gets_longer",
                     Weight::change,
                     Pictures::cannot_tell,
                     inside({red({{"ks", spinning("name.length")}}), solid(2, long_name, 10, 10, "#0000ff")}),
                     "red",
                     "ks.r",
                     {},
                     prefix("new")});
    cases.push_back({Reason::long_name, "nobody_asks_for_it", Weight::harmless, Pictures::equal,
                     inside({red(), solid(2, long_name, 40, 40, "#0000ff")})});
    cases.push_back({Reason::quoted_name, "nobody_asks_for_it", Weight::harmless, Pictures::equal,
                     inside({red(), solid(2, R"(the \"new\" one)", 40, 40, "#0000ff")})});
    return cases;
}

std::vector<Case> source_cases() {
    Nesting twice;
    twice.below = {nest_layer(15, "Twin", "inside"), solid(20, "ground", 100, 100, "#cccccc")};
    return {
        {Reason::shared_source, "another_nest", Weight::harmless, Pictures::equal, animation(twice), "", "refId"},
        {Reason::shared_source, "none", std::nullopt, Pictures::equal, nest({})},
        {Reason::size, "of_every_file", Weight::harmless, Pictures::equal, nest({})},
    };
}

}  // namespace

std::vector<Case> expression_cases() {
    std::vector<Case> cases;
    for (const auto& some : {naming_cases(), source_cases()}) {
        cases.insert(cases.end(), some.begin(), some.end());
    }
    return cases;
}

}  // namespace test
