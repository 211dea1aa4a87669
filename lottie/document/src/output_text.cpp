// Putting a document together without copying what did not change.
#include "document/output_text.h"

#include <algorithm>

namespace lottie::document {

namespace {

// Of copied text: as long as what there is so far.
constexpr std::size_t kShortestBlock = 256;
constexpr std::size_t kLongestBlock = std::size_t{64} << 10;
constexpr std::size_t kWorthPointingAt = 256;

}  // namespace

void OutputText::append(std::string_view text) {
    if (text.empty()) return;
    if (own_.empty() || own_.back().capacity() - own_.back().size() < text.size()) {
        own_.emplace_back().reserve(std::max(std::clamp(size_, kShortestBlock, kLongestBlock), text.size()));
        last_is_own_ = false;
    }
    // Within the capacity, so that no piece moves.
    std::string& block = own_.back();
    block += text;
    size_ += text.size();
    if (last_is_own_) {
        pieces_.back() = {pieces_.back().data(), pieces_.back().size() + text.size()};
    } else {
        pieces_.emplace_back(block.data() + block.size() - text.size(), text.size());
        last_is_own_ = true;
    }
}

void OutputText::refer(std::string_view lasting) {
    if (lasting.size() < kWorthPointingAt) {
        append(lasting);
        return;
    }
    size_ += lasting.size();
    pieces_.push_back(lasting);
    last_is_own_ = false;
}

std::string OutputText::text() const {
    std::string all;
    all.reserve(size_);
    for (const std::string_view piece : pieces_) all += piece;
    return all;
}

}  // namespace lottie::document
