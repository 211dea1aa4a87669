// What writing a composition's layers needs to know.
#pragma once

#include <string>
#include <unordered_map>

#include "shared/store.h"
#include "write/numbering.h"

namespace lottie::document {

struct WriteContext {
    const Store& store;
    const Numbering& numbers;
    // Asset ids of the compositions that the host made.
    const std::unordered_map<const host::model::Item*, std::string>& new_ids;
    bool writes_end_values = false;  // old files: keyframes carry their segment's end

    const FrameClock& clock() const { return store.clock; }
    // The file's numbers for a value: layer ids become layer numbers.
    double number(host::model::StreamType type, const host::model::Value& value, std::size_t dimension) const {
        if (type != host::model::StreamType::layer_id) return value.n[dimension];
        return static_cast<double>(numbers.number_of_id(value.n[0]));
    }
};

}  // namespace lottie::document
