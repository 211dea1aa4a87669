// Removing and inserting members of an object or elements of an array.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "document/patch.h"
#include "document/slice.h"

namespace lottie::document {

// Looks after the commas and the layout around them. What
// stays keeps its bytes; changes inside it are the patch's business.
class SequenceEdit {
  public:
    // `container` with its brackets, `units` in the order of the text (members with their keys).
    SequenceEdit(std::string_view text, Slice container, std::vector<Slice> units);

    std::size_t size() const { return units_.size(); }
    void remove(std::size_t unit) { removed_[unit] = true; }
    // Behind unit `unit` - 1 and what was inserted there before; 0 = at the front.
    void insert_before(std::size_t unit, std::string text) { inserted_[unit].push_back(std::move(text)); }
    void append(std::string text) { insert_before(size(), std::move(text)); }

    // Whitespace and comma as this container has them between two of its units.
    std::string separator() const;
    void apply(Patch& patch) const;

  private:
    std::string gap_text(std::optional<std::size_t> before, std::size_t unit,
                         const std::vector<std::string>& inserted) const;

    std::string_view text_;
    Slice container_;
    std::vector<Slice> units_;
    std::vector<bool> removed_;
    std::vector<std::vector<std::string>> inserted_;  // one more than units
};

}  // namespace lottie::document
