// Short animations whose look is judged.
#include "animations.h"

#include <cmath>
#include <numbers>
#include <sstream>

namespace test {
namespace {

std::string joined(const std::vector<std::string>& texts) {
    std::string result;
    for (const std::string& text : texts) result += (result.empty() ? "" : ",") + text;
    return result;
}

// In the order in which players want them: what decides how others are read comes first.
std::string object(const Members& members, const std::vector<std::string>& order) {
    std::string text;
    const auto add = [&text](const std::string& key, const std::string& value) {
        if (!value.empty()) text += (text.empty() ? "\"" : ",\"") + key + "\":" + value;
    };
    Members rest = members;
    for (const std::string& key : order) {
        if (const auto found = rest.find(key); found != rest.end()) {
            add(key, found->second);
            rest.erase(found);
        }
    }
    for (const auto& [key, value] : rest) add(key, value);
    return "{" + text + "}";
}

std::string layer(int ind, const std::string& name, int type, const Members& own, const Members& members) {
    Members all = {{"ddd", "0"},
                   {"ind", std::to_string(ind)},
                   {"ty", std::to_string(type)},
                   {"nm", "\"" + name + "\""},
                   {"sr", "1"},
                   {"ks", transform()},
                   {"ao", "0"},
                   {"ip", "0"},
                   {"op", "20"},
                   {"st", "0"},
                   {"bm", "0"}};
    for (const auto& [key, value] : own) all[key] = value;
    for (const auto& [key, value] : members) all[key] = value;
    return object(all, {"ddd", "ind", "ty", "nm",      "parent",
                        "tt",  "tp",  "td", "hd",      "refId",
                        "sr",  "ks",  "ao", "hasMask", "masksProperties",
                        "ef",  "sy",  "tm", "sw",      "sh",
                        "sc",  "w",   "h",  "shapes",  "t",
                        "ip",  "op",  "st"});
}

std::string document(const std::vector<std::string>& assets, const std::vector<std::string>& layers) {
    return R"({"v":"5.7.4","fr":25,"ip":0,"op":20,"w":100,"h":100,"nm":"Main","ddd":0,"assets":[)" + joined(assets) +
           R"(],"layers":[)" + joined(layers) + R"(],"markers":[]})";
}

std::string number(double value) {
    std::ostringstream text;
    text << value;
    return text.str();
}

}  // namespace

std::string still(const std::string& value) {
    return R"({"a":0,"k":)" + value + "}";
}

std::string keyed(const std::vector<std::pair<double, std::string>>& keys) {
    std::vector<std::string> texts;
    for (const auto& [time, value] : keys) {
        const bool is_last = texts.size() + 1 == keys.size();
        texts.push_back((is_last ? "{" : R"({"i":{"x":[1],"y":[1]},"o":{"x":[0],"y":[0]},)") +
                        (R"("t":)" + number(time) + R"(,"s":[)" + value + "]}"));
    }
    return R"({"a":1,"k":[)" + joined(texts) + "]}";
}

std::string expression(const std::string& text, const std::string& value) {
    return R"({"a":0,"k":)" + value + R"(,"x":")" + text + R"("})";
}

std::string circle(int vertices, double x, double y, double radius, bool is_forward) {
    std::string handles;
    std::string points;
    for (int i = 0; i < vertices; ++i) {
        const double angle = (is_forward ? 2 : -2) * std::numbers::pi * i / vertices;
        const std::string comma = i == 0 ? "" : ",";
        handles += comma + "[0,0]";
        points += comma + "[" + std::to_string(x + radius * std::cos(angle)) + "," +
                  std::to_string(y + radius * std::sin(angle)) + "]";
    }
    return R"({"a":0,"k":{"i":[)" + handles + R"(],"o":[)" + handles + R"(],"v":[)" + points + R"(],"c":true}})";
}

std::string transform(const Members& members) {
    Members all = {
        {"o", still("100")}, {"p", still("[0,0,0]")}, {"a", still("[0,0,0]")}, {"s", still("[100,100,100]")}};
    if (!members.contains("rz")) all["r"] = still("0");
    for (const auto& [key, value] : members) all[key] = value;
    return object(all, {"o", "r", "rx", "ry", "rz", "or", "p", "a", "s"});
}

std::string at(double x, double y) {
    return transform({{"p", still("[" + number(x) + "," + number(y) + ",0]")}});
}

std::string solid(int ind, const std::string& name, int width, int height, const std::string& color,
                  const Members& members) {
    return layer(ind, name, 1,
                 {{"sw", std::to_string(width)}, {"sh", std::to_string(height)}, {"sc", "\"" + color + "\""}}, members);
}

std::string null_layer(int ind, const std::string& name, const Members& members) {
    return layer(ind, name, 3, {}, members);
}

std::string shape_layer(int ind, const std::string& name, const std::string& shapes, const Members& members) {
    return layer(ind, name, 4, {{"shapes", "[" + shapes + "]"}}, members);
}

std::string text_layer(int ind, const std::string& name, const Members& members) {
    return layer(ind, name, 5,
                 {{"t", R"({"d":{"k":[{"s":{"s":12,"f":"Sans","t":"Hello","j":0,"lh":14,"fc":[0,0,0]},"t":0}]},)"
                        R"("p":{},"m":{"g":1,"a":{"a":0,"k":[0,0]}},"a":[]})"}},
                 members);
}

std::string camera(int ind, const std::string& name, const Members& members) {
    return layer(ind, name, 13,
                 {{"pe", still("500")},
                  {"ks", transform({{"p", still("[50,50,-500]")}, {"a", still("[50,50,0]")}})},
                  {"ddd", "1"}},
                 members);
}

std::string nest_layer(int ind, const std::string& name, const std::string& id, const Members& members) {
    return layer(ind, name, 0, {{"refId", "\"" + id + "\""}, {"w", "100"}, {"h", "100"}}, members);
}

std::string animation(const Nesting& nesting) {
    std::vector<std::string> layers = nesting.above;
    layers.push_back(nest_layer(10, "Nest", "inside", nesting.nest));
    layers.insert(layers.end(), nesting.below.begin(), nesting.below.end());
    Members composition = {
        {"id", R"("inside")"}, {"nm", R"("Inside")"}, {"layers", "[" + joined(nesting.inside) + "]"}};
    for (const auto& [key, value] : nesting.composition) composition[key] = value;
    std::vector<std::string> assets = {object(composition, {"id", "nm"})};
    assets.insert(assets.end(), nesting.assets.begin(), nesting.assets.end());
    return document(assets, layers);
}

std::string flat_animation(const std::vector<std::string>& layers) {
    return document({}, layers);
}

}  // namespace test
