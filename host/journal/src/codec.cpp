// One codec per suite function, generated from the list of slots.
#include "codec.h"

#include <array>
#include <utility>

namespace host::journal {
namespace {

// The stream or keyframe batch among the arguments; null if there is none.
template <class... Args>
const void* stream_among(const std::tuple<Args...>& arguments) {
    const void* found = nullptr;
    const auto look = [&found]<class T>(T argument) {
        if constexpr (std::is_same_v<T, AEGP_StreamRefH> || std::is_same_v<T, AEGP_AddKeyframesInfoH>)
            if (!found) found = argument;
    };
    std::apply([&look](auto... each) { (look(each), ...); }, arguments);
    static_cast<void>(look);
    return found;
}

template <class... Args>
AEGP_MemHandle memory_among(const std::tuple<Args...>& arguments) {
    if constexpr ((std::is_same_v<Args, AEGP_MemHandle> || ...))
        return std::get<AEGP_MemHandle>(arguments);
    else
        return nullptr;
}

template <auto Member>
struct Codec;
template <class Suite, class... Args, A_Err (*Suite::*Member)(Args...)>
struct Codec<Member> {
    using Arguments = std::tuple<Args...>;
    template <std::size_t I>
    using Argument = std::tuple_element_t<I, Arguments>;
    using Indices = std::index_sequence_for<Args...>;

    static void write_arguments(Encoder& encoder, const void* raw_arguments) {
        const auto& arguments = *static_cast<const Arguments*>(raw_arguments);
        [&]<std::size_t... I>(std::index_sequence<I...>) {
            (write_argument<I>(encoder, arguments), ...);
        }
        (Indices());
        static_cast<void>(arguments);
        static_cast<void>(encoder);
    }

    static void write_results(Encoder& encoder, const void* raw_arguments) {
        const auto& arguments = *static_cast<const Arguments*>(raw_arguments);
        [&]<std::size_t... I>(std::index_sequence<I...>) {
            (write_result<I>(encoder, arguments), ...);
        }
        (Indices());
        static_cast<void>(arguments);
        static_cast<void>(encoder);
    }

    static void read_results(Decoder& decoder, const std::vector<JournalValue>& results, void* raw_arguments) {
        auto& arguments = *static_cast<Arguments*>(raw_arguments);
        constexpr std::size_t kResults = (0 + ... + (is_output<Member, Args> ? 1 : 0));
        if (results.size() != kResults) throw BadValue("there are more or fewer results than the function has");
        std::size_t next = 0;
        [&]<std::size_t... I>(std::index_sequence<I...>) {
            (read_result<I>(decoder, results, next, arguments), ...);
        }
        (Indices());
        static_cast<void>(arguments);
        static_cast<void>(decoder);
        static_cast<void>(next);
    }

  private:
    template <std::size_t I>
    static void write_argument(Encoder& encoder, const Arguments& arguments) {
        using T = Argument<I>;
        const T& argument = std::get<I>(arguments);
        if constexpr (is_output<Member, T>) {
            encoder.add_word(argument ? "out" : "null");
        } else if constexpr (points_to_data<T> && !is_text<T>) {
            if (argument)
                add_record(encoder, *argument, I, arguments);
            else
                encoder.add_word("null");
        } else {
            encoder.add(argument);
        }
    }

    template <std::size_t I>
    static void write_result(Encoder& encoder, const Arguments& arguments) {
        using T = Argument<I>;
        if constexpr (is_output<Member, T>) {
            const T argument = std::get<I>(arguments);
            if (!argument)
                encoder.add_word("null");
            else if constexpr (std::is_same_v<T, A_char*>)
                encoder.add(static_cast<const A_char*>(argument));
            else if constexpr (std::is_same_v<T, void**>)
                add_address(encoder, arguments);
            else
                add_record(encoder, *argument, I, arguments);
        }
    }

    template <std::size_t I>
    static void read_result(Decoder& decoder, const std::vector<JournalValue>& results, std::size_t& next,
                            Arguments& arguments) {
        using T = Argument<I>;
        if constexpr (is_output<Member, T>) {
            const JournalValue& result = results[next++];
            const T argument = std::get<I>(arguments);
            if (!argument) return;
            if constexpr (std::is_same_v<T, A_char*>)
                Decoder::read_text(result, argument, room_for_text<I>(arguments));
            else if constexpr (std::is_same_v<T, void**>)
                decoder.read_address(result, *argument);
            else
                decoder.read(result, *argument);
        }
    }

    template <class T>
    static void add_record(Encoder& encoder, const T& record, std::size_t place, const Arguments& arguments) {
        if constexpr (std::is_same_v<T, AEGP_StreamValue2>) {
            const void* stream = stream_among(arguments);
            encoder.add(record, encoder.namer().member(stream ? stream : record.streamH, place));
        } else {
            encoder.add(record);
        }
        static_cast<void>(place);
        static_cast<void>(arguments);
    }

    // The only addresses that matter are those of memory, which is identified by its handle.
    static void add_address(Encoder& encoder, const Arguments& arguments) {
        if (const AEGP_MemHandle memory = memory_among(arguments))
            encoder.add(memory);
        else
            encoder.add_word("pointer");
    }

    template <std::size_t I>
    static std::size_t room_for_text(const Arguments& arguments) {
        if constexpr (text_room<Member> == kArgumentSays)
            return static_cast<std::size_t>(std::max<std::int64_t>(std::get<I - 1>(arguments), 0));
        else
            return text_room<Member>;
        static_cast<void>(arguments);
    }
};

constexpr std::array<SlotCodec, suites::kSlotCount> kCodecs = {{
#define SLOT(structure, index, function)                                                         \
    {&Codec<&structure::function>::write_arguments, &Codec<&structure::function>::write_results, \
     &Codec<&structure::function>::read_results},
#include "suites.def"
}};

}  // namespace

const SlotCodec& suite_codec(std::int32_t slot) {
    return kCodecs.at(static_cast<std::size_t>(slot));
}

}  // namespace host::journal
