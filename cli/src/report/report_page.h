// The page that `exflate report` writes.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "check/nest_check.h"
#include "cli/arguments/options.h"
#include "looks/judge.h"
#include "report/layer_tree.h"

namespace cli {

// The frame at which before and after are furthest apart, as PNG files.
struct WorstFrame {
    std::string before;
    std::string after;
    std::string difference;
};

struct ReportedNest {
    CheckedNest checked;
    std::optional<WorstFrame> worst;  // absent where all pictures look equal
};

// What the whole file comes to, made flat.
struct FlatSum {
    FileTotals totals;
    bool succeeded = false;
};

struct Report {
    std::string file;             // for display
    std::string command;          // that writes the result
    std::optional<FlatSum> flat;  // if it was asked what making it flat would do
    std::string composition;      // asset id; empty for the main one
    std::string composition_name;
    double width = 0;
    double height = 0;
    double frame_rate = 0;
    double first_frame = 0;  // of the two animations below
    std::size_t bytes_before = 0;
    std::size_t bytes_after = 0;
    std::string before;  // the composition as an animation of its own
    std::string after;   // with all chosen nests un-nested, or made flat
    std::vector<ReportedNest> nests;
    std::optional<Proof> proof;  // of all nests together
    std::optional<WorstFrame> worst;
    std::string proof_problem;
    std::vector<TreeLayer> layers_before;
    std::vector<TreeLayer> layers_after;
    std::vector<std::string> messages;  // of the plug-in and the host during the run, or how making it flat ends

    lottie::looks::Verdict verdict() const;  // the worst of what is un-nested
    bool succeeded() const;                  // every look stays, and no nest does that was to become flat
};

// The program that plays animations in the page, and its licence.
struct AnimationPlayer {
    std::string program;
    std::string licence;
};

// Reads the player's two files. Throws Failure (failed) with what to do about it when it is not there.
AnimationPlayer load_player();

// One HTML file that needs no network. Nothing in the animation can become part of the page's own program; the
// animation's expressions run isolated in a frame of their own.
std::string report_page(const Report& report, const AnimationPlayer& player);

// What the page's program reads: everything but the two animations, as JSON.
std::string report_data(const Report& report, const AnimationPlayer& player);

// The shell command that writes the report's result. `extension` is that of the result's name.
std::string command_line(const Options& options, const std::string& extension);

}  // namespace cli
