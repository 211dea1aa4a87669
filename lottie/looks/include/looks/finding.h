// What an un-nesting does to the look, as findings with stable codes.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lottie::looks {

// The order is that of reports; codes are the names with hyphens and never change their meaning.
enum class Reason {
    opacity,
    mask,
    matte_used,
    matte_given,
    matte_split,
    blend_mode,
    blend_inside,
    adjustment_inside,
    clip,
    effects,
    layer_styles,
    hidden,
    collapse,
    motion_blur,
    three_d,
    camera,
    auto_orient,
    time_remap,
    stretch,
    frame_rate,
    start,
    fractional_start,
    trim,
    parent,
    children,
    shear,
    place,
    lost_link,
    lost_layer,
    order,
    transform_expression,
    time_in_expression,
    composition_in_expression,
    index_in_expression,
    layer_reference,
    composition_reference,
    name_clash,
    interaction,
    long_name,
    quoted_name,
    random,
    shared_source,
    size,
};

std::string_view code(Reason reason);
std::vector<Reason> all_reasons();

enum class Weight {
    harmless,  // there, but no look depends on it
    slight,    // the numbers differ, no eye sees it
    change,
};

struct Finding {
    Reason reason;
    Weight weight;
    std::string sentence;         // what happens, to which layer, where; without the nest's own name
    std::string way_out;          // what the person can do; empty when there is nothing to do
    std::string layer;            // the layer it is about, by name; empty for the nest itself
    std::string property;         // by the file's names, such as "ks.o"; empty if it is no property
    std::optional<double> frame;  // the first one at which it shows, in frames of the nest's composition
};

enum class Verdict { exact, equal_to_the_eye, changes };

// "exact", "equal to the eye", "changes".
std::string_view name(Verdict verdict);

// The verdict that the weightiest finding gives.
Verdict verdict_of(const std::vector<Finding>& findings);

}  // namespace lottie::looks
