// How far layers lie from where they lay.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "survey.h"

namespace lottie::looks {

// How far a picture lies off at a frame.
struct Offset {
    double distance = 0;  // pixels; negative when it is not seen then
    // A distance that the eye does not see all the same changes the pixels along the picture's edge, and no more than a
    // share of the composition's may change: how much of that share the edge takes.
    double blurred = 0;
};

// Whether no point of any picture lies elsewhere; much cheaper than to ask where it reaches.
bool are_alike(const Matrix& a, const Matrix& b);
// Whether no point of the layer's picture lies elsewhere by as much as counts. False does not say the opposite.
bool surely_lies_alike(const Matrix& a, const Matrix& b, Survey& survey, std::size_t place, double frame);
// Around the layer's picture; one that cannot be told is taken to be as large as the composition.
Hull extent(Survey& survey, std::size_t place, double frame);
// Of what `hull` holds, between two places in a stack.
Offset offset_between(const Matrix& before, const Matrix& after, const Hull& hull, const Stack& stack);

// How far one layer lies off over all frames.
struct Measured {
    const SceneLayer* layer;
    bool moves;
    double distance = 0;          // the furthest
    std::optional<double> frame;  // the first at which the eye sees it
    double blurred = 0;           // the most
};

// Frame by frame, for what carries several layers is worked out once for each. `offset_at(i, frame)` is that of the
// layer at that place of the list.
void measure(std::vector<Measured>& layers, const std::vector<double>& frames,
             const std::function<Offset(std::size_t, double)>& offset_at);

// Of several layers.
struct Displacement {
    const SceneLayer* layer = nullptr;  // the one that lies furthest off
    double distance = 0;
    double frame = 0;        // the first at which the eye sees any of them off
    std::size_t layers = 0;  // that it sees off
    double blurred = 0;      // of all of them

    void add(const Measured& one);
    bool is_seen() const { return layers > 0 || blurred > 1; }
    std::optional<double> first_frame() const { return layers > 0 ? std::optional(frame) : std::nullopt; }
};

}  // namespace lottie::looks
