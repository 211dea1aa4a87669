// Removing and inserting members of an object or elements of an array.
#include "document/sequence_edit.h"

#include <utility>

namespace lottie::document {

SequenceEdit::SequenceEdit(std::string_view text, Slice container, std::vector<Slice> units)
    : text_(text),
      container_(container),
      units_(std::move(units)),
      removed_(units_.size()),
      inserted_(units_.size() + 1) {}

std::string SequenceEdit::separator() const {
    if (units_.size() > 1) return std::string(Slice{units_[0].end, units_[1].begin}.of(text_));
    if (units_.empty()) return ",";
    return "," + std::string(Slice{container_.begin + 1, units_[0].begin}.of(text_));
}

// What stands between the unit that stays last before `unit` (none: the opening bracket) and `unit` itself (beyond the
// last: the closing bracket), with `inserted` in it.
std::string SequenceEdit::gap_text(std::optional<std::size_t> before, std::size_t unit,
                                   const std::vector<std::string>& inserted) const {
    const bool is_end = unit == units_.size();
    const std::string between = separator();
    std::string text;
    if (!before) {
        if (is_end && inserted.empty()) return text;
        if (!units_.empty()) text = Slice{container_.begin + 1, units_.front().begin}.of(text_);
    }
    bool needs_separator = before.has_value();
    for (const std::string& added : inserted) {
        text += (needs_separator ? between : "") + added;
        needs_separator = true;
    }
    if (is_end) {
        text += Slice{units_.empty() ? container_.begin + 1 : units_.back().end, container_.end - 1}.of(text_);
    } else if (before) {
        text += Slice{units_[*before].end, units_[*before + 1].begin}.of(text_);
    } else if (needs_separator) {
        text += between;
    }
    return text;
}

void SequenceEdit::apply(Patch& patch) const {
    std::optional<std::size_t> before;  // the last unit that stays
    bool is_changed = false;            // since then
    std::vector<std::string> inserted;
    for (std::size_t i = 0; i <= units_.size(); ++i) {
        is_changed = is_changed || !inserted_[i].empty();
        inserted.insert(inserted.end(), inserted_[i].begin(), inserted_[i].end());
        const bool is_end = i == units_.size();
        if (!is_end && removed_[i]) {
            is_changed = true;
            continue;
        }
        if (is_changed) {
            const Slice gap{before ? units_[*before].end : container_.begin + 1,
                            is_end ? container_.end - 1 : units_[i].begin};
            patch.replace(gap, gap_text(before, i, inserted));
        }
        before = i;
        is_changed = false;
        inserted.clear();
    }
}

}  // namespace lottie::document
