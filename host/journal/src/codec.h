// Writes the arguments and results of each function to a journal, and reads its results from one.
#pragma once

#include <cstdint>
#include <tuple>
#include <vector>

#include "decoder.h"
#include "encoder.h"

namespace host::journal {

// `arguments` points to a tuple of the C function's parameter types.
struct SlotCodec {
    void (*write_arguments)(Encoder& encoder, const void* arguments);
    void (*write_results)(Encoder& encoder, const void* arguments);  // of a call that succeeded
    // Stores results where the plug-in asked for them. Throws BadValue.
    void (*read_results)(Decoder& decoder, const std::vector<JournalValue>& results, void* arguments);
};

// For suite slots, not for the basic suite's functions.
const SlotCodec& suite_codec(std::int32_t slot);

}  // namespace host::journal
