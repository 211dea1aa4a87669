// A plug-in whose command makes thousands of calls of all functions with any arguments: the same ones for the same
// RAMBLER_SEED and the same answers.
#include <algorithm>
#include <array>
#include <cstdlib>
#include <functional>
#include <random>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <vector>

#include "handle_types.h"
#include "one_command_plugin.h"

namespace {

class Rambler {
  public:
    explicit Rambler(unsigned seed) : random_(seed), suites_(S_basic) {}

    A_Err ramble(int calls) {
        std::vector<std::function<A_Err()>> functions;
#define SUITE(structure, accessor, name, version) \
    {                                             \
        const structure* table = suites_.accessor();
#define SLOT(structure, index, function)                           \
    if (!std::string_view(#function).starts_with("AEGP_Register")) \
        functions.emplace_back([this, table] { return call(table->function); });
#define SUITE_END(structure) }
#include "suites.def"
        A_Err all = A_Err_NONE;
        for (int i = 0; i < calls; ++i) all = (all * 31 + functions[below(functions.size())]()) % 100'000;
        return all;  // what was answered decides what the command comes back with
    }

  private:
    std::size_t below(std::size_t limit) {
        return random_() % limit;
    }
    bool chance(std::size_t one_in) {
        return below(one_in) == 0;
    }

    template <class T>
    T any() {
        if constexpr (is_handle<T>) {
            if (chance(8)) return nullptr;
            if (chance(12)) return reinterpret_cast<T>(static_cast<std::uintptr_t>(random_()) << 32 | random_());
            const auto& known = chance(6) ? all_handles_ : handles<T>();
            return known.empty() ? nullptr : reinterpret_cast<T>(known[below(known.size())]);
        } else if constexpr (std::is_same_v<T, const A_char*>) {
            return chance(6) ? nullptr : "1 +\n\"x\xFF\"";
        } else if constexpr (std::is_same_v<T, const A_UTF16Char*>) {
            static constexpr std::array<A_UTF16Char, 4> kText{'T', 0xD800, 'x', 0};
            return chance(6) ? nullptr : kText.data();
        } else if constexpr (std::is_pointer_v<T>) {
            if constexpr (std::is_function_v<std::remove_pointer_t<T>>)
                return nullptr;
            else
                return chance(10) ? nullptr : reinterpret_cast<T>(room());
        } else if constexpr (std::is_floating_point_v<T>) {
            return static_cast<T>(below(2000)) / 7 - 100;
        } else if constexpr (std::is_integral_v<T>) {
            static constexpr std::array<long, 10> kEdges{0, 1, 2, 3, 7, 100, -1, 0x7FFF, -0x8000, 0x7FFFFFFF};
            constexpr std::size_t kUsed = std::is_same_v<T, A_u_long> ? 6 : kEdges.size();
            return static_cast<T>(kEdges[below(kUsed)]);
        } else {
            return T{};
        }
    }

    // Memory that no other argument points to: zeros, or bytes of any kind.
    void* room() {
        next_room_ = (next_room_ + kRecord) % rooms_.size();
        const bool is_empty = chance(2);
        std::generate_n(rooms_.begin() + static_cast<std::ptrdiff_t>(next_room_), kRecord,
                        [&] { return is_empty ? 0 : static_cast<unsigned char>(random_() >> 24); });
        return rooms_.data() + next_room_;
    }

    template <class T>
    std::vector<void*>& handles() {
        static std::vector<void*> known;
        static const Rambler* owner = nullptr;
        if (owner != this) known.clear();
        owner = this;
        return known;
    }

    template <class T>
    void keep(T out) {
        if constexpr (std::is_pointer_v<T> && !is_handle<T>) {
            using Pointee = std::remove_cv_t<std::remove_pointer_t<T>>;
            if constexpr (is_handle<Pointee>) {
                if (!out || !*out || all_handles_.size() > 300) return;
                handles<Pointee>().push_back(*out);
                all_handles_.push_back(*out);
            }
        }
    }

    template <class... Args>
    A_Err call(A_Err (*function)(Args...)) {
        std::tuple<Args...> arguments{any<Args>()...};
        const A_Err result = std::apply(function, arguments);
        if (result != A_Err_NONE) return result;
        std::apply([this](auto... each) { (keep(each), ...); }, arguments);
        if constexpr (std::is_same_v<std::tuple<Args...>, std::tuple<AEGP_MemHandle, void**>>)
            scribble(std::get<0>(arguments), *std::get<1>(arguments));
        return result;
    }

    void scribble(AEGP_MemHandle memory, void* bytes) {
        AEGP_MemSize size = 0;
        const A_Err err = suites_.MemorySuite1()->AEGP_GetMemHandleSize(memory, &size);
        if (err == A_Err_NONE && size > 0 && chance(2)) static_cast<unsigned char*>(bytes)[below(size)] ^= 0x55;
    }

    static constexpr std::size_t kRecord = 2048;
    std::mt19937 random_;
    AEGP_SuiteHandler suites_;
    std::vector<void*> all_handles_;
    std::vector<unsigned char> rooms_ = std::vector<unsigned char>(kRecord * 16);
    std::size_t next_room_ = 0;
};

A_Err command_hook(AEGP_GlobalRefcon, AEGP_CommandRefcon, AEGP_Command, AEGP_HookPriority, A_Boolean,
                   A_Boolean* handledPB) {
    *handledPB = true;
    const char* seed = std::getenv("RAMBLER_SEED");
    return Rambler(seed ? static_cast<unsigned>(std::atoi(seed)) : 0).ramble(4000);
}

}  // namespace

extern "C" DllExport A_Err EntryPointFunc(SPBasicSuite* pica_basicP, A_long, A_long, AEGP_PluginID id,
                                          AEGP_GlobalRefcon*) {
    return offer_command(pica_basicP, id, "Ramble", command_hook);
}
