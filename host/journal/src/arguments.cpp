// Arguments and results of every call as text, including the basic suite's.
#include "arguments.h"

#include "slots.h"

namespace host::journal {
namespace {

template <class Arguments>
const Arguments& as(const void* arguments) {
    return *static_cast<const Arguments*>(arguments);
}

std::string block_text(HandleNamer& namer, void* block) {
    return block ? namer.used(raw(block)) : "null";
}

std::string new_block_text(HandleNamer& namer, void** block) {
    return namer.given(raw(*block), kBlockWord);
}

void write_basic_arguments(Encoder& encoder, std::int32_t slot, const void* arguments) {
    const auto add_output = [&encoder](const void* output) { encoder.add_word(output ? "out" : "null"); };
    switch (slot) {
        case kAcquire: {
            const auto& [name, version, suite] = as<AcquireArguments>(arguments);
            encoder.add(name);
            encoder.add(version);
            add_output(suite);
            break;
        }
        case kRelease: {
            const auto& [name, version] = as<ReleaseArguments>(arguments);
            encoder.add(name);
            encoder.add(version);
            break;
        }
        case kAllocate: {
            const auto& [size, block] = as<AllocateArguments>(arguments);
            encoder.add(size);
            add_output(block);
            break;
        }
        case kFree:
            encoder.add_word(block_text(encoder.namer(), std::get<0>(as<FreeArguments>(arguments))));
            break;
        case kReallocate: {
            const auto& [block, size, new_block] = as<ReallocateArguments>(arguments);
            encoder.add_word(block_text(encoder.namer(), block));
            encoder.add(size);
            add_output(new_block);
            break;
        }
        default:
            break;
    }
}

void write_basic_results(Encoder& encoder, std::int32_t slot, const void* arguments) {
    if (slot == kAcquire) encoder.add_word("table");
    if (slot == kAllocate)
        encoder.add_word(new_block_text(encoder.namer(), std::get<void**>(as<AllocateArguments>(arguments))));
    if (slot == kReallocate)
        encoder.add_word(new_block_text(encoder.namer(), std::get<void**>(as<ReallocateArguments>(arguments))));
}

}  // namespace

std::string arguments_text(HandleNamer& namer, std::int32_t slot, const void* arguments) {
    Encoder encoder(namer, Encoder::Direction::to_host);
    if (slot < suites::kSlotCount)
        suite_codec(slot).write_arguments(encoder, arguments);
    else
        write_basic_arguments(encoder, slot, arguments);
    return encoder.text();
}

std::string results_text(HandleNamer& namer, std::int32_t slot, const void* arguments) {
    Encoder encoder(namer, Encoder::Direction::to_plugin);
    if (slot < suites::kSlotCount)
        suite_codec(slot).write_results(encoder, arguments);
    else
        write_basic_results(encoder, slot, arguments);
    return encoder.text();
}

}  // namespace host::journal
