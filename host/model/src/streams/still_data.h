// Shared data of streams without keyframes, which are many with few different values.
#pragma once

#include <array>
#include <memory>

#include "model/stream.h"

namespace host::model {

// A small cache: streams with the same value share data if the value was used recently.
class StillData {
  public:
    StillData() = default;
    StillData(const StillData&) = delete;

    // Compares bitwise.
    std::shared_ptr<const StreamData> of(const Value& value);

  private:
    std::array<std::shared_ptr<const StreamData>, 64> last_;  // by a hash of the value
};

}  // namespace host::model
