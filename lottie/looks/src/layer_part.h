// A member of a layer that holds more than one value, read when somebody asks for it.
#pragma once

#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "json.h"
#include "text_reader.h"

namespace lottie::looks {

struct Expression {
    std::string property;  // path in the layer's object, such as "ks.p"
    std::string_view text;
};

// Where the values that are read lie, and texts that nobody else keeps.
struct Arena {
    JsonPool values;
    std::deque<std::string> texts;
};

// Layers whose texts agree in a part share it.
class LayerPart {
  public:
    // `text` must outlive the arena or lie in it.
    LayerPart(std::string key, std::string_view text, const Contents& contents, std::shared_ptr<Arena> arena)
        : key_(std::move(key)), text_(text), contents_(contents), arena_(std::move(arena)) {}

    const std::string& key() const { return key_; }
    std::string_view text() const { return text_; }
    // Throws std::runtime_error if the text is not JSON.
    const Json& json() const;

    // In the order of the text.
    const std::vector<Expression>& expressions() const;
    // Times of every keyframe inside, in the order of the text. Text documents count; a keyed property with equal
    // values too; one key alone never changes anything and does not.
    const std::vector<double>& key_times() const;
    // The same without those of one property object inside.
    std::vector<double> key_times_without(const Json& left_out) const;
    bool changes_over_time() const { return !expressions().empty() || !key_times().empty(); }

  private:
    std::string key_;
    std::string_view text_;
    Contents contents_;
    std::shared_ptr<Arena> arena_;
    mutable std::optional<Json> json_;
    mutable std::optional<std::vector<Expression>> expressions_;
    mutable std::optional<std::vector<double>> key_times_;
};

}  // namespace lottie::looks
