// What was found about expressions: of each kind it is told once, with the first of the weightiest.
#pragma once

#include <cstddef>
#include <map>
#include <string>

#include "looks/finding.h"

namespace lottie::looks {

class ExpressionTally {
  public:
    struct Entry {
        Weight weight;
        std::string layer;
        std::string property;
        std::string what;
        std::string way_out;
        std::size_t count = 1;
    };

    void note(Reason reason, Entry entry);
    // What another one noted after this.
    void append(const ExpressionTally& other);
    const std::map<Reason, Entry>& entries() const { return entries_; }

  private:
    std::map<Reason, Entry> entries_;
};

}  // namespace lottie::looks
