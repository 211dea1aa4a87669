// Animations in which a remedy is needed, and others, as close as possible, in which it must not or need not be
// applied.
#include "scenes.h"

#include "cases.h"

namespace test {
namespace {

using lottie::looks::Reason;

std::string spun(double from, double to) {
    return transform({{"p", still("[50,50,0]")},
                      {"a", still("[50,50,0]")},
                      {"r", keyed({{0, std::to_string(from)}, {19, std::to_string(to)}})}});
}

std::string carried_by_a_spinning_null(const Members& nest) {
    Nesting nesting;
    nesting.above = {null_layer(30, "carrier", {{"ks", spun(0, 45)}})};
    nesting.nest = nest;
    nesting.nest["parent"] = "30";
    return animation(nesting);
}

std::string with_a_child(const Members& nest) {
    Nesting nesting;
    nesting.nest = nest;
    nesting.below = {solid(19, "child", 20, 20, "#00aa00", {{"ks", at(5, 5)}, {"parent", "10"}}),
                     solid(20, "ground", 100, 100, "#cccccc")};
    return animation(nesting);
}

const std::string kMatte = solid(1, "matte", 30, 30, "#000000", {{"ks", at(25, 25)}, {"td", "1"}});
const std::string kMatted = solid(2, "matted", 60, 60, "#ff0000", {{"ks", at(10, 10)}, {"tt", "1"}});

std::vector<Scene> trim_scenes() {
    return {
        {Reason::trim, "a layer that begins before its nest and ends before it", Outcome::mended,
         animation({.nest = {{"ip", "6"}, {"op", "15"}},
                    .inside = {red({{"ks", at(20, 20)}, {"ip", "-10"}, {"op", "12"}}), blue()}})},
        {Reason::trim, "a layer that the nest never shows", Outcome::mended,
         animation({.nest = {{"op", "10"}}, .inside = {red({{"ks", at(20, 20)}, {"ip", "12"}}), blue()}})},
        {Reason::trim, "layers that are on all the time", Outcome::untouched, animation({})},
    };
}

std::vector<Scene> clock_scenes() {
    // A red square that crosses the picture, fades and grows on the way.
    const std::string handles = R"("i":{"x":0.7,"y":1},"o":{"x":0.3,"y":0},)";
    const std::string straight = R"({"a":1,"k":[{)" + handles + R"("t":2,"s":[10,10,0]},{"t":16,"s":[60,60,0]}]})";
    const std::string curved =
        R"({"a":1,"k":[{)" + handles + R"("t":2,"s":[10,10,0],"to":[20,0,0],"ti":[0,-20,0]},{"t":16,"s":[60,60,0]}]})";
    const std::string grown =
        R"({"a":1,"k":[{"t":0,"s":[50,50,100],"h":1},{"i":{"x":[0.8,0.8,0.8],"y":[1,1,1]},)"
        R"("o":{"x":[0.2,0.2,0.2],"y":[0,0,0]},"t":6,"s":[60,60,100]},{"t":18,"s":[100,90,100]}]})";
    const auto red_along = [&](const std::string& path) {
        return solid(1, "red", 15, 15, "#ff0000",
                     {{"ks", transform({{"p", path}, {"s", grown}, {"o", keyed({{4, "100"}, {14, "40"}})}})}});
    };
    const std::vector<std::string> layers = {red_along(straight), blue({{"ks", at(55, 5)}, {"ip", "3"}, {"op", "14"}})};
    const auto remapped = [&](const std::string& keys) { return inside(layers, {{"tm", keys}}); };
    // Seconds, at 25 frames each; a hair more than whole frames, for players that cut them off.
    const std::string pauses = keyed({{0, "0.00001"}, {5, "0.20001"}, {9, "0.20001"}, {18, "0.56001"}});
    const std::string backward = keyed({{0, "0.60001"}, {15, "0.00001"}});
    const std::string jumps =
        R"({"a":1,"k":[{"t":0,"s":[0.40001],"h":1},{"t":6,"s":[0.20001],"h":1},{"t":12,"s":[0.56001],"h":1}]})";
    const std::string eased = R"({"a":1,"k":[{"i":{"x":[0.6],"y":[1]},"o":{"x":[0.4],"y":[0]},"t":0,"s":[0]},)"
                              R"({"t":19,"s":[0.72]}]})";
    const std::string driven =
        R"x({"a":1,"k":[{"i":{"x":[1],"y":[1]},"o":{"x":[0],"y":[0]},"t":0,"s":[0]},{"t":10,"s":[0.4]}],)x"
        R"x("x":"loopOut('cycle')"})x";
    return {
        {Reason::time_remap, "a clock that pauses", Outcome::mended, remapped(pauses)},
        {Reason::time_remap, "a clock that runs backward", Outcome::mended,
         inside({red_along(straight)}, {{"tm", backward}})},
        {Reason::time_remap, "a clock that jumps and stands still", Outcome::mended, remapped(jumps)},
        {Reason::time_remap, "a clock that speeds up and slows down", Outcome::mended, remapped(eased), false},
        // The renderer is a tenth of a pixel off on curved paths, in one way for the whole and in another for a part.
        {Reason::time_remap, "a clock that pauses on the way along a curve", Outcome::mended,
         inside({red_along(curved)}, {{"tm", pauses}}), false},
        {Reason::time_remap, "a clock that stands still all the time", Outcome::mended, remapped(still("0.40001")),
         false},
        {Reason::time_remap, "a clock driven by an expression", Outcome::stays, remapped(driven), false},
        {Reason::time_remap, "a clock that shows a layer twice", Outcome::stays,
         remapped(keyed({{0, "0.20001"}, {8, "0.64001"}, {16, "0.20001"}}))},
        {Reason::time_remap, "a picture that stands still", Outcome::untouched,
         inside({red(), blue()}, {{"tm", backward}})},
        {Reason::stretch, "twice the speed", Outcome::mended, inside(layers, {{"sr", "0.5"}})},
        {Reason::stretch, "a third of the speed", Outcome::mended, inside(layers, {{"sr", "3"}}), false},
        {Reason::stretch, "a picture that stands still", Outcome::untouched, inside({red(), blue()}, {{"sr", "2"}})},
    };
}

std::string on_a_curve() {
    const std::string path = R"({"a":1,"k":[{"i":{"x":1,"y":1},"o":{"x":0,"y":0},"t":0,"s":[10,10,0],"to":[40,0,0],)"
                             R"("ti":[0,-20,0]},{"t":19,"s":[50,60,0]}]})";
    return solid(1, "red", 9, 9, "#ff0000", {{"ks", transform({{"p", path}})}});
}

std::vector<Scene> place_scenes() {
    return {
        {Reason::parent, "a nest on a spinning null", Outcome::mended, carried_by_a_spinning_null({})},
        {Reason::parent, "a spinning nest on a spinning null", Outcome::mended,
         carried_by_a_spinning_null({{"ks", spun(90, 0)}})},
        {Reason::parent, "a nest on a null that stays at the corner", Outcome::untouched,
         animation({.above = {null_layer(30, "carrier")}, .nest = {{"parent", "30"}}})},
        {Reason::shear, "a squeezed nest with a turned layer", Outcome::mended,
         animation({.nest = {{"ks", transform({{"s", still("[100,50,100]")}})}},
                    .inside = {solid(1, "red", 40, 40, "#ff0000",
                                     {{"ks", transform({{"p", still("[50,20,0]")}, {"r", still("45")}})}})}})},
        {Reason::shear, "a squeezed nest with an upright layer", Outcome::untouched,
         animation({.nest = {{"ks", transform({{"s", still("[100,50,100]")}})}}})},
        {Reason::place, "a turned nest with a layer on a curve", Outcome::mended,
         inside({on_a_curve()}, {{"ks", transform({{"p", still("[50,0,0]")}, {"r", still("30")}})}}), false},
        {Reason::place, "a mirrored nest with a layer on a curve", Outcome::untouched,
         inside({on_a_curve()}, {{"ks", transform({{"p", still("[100,0,0]")}, {"s", still("[-100,100,100]")}})}})},
        {Reason::children, "a layer on a nest that moves", Outcome::mended, with_a_child({{"ks", moving_transform()}})},
        {Reason::children, "a layer on a nest that never moves", Outcome::untouched, with_a_child({})},
    };
}

std::vector<Scene> matte_scenes() {
    return {
        {Reason::matte_split, "a matte right above its layer", Outcome::untouched,
         inside({kMatte, kMatted, solid(3, "blue", 40, 40, "#0000ff")})},
        {Reason::matte_split, "a matte that is named, another layer being between", Outcome::mended,
         inside({kMatte, solid(3, "blue", 40, 40, "#0000ff"),
                 solid(2, "matted", 60, 60, "#ff0000", {{"ks", at(10, 10)}, {"tt", "1"}, {"tp", "1"}})}),
         false},
    };
}

std::string red_that_follows(const std::string& text) {
    return solid(1, "red", 40, 40, "#ff0000", {{"ks", transform({{"p", expression(text, "[20,20,0]")}})}});
}

std::vector<Scene> name_scenes() {
    const auto beside_another_blue = [](const std::string& text) {
        return animation(
            {.above = {solid(30, "blue", 10, 10, "#00ff00")},
             .inside = {red_that_follows(text), solid(2, "blue", 40, 40, "#0000ff", {{"ks", at(40, 40)}})}});
    };
    const auto of_number = [](const std::string& text) {
        return inside({red_that_follows(text), solid(2, "blue", 40, 40, "#0000ff", {{"ks", at(40, 40)}})});
    };
    return {
        {Reason::name_clash, "a name that a layer above has too", Outcome::mended,
         beside_another_blue("thisComp.layer('blue').transform.position"), false},
        {Reason::name_clash, "a name that nobody asks for", Outcome::untouched, beside_another_blue("[20,20]"), false},
        {Reason::layer_reference, "a number that is written out", Outcome::mended,
         of_number("thisComp.layer(2).transform.position"), false},
        {Reason::layer_reference, "a number that is worked out", Outcome::stays,
         of_number("thisComp.layer(1+1).transform.position"), false},
    };
}

// Small enough that no player's rounding shows.
std::string square(int ind, const std::string& name, double x, const Members& members = {}) {
    Members all = members;
    all.try_emplace("ks", at(x, 20));
    return solid(ind, name, 15, 15, "#0000ff", all);
}

std::vector<Scene> opacity_scenes() {
    const std::string faded = transform({{"o", still("50")}});
    const std::string fading = transform({{"o", keyed({{2, "100"}, {12, "0"}})}});
    const std::string itself_faded = transform({{"p", still("[60,20,0]")}, {"o", still("40")}});
    const std::string hold = R"({"a":1,"k":[{"t":0,"s":[100],"h":1},{"t":10,"s":[0],"h":1}]})";
    return {
        {Reason::opacity, "layers that lie apart", Outcome::mended,
         inside({square(1, "left", 20), square(2, "right", 60)}, {{"ks", faded}})},
        {Reason::opacity, "keyframes over layers that lie apart", Outcome::mended,
         inside({square(1, "left", 20), square(2, "right", 60)}, {{"ks", fading}})},
        {Reason::opacity, "keyframes over a layer that is faded itself", Outcome::mended,
         inside({square(1, "left", 20), square(2, "right", 60, {{"ks", itself_faded}})}, {{"ks", fading}})},
        {Reason::opacity, "layers that lie over one another", Outcome::stays,
         inside({square(1, "left", 20), square(2, "right", 25)}, {{"ks", faded}})},
        {Reason::opacity, "layers over one another at different times", Outcome::mended,
         inside({square(1, "left", 20, {{"op", "10"}}), square(2, "right", 25, {{"ip", "10"}})}, {{"ks", faded}})},
        {Reason::opacity, "layers so large that rounding shows", Outcome::stays,
         inside({red({{"ks", at(0, 0)}}), solid(2, "blue", 40, 40, "#0000ff", {{"ks", at(50, 50)}})}, {{"ks", faded}})},
        {Reason::opacity, "one large layer", Outcome::mended, inside({red()}, {{"ks", faded}})},
        {Reason::opacity, "a switch that knows no half measures", Outcome::mended,
         inside({red(), blue()}, {{"ks", transform({{"o", hold}})}})},
    };
}

}  // namespace

std::vector<Scene> all_scenes() {
    std::vector<Scene> all;
    for (auto&& scenes :
         {clock_scenes(), trim_scenes(), place_scenes(), matte_scenes(), name_scenes(), opacity_scenes()})
        all.insert(all.end(), scenes.begin(), scenes.end());
    return all;
}

}  // namespace test
