// Clock and visibility: time remap, stretch, starts, trims.
#include <algorithm>
#include <cmath>
#include <string_view>

#include "cycle.h"
#include "findings.h"
#include "retiming.h"
#include "text_reader.h"
#include "words.h"

namespace lottie::looks {
namespace {

constexpr double kSameTime = 0.001;    // frames; what the exporter rounds to
constexpr double kSeenOpacity = 0.19;  // percent; less than that is no half step of a channel

bool matters(const SceneLayer& layer) {
    return layer.can_draw() && !layer.is_hidden;
}

// Layers inside that look different at different frames, by themselves or through the parents they hang on.
bool varies(Unnesting& u, std::size_t inner) {
    return u.inside_placement().moves(inner) || u.inside_survey().changes_over_time(inner);
}

bool depends_on_time(Unnesting& u, const Copy& copy) {
    return matters(u.inner(copy)) && varies(u, copy.inner);
}

bool any_depends_on_time(Unnesting& u) {
    return std::any_of(u.copies().begin(), u.copies().end(),
                       [&u](const Copy& copy) { return depends_on_time(u, copy); });
}

// Players show nothing of a layer while its matte is off; what they make of inverted ones differs.
bool is_matte_off(const Unnesting& u, double frame) {
    const auto matte = u.stack().matte(u.nest_place());
    const bool is_upright = u.nest().matte_mode == 1 || u.nest().matte_mode == 3;
    return matte && is_upright && !u.stack().layer(*matte).is_on(frame);
}

bool is_seen_before(const Unnesting& u, const SceneLayer& inner, double frame) {
    return u.nest().is_on(frame) && inner.is_on(u.inner_frame(frame)) && !is_matte_off(u, frame);
}

// What an expression gives may be seen.
double opacity_at(const SceneLayer& layer, double frame) {
    const Property& opacity = layer.transform().opacity;
    return opacity.has_expression() ? 100 : opacity.at(frame)[0];
}

struct TimingDifference {
    const SceneLayer* layer = nullptr;
    double frame = 0;
    bool was_seen = false;
    std::size_t layers = 0;
    bool is_tiny = false;  // times differ, whole frames do not
};

void note(TimingDifference& difference, const SceneLayer& layer, double frame, bool was_seen) {
    if (difference.layers++ == 0) difference = {&layer, frame, was_seen, 1, difference.is_tiny};
}

// Frames at which a layer is seen before and not after, or the other way round.
bool is_whole(double frame) {
    return std::abs(frame - std::round(frame)) < kSameTime;
}

// Some players let layers begin and end at whole frames: the first at which they then show another picture.
std::optional<double> first_frame_rounded_otherwise(const Unnesting& u, const SceneLayer& inner,
                                                    const SceneLayer& copied) {
    if (!is_whole(u.nest().start) || u.stack().matte(u.nest_place())) return std::nullopt;
    const double first = std::max(u.stack().first_frame, std::round(u.nest().in));
    const double end = std::min(u.stack().end_frame, std::round(u.nest().out));
    const double in = std::max(first, u.nest().start + std::round(inner.in));
    const double out = std::min(end, u.nest().start + std::round(inner.out));
    const double in_after = std::max(u.stack().first_frame, std::round(copied.in));
    const double out_after = std::min(u.stack().end_frame, std::round(copied.out));
    if (in >= out && in_after >= out_after) return std::nullopt;
    const auto is_faint = [&](double frame) {
        return std::max(opacity_at(inner, u.inner_frame(frame)), opacity_at(copied, frame)) < kSeenOpacity;
    };
    if (const double frame = std::min(in, in_after); in != in_after && !is_faint(frame)) return frame;
    if (const double frame = std::min(out, out_after); out != out_after && !is_faint(frame)) return frame;
    return std::nullopt;
}

TimingDifference compare_visibility(Unnesting& u) {
    TimingDifference difference;
    for (const Copy& copy : u.copies()) {
        const SceneLayer& inner = u.inner(copy);
        const SceneLayer& copied = u.copied(copy);
        if (!matters(inner)) continue;
        bool is_noted = false;
        for (const double frame : u.stack_frames()) {
            if (u.nest().is_on(frame) && opacity_at(u.nest(), frame) <= 0) continue;  // a matter of its opacity
            const double before = is_seen_before(u, inner, frame) ? opacity_at(inner, u.inner_frame(frame)) : 0;
            const double after = copied.is_on(frame) ? opacity_at(copied, frame) : 0;
            // What one of them lacks and nobody sees in the other is no difference.
            const bool was_seen = before > 0;
            if (was_seen == (after > 0) || std::max(before, after) < kSeenOpacity) continue;
            note(difference, inner, frame, was_seen);
            is_noted = true;
            break;
        }
        if (!u.only_shifts()) continue;
        const double from = std::max(u.nest().in, u.outer_frame(inner.in));
        const double to = std::min(u.nest().out, u.outer_frame(inner.out));
        if (to > from && (std::abs(from - copied.in) > kSameTime || std::abs(to - copied.out) > kSameTime)) {
            difference.is_tiny = true;
            const auto frame = is_noted ? std::nullopt : first_frame_rounded_otherwise(u, inner, copied);
            if (frame) note(difference, inner, *frame, false);
        }
    }
    return difference;
}

std::string visibility_sentence(const TimingDifference& difference) {
    return layers_named(difference.layer->name, difference.layers) + " " + in_number(difference.layers, "is", "are") +
           (difference.was_seen ? " not seen any more" : " seen too early or too late") + ", first at frame " +
           timeline_frame(difference.frame);
}

// The first layer inside whose clock now shows another time, at the first frame at which it does.
TimingDifference compare_clocks(Unnesting& u) {
    TimingDifference difference;
    const bool is_unknown = is_clock_unknown(u);
    const bool is_cycled = cycle_of(u).has_value();
    for (const Copy& copy : u.copies()) {
        const SceneLayer& inner = u.inner(copy);
        const bool is_driven = matters(inner) && (is_unknown || (is_cycled && !is_on_throughout_cycle(u, inner)));
        if (!is_driven && !depends_on_time(u, copy)) continue;
        if (is_driven || (is_cycled && !u.is_retimed())) {
            note(difference, inner, u.nest().in, true);
            continue;
        }
        if (u.is_retimed()) {
            if (!shows_what_it_showed(u, copy)) note(difference, inner, u.nest().in, true);
            continue;
        }
        const double shift = u.copied(copy).start - inner.start;
        for (const double frame : u.nest_frames()) {
            if (!is_seen_before(u, inner, frame) || std::abs(u.inner_frame(frame) - (frame - shift)) < kSameTime)
                continue;
            note(difference, inner, frame, true);
            break;
        }
    }
    return difference;
}

const Json* position_of(const LayerPart& transform) {
    return member(transform.json(), "p");
}

const Json* opacity_of(const LayerPart& transform) {
    return member(transform.json(), "o");
}

bool is_faded(const SceneLayer& layer) {
    const Property& opacity = layer.transform().opacity;
    return opacity.is_animated() || opacity.at(0)[0] != 100;
}

bool is_separated(const Json* position) {
    return position != nullptr && is_truthy(*position, "s");
}

std::vector<double> key_times_without(const LayerPart& transform, const Json* left_out) {
    return left_out == nullptr ? transform.key_times() : transform.key_times_without(*left_out);
}

// Where the number ends that begins here; nothing if none does.
std::optional<std::size_t> end_of_number(std::string_view text, std::size_t begin) {
    const std::size_t end = std::min(text.find_first_not_of("+-.0123456789eE", begin), text.size());
    return is_number(text.substr(begin)) ? std::optional(end) : std::nullopt;
}

// Where the next "t" begins, with its quotes. The letter is looked for, as it is rarer than quotes.
std::size_t find_time_key(std::string_view text, std::size_t from) {
    std::size_t at = from;
    do at = text.find("t\"", at + 1);
    while (at != std::string_view::npos && text[at - 1] != '"');
    return at == std::string_view::npos ? at : at - 1;
}

// Whether two texts differ in nothing but the times of keyframes, all of them moved by `shift`. False does not say the
// opposite.
bool are_moved_alike(std::string_view before, std::string_view after, double shift) {
    constexpr std::size_t kKeySize = 3;
    if (before.find('\\') != std::string_view::npos) return false;
    std::size_t a = 0;
    std::size_t b = 0;
    while (true) {
        const std::size_t key = find_time_key(before, a);
        const std::size_t next = key == std::string_view::npos ? before.size() : key + kKeySize;
        if (before.substr(a, next - a) != after.substr(b, next - a)) return false;
        b += next - a;
        a = next;
        if (key == std::string_view::npos) return b == after.size();
        if (before.substr(a, 1) != ":" || after.substr(b, 1) != ":") return false;
        const auto number_before = end_of_number(before, ++a);
        const auto number_after = end_of_number(after, ++b);
        if (!number_before && !number_after) continue;
        if (!number_before || !number_after) return false;
        const double time_before = number_of(before.substr(a, *number_before - a), 0);
        const double time_after = number_of(after.substr(b, *number_after - b), 0);
        if (!(std::abs(time_before + shift - time_after) < kSameTime * 2)) return false;
        a = *number_before;
        b = *number_after;
    }
}

// The first keyframe of a part that is not where it was, moved by `shift`.
std::optional<double> first_lost_key(const LayerPart& before, const LayerPart& after, double shift, bool is_faded) {
    if (&before == &after && std::abs(shift) < kSameTime * 2) return std::nullopt;
    std::vector<double> own_before, own_after;
    // One property in the place of separate dimensions has other keyframes; where it leads is looked at elsewhere.
    if (before.key() == "ks" && is_separated(position_of(before)) && !is_separated(position_of(after))) {
        own_before = key_times_without(before, position_of(before));
        own_after = key_times_without(after, position_of(after));
    } else if (before.key() == "ks" && is_faded) {  // what the nest's opacity became is looked at with that
        own_before = key_times_without(before, opacity_of(before));
        own_after = key_times_without(after, opacity_of(after));
    } else if (are_moved_alike(before.text(), after.text(), shift)) {
        return std::nullopt;
    } else {
        own_before = before.key_times();
        own_after = after.key_times();
    }
    for (std::size_t i = 0; i < std::min(own_before.size(), own_after.size()); ++i) {
        if (std::abs(own_before[i] + shift - own_after[i]) >= kSameTime * 2) return own_after[i];
    }
    return std::nullopt;
}

// Keyframes travel with their layer, all by the same distance.
TimingDifference compare_keys(Unnesting& u) {
    TimingDifference difference;
    if (u.is_retimed()) return difference;  // asked of the values already
    for (const Copy& copy : u.copies()) {
        const SceneLayer& inner = u.inner(copy);
        if (!inner.can_draw()) continue;
        const double shift = u.copied(copy).start - inner.start;
        for (const auto& part : inner.parts()) {
            const LayerPart* after = u.copied(copy).part(part->key());
            if (after != nullptr && is_list_with_new_masks(*part, *after)) continue;
            const auto lost =
                after == nullptr ? std::nullopt : first_lost_key(*part, *after, shift, is_faded(u.nest()));
            if (!lost) continue;
            note(difference, inner, *lost, true);
            break;
        }
    }
    return difference;
}

void find_clock(Unnesting& u, const TimingDifference& clocks) {
    const bool is_remapped = u.has_time_remap();
    if (!is_remapped && u.nest().stretch == 1) {
        if (clocks.layers == 0) return;
        u.add({Reason::start, Weight::change,
               layers_named(clocks.layer->name, clocks.layers) + " " + in_number(clocks.layers, "runs", "run") +
                   " at another time than before from frame " + timeline_frame(clocks.frame) + " on",
               "copy the attributes (--copy-attributes)", clocks.layer->name, "st", clocks.frame});
        return;
    }
    const Reason reason = is_remapped ? Reason::time_remap : Reason::stretch;
    const std::string what =
        is_remapped ? "its time remapping" : "its stretch by " + plain(u.nest().stretch * 100) + " %";
    const std::string property = is_remapped ? "tm" : "sr";
    if (clocks.layers == 0) {
        const bool is_rounded = (is_remapped || u.is_retimed()) && any_depends_on_time(u);
        u.add({reason,
               is_rounded ? Weight::slight : Weight::harmless,
               what + (u.is_retimed() ? " is now in the layers' own keyframes" : " changes no frame that is seen") +
                   (is_rounded ? "; players that count whole frames inside nests show its layers up to a frame apart"
                               : ""),
               "",
               "",
               property,
               {}});
        return;
    }
    u.add({reason, Weight::change,
           what + " is lost: " + layers_named(clocks.layer->name, clocks.layers) + " " +
               in_number(clocks.layers, "shows", "show") + " another time from frame " + timeline_frame(clocks.frame) +
               " on",
           "keep this nest", clocks.layer->name, property, clocks.frame});
}

void find_fractional_start(Unnesting& u) {
    const SceneLayer& nest = u.nest();
    if (is_whole(nest.start) || u.has_time_remap()) return;
    bool is_rounded = any_depends_on_time(u);
    for (const Copy& copy : u.copies()) {
        const SceneLayer& inner = u.inner(copy);
        const bool ends_inside = u.outer_frame(inner.in) > nest.in || u.outer_frame(inner.out) < nest.out;
        is_rounded = is_rounded || (matters(inner) && ends_inside);
    }
    u.add({Reason::fractional_start,
           is_rounded ? Weight::slight : Weight::harmless,
           "it starts between two frames (" + plain(nest.start) + ")" +
               (is_rounded ? "; players that count whole frames inside nests show its layers up to a frame apart"
                           : ", but nothing inside depends on the time"),
           "",
           "",
           "st",
           {}});
}

}  // namespace

void find_time_changes(Unnesting& u) {
    find_clock(u, compare_clocks(u));
    find_fractional_start(u);
    if (const TimingDifference keys = compare_keys(u); keys.layers > 0) {
        u.add({Reason::start, Weight::change,
               "keyframes of " + layers_named(keys.layer->name, keys.layers) +
                   " did not travel along, first seen at frame " + timeline_frame(keys.frame),
               "", keys.layer->name, "t", keys.frame});
    }
    const TimingDifference visibility = compare_visibility(u);
    if (visibility.layers > 0) {
        u.add({Reason::trim, Weight::change, visibility_sentence(visibility),
               "trim the layer inside its composition first, or keep this nest", visibility.layer->name,
               visibility.was_seen ? "op" : "ip", visibility.frame});
    } else if (visibility.is_tiny) {
        u.add({Reason::trim,
               Weight::slight,
               "a layer begins or ends at another time, within the same frame",
               "",
               "",
               "ip",
               {}});
    }
}

}  // namespace lottie::looks
