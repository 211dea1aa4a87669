// How far layers may reach that expressions move or shape: players without expressions draw them as the file's values
// say, others elsewhere.
#include "expression_reach.h"
#include "control_range.h"
#include "expression_point.h"
#include "expression_use.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace lottie::looks {
namespace {

constexpr double kMostLooks = 60;  // at what a loop plays
constexpr std::size_t kStepsPerTransform = 10;
constexpr int kMostLeaders = 4;  // that lead one another

bool has_expression(const Json* property) {
    if (property == nullptr || !property->IsObject()) return false;
    const Json* text = member(*property, "x");
    if (text != nullptr && text->IsString()) return true;
    return std::any_of(property->MemberBegin(), property->MemberEnd(),
                       [](const auto& one) { return has_expression(&one.value); });
}

// Colors change no shape, and what trims only takes away.
bool is_shaped(Json::ConstArray items, bool by_widths) {
    return std::any_of(items.begin(), items.end(), [by_widths](const Json& item) {
        const std::string kind = text_member(item, "ty");
        if (!item.IsObject() || kind == "fl" || kind == "gf" || kind == "tm") return false;
        if (kind == "st" || kind == "gs") return by_widths && has_expression(member(item, "w"));
        if (kind == "gr") return is_shaped(array_member(item, "it"), by_widths);
        return std::any_of(item.MemberBegin(), item.MemberEnd(), [&](const auto& one) {
            return !(kind == "tr" && one.name == "o") && has_expression(&one.value);
        });
    });
}

// Whether expressions shape it, by the widths of its strokes or otherwise.
bool is_shaped(const SceneLayer& layer, bool by_widths) {
    const LayerPart* shapes = layer.part("shapes");
    const LayerPart* text = layer.part("t");
    return (shapes != nullptr && !shapes->expressions().empty() && is_shaped(layer.array("shapes"), by_widths)) ||
           (text != nullptr && !text->expressions().empty());
}

// Those of the transform that move the layer.
std::vector<Expression> moving_expressions(const SceneLayer& layer) {
    std::vector<Expression> moving;
    if (layer.part("ks") == nullptr || !layer.transform().has_expression()) return moving;
    for (const Expression& one : layer.part("ks")->expressions()) {
        if (one.property != "ks.o" && !is_own_value(one.text)) moving.push_back(one);
    }
    return moving;
}

bool is_flat(const SceneLayer& layer) {
    return !layer.transform().is_spatial() && !layer.transform().is_auto_oriented;
}

// Around all that the hull takes when it turns about 0, 0.
Hull turned_around(const Hull& hull) {
    if (hull.empty()) return hull;
    constexpr int kCorners = 16;
    double radius = 0;
    for (const Point& point : hull) radius = std::max(radius, std::hypot(point.x, point.y));
    const double outer = radius / std::cos(std::numbers::pi / kCorners);
    Hull around;
    for (int i = 0; i < kCorners; ++i) {
        const double angle = 2 * std::numbers::pi * i / kCorners;
        around.push_back({outer * std::cos(angle), outer * std::sin(angle)});
    }
    return around;
}

}  // namespace

bool is_moved_by_own_expression(const SceneLayer& layer) {
    return !moving_expressions(layer).empty();
}

bool is_shaped_by_expression(const SceneLayer& layer) {
    return is_shaped(layer, true);
}

ExpressionReach::ExpressionReach(Survey& survey, std::size_t place)
    : survey_(survey), stack_(survey.stack()), place_(place) {
    const SceneLayer& layer = stack_.layer(place);
    has_led_widths_ = is_shaped_by_expression(layer);
    if (has_led_widths_ && (layer.type != LayerType::shape || is_shaped(layer, false))) return;
    if (!survey.is_led(place)) {
        kind_ = Kind::as_stored;
    } else if (const auto loop = find_loop()) {
        kind_ = Kind::loop;
        loop_ = *loop;
    } else {
        find_place();
    }
}

void ExpressionReach::find_place() {
    const SceneLayer& layer = stack_.layer(place_);
    const auto parent = stack_.parent(place_);
    if (!is_flat(layer) || (parent && !survey_.has_reliable_placement(*parent))) return;
    for (const Expression& one : moving_expressions(layer)) {
        if (one.property == "ks.r") {
            is_turned_ = true;
            continue;
        }
        if (one.property != "ks.p") return;
        spelled_ = spelled_point(one.text);
        if (!spelled_) led_ = find_leader(one.text);
        if (!spelled_ && !led_) return;
    }
    kind_ = Kind::placed;
}

// Where all that moves the layer, and what it hangs on, plays the same times again and again.
std::optional<ExpressionReach::Loop> ExpressionReach::find_loop() const {
    std::optional<Loop> loop;
    bool is_all = true;
    for (std::optional<std::size_t> at = place_; at; at = stack_.parent(*at)) {
        survey_.spend(1);
        const auto moving = moving_expressions(stack_.layer(*at));
        const bool is_known = std::all_of(moving.begin(), moving.end(),
                                          [](const Expression& one) { return stays_within_keys(one.text); });
        if (!is_known || !is_flat(stack_.layer(*at))) return std::nullopt;
        const Transform& t = stack_.layer(*at).transform();
        for (const Property* property : {&t.anchor, &t.position, &t.scale, &t.rotation}) {
            is_all = is_all && (property->has_expression() || !property->is_animated());
            if (!property->has_expression() || property->key_times().empty()) continue;
            const Loop own{property->key_times().front(), property->key_times().back()};
            if (loop && (loop->first != own.first || loop->last != own.last)) return std::nullopt;
            loop = own;
        }
    }
    if (loop) loop->is_all = is_all;
    return loop;
}

// Past layers whose position is another one's, to the one that leads them all.
std::optional<ExpressionReach::Led> ExpressionReach::find_leader(std::string_view text) const {
    for (int i = 0; i < kMostLeaders; ++i) {
        survey_.spend(kStepsPerCharacter * text.size());
        const auto leader = leader_of(text);
        const auto place = leader ? survey_.layer_named(leader->layer) : std::nullopt;
        if (!place) return std::nullopt;
        const auto moving = moving_expressions(stack_.layer(*place));
        if (leader->by != Leader::By::position || moving.empty()) {
            const Led led{*place, *leader};
            return is_led_for_certain(led) ? std::optional(led) : std::nullopt;
        }
        const auto position =
            std::find_if(moving.begin(), moving.end(), [](const Expression& one) { return one.property == "ks.p"; });
        if (position == moving.end()) return std::nullopt;
        text = position->text;
    }
    return std::nullopt;
}

bool ExpressionReach::is_led_for_certain(const Led& led) const {
    if (led.leader.by == Leader::By::position) return true;
    if (!survey_.has_reliable_placement(led.layer)) return false;
    return led.leader.by == Leader::By::point || survey_.box_around_paths(led.layer, 0);
}

std::optional<Hull> ExpressionReach::at(double frame) {
    if (kind_ == Kind::unknown) return std::nullopt;
    if (!has_led_widths_) return reach_of(survey_.reach(place_, frame), frame);
    const auto widest = widest_reach(frame);
    return widest ? std::optional(reach_of(*widest, frame)) : std::nullopt;
}

Hull ExpressionReach::reach_of(const Hull& own, double frame) {
    if (kind_ == Kind::as_stored) return mapped(own, survey_.placement().world(place_, frame));
    return kind_ == Kind::loop ? in_loop(own, frame) : where_placed(own, frame);
}

// Its own, by all widths that expressions may give strokes; nothing where these have no bounds.
std::optional<Hull> ExpressionReach::widest_reach(double frame) {
    bool is_told = true;
    const auto widest = [&](const Json& width, double stored) {
        const auto [known, is_new] = widths_.try_emplace({&width, stored});
        if (is_new) known->second = width_range(width, stored);
        is_told = is_told && known->second;
        return is_told ? known->second->most : stored;
    };
    Hull reach = survey_.reach_with(widest, place_, frame);
    return is_told ? std::optional(std::move(reach)) : std::nullopt;
}

std::optional<ValueRange> ExpressionReach::width_range(const Json& width, double stored) {
    const std::string text = text_member(width, "x");
    survey_.spend(kStepsPerCharacter * text.size());
    const auto range = range_of(text, stored, [this](const Control& control) {
        return range_of_control(survey_, stack_.layer(place_), control);
    });
    return range && range->least >= 0 ? range : std::nullopt;
}

Hull ExpressionReach::in_loop(const Hull& own, double frame) {
    if (loop_.is_all && own == looped_) return loop_reach_;
    const double looks = std::clamp(std::ceil(loop_.last - loop_.first), 1.0, kMostLooks);
    std::vector<Point> points;
    for (double i = 0; i <= looks; ++i) {
        const double led = loop_.first + (loop_.last - loop_.first) * i / looks;
        Hull hull = own;
        for (std::optional<std::size_t> at = place_; at; at = stack_.parent(*at)) {
            survey_.spend(kStepsPerTransform + own.size());
            hull = mapped(hull, stack_.layer(*at).transform().at(frame, led));
        }
        points.insert(points.end(), hull.begin(), hull.end());
    }
    looped_ = own;
    return loop_reach_ = hull_of(std::move(points));
}

Hull ExpressionReach::where_placed(const Hull& shape, double frame) {
    const Transform& transform = stack_.layer(place_).transform();
    const Values stored = transform.position.at(frame);
    Hull own = mapped(shape, transform.at(frame));
    for (Point& point : own) point = {point.x - stored[0], point.y - stored[1]};
    if (is_turned_) own = turned_around(own);
    survey_.spend(1 + own.size());
    const Hull reach = sum(own, positions(frame));
    const auto parent = stack_.parent(place_);
    return parent ? mapped(reach, survey_.placement().world(*parent, frame)) : reach;
}

Hull ExpressionReach::positions(double frame) {
    if (led_) return led_positions(frame);
    const Values stored = stack_.layer(place_).transform().position.at(frame);
    if (!spelled_) return {{stored[0], stored[1]}};
    return {{spelled_->numbers[0].value_or(stored[0]), spelled_->numbers[1].value_or(stored[1])}};
}

// Around all of them.
Hull ExpressionReach::led_positions(double frame) {
    const SceneLayer& layer = stack_.layer(led_->layer);
    if (led_->leader.by == Leader::By::position) {
        const Values at = layer.transform().position.at(frame);
        return {{at[0], at[1]}};
    }
    const Matrix& world = survey_.placement().world(led_->layer, frame);
    if (led_->leader.by == Leader::By::point) return {world.map(Point{led_->leader.point[0], led_->leader.point[1]})};
    const Box box = survey_.box_around_paths(led_->layer, frame).value_or(kNoBox);
    const Hull corners = {{box.left, box.top}, {box.right, box.top}, {box.right, box.bottom}, {box.left, box.bottom}};
    return mapped(corners, world);
}

}  // namespace lottie::looks
