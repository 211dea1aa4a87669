// Opacity, masks, mattes, blend mode, effects, layer styles and switches of the nest as a whole.
#include <algorithm>
#include <cmath>
#include <set>

#include "dark_ground.h"
#include "effects.h"
#include "fading.h"
#include "findings.h"
#include "held.h"
#include "words.h"

namespace lottie::looks {
namespace {

constexpr double kUnseenOpacity = 0.04;  // percent: a tenth of a step of a channel

Weight weight_if_seen(const Unnesting& u, Weight weight) {
    return u.nest_frames().empty() ? Weight::harmless : weight;
}

std::string unless_seen(const Unnesting& u) {
    return u.nest_frames().empty() ? "; the nest is never seen" : "";
}

const char* sentence_of(FadeLoss loss) {
    switch (loss) {
        case FadeLoss::several_paints:
            return "the fills and strokes of a layer show through one another";
        case FadeLoss::overlap:
            return "layers that lie over one another show through";
        case FadeLoss::seams:
            return "the edges along which layers lie over one another are so long that they show";
        case FadeLoss::darker:
            return "some players draw what is black or nearly so darker without the group";
        case FadeLoss::scattered:
            return "the layers lie so far apart that some players draw them blurred as a group and sharp by themselves";
        default:
            return "the layers are so large that what players round shows";
    }
}

void find_opacity(Unnesting& u) {
    const Property& opacity = u.nest().transform().opacity;
    double lowest = 100;
    double furthest = 0;
    std::optional<double> first;
    double last = 0;
    for (const double frame : u.nest_frames()) {
        const double value = opacity.at(frame)[0];
        const double distance = std::abs(100 - value);
        if (distance <= kNothing) continue;
        if (!first) first = frame;
        last = frame;
        if (distance > furthest) furthest = distance, lowest = value;
    }
    if (!first) {
        if (opacity.is_animated() || opacity.at(0)[0] != 100) {
            u.add({Reason::opacity,
                   Weight::harmless,
                   "its opacity is 100 % at every frame that is seen",
                   "",
                   "",
                   "ks.o",
                   {}});
        }
        return;
    }
    const std::string when = opacity.is_animated() ? "is as far as " + plain(lowest) + " % between frames " +
                                                         timeline_frame(*first) + " and " + timeline_frame(last)
                                                   : "of " + plain(lowest) + " %";
    const FadeLoss loss = fade_loss(u);
    const Weight lost = furthest > kUnseenOpacity ? Weight::change : Weight::slight;
    const std::string opacity_then = "its opacity " + when + (opacity.is_animated() ? " and" : "");
    if (loss == FadeLoss::none) {
        u.add({Reason::opacity, Weight::slight, opacity_then + " is now in each layer's own", "", "", "ks.o", first});
    } else if (loss == FadeLoss::not_taken) {
        u.add({Reason::opacity, lost, opacity_then + " is lost: the layers keep their own",
               "give the layers inside the opacity, or keep this nest", "", "ks.o", first});
    } else {
        u.add({Reason::opacity, lost, opacity_then + " would be in each layer's own, but " + sentence_of(loss),
               "keep this nest", "", "ks.o", first});
    }
}

bool covers(const Box& box, double width, double height) {
    return box.left <= 0.5 && box.top <= 0.5 && box.right >= width - 0.5 && box.bottom >= height - 0.5;
}

// Four corners, no handles, around the whole frame: such a path hides nothing.
bool is_frame_around(const Json* path, double width, double height) {
    if (path == nullptr || is_keyed(*path) || member(*path, "x") != nullptr) return false;
    const Json* outline = member(*path, "k");
    if (outline == nullptr || !outline->IsObject()) return false;
    const auto points = array_member(*outline, "v");
    if (points.Size() != 4) return false;
    for (const char* handles : {"i", "o"}) {
        for (const Json& point : array_member(*outline, handles)) {
            for (const Json& part : point.GetArray()) {
                if (part.GetDouble() != 0) return false;
            }
        }
    }
    std::set<std::pair<bool, bool>> corners;
    for (const Json& point : points) {
        if (!point.IsArray() || point.Size() < 2) return false;
        const double x = point[0].GetDouble();
        const double y = point[1].GetDouble();
        if ((x > 0.5 && x < width - 0.5) || (y > 0.5 && y < height - 0.5)) return false;
        corners.emplace(x > width / 2, y > height / 2);
    }
    return corners.size() == 4;
}

bool hides_nothing(const Json& mask, const SceneLayer& nest) {
    const std::string mode = text_member(mask, "mode");
    if (mode == "n") return true;
    const Property opacity(member(mask, "o"), {100, 0, 0});
    if (opacity.is_animated() || opacity.has_expression()) return false;
    if (mode == "s") return opacity.at(0)[0] == 0;
    const Property expansion(member(mask, "x"), {});
    return (mode == "a" || mode == "i") && !is_truthy(mask, "inv") && opacity.at(0)[0] == 100 &&
           !expansion.is_animated() && !expansion.has_expression() && expansion.at(0)[0] >= 0 &&
           is_frame_around(member(mask, "pt"), nest.width, nest.height);
}

// Whether any of them is switched on.
bool acts(Json::ConstArray masks) {
    return std::any_of(masks.begin(), masks.end(), [](const Json& mask) { return text_member(mask, "mode") != "n"; });
}

void find_masks(Unnesting& u) {
    const HeldCut& held = u.held_cut();
    if (held.cuts_otherwise) {
        const SceneLayer& layer = u.inside().layer(*held.cuts_otherwise);
        u.add({Reason::mask,
               weight_if_seen(u, Weight::change),
               "masks of layer " + quoted(layer.name) + " alone cannot cut it as the nest did" + unless_seen(u),
               "keep this nest",
               layer.name,
               "masksProperties",
               {}});
        return;
    }
    const auto masks = u.nest().array("masksProperties");
    if (!u.nest().has_masks) return;
    if (!acts(masks)) {
        u.add(
            {Reason::mask,
             weight_if_seen(u, Weight::change),
             std::string(masks.Empty() ? "it says that it has masks and has none" : "its masks are all switched off") +
                 ": some players hide it, others show it" + unless_seen(u),
             "take \"hasMask\" out, or give it a mask that shows all",
             "",
             "hasMask",
             {}});
        return;
    }
    for (const Json& mask : masks) {
        if (hides_nothing(mask, u.nest())) continue;
        if (held.masks) {
            u.add({Reason::mask,
                   weight_if_seen(u, Weight::slight),
                   "its masks now cut each layer by itself",
                   "",
                   "",
                   "masksProperties",
                   {}});
            return;
        }
        if (held.is_blurred) {
            u.add({Reason::mask,
                   weight_if_seen(u, Weight::change),
                   std::string("its masks would cut each layer by itself, but ") + sentence_of(FadeLoss::scattered) +
                       unless_seen(u),
                   "keep this nest",
                   "",
                   "masksProperties",
                   {}});
            return;
        }
        const std::string name = text_member(mask, "nm");
        u.add({Reason::mask,
               weight_if_seen(u, Weight::change),
               "its mask" + (name.empty() ? "" : " " + quoted(name)) + " is lost: the layers are shown whole" +
                   unless_seen(u),
               "put a matte or masks on the layers inside, or keep this nest",
               "",
               "masksProperties",
               {}});
        return;
    }
    u.add({Reason::mask, Weight::harmless, "its masks hide nothing", "", "", "masksProperties", {}});
}

// A solid, opaque and still, over the whole frame: an alpha matte that shows everything.
bool shows_everything(Unnesting& u, std::size_t matte) {
    const SceneLayer& layer = u.stack().layer(matte);
    const Property& opacity = layer.transform().opacity;
    if (layer.type != LayerType::solid || layer.has_masks || u.stack_placement().moves(matte) ||
        opacity.is_animated() || opacity.has_expression() || opacity.at(0)[0] != 100 || !layer.array("ef").Empty() ||
        u.stack_survey().is_led(matte)) {
        return false;
    }
    for (const double frame : u.nest_frames()) {
        if (!layer.is_on(frame)) return false;
    }
    const Matrix& place = u.stack_placement().world(matte, u.stack().first_frame);
    const Point corner = place.map({0, 0});
    const Point right = place.map({layer.width, 0});
    const bool is_upright = std::abs(corner.y - right.y) < 1e-6;
    return is_upright && covers(around(mapped(hull_of(Box{0, 0, layer.width, layer.height}), place)), u.stack().width,
                                u.stack().height);
}

// What it is a matte for.
void find_given_matte(Unnesting& u) {
    const SceneLayer& nest = u.nest();
    std::size_t users = 0;
    const SceneLayer* first = nullptr;
    for (std::size_t place = 0; place < u.stack().size(); ++place) {
        if (u.stack().matte(place) != u.nest_place()) continue;
        if (users++ == 0) first = &u.stack().layer(place);
    }
    if (users > 0 || nest.is_matte_source) {
        u.add({Reason::matte_given,
               weight_if_seen(u, Weight::change),
               (users > 0 ? "it is the matte of " + layers_named(first->name, users) + ", which " +
                                in_number(users, "loses", "lose") + " it; the copies are drawn"
                          : "it is marked as a matte and not drawn; the copies are drawn") +
                   unless_seen(u),
               "keep this nest",
               users > 0 ? first->name : "",
               "td",
               {}});
    }
}

void find_mattes(Unnesting& u) {
    const SceneLayer& nest = u.nest();
    if (const auto place = u.stack().matte(u.nest_place())) {
        const bool is_harmless = nest.matte_mode == 1 && shows_everything(u, *place) && !is_ground_dark(u);
        const std::string matte = quoted(u.stack().layer(*place).name);
        if (!is_harmless && u.held_cut().matte) {
            u.add({Reason::matte_used,
                   weight_if_seen(u, Weight::slight),
                   "its matte, layer " + matte + ", now cuts each layer by itself, as a mask",
                   "",
                   "",
                   "tt",
                   {}});
            return find_given_matte(u);
        }
        u.add({Reason::matte_used,
               is_harmless ? Weight::harmless : weight_if_seen(u, Weight::change),
               is_harmless ? "its matte, layer " + matte + ", shows everything"
                           : "layer " + matte + " is its matte and shapes the copies no more" + unless_seen(u),
               is_harmless ? "" : "keep this nest, or use the matte inside the composition",
               "",
               "tt",
               {}});
    }
    find_given_matte(u);
}

bool is_anything_below(const Unnesting& u) {
    for (std::size_t place = u.nest_place() + 1; place < u.stack().size(); ++place) {
        const SceneLayer& layer = u.stack().layer(place);
        if (layer.draws() && layer.in < u.nest().out && u.nest().in < layer.out) return true;
    }
    return false;
}

void find_blend_mode(Unnesting& u) {
    if (u.nest().blend_mode == 0) return;
    const bool is_visible = is_anything_below(u) && !u.nest_frames().empty();
    if (is_visible && holds_blend_mode(u)) {
        u.add({Reason::blend_mode,
               Weight::slight,
               "its blend mode, " + blend_mode_name(u.nest().blend_mode) +
                   ", is now that of its layers, one of which is seen at a time",
               "",
               "",
               "bm",
               {}});
        return;
    }
    u.add({Reason::blend_mode,
           is_visible ? Weight::change : Weight::harmless,
           "its blend mode, " + blend_mode_name(u.nest().blend_mode) + ", is lost" +
               (is_visible ? ": the copies lie over what is below with their own"
                           : "; nothing lies below that it could act on"),
           is_visible ? "keep this nest" : "",
           "",
           "bm",
           {}});
}

void find_effects(Unnesting& u) {
    const auto effects = u.nest().array("ef");
    if (effects.Empty()) return;
    EffectReach furthest = EffectReach::nothing;
    std::string name;
    for (const Json& effect : effects) {
        const EffectReach reach = reach_of(effect);
        if (reach <= furthest && !name.empty()) continue;
        furthest = reach;
        name = text_member(effect, "nm");
    }
    const bool are_copied = std::all_of(u.copies().begin(), u.copies().end(), [&](const Copy& copy) {
        return !u.inner(copy).draws() ||
               u.copied(copy).array("ef").Size() >= u.inner(copy).array("ef").Size() + effects.Size();
    });
    const auto shows_nothing_through = [&u](const Copy& copy) {
        return !u.inner(copy).draws() || is_opaque(u.inner(copy));
    };
    // Expressions work it out from the nest's own numbers, where each layer has others.
    if (furthest != EffectReach::nothing && std::any_of(effects.begin(), effects.end(), is_worked_out))
        furthest = EffectReach::elsewhere;
    if (furthest == EffectReach::each_opaque_pixel &&
        std::all_of(u.copies().begin(), u.copies().end(), shows_nothing_through)) {
        furthest = EffectReach::each_pixel;
    }
    const bool is_held = are_copied && furthest == EffectReach::elsewhere && holds_effects(u);
    const std::string property = "ef";
    if (furthest == EffectReach::nothing) {
        u.add({Reason::effects, Weight::harmless, "its effects draw nothing by themselves", "", "", property, {}});
    } else if (!are_copied) {
        u.add({Reason::effects,
               weight_if_seen(u, Weight::change),
               "its effect " + quoted(name) + " does not come along to all layers" + unless_seen(u),
               "copy the attributes (--copy-attributes), or keep this nest",
               "",
               property,
               {}});
    } else if (furthest == EffectReach::each_pixel || is_held) {
        u.add({Reason::effects,
               weight_if_seen(u, Weight::slight),
               "its effect " + quoted(name) + " now acts on each layer by itself, which comes to the same" +
                   (is_held ? ", as only one is drawn at a time" : ""),
               "",
               "",
               property,
               {}});
    } else {
        u.add({Reason::effects,
               weight_if_seen(u, Weight::change),
               "its effect " + quoted(name) + " now acts on each layer by itself, not on the whole" + unless_seen(u),
               "keep this nest, or move the effect to the layers by hand first",
               "",
               property,
               {}});
    }
}

void find_layer_styles(Unnesting& u) {
    const Json* first = nullptr;
    bool is_drawn = false;
    const auto styles = u.nest().array("sy");
    if (styles.Empty()) return;
    for (const Json& style : styles) {
        if (is_truthy(style, "hd") || (member(style, "en") != nullptr && !is_truthy(style, "en"))) continue;
        if (first == nullptr || (!is_drawn && do_players_draw(style))) first = &style;
        is_drawn = is_drawn || do_players_draw(style);
    }
    if (first == nullptr) {
        u.add({Reason::layer_styles, Weight::harmless, "its layer styles are switched off", "", "", "sy", {}});
        return;
    }
    u.add({Reason::layer_styles,
           weight_if_seen(u, is_drawn ? Weight::change : Weight::slight),
           "its layer style " + quoted(text_member(*first, "nm")) + " is lost" +
               (is_drawn ? "" : "; the application draws it, no player does") + unless_seen(u),
           "give the style to the layers inside, or keep this nest",
           "",
           "sy",
           {}});
}

void find_switches(Unnesting& u) {
    const SceneLayer& nest = u.nest();
    if (nest.is_hidden) {
        const bool shows = std::any_of(u.copies().begin(), u.copies().end(),
                                       [&u](const Copy& copy) { return u.copied(copy).draws(); });
        u.add({Reason::hidden,
               shows ? weight_if_seen(u, Weight::change) : Weight::harmless,
               shows ? "it is switched off; its layers, un-nested, are drawn" + unless_seen(u)
                     : "it is switched off, and so is every layer inside",
               shows ? "keep this nest, or hide its layers first" : "",
               "",
               "hd",
               {}});
    }
    if (nest.is_collapsed) {
        u.add({Reason::collapse,
               Weight::harmless,
               "its transformations are collapsed; players draw it as a group nonetheless, the application does not",
               "",
               "",
               "ct",
               {}});
    }
    if (nest.has_motion_blur) {
        const bool moves = u.stack_placement().moves(u.nest_place());
        u.add({Reason::motion_blur,
               moves ? weight_if_seen(u, Weight::change) : Weight::harmless,
               moves ? "the motion blur of its movement is lost" : "it has motion blur and never moves",
               moves ? "switch motion blur on for the layers inside" : "",
               "",
               "mb",
               {}});
    }
}

}  // namespace

void find_group_changes(Unnesting& u) {
    find_opacity(u);
    find_masks(u);
    find_mattes(u);
    find_blend_mode(u);
    find_effects(u);
    find_layer_styles(u);
    find_switches(u);
}

}  // namespace lottie::looks
