// Changes to a text, collected in any order and applied in one pass.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "document/written.h"
#include "slice.h"

namespace lottie::document {

// Where edits overlap the outermost wins; of two for the same place the first.
class Patch {
  public:
    using Writer = std::function<void(Written&)>;

    void replace(Slice where, std::string text) { edits_.push_back({where, std::move(text), {}}); }
    void insert(std::uint32_t at, std::string text) { replace({at, at}, std::move(text)); }
    // For text too long to be held twice.
    void replace_later(Slice where, Writer writer) { edits_.push_back({where, {}, std::move(writer)}); }
    bool is_empty() const { return edits_.empty(); }

    // Appends the piece `range` of the text, changed, to `out`, which may point at the text.
    void write(std::string_view text, Slice range, Written& out);

  private:
    struct Edit {
        Slice where;
        std::string text;
        Writer writer;
    };
    std::vector<Edit> edits_;
};

// Removing and inserting members of an object or elements of an array, with the commas and the layout around them. What
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
