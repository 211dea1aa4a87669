// Expressions that place layers out of a nest, or read how they are placed: what they compute by is the nest's no more.
#include <algorithm>
#include <cmath>
#include <optional>

#include "displacement.h"
#include "expression_point.h"
#include "expression_use.h"
#include "findings.h"
#include "words.h"

namespace lottie::looks {
namespace {

class PlaceExpressions {
  public:
    explicit PlaceExpressions(Unnesting& u) : u_(u) {}

    void look() {
        for (const Copy& copy : u_.copies()) {
            for (const auto& part : u_.inner(copy).parts()) {
                for (const Expression& one : part->expressions()) {
                    if (look_at(copy, one)) return;
                }
            }
        }
    }

  private:
    // Whether there is something to say.
    bool look_at(const Copy& copy, const Expression& one) {
        u_.comparison().spend(kStepsPerCharacter * one.text.size());
        if (one.property == "ks.p" && is_moved_along(copy, one.text)) return false;
        const ExpressionUse use = read_expression(one.text);
        if (is_placed_otherwise(copy, one)) return note(copy, one, "places layer", " by the nest's coordinates still");
        if (use.reads_transforms && is_any_moved())
            return note(copy, one, "of layer", " reads how layers are placed, by other numbers now");
        if (use.reads_opacity && is_any_faded())
            return note(copy, one, "of layer", " reads the opacity of layers, which holds the nest's now");
        if (use.converts_points && is_any_elsewhere())
            return note(copy, one, "of layer", " asks where points lie in the composition, which is another one now");
        if (is_any_rehung(copy, use.parent))
            return note(copy, one, "of layer", " reads the parent of a layer, which is another one now");
        return false;
    }

    bool note(const Copy& copy, const Expression& one, const std::string& does, const std::string& what) {
        u_.add({Reason::place,
                Weight::change,
                "an expression " + does + " " + quoted(u_.inner(copy).name) + what,
                "keep this nest",
                u_.inner(copy).name,
                one.property,
                {}});
        return true;
    }

    bool differ(const Property& before, const Property& after) {
        return &before != &after && std::any_of(u_.nest_frames().begin(), u_.nest_frames().end(), [&](double frame) {
            u_.comparison().spend(1);
            const Values a = before.at(u_.inner_frame(frame));
            const Values b = after.at(frame);
            return std::abs(a[0] - b[0]) > kNothing || std::abs(a[1] - b[1]) > kNothing;
        });
    }

    // Of the four that place a layer: "ks.p", or "ks.p.x" of a single dimension.
    bool has_other_value(const Copy& copy, const std::string& property) {
        const Transform& was = u_.inner(copy).transform();
        const Transform& is = u_.copied(copy).transform();
        if (property.starts_with("ks.p")) return differ(was.position, is.position);
        if (property.starts_with("ks.s")) return property == "ks.s" && differ(was.scale, is.scale);
        if (property == "ks.r") return differ(was.rotation, is.rotation);
        return property == "ks.a" && differ(was.anchor, is.anchor);
    }

    bool is_placed_otherwise(const Copy& copy, const Expression& one) {
        const bool is_carried = one.property.size() <= kPlain && is_carried_along(one.text);
        if (!is_carried && has_other_value(copy, one.property)) return true;
        if (!is_carried && one.property.starts_with("ks.p")) return has_any_other_value(copy);
        // What the nest turns or grows alike, a layer can turn before or after; what it squeezes or mirrors, it cannot.
        return one.property == "ks.r" && !is_own_value(one.text) && has_any_other_value(copy) && is_any_squeezed();
    }

    bool has_any_other_value(const Copy& copy) {
        return has_other_value(copy, "ks.p") || has_other_value(copy, "ks.s") || has_other_value(copy, "ks.r") ||
               has_other_value(copy, "ks.a");
    }

    bool is_any_squeezed() {
        if (squeezed_) return *squeezed_;
        const auto is_squeezed = [this](double frame) {
            const Matrix& nest = u_.stack_placement().world(u_.nest_place(), frame);
            const Point origin = nest.map({0, 0});
            const Point right = nest.map({1, 0});
            const Point down = nest.map({0, 1});
            return std::abs((right.x - origin.x) - (down.y - origin.y)) > kSameScale ||
                   std::abs((right.y - origin.y) + (down.x - origin.x)) > kSameScale;
        };
        squeezed_ = std::any_of(u_.nest_frames().begin(), u_.nest_frames().end(), is_squeezed);
        return *squeezed_;
    }

    // Where no layer hangs on another, before and after, their positions are points of the composition.
    bool is_moved_along(const Copy& own, std::string_view text) {
        if (is_rehung(own) || u_.inside().parent(own.inner) || !is_point_of_composition(text)) return false;
        return !any_copy(has_links_, [&](const Copy& copy) {
            return u_.inside().parent(copy.inner).has_value() || u_.result().parent(copy.result).has_value();
        });
    }

    template <class Question>
    bool any_copy(std::optional<bool>& known, const Question& question) {
        if (!known) known = std::any_of(u_.copies().begin(), u_.copies().end(), question);
        return *known;
    }

    bool is_any_moved() {
        return any_copy(moved_, [&](const Copy& copy) { return has_any_other_value(copy); });
    }
    bool is_any_faded() {
        return any_copy(faded_, [&](const Copy& copy) {
            return differ(u_.inner(copy).transform().opacity, u_.copied(copy).transform().opacity);
        });
    }
    bool is_any_elsewhere() {
        return any_copy(elsewhere_, [&](const Copy& copy) {
            return std::any_of(u_.nest_frames().begin(), u_.nest_frames().end(), [&](double frame) {
                const Matrix before = u_.inside_placement().world(copy.inner, u_.inner_frame(frame));
                return !are_alike(before, u_.result_placement().world(copy.result, frame));
            });
        });
    }

    bool is_rehung(const Copy& copy) const {
        const auto parent = u_.inside().parent(copy.inner);
        const auto parent_after = u_.result().parent(copy.result);
        return parent ? !parent_after || u_.copy_of(*parent) != parent_after : parent_after.has_value();
    }
    bool is_any_rehung(const Copy& own, Whose whose) {
        if (whose == Whose::nobody) return false;
        if (whose == Whose::own) return is_rehung(own);
        return any_copy(rehung_, [&](const Copy& copy) { return is_rehung(copy); });
    }

    static constexpr std::size_t kPlain = 4;  // characters of "ks.p"
    static constexpr double kSameScale = 1e-6;

    Unnesting& u_;
    std::optional<bool> has_links_, moved_, faded_, elsewhere_, rehung_, squeezed_;  // once worked out
};

}  // namespace

void find_place_expressions(Unnesting& u) {
    if (!u.nest_frames().empty()) PlaceExpressions(u).look();
}

}  // namespace lottie::looks
