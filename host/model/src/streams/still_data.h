// Data of streams that stand still: they are many, and their values few.
#pragma once

#include <array>
#include <memory>

#include "model/stream.h"

namespace host::model {

// Streams that are given the same value get the same data, as long as it was among the values of the last ones.
class StillData {
  public:
    StillData() = default;
    StillData(const StillData&) = delete;

    // Without keyframes and expression; equal to the bit.
    std::shared_ptr<const StreamData> of(const Value& value);

  private:
    std::array<std::shared_ptr<const StreamData>, 64> last_;  // by a hash of the value
};

}  // namespace host::model
