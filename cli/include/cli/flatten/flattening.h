// Making an animation flat, from the innermost composition outward, as far as it keeps its look.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "cli/arguments/options.h"
#include "cli/shared/interactions.h"
#include "cli/shared/totals.h"
#include "document/input_error.h"
#include "looks/judge.h"
#include "packed/archive.h"
#include "runner/plugin_module.h"

namespace cli {

// What became of one nest of the input.
struct FlattenedNest {
    std::size_t origin = 0;   // its number among the nests of the input
    std::string composition;  // asset id; empty for the main one
    std::string composition_name;
    std::size_t number = 0;  // in the stack of the input, from 1
    std::string name;
    std::size_t layers = 0;    // that came out of it, or would have
    std::string kept_because;  // still a nest; empty: it was un-nested
    std::vector<lottie::looks::Reason> mended;
    // Of its un-nesting with the repairs, done or only tried; unknown if none was tried.
    lottie::looks::Verdict verdict = lottie::looks::Verdict::exact;
    std::vector<lottie::looks::Finding> findings;

    bool is_kept() const { return !kept_because.empty(); }
    bool changes() const { return !is_kept() && verdict == lottie::looks::Verdict::changes; }
};

struct Flattened {
    std::string text;
    std::vector<FlattenedNest> nests;  // innermost compositions first, each from top to bottom
    std::size_t nests_left = 0;        // that can be seen
    CurrentNames layer_names;          // of layers that state machines refer to
    std::vector<lottie::document::InputError> warnings;
    std::string skipped;  // why nothing was done; empty otherwise
    std::vector<lottie::looks::StackChange> steps = {};

    // Every nest that was to become flat did so and looks as before.
    bool succeeded() const;
};

// Works on the nests that the options name, or on all. What surrounds the animation may refer to parts of it. Throws
// Failure: bad input, and what the plug-in or the host report.
Flattened flatten_animation(const std::string& text, const host::runner::PluginModule& plugin, const Options& options,
                            const lottie::packed::References& references = {});

// The nests only.
FileTotals totals_of(const Flattened& flattened);

// What is said last: "0 pre-comps left, look kept", or what is left and why.
std::string last_line(const Flattened& flattened);
// What became of one nest.
std::string nest_line(const FlattenedNest& nest);

}  // namespace cli
