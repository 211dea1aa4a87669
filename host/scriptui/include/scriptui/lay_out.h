// Gives each element of a window its place.
#pragma once

#include "scriptui/text_measure.h"
#include "scriptui/window.h"

namespace host::scriptui {

// Sets the frames of the window and of everything in it from what the script asked for. Containers in a row or column
// place their children in order, `spacing` apart, inside `margins`; what is to fill shares the room that is left. A
// child for which a script has set place and size stays there, and the others do not mind it. Hidden elements keep
// their room.
void lay_out(Window& window, const TextMeasure& measure);

}  // namespace host::scriptui
