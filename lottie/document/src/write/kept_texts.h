// The texts that the layers of a composition were written as, for the next time that it is written.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "model/layer.h"
#include "shared/store.h"
#include "write/numbering.h"

namespace lottie::document {

// Knows one composition: a trial after the other changes a few layers of the same stack.
class KeptTexts {
  public:
    using Text = std::shared_ptr<const std::string>;

    // From now on these are the composition's layers, top to bottom. Texts of others are forgotten.
    void set_stack(const host::model::Comp& comp, const std::vector<host::model::Layer*>& stack);

    // Null if the layer at that place, with `above` directly above it (null for the topmost), would not be written as
    // it was, but for its number.
    Text find(std::size_t place, const Numbering& numbers, const host::model::Layer* above);
    void keep(std::size_t place, const Numbering& numbers, const host::model::Layer* above, Text text);

  private:
    // What a layer's text depends on. What is the layer's own is counted instead of compared.
    struct Circumstances {
        Circumstances(const host::model::Layer& layer, const Numbering& numbers, const host::model::Layer* above);
        bool operator==(const Circumstances&) const = default;
        bool differ_in_number(Circumstances other) const {
            other.number = number;
            return number && *this == other;
        }

        std::uint64_t change_count;
        std::optional<std::int64_t> number, parent, matte;
        host::model::MatteType matte_type;
        bool has_parent, has_matte, names_matte, keeps_empty_matte, is_matte;
    };
    struct Entry {
        const host::model::Layer* layer = nullptr;
        std::optional<Circumstances> circumstances = {};
        Text text = {};
        std::optional<std::size_t> number_at = {};  // where in the text its number is; nothing as long as nobody knows
    };

    const host::model::Comp* comp_ = nullptr;
    std::vector<Entry> entries_;  // one for each layer of the stack
};

}  // namespace lottie::document
