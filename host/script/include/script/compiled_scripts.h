// Compiled scripts, for engines that run what others ran.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace host::script {

// Keeps the newest few. Not synchronized: engines that share them must run one after the other.
class CompiledScripts {
  public:
    // The engine's own bytecode, good until the next add(); null if the script is not among those kept.
    const std::string* find(std::string_view text) const {
        const auto found =
            std::find_if(scripts_.begin(), scripts_.end(), [text](const Script& one) { return one.text == text; });
        return found == scripts_.end() ? nullptr : &found->bytecode;
    }
    void add(std::string_view text, std::string bytecode) {
        scripts_[next_++ % scripts_.size()] = {std::string(text), std::move(bytecode)};
    }

  private:
    struct Script {
        std::string text;
        std::string bytecode;
    };
    std::array<Script, 4> scripts_;
    std::size_t next_ = 0;
};

}  // namespace host::script
