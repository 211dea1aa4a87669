// The questions asked about an un-nesting; each adds its findings.
#pragma once

#include "unnesting.h"

namespace lottie::looks {

// Opacity, masks, mattes, blend mode, effects, layer styles and switches of the nest as a whole.
void find_group_changes(Unnesting& unnesting);
// Layers that the nest's frame cut off.
void find_clip_changes(Unnesting& unnesting);
// Blend modes, adjustment layers, cameras and 3D layers inside.
void find_inside_changes(Unnesting& unnesting);
// Clock and visibility: time remap, stretch, starts, trims.
void find_time_changes(Unnesting& unnesting);
// Where the copies and all other layers lie.
void find_place_changes(Unnesting& unnesting);
// Mattes, stack order, layers that were not copied, use of the source.
void find_link_changes(Unnesting& unnesting);
// What expressions compute and whom they name.
void find_expression_changes(Unnesting& unnesting);

}  // namespace lottie::looks
