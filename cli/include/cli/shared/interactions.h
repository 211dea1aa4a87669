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

using CurrentNames = std::map<std::string, std::set<std::string>>;  // of layers, by the names that they had

// Remembers the layers that state machines refer to by name.
class ReferencedLayers {
  public:
    // Before the run. Everything given must outlive it.
    ReferencedLayers(const lottie::document::Document& document, const lottie::packed::References& references);

    // The compositions of the layers of that name, one for each layer.
    std::vector<const host::model::Comp*> homes(const std::string& name) const;

    // What became of them.
    struct Outcome {
        CurrentNames names;
        std::vector<lottie::looks::Finding> losses;  // what no new name can repair
    };
    Outcome outcome() const;

    // Adds what mending made of it to what the run made of it.
    void add(const Outcome& mended, Outcome& run) const;

  private:
    const lottie::document::Document& document_;
    std::map<std::string, std::vector<const host::model::Layer*>> layers_;  // by name
};

lottie::looks::Finding has_several_names(const std::string& layer);

// The names that are referred to and that something in the animation has.
CurrentNames names_in(std::string_view animation, const lottie::packed::References& references);

// The new names of layers, by the old ones, with which state machines mean what they meant before in all animations of
// the file; and what is lost because the animations disagree.
struct NewNames {
    std::map<std::string, std::string> names;
    std::vector<lottie::looks::Finding> losses;
};
NewNames new_layer_names(const std::vector<CurrentNames>& animations);

// The layers of a stack changed by an un-nesting.
struct ChangedStack {
    lottie::looks::StackChange change;
    std::vector<std::string_view> layers;  // their texts
};

// What mending made of the result of a run, as far as state machines and themes refer to it. Layers are identified by
// the names that the run gave them.
ReferencedLayers::Outcome follow_mending(const ReferencedLayers::Outcome& after_run, const ChangedStack& run,
                                         const ChangedStack& mended, const lottie::packed::References& references);

}  // namespace cli
