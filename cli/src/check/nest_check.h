// What un-nesting one nest by itself does to the look.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/flatten/flattening.h"
#include "cli/shared/dialog_answers.h"
#include "cli/shared/trial.h"
#include "document/document.h"
#include "looks/judge.h"
#include "pictures/drawing_process.h"
#include "runner/plugin_module.h"
#include "script/engine.h"

namespace cli {

// How much the pictures of a composition differ before and after, at the frame where they differ most.
struct Proof {
    bool looks_equal = false;
    double frame = 0;  // of the composition
    double mean = 0;   // of all channels, 0..255
    double share_beyond_8 = 0;
    double ssim = 1;
    std::size_t frames = 0;  // that were compared
};

// Whether a finding that would make the check fail is tolerated.
enum class Tolerated {
    no,
    known,    // from an earlier check
    allowed,  // because of its reason
};

// What `exflate flatten` makes of a nest.
struct FlattenedAs {
    std::string kept_because;  // it stays a nest; empty: it is un-nested
    Tolerated staying = Tolerated::no;
    std::vector<lottie::looks::Reason> mended;
};

struct CheckedNest {
    std::string composition;  // asset id; empty for the main one
    std::string composition_name;
    std::size_t number = 0;       // in the stack, from 1
    std::size_t layers = 0;       // that come out
    std::size_t bytes_after = 0;  // of the file with only this nest un-nested
    lottie::looks::NestReport report;
    std::vector<Tolerated> tolerated;      // for each of its findings; empty: none is tolerated
    std::optional<FlattenedAs> flattened;  // if the file was to be made flat; the rest is then about that
    std::optional<Proof> proof;
    std::string proof_problem;  // why there is no proof although one was wanted

    bool is_kept() const { return flattened && !flattened->kept_because.empty(); }
    Tolerated tolerance(std::size_t finding) const { return tolerated.empty() ? Tolerated::no : tolerated[finding]; }
    bool fails() const;
};

// The nest of a file that comes to that size when it is made flat.
CheckedNest as_flattened(const FlattenedNest& nest, std::size_t bytes_after);

struct NestTrial {
    CheckedNest nest;
    std::string after;  // the animation with the nest un-nested; empty unless asked for
};

// Checks the nests of one animation.
class NestChecker {
  public:
    // Everything given must outlive it.
    NestChecker(lottie::document::Document& document, const host::runner::PluginModule& plugin,
                const DialogAnswers& answers, const FileLimits& limits, const lottie::packed::References& references);

    // Un-nests only this nest, judges, and puts it back. Throws Failure as Trials::run() and compare() do.
    NestTrial check(host::model::Layer& nest, bool gives_text);

    Trials& trials() { return trials_; }

  private:
    lottie::document::Document& document_;
    std::shared_ptr<lottie::looks::Work> work_;
    Trials trials_;
    lottie::looks::Judge judge_;
};

struct Proven {
    Proof proof;
    lottie::pictures::Picture before;  // the frame where they differ most
    lottie::pictures::Picture after;
};

// Draws the composition before and after; the frames of the findings are among those compared. Throws
// std::runtime_error with one sentence if the renderer refuses one of the animations, crashes, or exceeds the
// budget.
Proven prove(const std::string& before, const std::string& after, const std::string& composition,
             const std::vector<lottie::looks::Finding>& findings, lottie::pictures::DrawingBudget& budget);

// "pictures: 3 of 12 nests", while they are being drawn.
std::string drawing_progress(std::size_t done, std::size_t count, std::string_view noun);

}  // namespace cli
