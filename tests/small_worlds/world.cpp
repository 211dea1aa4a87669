// Small worlds as animations, and ways to enumerate them.
#include "world.h"

#include <cstdlib>

namespace small_worlds {
namespace {

constexpr const char* kEffect =
    R"("ef":[{"ty":5,"nm":"Slider Control","np":3,"mn":"ADBE Slider Control","ix":1,"en":1,)"
    R"("ef":[{"ty":0,"nm":"Slider","mn":"ADBE Slider Control-0001","ix":1,"v":{"a":0,"k":7,"ix":1}}]}],)";

std::string number(int n) {
    return std::to_string(n);
}

// Places that tell every layer of every composition from every other.
std::string position(const Piece& piece, int comp, int index) {
    const std::string x = number(10 * (comp + 1) + index);
    const std::string y = number(100 * (comp + 1) + 7 * index);
    const std::string place = "[" + x + "," + y + ",0]";
    if (!piece.is_keyed) return R"("p":{"a":0,"k":)" + place + "}";
    return R"("p":{"a":1,"k":[{"t":0,"s":)" + place +
           R"(,"i":{"x":0.8,"y":1},"o":{"x":0.2,"y":0}},{"t":40,"s":[9,9,0]}]})";
}

std::string kind_fields(const Piece& piece) {
    switch (piece.kind) {
        case Piece::Kind::nest:
            return R"("ty":0,"refId":"nested_)" + number(piece.source) + R"(","w":100,"h":80,)";
        case Piece::Kind::text:
            return R"("ty":5,"t":{"d":{"k":[]},"p":{},"m":{"g":1,"a":{"a":0,"k":[0,0]}},"a":[]},)";
        case Piece::Kind::solid:
            break;
    }
    return R"("ty":1,"sw":100,"sh":80,"sc":"#123456",)";
}

std::string layer(const Piece& piece, int comp, int index) {
    const bool is_nest = piece.kind == Piece::Kind::nest;
    std::string text = R"({"ddd":)" + number(piece.is_3d ? 1 : 0) + R"(,"ind":)" + number(index + 1) + R"(,"nm":")" +
                       piece.name + R"(",)" + kind_fields(piece);
    if (piece.parent != kNone) text += R"("parent":)" + number(piece.parent + 1) + ",";
    if (piece.has_effect) text += kEffect;
    text += R"("sr":1,"ks":{"o":{"a":0,"k":100},"r":{"a":0,"k":0)";
    if (!piece.expression.empty()) text += R"(,"x":")" + piece.expression + "\"";
    text += "}," + position(piece, comp, index);
    text += is_nest ? R"(,"a":{"a":0,"k":[5,3,0]})" : R"(,"a":{"a":0,"k":[0,0,0]})";
    text += R"(,"s":{"a":0,"k":[100,100,100]}},"ao":0,"ip":)" + number(piece.in) + R"(,"op":)" + number(piece.out) +
            R"(,"st":)" + number(piece.start) + R"(,"bm":0})";
    return text;
}

std::string layers(const Stack& stack, int comp) {
    std::string text = R"("layers":[)";
    for (std::size_t i = 0; i < stack.size(); ++i) {
        text += (i > 0 ? "," : "") + layer(stack[i], comp, static_cast<int>(i));
    }
    return text + "]";
}

bool runs_in_a_circle(const std::vector<int>& parents) {
    for (std::size_t i = 0; i < parents.size(); ++i) {
        int at = static_cast<int>(i);
        for (std::size_t steps = 0; at != kNone && steps <= parents.size(); ++steps) {
            at = parents[static_cast<std::size_t>(at)];
        }
        if (at != kNone) return true;
    }
    return false;
}

}  // namespace

std::string nested_name(int number) {
    return "Nested " + std::to_string(number);
}

std::string World::animation() const {
    std::string text = R"({"v":"5.7.4","fr":)" + number(kFramesPerSecond) + R"(,"ip":0,"op":)" + number(kLength) +
                       R"(,"w":100,"h":80,"nm":"Main","ddd":0,"assets":[)";
    for (std::size_t i = 0; i < nested.size(); ++i) {
        const int n = static_cast<int>(i);
        text += (i > 0 ? "," : "") + (R"({"id":"nested_)" + number(n)) + R"(","nm":")" + nested_name(n) + R"(",)" +
                layers(nested[i], n + 1) + "}";
    }
    return text + "]," + layers(main, 0) + R"(,"markers":[]})";
}

Stack solids(int count) {
    Stack stack;
    for (int i = 0; i < count; ++i) stack.push_back({.name = std::string(1, static_cast<char>('A' + i))});
    return stack;
}

std::vector<std::vector<int>> all_parent_lists(int count) {
    std::vector<std::vector<int>> lists;
    std::vector<int> list(static_cast<std::size_t>(count), kNone);
    for (;;) {
        if (!runs_in_a_circle(list)) lists.push_back(list);
        std::size_t digit = 0;  // counts on, the first entry fastest
        while (digit < list.size() && ++list[digit] == count) list[digit++] = kNone;
        if (digit == list.size()) return lists;
    }
}

void set_parents(Stack& stack, const std::vector<int>& parents) {
    for (std::size_t i = 0; i < stack.size(); ++i) stack[i].parent = parents.at(i);
}

std::string shown(const std::vector<int>& numbers) {
    std::string text = "(";
    for (const int n : numbers) text += (text.size() > 1 ? "," : "") + number(n);
    return text + ")";
}

bool is_full_run() {
    const char* wish = std::getenv("EXFLATE_WORLDS");
    return wish != nullptr && std::string(wish) == "full";
}

}  // namespace small_worlds
