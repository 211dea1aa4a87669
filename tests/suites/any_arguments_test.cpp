// Any call with any arguments that a confused plug-in could come up with: there is always an answer.
#include <algorithm>
#include <array>
#include <cstdio>
#include <functional>
#include <random>
#include <tuple>

#include "handle_pool.h"

namespace host::suites {

namespace {

class AnyArguments : public World {
  public:
    AnyArguments() : pool(*this), random(seed) {
        RecordProperty("seed", std::to_string(seed));
        std::printf("seed %u\n", seed);
        project.undo().clear();
        handles = pool.all();
    }

    bool chance(int one_in) { return std::uniform_int_distribution<>(1, one_in)(random) == 1; }

    template <class T>
    T any() {
        if constexpr (is_handle<T>) {
            if (chance(3))
                return handle_at<T>(std::uniform_int_distribution<std::size_t>(0, handles.size() - 1)(random));
            if (chance(8)) return nullptr;
            if (chance(8)) return reinterpret_cast<T>(static_cast<std::uintptr_t>(random()) << 32 | random());
            return pool.of<T>();
        } else if constexpr (std::is_same_v<T, const A_char*>) {
            return chance(6) ? nullptr : "text";
        } else if constexpr (std::is_same_v<T, const A_UTF16Char*>) {
            static constexpr std::array<A_UTF16Char, 4> kText{'T', 0xD800, 'x', 0};
            return chance(6) ? nullptr : kText.data();
        } else if constexpr (std::is_pointer_v<T>) {
            if constexpr (std::is_function_v<std::remove_pointer_t<T>>) {
                return nullptr;
            } else {
                if (chance(10)) return nullptr;
                return reinterpret_cast<T>(room());
            }
        } else if constexpr (std::is_floating_point_v<T>) {
            return static_cast<T>(std::uniform_int_distribution<>(-1000, 1000)(random)) / 8;
        } else if constexpr (std::is_integral_v<T>) {
            // Unsigned numbers are sizes too: memory of gigabytes would only slow the test down.
            static constexpr std::array<long, 10> kEdges{0, 1, 2, 3, 7, 100, -1, 0x7FFF, -0x8000, 0x7FFFFFFF};
            constexpr std::size_t kUsed = std::is_same_v<T, A_u_long> ? 6 : kEdges.size();
            return static_cast<T>(kEdges[std::uniform_int_distribution<std::size_t>(0, kUsed - 1)(random)]);
        } else {
            return T{};
        }
    }

    template <class T>
    T handle_at(std::size_t place) const {
        return reinterpret_cast<T>(handles[place]);
    }

    // Zeroed memory that no other argument points to.
    void* room() {
        static constexpr std::size_t kRecord = 2048;
        next_room = (next_room + kRecord) % rooms.size();
        std::fill_n(rooms.begin() + static_cast<std::ptrdiff_t>(next_room), kRecord, 0);
        return rooms.data() + next_room;
    }

    // Results that are handles join the pool; the value of one pointer is one.
    template <class... Args>
    void call(A_Err (*function)(Args...)) {
        std::tuple<Args...> arguments{any<Args>()...};
        const A_Err result = std::apply(function, arguments);
        ++(result == 0 ? succeeded : failed);
        if (result != 0) return;
        const auto keep = [this]<class T>(T out) {
            if constexpr (std::is_pointer_v<T>) {
                using Pointee = std::remove_pointer_t<T>;
                if constexpr (is_handle<std::remove_cv_t<Pointee>> && !is_handle<T>)
                    if (out && *out && handles.size() < 200) handles.push_back(*out);
            }
        };
        std::apply([&](auto... each) { (keep(each), ...); }, arguments);
    }

    const unsigned seed = std::random_device{}();
    HandlePool pool;
    std::mt19937 random;
    std::vector<void*> handles;
    std::vector<unsigned char> rooms = std::vector<unsigned char>(2048 * 16);
    std::size_t next_room = 0;
    int succeeded = 0;
    int failed = 0;
};

}  // namespace

TEST_F(AnyArguments, always_get_an_answer) {
    std::vector<std::function<void()>> calls;
#define SLOT(structure, index, function)                           \
    if (!std::string_view(#function).starts_with("AEGP_Register")) \
        calls.emplace_back([this, table = suite<structure>()] { call(table->function); });
#include "suites.def"
    std::uniform_int_distribution<std::size_t> any_call(0, calls.size() - 1);
    for (int i = 0; i < 60'000; ++i) calls[any_call(random)]();
    EXPECT_GT(succeeded, 1000);
    EXPECT_GT(failed, 1000);
    // The host still works.
    project.undo().close_all_groups();
    A_long items = 0;
    EXPECT_EQ(suite<AEGP_ProjSuite6>()->AEGP_GetNumProjects(&items), 0);
    EXPECT_EQ(host.diagnostics().size(), static_cast<std::size_t>(failed));
}

TEST_F(AnyArguments, can_all_be_taken_back) {
    const std::vector<std::string> before = layer_names(main);
    std::vector<std::function<void()>> calls;
#define SLOT(structure, index, function)                           \
    if (!std::string_view(#function).starts_with("AEGP_Register")) \
        calls.emplace_back([this, table = suite<structure>()] { call(table->function); });
#include "suites.def"
    std::uniform_int_distribution<std::size_t> any_call(0, calls.size() - 1);
    for (int i = 0; i < 20'000; ++i) calls[any_call(random)]();
    project.undo().close_all_groups();
    project.undo().undo_all();
    EXPECT_EQ(layer_names(main), before);
    EXPECT_EQ(project.item_count(), 2);
}

}  // namespace host::suites
