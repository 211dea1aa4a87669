// What a listing says about a layer or a composition.
#pragma once

#include <string>

#include "document/document.h"

namespace cli {

// "nest", "solid", "image", "null", "shape", "text", "audio", "data", "footage", "camera", "light".
const char* type_of(const lottie::document::Document& document, const host::model::Layer& layer);

// Composition time in frames, to a thousandth of a frame.
double frames(const host::model::Comp& comp, host::model::Time time);

// At most three decimals, none of them a trailing zero.
std::string rounded_text(double value);

}  // namespace cli
