// Changes to a text, collected in any order and applied in one pass.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "document/output_text.h"
#include "document/slice.h"

namespace lottie::document {

// Where edits overlap the outermost wins; of two for the same place the first.
class Patch {
  public:
    using DeferredText = std::function<void(OutputText&)>;

    void replace(Slice where, std::string text) { edits_.push_back({where, std::move(text), {}}); }
    void insert(std::uint32_t at, std::string text) { replace({at, at}, std::move(text)); }
    // For text too long to be held twice.
    void replace_later(Slice where, DeferredText writer) { edits_.push_back({where, {}, std::move(writer)}); }
    bool is_empty() const { return edits_.empty(); }

    // Appends the piece `range` of the text, changed, to `out`, which may point at the text.
    void write(std::string_view text, Slice range, OutputText& out);

  private:
    struct Edit {
        Slice where;
        std::string text;
        DeferredText writer;
    };
    std::vector<Edit> edits_;
};

}  // namespace lottie::document
