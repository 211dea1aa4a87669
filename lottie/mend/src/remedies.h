// The remedies, each named after the reason that it answers; its own file says when it applies and why it is right.
#pragma once

#include "unnested.h"

namespace lottie::mend {

// Each mends what it can of one nest and leaves the rest.
void mend_time_remap(Unnested& unnested, Nest& nest);
void mend_trim(Unnested& unnested, Nest& nest);
void mend_parent(Unnested& unnested, Nest& nest);
void mend_place(Unnested& unnested, Nest& nest);
void mend_children(Unnested& unnested, Nest& nest);
void mend_lost_link(Unnested& unnested, Nest& nest);
void mend_matte_split(Unnested& unnested, Nest& nest);

void mend_matte_used(Unnested& unnested, Nest& nest);
void mend_mask(Unnested& unnested, Nest& nest);
void mend_clip(Unnested& unnested, Nest& nest);
void mend_opacity(Unnested& unnested, Nest& nest);
void mend_overlap(Unnested& unnested, Nest& nest);
void mend_blend_mode(Unnested& unnested, Nest& nest);
void mend_names(Unnested& unnested, Nest& nest);
void mend_layer_reference(Unnested& unnested, Nest& nest);

}  // namespace lottie::mend
