// Values that themes fill in through named slots, and which of them a run removes.
#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "document/document.h"
#include "looks/finding.h"
#include "looks/judge.h"

namespace cli {

using Slots = std::set<std::string>;

// The string values of a key anywhere in JSON text. The key is given with its quotes.
std::vector<std::string_view> literals_under(std::string_view key, std::string_view json);

// The slots among `filled` that fill in values of the layer.
Slots slots_in(std::string_view layer, const Slots& filled);

lottie::looks::Finding loses_value(const std::string& slot);

class FilledSlots {
  public:
    // Before a run on these nests of the composition. Free if no slot is filled.
    FilledSlots(const lottie::document::Document& document, const host::model::Comp& comp,
                const std::vector<host::model::Layer*>& nests, const Slots& filled);

    // What they lost in the run, which left the composition with these layers.
    std::vector<lottie::looks::Finding> losses(const lottie::looks::StackChange& change,
                                               const lottie::document::WrittenLayers& after) const;

  private:
    std::vector<Slots> slots_of(const lottie::document::WrittenLayers& layers) const;

    const Slots& filled_;
    std::vector<Slots> stack_;                          // of each layer, top to bottom
    std::map<std::size_t, std::vector<Slots>> inside_;  // by the nest's place
};

}  // namespace cli
