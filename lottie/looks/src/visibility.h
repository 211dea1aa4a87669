// What no eye sees.
#pragma once

namespace lottie::looks {

// Displacements in pixels and shares in percent: below kNothing they are rounding, below kUnseen no eye sees them.
inline constexpr double kNothing = 0.01;
inline constexpr double kUnseen = 0.25;
// Pictures are compared at this width, in pixels: what is not seen in them is not seen.
inline constexpr double kPictureWidth = 400;
// Pictures that look equal may differ in so much of their area.
inline constexpr double kUnseenShare = 0.001;
// How much less alike pictures may be, 1 being wholly; people call them equal up to 0.002.
inline constexpr double kUnseenUnlikeness = 0.0015;

}  // namespace lottie::looks
