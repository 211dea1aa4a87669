// Making an animation flat, from the innermost composition outward, as far as it keeps its look.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "cli/arguments/options.h"
#include "document/input_error.h"
#include "looks/judge.h"
#include "runner/plugin_module.h"

namespace cli {

// What became of one nest of the input.
struct FlattenedNest {
    std::string composition;  // asset id; empty for the main one
    std::string composition_name;
    std::size_t number = 0;  // in the stack of the input, from 1
    std::string name;
    bool is_kept = false;  // still a nest
    std::vector<lottie::looks::Reason> mended;
    lottie::looks::Verdict verdict = lottie::looks::Verdict::exact;  // of the un-nesting, mended
    std::vector<lottie::looks::Finding> findings;                    // what is left when it is un-nested and mended
};

struct Flattened {
    std::string text;
    std::vector<FlattenedNest> nests;  // innermost compositions first, each from top to bottom
    std::size_t nests_left = 0;        // that can be seen
    std::vector<lottie::document::InputError> warnings;
};

// Throws Failure: bad input, and what the plug-in or the host report.
Flattened flatten_animation(const std::string& text, const host::runner::PluginModule& plugin, const Options& options);

}  // namespace cli
