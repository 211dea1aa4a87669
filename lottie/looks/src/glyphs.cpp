// The letters that a file brings along for its texts.
#include "glyphs.h"

#include <stdexcept>
#include <vector>

#include "json.h"
#include "path.h"

namespace lottie::looks {
namespace {

JsonDocument parsed(std::string_view text) {
    JsonDocument json;
    if (text.empty()) return json;
    json.Parse(text.data(), text.size());
    if (json.HasParseError()) throw std::runtime_error("the animation cannot be read");
    return json;
}

void add_points(const Json& shape, std::vector<Point>& points) {
    for (const Json& one : array_member(shape, "it")) add_points(one, points);
    if (text_member(shape, "ty") != "sh") return;
    const PathProperty::Vertices path = PathProperty(member(shape, "ks")).vertices_at(0);
    for (std::size_t i = 0; i < path.at.size(); ++i) {
        const Point& at = path.at[i];
        points.push_back(at);
        points.push_back({at.x + path.in[i].x, at.y + path.in[i].y});
        points.push_back({at.x + path.out[i].x, at.y + path.out[i].y});
    }
}

}  // namespace

Glyphs::Glyphs(std::string_view letters, std::string_view fonts) {
    const JsonDocument list = parsed(fonts);
    for (const Json& font : array_member(list, "list"))
        faces_[text_member(font, "fName")] = {text_member(font, "fFamily"), text_member(font, "fStyle")};
    const JsonDocument all = parsed(letters);
    for (const Json& letter : elements(&all)) {
        const Json* data = member(letter, "data");
        if (data == nullptr || member(*data, "refId") != nullptr) continue;
        std::vector<Point> points;
        for (const Json& shape : array_member(*data, "shapes")) add_points(shape, points);
        glyphs_[{text_member(letter, "fFamily"), text_member(letter, "style"), text_member(letter, "ch")}] = {
            number_member(letter, "w", 0), around(points)};
    }
}

const Glyph* Glyphs::find(const std::string& font, const std::string& letter) const {
    const auto face = faces_.find(font);
    if (face == faces_.end()) return nullptr;
    const auto glyph = glyphs_.find({face->second.family, face->second.style, letter});
    return glyph == glyphs_.end() ? nullptr : &glyph->second;
}

}  // namespace lottie::looks
