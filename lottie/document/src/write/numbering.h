// The `ind` of each layer of a composition as it is written.
#pragma once

#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

#include "shared/store.h"

namespace lottie::document {

// Layers of the file keep theirs; new ones get the numbers behind the largest, from top to bottom. A layer of the file
// that has none gets one only if something must refer to it.
class Numbering {
  public:
    // `comp` is null for a composition that the host made.
    Numbering(const StoredComp* comp, const std::vector<host::model::Layer*>& stack);

    std::optional<std::int64_t> number(const host::model::Layer& layer) const;
    // For the value of a layer parameter, an id: 0 if that means no layer of this composition.
    std::int64_t number_of_id(double id) const;

  private:
    std::unordered_map<const host::model::Layer*, std::int64_t> new_numbers_;
    const host::model::Comp* comp_ = nullptr;
};

}  // namespace lottie::document
