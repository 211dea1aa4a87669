// Lays out a window.
#pragma once

#include "scriptui/text_measure.h"
#include "scriptui/window.h"

namespace host::scriptui {

// Sets the frames of the window and its elements from their layout settings. Rows and columns place their children in
// order, `spacing` apart, inside `margins`; children with Align::fill share the remaining space. A child with both
// location and size set is left out of the flow. Hidden elements keep their space.
void lay_out(Window& window, const TextMeasure& measure);

}  // namespace host::scriptui
