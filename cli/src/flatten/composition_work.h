// One composition whose nests are un-nested as far as the look is kept.
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "cli/arguments/options.h"
#include "cli/flatten/flattening.h"
#include "cli/shared/trial.h"
#include "looks/judge.h"
#include "mend/workbench.h"

namespace cli {

// One animation on its way to being flat.
struct FlatteningState {
    FlatteningState(const std::string& text, const host::runner::PluginModule& plugin, const Options& options);

    const host::runner::PluginModule& plugin;
    const Options& options;
    FileLimits limits;
    lottie::mend::Workbench bench;
    lottie::looks::Judge judge;
    std::vector<double> shown;  // how often the picture shows each composition, nests in nests included
    double unseen_left = 1;     // of what may differ unseen, as the judge counts it
    double bytes_to_read;       // in attempts, before what is left stays as it is
    double most_bytes;          // that the animation may come to by un-nesting nests of shared compositions
};

class CompositionWork {
  public:
    CompositionWork(FlatteningState& state, std::size_t composition);

    // Un-nests the nests at those places. Throws Failure.
    std::vector<FlattenedNest> work(const std::set<std::size_t>& places);

  private:
    using Places = std::set<std::size_t>;                // in the stack as it was when the work began
    using Refused = std::map<std::size_t, std::string>;  // such places, and why
    struct Stage;
    struct Attempt;

    void un_nest(Places places);
    Places without_large(const Places& places);
    Attempt attempt(const Places& places);
    Refused refused_of(const Attempt& attempt, const Places& places);
    std::vector<std::size_t> too_large(const Attempt& attempt, const Places& places);
    void accept(Attempt& attempt);
    void keep(std::size_t place, const std::string& reason);
    FlattenedNest& entry_at(std::size_t place);

    FlatteningState& state_;
    std::size_t composition_;
    std::vector<FlattenedNest> entries_;
    std::vector<std::optional<std::size_t>> place_before_;  // of each layer of the stack as it is now
    std::shared_ptr<Stage> stage_;                          // of the stack as it is now; null until something is tried
};

}  // namespace cli
