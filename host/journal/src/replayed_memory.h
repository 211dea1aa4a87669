// Memory handles during a replay: what the journal says the plug-in sees there, and what it makes of it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include "journal/value.h"

namespace host::journal {

class ReplayedMemory {
  public:
    // Content as the journal tells it. Throws BadValue for no content, and for more memory than a replay may use.
    void fill(std::uint64_t handle, const JournalValue& content);
    void forget(std::uint64_t handle);

    // Where it lies; the same until it is filled with another size. Throws BadValue if its content was never told.
    void* address_of(std::uint64_t handle) const;
    // Whether the plug-in has changed it since it was filled or noted.
    bool has_changed(std::uint64_t handle) const;
    std::string_view content_of(std::uint64_t handle) const;
    void note(std::uint64_t handle);  // the change is known from now on

  private:
    struct Block {
        std::unique_ptr<char[]> bytes;
        std::string known;
    };

    std::unordered_map<std::uint64_t, Block> blocks_;
    std::size_t used_ = 0;
};

}  // namespace host::journal
