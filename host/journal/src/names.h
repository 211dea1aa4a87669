// Names for handles and addresses: layer#12 stays layer#12 throughout a journal.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>

namespace host::journal {

struct HandleName {
    std::string word;
    std::uint64_t number;

    std::string text() const { return word + '#' + std::to_string(number); }
};

class HandleNames {
  public:
    // The name of a handle or address seen before, else the next name with this word.
    const HandleName& of(std::uint64_t raw, std::string_view word) {
        const auto found = names_.find(raw);
        return found != names_.end() ? found->second : renew(raw, word);
    }
    // The next name with this word, for something new that may have the address of something old.
    const HandleName& renew(std::uint64_t raw, std::string_view word) {
        return bind(raw, {std::string(word), ++last_[std::string(word)]});
    }
    // Sets the name.
    const HandleName& bind(std::uint64_t raw, HandleName name) {
        return names_.insert_or_assign(raw, std::move(name)).first->second;
    }

  private:
    std::unordered_map<std::uint64_t, HandleName> names_;
    std::map<std::string, std::uint64_t> last_;
};

}  // namespace host::journal
