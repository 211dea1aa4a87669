// One nest un-nested by itself: what that does to the look.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "cli/shared/dialog_answers.h"
#include "document/document.h"
#include "looks/animation.h"
#include "looks/audit.h"
#include "pictures/picture.h"
#include "runner/plugin_module.h"
#include "script/engine.h"

namespace cli {

// How far the pictures of a composition are apart, before and after, at the frame where they are furthest.
struct Proof {
    bool looks_equal = false;
    double frame = 0;  // of the composition
    double mean = 0;   // of all channels, 0..255
    double share_beyond_8 = 0;
    double ssim = 1;
    std::size_t frames = 0;  // that were compared
};

struct CheckedNest {
    std::string composition;  // asset id; empty for the main one
    std::string composition_name;
    std::size_t number = 0;       // in the stack, from 1
    std::size_t layers = 0;       // that come out
    std::size_t bytes_after = 0;  // of the file, this nest alone un-nested
    lottie::looks::NestReport report;
    std::optional<Proof> proof;
    std::string proof_problem;  // why there is no proof although one was asked for
};

struct NestTrial {
    CheckedNest nest;
    lottie::looks::Animation after;
};

// Un-nests the nest alone, judges, and puts it back. Throws Failure as try_unnesting() does.
NestTrial check_nest(lottie::document::Document& document, const lottie::looks::Animation& before,
                     const host::runner::PluginModule& plugin, const DialogAnswers& answers,
                     const host::script::Limits& limits, host::model::Layer& nest);

struct Proven {
    Proof proof;
    lottie::pictures::Picture before;  // the frame where they are furthest apart
    lottie::pictures::Picture after;
};

// Draws the composition before and after; the frames of the findings are among those compared. Throws
// std::runtime_error with one sentence when the renderer refuses one of the animations, crashes, or does not end.
Proven prove(const lottie::looks::Animation& before, const lottie::looks::Animation& after,
             const std::string& composition, const std::vector<lottie::looks::Finding>& findings);

}  // namespace cli
