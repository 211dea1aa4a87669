// Every implemented call, every handle argument of it: null, stale, foreign, of another kind, of another session. The
// answer is an error code and a sentence.
#include <array>
#include <memory>
#include <tuple>

#include "handle_pool.h"

namespace host::suites {

namespace {

enum class Flaw { null, foreign, another_kind, another_session, stale };
constexpr std::array kFlaws = {Flaw::null, Flaw::foreign, Flaw::another_kind, Flaw::another_session, Flaw::stale};

// Handles that a call may do without.
bool may_be_null(std::string_view function, std::size_t argument) {
    return function == "AEGP_SetLayerParent" && argument == 1;
}

class BadHandles : public World {
  public:
    BadHandles() : pool(*this) {
        difference = difference_to_another_session();
        make_stale();
    }

    // The handles of two hosts for one object differ in the same bits, whatever the object.
    std::uintptr_t difference_to_another_session() {
        const SuiteHost other(project, {});
        return reinterpret_cast<std::uintptr_t>(other.handle(main)) ^
               reinterpret_cast<std::uintptr_t>(host.handle(main));
    }

    void make_stale() {
        stale_pool = std::make_unique<HandlePool>(*this);
        HandlePool& s = *stale_pool;
        model::Item& item = project.add_folder("Gone");
        s.item = host.handle(item);
        project.delete_item(item);
        model::Comp& comp = project.add_comp("Gone");
        s.comp = host.comp_handle(comp);
        project.delete_item(comp);
        EXPECT_EQ(suite<AEGP_FootageSuite5>()->AEGP_DisposeFootage(s.footage), 0);
        EXPECT_EQ(collections()->AEGP_DisposeCollection(s.collection), 0);
        EXPECT_EQ(suite<AEGP_EffectSuite3>()->AEGP_DisposeEffect(s.effect), 0);
        EXPECT_EQ(memory()->AEGP_FreeMemHandle(s.memory), 0);
        EXPECT_EQ(keyframes()->AEGP_EndAddKeyframes(false, s.batch), 0);
        EXPECT_EQ(streams()->AEGP_DisposeStream(s.stream), 0);
        EXPECT_EQ(layers()->AEGP_DeleteLayer(s.layer), 0);
    }

    template <class H>
    H flawed(Flaw flaw) {
        switch (flaw) {
            case Flaw::null:
                return nullptr;
            case Flaw::foreign:
                return reinterpret_cast<H>(scratch.data());
            case Flaw::another_kind:
                return std::is_same_v<H, AEGP_LayerH> ? reinterpret_cast<H>(pool.comp)
                                                      : reinterpret_cast<H>(pool.layer);
            case Flaw::another_session:
                return reinterpret_cast<H>(reinterpret_cast<std::uintptr_t>(pool.of<H>()) ^ difference);
            case Flaw::stale:
                return stale_pool->of<H>();
        }
        return nullptr;
    }

    template <class T>
    T good() {
        if constexpr (is_handle<T>)
            return pool.of<T>();
        else if constexpr (std::is_same_v<T, const A_Time*>)
            return &kZero;
        else if constexpr (std::is_same_v<T, const A_char*> || std::is_same_v<T, const A_UTF16Char*>)
            return reinterpret_cast<T>(zeros.data());
        else if constexpr (std::is_pointer_v<T> && !std::is_function_v<std::remove_pointer_t<T>>)
            return reinterpret_cast<T>(scratch.data());
        else
            return T{};
    }

    template <class H>
    bool is_flaw_possible(Flaw flaw) {
        return !(flaw == Flaw::stale && std::is_same_v<H, AEGP_ProjectH>);  // there is always a project
    }

    template <std::size_t At, class... Args>
    void try_argument(const std::string& name, std::string_view function, A_Err (*call)(Args...)) {
        using H = std::tuple_element_t<At, std::tuple<Args...>>;
        if constexpr (is_handle<H>) {
            for (const Flaw flaw : kFlaws) {
                if (!is_flaw_possible<H>(flaw) || (flaw == Flaw::null && may_be_null(function, At))) continue;
                std::tuple<Args...> arguments{good<Args>()...};
                std::get<At>(arguments) = flawed<H>(flaw);
                const std::size_t said = host.diagnostics().size();
                EXPECT_EQ(std::apply(call, arguments), kBadArgument)
                    << name << " argument " << At << " flaw " << static_cast<int>(flaw);
                EXPECT_EQ(host.diagnostics().size(), said + 1) << name;
                EXPECT_FALSE(last_complaint().empty());
                ++tried;
            }
        }
    }

    template <class... Args>
    void try_all(const std::string& name, std::string_view function, A_Err (*call)(Args...)) {
        [&]<std::size_t... I>(std::index_sequence<I...>) {
            (try_argument<I>(name, function, call), ...);
        }
        (std::index_sequence_for<Args...>());
    }

    alignas(16) std::array<unsigned char, 4096> scratch{};
    alignas(16) std::array<unsigned char, 64> zeros{};
    HandlePool pool;
    std::unique_ptr<HandlePool> stale_pool;
    std::uintptr_t difference = 0;
    int tried = 0;
};

}  // namespace

TEST_F(BadHandles, are_answered_with_a_code_and_a_sentence_by_every_call) {
    std::size_t place = 0;
    const auto slots = host.coverage();
    const std::vector<std::string> layers_before = layer_names(main);
    const int items_before = project.item_count();
#define SLOT(structure, index, function) \
    if (slots[place++].is_implemented) try_all(#structure "." #function, #function, suite<structure>()->function);
#include "suites.def"
    EXPECT_GT(tried, 800);
    EXPECT_EQ(layer_names(main), layers_before);
    EXPECT_EQ(project.item_count(), items_before);
}

TEST_F(BadHandles, are_told_apart_in_words) {
    A_long index = 5;
    const auto why = [&](AEGP_LayerH handle) {
        EXPECT_EQ(layers()->AEGP_GetLayerIndex(handle, &index), kBadArgument);
        EXPECT_EQ(index, 5);
        return last_complaint();
    };
    EXPECT_EQ(why(nullptr), "The layer handle is null.");
    EXPECT_EQ(why(flawed<AEGP_LayerH>(Flaw::foreign)), "The layer handle is not a handle of this host.");
    EXPECT_EQ(why(flawed<AEGP_LayerH>(Flaw::another_kind)),
              "A handle of kind composition stands where one of kind layer must.");
    EXPECT_EQ(why(flawed<AEGP_LayerH>(Flaw::another_session)), "The layer handle comes from another session.");
    EXPECT_THAT(why(stale_pool->layer), testing::MatchesRegex("There is no layer [0-9]+ any more\\."));
}

TEST_F(BadHandles, name_the_calls_that_made_and_disposed_of_them) {
    A_u_long count = 5;
    EXPECT_EQ(collections()->AEGP_GetCollectionNumItems(stale_pool->collection, &count), kBadArgument);
    EXPECT_EQ(count, 5U);
    EXPECT_THAT(
        last_complaint(),
        testing::MatchesRegex("The collection made by call [0-9]+ \\(CollectionSuite2.AEGP_NewCollection\\) was "
                              "disposed of by call [0-9]+ \\(CollectionSuite2.AEGP_DisposeCollection\\)\\."));
}

TEST_F(BadHandles, never_can_be_followed_as_pointers) {
    // The upper 16 bits are not a sign extension: no address of a 64-bit program looks like that.
    for (void* handle : pool.all()) {
        const auto bits = reinterpret_cast<std::uintptr_t>(handle);
        EXPECT_NE(bits >> 47, 0U);
        EXPECT_NE(bits >> 47, 0x1FFFFU);
    }
}

}  // namespace host::suites
