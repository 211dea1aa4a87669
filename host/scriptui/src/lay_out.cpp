// Lays out a window.
#include "scriptui/lay_out.h"

#include <algorithm>
#include <cmath>
#include <ranges>
#include <unordered_map>

#include "base/unicode.h"
#include "scriptui/control_sizes.h"

namespace host::scriptui {

namespace {

using Pair = std::array<double, 2>;  // along x, along y

constexpr std::size_t kX = 0;
constexpr std::size_t kY = 1;

std::string_view trimmed_end(std::string_view line) {
    return line.ends_with('\r') ? line.substr(0, line.size() - 1) : line;
}

// Width of the widest line, height of all.
Pair text_size(std::string_view text, const TextMeasure& measure) {
    double width = 0;
    double lines = 0;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        width = std::max(width, measure.width(trimmed_end(text.substr(start, end - start))));
        ++lines;
        start = end + 1;
    }
    return {std::ceil(width), std::ceil(lines * measure.line_height())};
}

// The number of lines of text wrapped between words.
double wrapped_lines(std::string_view text, double room, const TextMeasure& measure) {
    double lines = 1;
    std::size_t line_start = 0;
    for (std::size_t i = 0; i < text.size();) {
        if (text[i] == '\n') {
            ++lines;
            line_start = ++i;
            continue;
        }
        const std::size_t word_end = std::min(text.find_first_of(" \n", i + 1), text.size());
        if (i > line_start && measure.width(text.substr(line_start, word_end - line_start)) > room) {
            ++lines;
            line_start = text[i] == ' ' ? i + 1 : i;
        }
        i = word_end;
    }
    return lines;
}

// The alignments of a child along x and y.
std::array<Align, 2> aligns(const Element& child) {
    const Layout& container = child.parent()->layout();
    const Orientation orientation = container.orientation;
    std::array<Align, 2> result = {Align::left, Align::top};
    if (orientation == Orientation::stack) result = {Align::center, Align::center};
    if (orientation == Orientation::row) result[kY] = Align::center;
    if (orientation == Orientation::column) result[kX] = Align::center;
    const auto apply = [&](const Alignment& wanted) {
        if (wanted.second) {
            result = {wanted.first, *wanted.second};
            return;
        }
        const bool is_horizontal = wanted.first == Align::left || wanted.first == Align::right;
        const bool is_vertical = wanted.first == Align::top || wanted.first == Align::bottom;
        if (is_horizontal || (!is_vertical && orientation != Orientation::row)) result[kX] = wanted.first;
        if (is_vertical || (!is_horizontal && orientation != Orientation::column)) result[kY] = wanted.first;
    };
    apply(container.align_children);
    if (child.layout().alignment) apply(*child.layout().alignment);
    return result;
}

// The share of the spare space before an element with this alignment.
double share_before(Align align) {
    switch (align) {
        case Align::center:
            return 0.5;
        case Align::right:
        case Align::bottom:
            return 1;
        default:
            return 0;
    }
}

bool has_fixed_place(const Element& element) {
    return element.layout().location && element.layout().size;
}

class LayoutPass {
  public:
    explicit LayoutPass(const TextMeasure& measure) : measure_(measure) {}

    // The size of an element before its parent stretches it.
    const Pair& natural_size(const Element& element) {
        if (const auto known = natural_.find(&element); known != natural_.end()) return known->second;
        const Layout& layout = element.layout();
        Pair size = layout.size.value_or(layout.preferred_size);
        if (size[kX] < 0 || size[kY] < 0) {
            const Pair computed = element.is_container() ? content_size(element) : control_size(element, size[kX]);
            for (const std::size_t axis : {kX, kY}) {
                if (size[axis] < 0) size[axis] = computed[axis];
            }
        }
        return natural_[&element] = layout.size ? size : clamped(size, layout);
    }

    void place_children(Element& container) {
        const auto [left, top, right, bottom] = container.layout().margins;
        const Pair room = {container.frame()->width - left - right, container.frame()->height - top - bottom};
        const Orientation orientation = container.layout().orientation;
        std::vector<Element*> flowing;
        for (const auto& child : container.children()) {
            if (has_fixed_place(*child)) {
                place(*child, *child->layout().location, *child->layout().size);
            } else if (orientation == Orientation::stack) {
                place_in_row({child.get()}, kX, {left, top}, room, 0);
            } else {
                flowing.push_back(child.get());
            }
        }
        if (!flowing.empty()) {
            place_in_row(flowing, orientation == Orientation::row ? kX : kY, {left, top}, room,
                         container.layout().spacing);
        }
    }

  private:
    static Pair clamped(Pair size, const Layout& layout) {
        for (const std::size_t axis : {kX, kY}) {
            size[axis] = std::max(std::min(size[axis], layout.maximum_size[axis]), layout.minimum_size[axis]);
        }
        return size;
    }

    Pair content_size(const Element& container) {
        const Layout& layout = container.layout();
        const std::size_t main = layout.orientation == Orientation::row ? kX : kY;
        Pair content = {0, 0};
        Pair fixed = {0, 0};
        bool is_first = true;
        for (const auto& child : container.children()) {
            const Pair size = natural_size(*child);
            if (has_fixed_place(*child)) {
                for (const std::size_t axis : {kX, kY}) {
                    fixed[axis] = std::max(fixed[axis], (*child->layout().location)[axis] + size[axis]);
                }
                continue;
            }
            for (const std::size_t axis : {kX, kY}) {
                if (axis == main && layout.orientation != Orientation::stack) {
                    content[axis] += size[axis] + (is_first ? 0 : layout.spacing);
                } else {
                    content[axis] = std::max(content[axis], size[axis]);
                }
            }
            is_first = false;
        }
        const auto [left, top, right, bottom] = layout.margins;
        content[kX] += left + right;
        content[kY] += top + bottom;
        if (container.type() == ElementType::panel && !container.text().empty()) {
            content[kX] =
                std::max(content[kX], text_size(container.text(), measure_)[kX] + 4 * sizes::kPanelTitleIndent);
        }
        return {std::max(content[kX], fixed[kX]), std::max(content[kY], fixed[kY])};
    }

    // `width` is the script's, or -1.
    Pair control_size(const Element& control, double width) const {
        const Pair text = text_size(control.text(), measure_);
        switch (control.type()) {
            case ElementType::edit_text: {
                const double height = std::max(sizes::kEditHeight, std::ceil(measure_.line_height()) + 6);
                const double lines = control.is_multiline() ? sizes::kEditLines - 1 : 0;
                double inner = text[kX];
                if (control.characters() > 0) inner = std::ceil(control.characters() * measure_.width("0"));
                const double narrowest = control.characters() > 0 ? 0 : sizes::kEditWidth;
                return {std::max(inner + 2 * sizes::kEditPadding, narrowest),
                        height + lines * std::ceil(measure_.line_height())};
            }
            case ElementType::button:
                return {std::max(text[kX] + 2 * sizes::kButtonPadding, sizes::kButtonWidth),
                        std::max(sizes::kButtonHeight, text[kY] + 8)};
            case ElementType::checkbox:
            case ElementType::radio_button: {
                const double before_text = sizes::kFocusMargin + sizes::kGlyph + sizes::kGlyphGap;
                return {text[kX] > 0 ? before_text + text[kX] + sizes::kFocusMargin
                                     : sizes::kGlyph + 2 * sizes::kFocusMargin,
                        std::max(sizes::kTickHeight, text[kY])};
            }
            default:
                break;
        }
        if (!control.is_multiline()) return text;
        const double room = width >= 0 ? width : std::min(text[kX], kWidestParagraph);
        return {room, std::ceil(wrapped_lines(control.text(), room, measure_) * measure_.line_height())};
    }

    // Places children in sequence along an axis, in the space that starts at `origin`.
    void place_in_row(const std::vector<Element*>& children, std::size_t main, const Pair& origin, const Pair& room,
                      double spacing) {
        const std::size_t cross = 1 - main;
        std::vector<Pair> sizes;
        double spare = room[main] - spacing * static_cast<double>(children.size() - 1);
        std::size_t filling = 0;
        for (const Element* child : children) {
            sizes.push_back(natural_size(*child));
            spare -= sizes.back()[main];
            if (fills(*child, main)) ++filling;
        }
        double used = 0;
        for (std::size_t i = 0; i < children.size(); ++i) {
            const Layout& layout = children[i]->layout();
            if (fills(*children[i], main) && spare > 0)
                sizes[i][main] += std::floor(spare / static_cast<double>(filling));
            if (fills(*children[i], cross)) sizes[i][cross] = std::max(room[cross], 0.0);
            if (!layout.size) sizes[i] = clamped(sizes[i], layout);
            used += sizes[i][main];
        }
        const double left_over = std::max(0.0, room[main] - used - spacing * static_cast<double>(children.size() - 1));
        double next = origin[main];
        double skipped = 0;
        for (std::size_t i = 0; i < children.size(); ++i) {
            const std::array<Align, 2> align = aligns(*children[i]);
            const double before = std::round(left_over * share_before(align[main]));
            next += std::max(0.0, before - skipped);
            skipped = std::max(skipped, before);
            Pair location;
            location[main] = next;
            location[cross] = origin[cross] + std::floor((room[cross] - sizes[i][cross]) * share_before(align[cross]));
            place(*children[i], location, sizes[i]);
            next += sizes[i][main] + spacing;
        }
    }

    static bool fills(const Element& child, std::size_t axis) {
        return aligns(child)[axis] == Align::fill && !child.layout().size;
    }

    void place(Element& element, const Pair& location, const Pair& size) {
        element.set_frame(Frame{location[kX], location[kY], size[kX], size[kY]});
        if (element.is_container()) place_children(element);
    }

    static constexpr double kWidestParagraph = 400;  // of multi-line text without a width

    const TextMeasure& measure_;
    std::unordered_map<const Element*, Pair> natural_;
};

}  // namespace

double EstimatedTextMeasure::width(std::string_view line) const {
    return 6.25 * static_cast<double>(base::character_count(line));
}

void lay_out(Window& window, const TextMeasure& measure) {
    LayoutPass pass(measure);
    const Pair size = pass.natural_size(window);
    const Pair location = window.layout().location.value_or(Pair{0, 0});
    window.set_frame(Frame{location[kX], location[kY], size[kX], size[kY]});
    pass.place_children(window);
}

}  // namespace host::scriptui
