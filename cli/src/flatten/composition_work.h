// One composition, its nests un-nested as far as it keeps its look.
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "cli/arguments/options.h"
#include "cli/flatten/flattening.h"
#include "cli/shared/trial.h"
#include "looks/judge.h"
#include "mend/workbench.h"

namespace cli {

// One animation on its way to being flat.
struct FlatteningState {
    // What was learned from making it flat once already.
    struct Learned {
        // Nests, by origin, that become flat exactly or not at all, and why: together their differences would show.
        std::map<std::size_t, std::string> exact_only;
        std::size_t times = 0;
        // What to do when differences too small to see add up to too much: the next of these.
        enum class Unseen { allowed, mended, allowed_at_end, refused } unseen = Unseen::allowed;
    };

    FlatteningState(const std::string& text, const host::runner::PluginModule& plugin, const Options& options,
                    lottie::packed::References references, const FileLimits& limits, const Learned& learned);

    void count_showings();  // as the animation stands

    // The nests that became flat and differ in some way from the original animation.
    std::map<std::size_t, std::string> find_deviating_nests();

    void find_referenced_layers(const lottie::document::Document& document);  // in the whole animation
    void rename(const std::string& before, const std::string& now);           // one of those

    const host::runner::PluginModule& plugin;
    const Options& options;
    lottie::packed::References references;  // by the current names of layers
    std::map<std::string, std::string>
        layer_names;               // original names of layers that are referred to, by the current ones
    std::set<std::string> single;  // names that only one layer in the picture has
    const FileLimits& limits;
    const Learned& learned;
    lottie::mend::Workbench bench;
    lottie::looks::Judge judge;
    std::vector<double> shown;  // how often the picture shows each composition, including nests in nests
    bool mends_unseen;          // what differs without being seen is mended where that can be done
    double unseen_left;         // of what may differ without being seen, in the judge's measure
    double bytes_to_read;       // by attempts; then the remaining nests stay
    double most_bytes;          // that the animation may reach by un-nesting nests of shared compositions

    // Of the file, in the order in which they were first tried; a nest inside others may be tried again after it came
    // out of them.
    std::vector<FlattenedNest> nests;
    std::map<std::size_t, std::size_t> nest_of_origin;
    std::set<std::size_t> flat;    // origins with a nest that was un-nested
    std::set<std::size_t> slight;  // with one that looks equal but is not exact
    // Origins with a nest that stayed in the composition for a difference too small to see by itself.
    std::map<std::size_t, std::set<std::size_t>> accumulating;
    std::map<lottie::looks::NestOfFile, std::size_t> origins;
};

class CompositionWork {
  public:
    CompositionWork(FlatteningState& state, std::size_t composition);

    // Un-nests the nests at those places, and if `goes_deeper` those that come out of them. Throws Failure.
    void work(const std::set<std::size_t>& places, bool goes_deeper);

  private:
    // Layers are identified by their places in the stack when the work began, later ones by higher numbers.
    using Layers = std::set<std::size_t>;
    struct Refusal {
        std::string reason;
        bool stands_alone = false;  // whatever else is un-nested
    };
    using Refused = std::map<std::size_t, Refusal>;  // by layer
    struct Stage;
    struct Attempt;

    Layers without_named_in_expressions(const Layers& layers);
    Layers without_large(const Layers& layers);
    void un_nest(Layers layers);
    Attempt attempt(const Layers& layers);
    void judge(Attempt& attempt);
    void follow_names(Attempt& attempt);
    void mend(Attempt& attempt);
    const std::string* why_exact_only(const lottie::looks::NestReport& report);
    bool is_seen(const lottie::looks::NestReport& report, double unseen_before);
    Refused refused_of(const Attempt& attempt, const Layers& layers);
    std::vector<std::size_t> too_large(const Attempt& attempt, const Layers& layers);
    void accept(Attempt& attempt);
    std::vector<lottie::mend::Workbench::Nest> nests_among(const Layers& layers) const;
    FlattenedNest& entry(std::size_t layer);
    void set_stack(std::vector<std::size_t> layers);
    void keep(std::size_t layer, const std::string& reason);

    FlatteningState& state_;
    std::size_t composition_;
    std::vector<std::size_t> stack_;                         // as it is now
    std::unordered_map<std::size_t, std::size_t> place_of_;  // in it
    std::size_t next_layer_;
    Layers stays_;                  // whatever else is un-nested
    std::shared_ptr<Stage> stage_;  // of the stack as it is now; null until something is tried
};

}  // namespace cli
