// Changes to a text, collected in any order and applied in one pass.
#include "patch.h"

#include <algorithm>

namespace host::lottie {

void Patch::write(std::string_view text, Slice range, std::string& out) {
    std::stable_sort(edits_.begin(), edits_.end(), [](const Edit& a, const Edit& b) {
        if (a.where.begin != b.where.begin) return a.where.begin < b.where.begin;
        if (a.where.empty() != b.where.empty()) return a.where.empty();
        return a.where.end > b.where.end;
    });
    std::uint32_t done = range.begin;
    for (const Edit& edit : edits_) {
        if (edit.where.begin < done) continue;
        out.append(text.substr(done, edit.where.begin - done));
        if (edit.writer) {
            edit.writer(out);
        } else {
            out += edit.text;
        }
        done = edit.where.end;
    }
    out.append(text.substr(done, range.end - done));
}

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

void SequenceEdit::apply(Patch& patch) const {
    const bool is_empty = units_.empty();
    const std::string between = separator();
    const Slice head{container_.begin + 1, is_empty ? container_.begin + 1 : units_.front().begin};
    const Slice tail{is_empty ? container_.end - 1 : units_.back().end, container_.end - 1};

    // The gap in front of unit i reaches back to the last unit that stays.
    std::uint32_t gap_begin = container_.begin + 1;
    bool is_first = true;  // nothing stays before the gap
    bool is_changed = false;
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
            std::string text(is_first ? head.of(text_) : std::string_view());
            bool needs_separator = !is_first;
            for (const std::string& unit : inserted) {
                text += (needs_separator ? between : "") + unit;
                needs_separator = true;
            }
            if (!is_end && needs_separator) text += between;
            const bool stays_empty = is_end && is_first && inserted.empty();
            if (stays_empty) text.clear();
            if (is_end && !stays_empty) text += tail.of(text_);
            patch.replace({gap_begin, is_end ? container_.end - 1 : units_[i].begin}, std::move(text));
        }
        if (is_end) break;
        gap_begin = units_[i].end;
        is_first = is_changed = false;
        inserted.clear();
    }
}

}  // namespace host::lottie
