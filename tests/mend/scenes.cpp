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

std::string mask(const std::string& path, const std::string& mode = "a", const std::string& opacity = still("100"),
                 const std::string& inverted = "false") {
    return R"({"inv":)" + inverted + R"(,"mode":")" + mode + R"(","pt":)" + path + R"(,"o":)" + opacity +
           R"(,"x":{"a":0,"k":0},"nm":"Mask"})";
}

std::string path(const std::string& points, const std::string& handles = "[[0,0],[0,0],[0,0]]") {
    return R"({"i":)" + handles + R"(,"o":)" + handles + R"(,"v":)" + points + R"(,"c":true})";
}

const std::string kTriangle = path("[[20,20],[80,30],[40,80]]");
const std::string kSlimTriangle = path("[[30,20],[80,50],[30,60]]");

Members masked(const std::string& masks, const Members& members = {}) {
    Members all = members;
    all["hasMask"] = "true";
    all["masksProperties"] = "[" + masks + "]";
    return all;
}

std::vector<Scene> mask_scenes() {
    const std::string triangle = mask(still(kTriangle));
    const std::string growing =
        mask(R"({"a":1,"k":[{"t":0,"s":[)" + kTriangle + R"(],"i":{"x":0.6,"y":1},"o":{"x":0.3,"y":0}},{"t":15,"s":[)" +
             kSlimTriangle + "]}]}");
    const auto turned = [](const std::string& degrees) {
        return solid(1, "red", 60, 60, "#ff0000",
                     {{"ks", transform({{"p", still("[50,10,0]")}, {"r", degrees}, {"s", still("[80,120,100]")}})}});
    };
    const std::string spinning = keyed({{0, "0"}, {19, "90"}});
    const std::string narrow = mask(still(path("[[0,0],[40,0],[10,40]]")));
    const std::string own_mask = solid(1, "red", 60, 60, "#ff0000", masked(narrow, {{"ks", at(20, 20)}}));
    const std::string wide = solid(2, "matted", 100, 100, "#ff0000", {{"tt", "1"}});
    return {
        {Reason::mask, "over two layers", Outcome::mended, inside({red(), blue()}, masked(triangle))},
        {Reason::mask, "that moves over a layer that moves", Outcome::mended,
         inside({red({{"ks", moving_transform()}})}, masked(growing))},
        {Reason::mask, "over a turned layer", Outcome::mended, inside({turned(still("20"))}, masked(growing))},
        {Reason::mask, "over a turning layer", Outcome::mended, inside({turned(spinning)}, masked(triangle))},
        {Reason::mask, "of a nest that turns and hangs on a layer", Outcome::mended,
         carried_by_a_spinning_null(masked(growing, {{"ks", spun(90, 0)}}))},
        {Reason::mask, "over a layer with a matte", Outcome::mended, inside({kMatte, wide}, masked(triangle))},
        {Reason::mask, "over a layer with a mask", Outcome::mended, inside({own_mask, blue()}, masked(triangle))},
        {Reason::mask, "two that join over a layer with a mask", Outcome::stays,
         inside({own_mask}, masked(triangle + "," + mask(still(kSlimTriangle))))},
        {Reason::mask, "two that join over layers without", Outcome::mended,
         inside({red(), blue()}, masked(triangle + "," + mask(still(kSlimTriangle))))},
        {Reason::mask, "half opaque over layers that meet", Outcome::stays,
         inside({red(), blue()}, masked(mask(still(kTriangle), "a", still("50"))))},
        {Reason::mask, "half opaque over one layer", Outcome::mended,
         inside({red()}, masked(mask(still(kTriangle), "a", still("50"))))},
        {Reason::mask, "that is inverted", Outcome::stays,
         inside({red(), blue()}, masked(mask(still(kTriangle), "a", still("100"), "true")))},
        {Reason::mask, "around the whole frame", Outcome::untouched,
         inside({red(), blue()},
                masked(mask(still(path("[[0,0],[100,0],[100,100],[0,100]]", "[[0,0],[0,0],[0,0],[0,0]]")))))},
        {Reason::mask, "over a layer that an expression moves", Outcome::stays,
         inside({solid(1, "red", 40, 40, "#ff0000", {{"ks", transform({{"p", expression("[20,20]", "[20,20,0]")}})}})},
                masked(triangle))},
    };
}

std::vector<Scene> clip_scenes() {
    const Members small = {{"w", "50"}, {"h", "50"}, {"ks", transform({{"p", still("[10,10,0]")}})}};
    Members small_and_masked = masked(mask(still(kTriangle)), small);
    return {
        {Reason::clip, "layers that reach over the edge", Outcome::mended, inside({red(), blue()}, small)},
        {Reason::clip, "a layer that moves over the edge", Outcome::mended,
         inside({red({{"ks", moving_transform()}}), square(2, "still", 5)}, small)},
        {Reason::clip, "layers that end within it", Outcome::untouched,
         inside({square(1, "left", 5), square(2, "right", 25)}, small)},
        {Reason::clip, "with a mask that reaches over the edge", Outcome::mended,
         inside({red({{"ks", at(10, 10)}}), blue()}, small_and_masked)},
        {Reason::clip, "a layer that an expression moves over the edge", Outcome::stays,
         inside({solid(1, "red", 40, 40, "#ff0000", {{"ks", transform({{"p", expression("[20,20]", "[20,20,0]")}})}})},
                small)},
    };
}

}  // namespace

std::vector<Scene> all_scenes() {
    std::vector<Scene> all;
    for (auto&& scenes :
         {trim_scenes(), place_scenes(), matte_scenes(), name_scenes(), opacity_scenes(), mask_scenes(), clip_scenes()})
        all.insert(all.end(), scenes.begin(), scenes.end());
    return all;
}

}  // namespace test
