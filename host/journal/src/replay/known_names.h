// Names of handles and addresses during a replay, looked up in both directions.
#pragma once

#include <map>
#include <optional>
#include <utility>

#include "names.h"

namespace host::journal {

class KnownNames {
  public:
    // The name of a value from the plug-in, else the next name with this word.
    std::string of(std::uint64_t raw, std::string_view word) {
        const HandleName& name = names_.of(raw, word);
        raw_.insert_or_assign({name.word, name.number}, raw);
        return name.text();
    }

    void bind(std::uint64_t raw, const HandleName& name) {
        names_.bind(raw, name);
        raw_.insert_or_assign({name.word, name.number}, raw);
    }

    std::optional<std::uint64_t> raw_of(const HandleName& name) const {
        const auto found = raw_.find({name.word, name.number});
        return found == raw_.end() ? std::nullopt : std::optional(found->second);
    }

  private:
    HandleNames names_;
    std::map<std::pair<std::string, std::uint64_t>, std::uint64_t> raw_;
};

}  // namespace host::journal
