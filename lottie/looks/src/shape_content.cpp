// What a shape layer paints.
#include "shape_content.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <string>
#include <utility>

#include "path.h"
#include "property.h"

namespace lottie::looks {
namespace {

constexpr std::size_t kMostPoints = 20'000;  // that copies of a repeater keep apart
constexpr int kMostCopies = 200;             // of a repeater; beyond them it has long left every frame
constexpr std::size_t kStepsPerCopy = 3;     // of a point

// A group's or repeater's transform.
struct ItemTransform {
    explicit ItemTransform(const Json& item)
        : anchor(member(item, "a"), {}),
          scale(member(item, "s"), {100, 100, 100}),
          position(member(item, "p"), {}),
          rotation(member(item, "r"), {}),
          opacity(member(item, "o"), {100, 0, 0}) {}

    bool is_animated() const {
        return anchor.is_animated() || scale.is_animated() || position.is_animated() || rotation.is_animated() ||
               opacity.is_animated();
    }

    Matrix at(double frame) const {
        const Values a = anchor.at(frame);
        const Values s = scale.at(frame);
        const Values p = position.at(frame);
        return Matrix::translation(-a[0], -a[1], 0)
            .then(Matrix::scaling(s[0] / 100, s[1] / 100, 1))
            .then(Matrix::turn_z(rotation.at(frame)[0]))
            .then(Matrix::translation(p[0], p[1], 0));
    }

    // So many times over.
    Matrix repeated(double frame, double times) const {
        const Values a = anchor.at(frame);
        const Values s = scale.at(frame);
        const Values p = position.at(frame);
        return Matrix::translation(-a[0], -a[1], 0)
            .then(Matrix::scaling(std::pow(s[0] / 100, times), std::pow(s[1] / 100, times), 1))
            .then(Matrix::turn_z(rotation.at(frame)[0] * times))
            .then(Matrix::translation(a[0] + p[0] * times, a[1] + p[1] * times, 0));
    }

    Property anchor, scale, position, rotation, opacity;
};

// Sharp corners reach further than half the stroke's width; how far, only the angles would tell.
double miter(const Json& stroke) {
    return number_member(stroke, "lj", 1) == 1 ? std::min(number_member(stroke, "ml", 4), 1.25) : 1;
}

// By how much it lengthens what it lengthens most, of what lies along the axes.
double stretch_of(const Matrix& matrix) {
    const Point origin = matrix.map({0, 0});
    return std::max(distance(matrix.map({1, 0}), origin), distance(matrix.map({0, 1}), origin));
}

template <class Shapes>
void move(Shapes& shapes, const Matrix& matrix) {
    const double scale = stretch_of(matrix);
    for (auto& shape : shapes) {
        for (Point& point : shape.outline.points) point = matrix.map(point);
        shape.outline.growth *= scale;
    }
}

}  // namespace

struct ShapeContent::Shape {
    Outline outline;
    bool is_painted = false;
    bool is_merged = false;  // of several; no path any more
};

// What fills and strokes of one group paint: the shapes before each of them. Painted together, when something else is
// about to change the shapes: by itself each would walk past all of them.
class ShapeContent::Paints {
  public:
    void add(std::size_t shapes, double reach) { waiting_.push_back({shapes, reach}); }

    void paint(std::vector<Shape>& shapes) {
        double reach = 0;
        for (std::size_t i = waiting_.empty() ? 0 : waiting_.back().shapes; i-- > 0;) {
            for (; !waiting_.empty() && waiting_.back().shapes > i; waiting_.pop_back())
                reach = std::max(reach, waiting_.back().reach);
            shapes[i].is_painted = true;
            shapes[i].outline.growth = std::max(shapes[i].outline.growth, reach);
        }
        waiting_.clear();
    }

  private:
    struct Paint {
        std::size_t shapes;
        double reach;
    };
    std::vector<Paint> waiting_;
};

// A frame, and what working on it is taken from, in points.
struct ShapeContent::Moment {
    double frame;
    Work& work;
    const StrokeWidths* widths = nullptr;  // none: as the file says
};

// A box around shapes, and how far paint reaches beyond it.
struct ShapeContent::Bounds {
    Box box = kNoBox;
    double growth = 0;
    std::size_t points = 0;  // looked at

    void take(const Bounds& other) {
        box = united(box, other.box);
        growth = std::max(growth, other.growth);
        points += other.points;
    }
};

class ShapeContent::Item {
  public:
    // Without `keeps_curves`, for shapes whose paths nothing trims, outlines are reduced to what surrounds them.
    Item(const Json& json, bool keeps_curves);

    void apply(Moment& at, std::vector<Shape>& shapes, Paints& paints) const;
    // Adds what the item adds to `bounds`. False if that cannot be told.
    bool bound(double frame, Bounds& bounds) const;
    bool is_animated() const { return is_animated_; }
    std::size_t weight() const { return weight_; }

    static std::vector<Shape> group(const std::vector<std::unique_ptr<Item>>& items, Moment& at);
    static bool bound_group(const std::vector<std::unique_ptr<Item>>& items, double frame, Bounds& bounds);
    static std::vector<std::unique_ptr<Item>> compile(Json::ConstArray items, bool keeps_curves);

  private:
    Property property(const Json& json, const char* name, const Values& missing) {
        Property read(member(json, name), missing);
        is_animated_ = is_animated_ || read.is_animated();
        return read;
    }
    Values value(std::size_t i, double frame) const { return properties_[i].at(frame); }
    double width(const Moment& at) const;
    Outline outline(double frame) const;
    void trim(Moment& at, std::vector<Shape>& shapes) const;
    static void merge(std::vector<Shape>& shapes);
    void repeat(Moment& at, std::vector<Shape>& shapes) const;
    std::vector<Shape> own_shapes(Moment& at) const;

    std::string kind_;
    bool is_hidden_ = false;
    bool keeps_curves_ = false;
    bool is_animated_ = false;
    bool trims_one_after_another_ = false;
    double miter_ = 1;
    const Json* led_width_ = nullptr;  // of a stroke, if it has an expression
    std::size_t weight_ = 1;
    std::vector<Property> properties_;  // what they are depends on the kind
    std::optional<PathProperty> path_;
    std::optional<ItemTransform> transform_;
    std::vector<std::unique_ptr<Item>> items_;
    mutable std::optional<std::vector<Shape>> still_shapes_;
    mutable std::optional<Bounds> still_bounds_;
};

ShapeContent::Item::Item(const Json& json, bool keeps_curves)
    : kind_(text_member(json, "ty")), is_hidden_(is_truthy(json, "hd")), keeps_curves_(keeps_curves) {
    const auto add = [&](const char* name, const Values& missing = {}) {
        properties_.push_back(property(json, name, missing));
    };
    const auto set_transform = [&](const Json& transform) {
        transform_.emplace(transform);
        is_animated_ = is_animated_ || transform_->is_animated();
    };
    if (kind_ == "gr") {
        items_ = compile(array_member(json, "it"), keeps_curves);
        for (const auto& item : items_) {
            is_animated_ = is_animated_ || item->is_animated();
            weight_ += item->weight();
        }
    } else if (kind_ == "sh") {
        path_.emplace(member(json, "ks"));
        is_animated_ = path_->is_animated();
        weight_ += path_->at(0).points.size();
    } else if (kind_ == "rc" || kind_ == "el") {
        add("p"), add("s");
        weight_ += 4 * kSteps;
    } else if (kind_ == "sr") {
        add("p"), add("or"), add("ir");
        weight_ += 4 * kSteps;
    } else if (kind_ == "st" || kind_ == "gs") {
        add("w"), add("o", {100, 0, 0});
        miter_ = miter(json);
        if (properties_[0].has_expression()) led_width_ = member(json, "w");
    } else if (kind_ == "fl" || kind_ == "gf") {
        add("o", {100, 0, 0});
    } else if (kind_ == "tm") {
        add("s"), add("e", {100, 0, 0}), add("o");
        trims_one_after_another_ = number_member(json, "m", 1) == 2;
    } else if (kind_ == "rp") {
        add("c"), add("o");
        if (const Json* transform = member(json, "tr")) set_transform(*transform);
    } else if (kind_ == "pb" || kind_ == "op") {
        add("a");
    } else if (kind_ == "zz") {
        add("s");
    } else if (kind_ == "tr") {
        set_transform(json);
    }
}

std::vector<std::unique_ptr<ShapeContent::Item>> ShapeContent::Item::compile(Json::ConstArray items,
                                                                             bool keeps_curves) {
    const auto trims = [](const Json& item) {
        return text_member(item, "ty") == "tm" && !looks::is_truthy(item, "hd");
    };
    keeps_curves = keeps_curves || std::any_of(items.begin(), items.end(), trims);
    std::vector<std::unique_ptr<Item>> compiled;
    for (const Json& item : items) compiled.push_back(std::make_unique<Item>(item, keeps_curves));
    return compiled;
}

std::vector<ShapeContent::Shape> ShapeContent::Item::group(const std::vector<std::unique_ptr<Item>>& items,
                                                           Moment& at) {
    std::vector<Shape> shapes;
    Paints paints;
    for (const auto& item : items) {
        if (!item->is_hidden_) item->apply(at, shapes, paints);
    }
    paints.paint(shapes);
    for (const auto& item : items) {
        if (item->kind_ != "tr") continue;
        if (item->transform_->opacity.is_nothing_at(at.frame)) return {};
        move(shapes, item->transform_->at(at.frame));
    }
    return shapes;
}

// Shapes that the item adds to those before it.
std::vector<ShapeContent::Shape> ShapeContent::Item::own_shapes(Moment& at) const {
    if (kind_ == "gr") return group(items_, at);
    std::vector<Shape> shapes;
    Outline one = outline(at.frame);
    if (one.points.empty()) return shapes;
    at.work.spend(one.points.size());
    if (!keeps_curves_) one.points = hull_of(std::move(one.points));
    shapes.push_back({std::move(one), false, false});
    return shapes;
}

void ShapeContent::Item::apply(Moment& at, std::vector<Shape>& shapes, Paints& paints) const {
    const bool grows = kind_ == "pb" || kind_ == "zz" || kind_ == "op";
    if (grows || kind_ == "tm" || kind_ == "rp") {
        at.work.spend(shapes.size());
        paints.paint(shapes);
    }
    if (kind_ == "st" || kind_ == "gs") {
        if (!properties_[1].is_nothing_at(at.frame)) paints.add(shapes.size(), width(at) / 2 * miter_);
    } else if (kind_ == "fl" || kind_ == "gf") {
        if (!properties_[0].is_nothing_at(at.frame)) paints.add(shapes.size(), 0);
    } else if (kind_ == "tm") {
        const bool is_known = std::none_of(properties_.begin(), properties_.end(),
                                           [](const Property& one) { return one.has_expression(); });
        if (is_known) trim(at, shapes);
    } else if (kind_ == "rp") {
        repeat(at, shapes);
    } else if (grows) {
        const double more = std::abs(value(0, at.frame)[0]);
        for (Shape& shape : shapes) shape.outline.growth += more;
    } else if (is_animated_ || at.widths != nullptr) {
        auto own = own_shapes(at);
        shapes.insert(shapes.end(), std::make_move_iterator(own.begin()), std::make_move_iterator(own.end()));
    } else {
        if (!still_shapes_) still_shapes_ = own_shapes(at);
        shapes.insert(shapes.end(), still_shapes_->begin(), still_shapes_->end());
    }
}

bool ShapeContent::Item::bound_group(const std::vector<std::unique_ptr<Item>>& items, double frame, Bounds& bounds) {
    for (const auto& item : items) {
        if (!item->is_hidden_ && !item->bound(frame, bounds)) return false;
    }
    for (const auto& item : items) {
        if (item->kind_ != "tr" || bounds.box.left > bounds.box.right) continue;
        const Matrix matrix = item->transform_->at(frame);
        bounds.growth *= stretch_of(matrix);
        bounds.box = mapped(bounds.box, matrix);
    }
    return true;
}

bool ShapeContent::Item::bound(double frame, Bounds& bounds) const {
    if (kind_ == "rp") return false;
    if (kind_ == "st" || kind_ == "gs") {
        bounds.growth = std::max(bounds.growth, value(0, frame)[0] / 2 * miter_);
    } else if (kind_ == "pb" || kind_ == "zz" || kind_ == "op") {
        bounds.growth += std::abs(value(0, frame)[0]);
    }
    if (!is_animated_ && still_bounds_) {
        bounds.take(*still_bounds_);
        return true;
    }
    Bounds own;
    if (kind_ == "gr") {
        if (!bound_group(items_, frame, own)) return false;
    } else if (path_) {
        own.points = path_->take_into(own.box, frame);
    } else {
        for (const Point& point : outline(frame).points)
            own.box = united(own.box, {point.x, point.y, point.x, point.y});
    }
    if (!is_animated_) still_bounds_ = own;
    bounds.take(own);
    return true;
}

double ShapeContent::Item::width(const Moment& at) const {
    const double stored = value(0, at.frame)[0];
    return led_width_ == nullptr || at.widths == nullptr ? stored : (*at.widths)(*led_width_, stored);
}

Outline ShapeContent::Item::outline(double frame) const {
    if (path_) return path_->at(frame);
    const auto center = [&] {
        const Values position = value(0, frame);
        return Point{position[0], position[1]};
    };
    if (kind_ == "rc" || kind_ == "el") {
        const Values size = value(1, frame);
        return kind_ == "rc" ? rectangle(center(), size[0] / 2, size[1] / 2)
                             : ellipse(center(), size[0] / 2, size[1] / 2);
    }
    if (kind_ == "sr") {
        const double reach = std::max(std::abs(value(1, frame)[0]), std::abs(value(2, frame)[0]));
        return ellipse(center(), reach, reach);
    }
    return {};
}

void ShapeContent::Item::trim(Moment& at, std::vector<Shape>& shapes) const {
    double from = std::clamp(value(0, at.frame)[0] / 100, 0.0, 1.0);
    double to = std::clamp(value(1, at.frame)[0] / 100, 0.0, 1.0);
    if (from > to) std::swap(from, to);
    if (to - from >= 1) return;
    const double offset = std::fmod(value(2, at.frame)[0] / 360, 1.0);
    from += offset;
    to += offset;
    std::vector<Shape> left;
    for (const Shape& shape : shapes) {
        if (shape.is_merged) {
            left.push_back(shape);
            continue;
        }
        std::vector<Outline> parts;
        const double length = length_of(shape.outline);
        // Where one path ends and the next begins depends on all of them: then all that is left may be anywhere.
        if (trims_one_after_another_ && shapes.size() > 1 && to > from) parts.push_back(shape.outline);
        for (const double turn : {-1.0, 0.0, 1.0}) {
            const double begin = std::max(0.0, from + turn);
            const double end = std::min(1.0, to + turn);
            if (end > begin) append_part(shape.outline, begin * length, end * length, parts);
        }
        for (Outline& part : parts) left.push_back({std::move(part), shape.is_painted, false});
    }
    shapes = std::move(left);
}

// Shapes that are alike in all but their points become one that reaches as far: repeaters of repeaters multiply.
void ShapeContent::Item::merge(std::vector<Shape>& shapes) {
    std::map<std::pair<bool, double>, std::vector<Point>> points;
    for (const Shape& shape : shapes) {
        auto& all = points[{shape.is_painted, shape.outline.growth}];
        all.insert(all.end(), shape.outline.points.begin(), shape.outline.points.end());
    }
    shapes.clear();
    for (auto& [kind, all] : points) {
        shapes.push_back({{hull_of(std::move(all)), kind.second, true}, kind.first, true});
    }
}

void ShapeContent::Item::repeat(Moment& at, std::vector<Shape>& shapes) const {
    if (!transform_) return;
    const int copies = static_cast<int>(std::clamp(value(0, at.frame)[0], 0.0, double{kMostCopies}));
    const double offset = value(1, at.frame)[0];
    std::vector<Shape> all;
    std::size_t points = 0;
    for (int i = 0; i < copies; ++i) {
        std::vector<Shape> copy = shapes;
        std::size_t more = 0;
        for (const Shape& shape : copy) more += shape.outline.points.size();
        at.work.spend(kStepsPerCopy * (copy.size() + more));
        points += more;
        move(copy, transform_->repeated(at.frame, i + offset));
        all.insert(all.end(), std::make_move_iterator(copy.begin()), std::make_move_iterator(copy.end()));
        if (points > kMostPoints) {
            merge(all);
            points = 0;
        }
    }
    if (!keeps_curves_) merge(all);
    shapes = std::move(all);
}

ShapeContent::ShapeContent(Json::ConstArray shapes) : items_(Item::compile(shapes, false)) {
    for (const auto& item : items_) {
        is_animated_ = is_animated_ || item->is_animated();
        weight_ += item->weight();
    }
}

ShapeContent::~ShapeContent() = default;

Hull ShapeContent::work_out_hull(Moment at) const {
    std::vector<Outline> outlines;
    at.work.spend(weight_);
    for (Shape& shape : Item::group(items_, at)) {
        if (shape.is_painted) outlines.push_back(std::move(shape.outline));
    }
    return around(outlines);
}

const Hull& ShapeContent::hull(double frame, Work& work) const {
    if (hull_frame_ && (!is_animated_ || *hull_frame_ == frame)) return hull_;
    hull_ = work_out_hull({frame, work});
    hull_frame_ = frame;
    return hull_;
}

Hull ShapeContent::hull_with(const StrokeWidths& widths, double frame, Work& work) const {
    return work_out_hull({frame, work, &widths});
}

std::optional<Box> ShapeContent::box_around(double frame, Work& work) const {
    Bounds bounds;
    const bool is_told = Item::bound_group(items_, frame, bounds);
    work.spend(items_.size() + bounds.points);
    if (!is_told) return std::nullopt;
    const Box& box = bounds.box;
    return Box{box.left - bounds.growth, box.top - bounds.growth, box.right + bounds.growth,
               box.bottom + bounds.growth};
}

}  // namespace lottie::looks
