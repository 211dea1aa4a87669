// Memory handles during a replay: the content that the journal gives them, and what the plug-in makes of it.
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
    // Sets the content. Throws BadValue if the value is not content, or exceeds the memory a replay may use.
    void fill(std::uint64_t handle, const JournalValue& content);
    void forget(std::uint64_t handle);

    // Stable until filled with another size. Throws BadValue if it has no content yet.
    void* address_of(std::uint64_t handle) const;
    // Whether the plug-in has changed it since fill() or accept_change().
    bool has_changed(std::uint64_t handle) const;
    std::string_view content_of(std::uint64_t handle) const;
    void accept_change(std::uint64_t handle);

  private:
    struct Block {
        std::unique_ptr<char[]> bytes;
        std::string known;
    };

    std::unordered_map<std::uint64_t, Block> blocks_;
    std::size_t used_ = 0;
};

}  // namespace host::journal
