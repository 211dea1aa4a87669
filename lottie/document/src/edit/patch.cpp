// Changes to a text, collected in any order and applied in one pass.
#include "document/patch.h"

#include <algorithm>

namespace lottie::document {

void Patch::write(std::string_view text, Slice range, OutputText& out) {
    std::stable_sort(edits_.begin(), edits_.end(), [](const Edit& a, const Edit& b) {
        if (a.where.begin != b.where.begin) return a.where.begin < b.where.begin;
        if (a.where.empty() != b.where.empty()) return a.where.empty();
        return a.where.end > b.where.end;
    });
    std::uint32_t done = range.begin;
    for (const Edit& edit : edits_) {
        if (edit.where.begin < done) continue;
        out.refer(text.substr(done, edit.where.begin - done));
        if (edit.writer) {
            edit.writer(out);
        } else {
            out.append(edit.text);
        }
        done = edit.where.end;
    }
    out.refer(text.substr(done, range.end - done));
}

}  // namespace lottie::document
