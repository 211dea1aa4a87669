// How far texts reach.
#include "text_reach.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "base/unicode.h"

namespace lottie::looks {
namespace {

constexpr double kFar = 1e4;  // pixels

const Json* member_of(const Json* object, const char* name) {
    return object == nullptr ? nullptr : member(*object, name);
}

const Json* document_at(const Json* text, double frame) {
    const Json* source = member_of(text, "d");
    const Json* document = nullptr;
    if (source == nullptr) return document;
    for (const Json& key : array_member(*source, "k")) {
        if (document == nullptr || number_member(key, "t", 0) <= frame) document = member(key, "s");
    }
    return document;
}

// What the lines of a text take, in pixels, from the beginning of the first one.
struct Extent {
    double width = 0;  // of the widest line
    double above = 0;  // of the first line
    double below = 0;  // of the last one
    double lines = 1;
    double letters = 0;  // in the longest line
    bool is_known = true;
};

class Measuring {
  public:
    Measuring(const Json& document, const Glyphs& glyphs) : glyphs_(glyphs), font_(text_member(document, "f")) {
        size_ = number_member(document, "s", 0);
        tracking_ = number_member(document, "tr", 0) * size_ / 1000;
        capitals_ = number_member(document, "ca", 0) != 0;
    }

    Extent measure(const std::string& text) {
        for (std::size_t at = 0; at < text.size();) {
            std::size_t end = at + 1;
            while (end < text.size() && host::base::continues_character(text[end])) ++end;
            const std::string letter = text.substr(at, end - at);
            at = end;
            if (letter == "\r" || letter == "\n" || letter == "\x03") {
                ++extent_.lines;
                width_ = letters_ = 0;
            } else {
                add(letter);
            }
        }
        if (!extent_.is_known || extent_.lines > 1) {
            extent_.above = std::max(extent_.above, size_);
            extent_.below = std::max(extent_.below, size_ * 0.3);
        }
        return extent_;
    }

  private:
    // One that the file brings no outline of is taken to be as wide as most are.
    void add(const std::string& letter) {
        const Glyph* glyph = capitals_ ? nullptr : glyphs_.find(font_, letter);
        if (glyph == nullptr) extent_.is_known = false;
        width_ += (glyph == nullptr ? size_ * 0.6 : glyph->advance * size_ / 100) + tracking_;
        extent_.width = std::max(extent_.width, width_);
        extent_.letters = std::max(extent_.letters, ++letters_);
        if (glyph == nullptr) return;
        extent_.above = std::max(extent_.above, -glyph->reach.top * size_ / 100);
        extent_.below = std::max(extent_.below, glyph->reach.bottom * size_ / 100);
    }

    const Glyphs& glyphs_;
    std::string font_;
    double size_ = 0;
    double tracking_ = 0;
    bool capitals_ = false;
    double width_ = 0;
    double letters_ = 0;
    Extent extent_;
};

// How much further animators may put letters.
struct Motion {
    double by = 0;        // pixels, in any direction
    double growth = 0;    // of the letters, 1 being as large again
    double tracking = 0;  // pixels for each letter
    bool is_known = true;
};

// Whether the animator works fully on every letter at all times.
bool takes_all(const Json& animator) {
    const Json* selector = member(animator, "s");
    if (selector == nullptr) return true;
    const auto stays_at = [selector](const char* name, double at) {
        const Property property(member(*selector, name), {at});
        return !property.is_animated() && !property.has_expression() && property.at(0)[0] == at;
    };
    return number_member(*selector, "sh", 1) == 1 && number_member(*selector, "r", 1) == 1 && stays_at("a", 100) &&
           stays_at("s", 0) && stays_at("e", 100) && stays_at("o", 0);
}

Motion motion_at(const Json& text, double frame) {
    Motion motion;
    double width = 1;  // of the letters, as several animators make it
    double height = 1;
    const Json* path = member(text, "p");
    motion.is_known = path == nullptr || !has_number(*path, "m");
    for (const Json& animator : array_member(text, "a")) {
        const Json* animated = member(animator, "a");
        if (animated == nullptr) continue;
        const auto values = [&](const char* name, const Values& missing) {
            const Json* json = member(*animated, name);
            const Property property(json, missing);
            if (property.has_expression()) motion.is_known = false;
            return property.at(frame);
        };
        const Values position = values("p", {});
        const Values scale = values("s", {100, 100, 100});
        const bool turns =
            values("r", {})[0] != 0 || values("sk", {})[0] != 0 || values("rx", {})[0] != 0 || values("ry", {})[0] != 0;
        motion.by += std::hypot(position[0], position[1]);
        const double least = takes_all(animator) ? 0 : 1;
        width *= std::max(std::abs(scale[0]) / 100, least);
        height *= std::max(std::abs(scale[1]) / 100, least);
        if (turns) motion.growth += 1;
        motion.tracking += std::abs(values("t", {})[0]);
        if (values("a", {}) != Values{}) motion.growth += 1;
    }
    motion.growth += std::max({width, height, 1.0}) - 1;
    return motion;
}

}  // namespace

Hull text_reach(const SceneLayer& layer, const Glyphs& glyphs, double frame) {
    const Json* text = layer.json("t");
    const Json* document = document_at(text, frame);
    if (document == nullptr) return {};
    const Motion motion = motion_at(*text, frame);
    if (!motion.is_known) return hull_of(Box{-kFar, -kFar, kFar, kFar});
    const double size = number_member(*document, "s", 0);
    const double further = motion.by + motion.growth * size + std::max(0.0, number_member(*document, "sw", 0)) / 2;
    if (const auto area = array_member(*document, "sz"); area.Size() == 2) {
        const auto corner = array_member(*document, "ps");
        const double left = corner.Size() == 2 ? corner[0].GetDouble() : 0;
        const double top = corner.Size() == 2 ? corner[1].GetDouble() : 0;
        return grown(hull_of(Box{left, top, left + area[0].GetDouble(), top + area[1].GetDouble()}), further);
    }
    const Extent extent = Measuring(*document, glyphs).measure(text_member(*document, "t"));
    const double width = extent.width + motion.tracking * extent.letters * size / 1000;
    const double line = number_member(*document, "lh", size * 1.2);
    const double shift = number_member(*document, "ls", 0);
    const int side = static_cast<int>(number_member(*document, "j", 0));
    const double left = side == 1 ? -width : side == 2 ? -width / 2 : 0;
    const Box box{left, -extent.above - shift, left + width, (extent.lines - 1) * line + extent.below - shift};
    return further > 0 ? grown(hull_of(box), further) : hull_of(box);
}

bool is_text_animated(const SceneLayer& layer) {
    const LayerPart* text = layer.part("t");
    return text != nullptr && text->changes_over_time();
}

}  // namespace lottie::looks
