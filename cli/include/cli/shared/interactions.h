// What state machines and themes around an animation expect of its layers, and what becomes of that in a run.
#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "document/document.h"
#include "looks/finding.h"
#include "looks/judge.h"
#include "packed/archive.h"

namespace cli {

using NamesNow = std::map<std::string, std::set<std::string>>;  // of layers, by the names that they had

// Remembers the layers that state machines refer to by name.
class AskedLayers {
  public:
    // Before the run. Everything given must outlive it.
    AskedLayers(const lottie::document::Document& document, const lottie::packed::AskedFor& asked_for);

    // The compositions of the layers of that name, one for each layer.
    std::vector<const host::model::Comp*> homes(const std::string& name) const;

    // What became of them.
    struct Outcome {
        NamesNow names;
        std::vector<lottie::looks::Finding> losses;  // what no new name can repair
    };
    Outcome outcome() const;

    // Adds what mending made of it to what the run made of it.
    void add(const Outcome& mended, Outcome& run) const;

  private:
    const lottie::document::Document& document_;
    std::map<std::string, std::vector<const host::model::Layer*>> asked_;  // by name
};

lottie::looks::Finding has_several_names(const std::string& layer);

// The names that are referred to and that something in the animation has.
NamesNow names_in(std::string_view animation, const lottie::packed::AskedFor& asked_for);

// The new names of layers, by the old ones, with which state machines mean what they meant before in all animations of
// the file; and what is lost because the animations disagree.
struct NewNames {
    std::map<std::string, std::string> names;
    std::vector<lottie::looks::Finding> losses;
};
NewNames new_layer_names(const std::vector<NamesNow>& animations);

// The layers of a stack changed by an un-nesting.
struct ChangedStack {
    lottie::looks::StackChange change;
    std::vector<std::string_view> layers;  // their texts
};

// What mending made of the result of a run, as far as state machines and themes refer to it. Layers are identified by
// the names that the run gave them.
AskedLayers::Outcome follow_mending(const AskedLayers::Outcome& after_run, const ChangedStack& run,
                                    const ChangedStack& mended, const lottie::packed::AskedFor& asked_for);

}  // namespace cli
