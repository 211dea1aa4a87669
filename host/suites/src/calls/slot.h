// Turns a function over the model into an entry of a suite table.
//
//     bool is_3d(const model::Layer& layer) { return layer.is_3d(); }
//     suite.AEGP_IsLayer3D = slot<&Suite::AEGP_IsLayer3D, is_3d>;
//
// The function's parameters take the C function's arguments from left to right (see take.h: references must exist,
// pointers may be null), except for a first parameter HostState&. Its result, or each element of a tuple, is written
// through one of the remaining pointer arguments, which must not be null unless the result is an OrNull. If it throws,
// nothing is written and dispatch() turns the exception into a code.
#pragma once

#include <cstddef>
#include <tuple>
#include <type_traits>
#include <utility>

#include "calls/argument_text.h"
#include "calls/dispatch.h"
#include "calls/give.h"
#include "calls/take.h"
#include "suites/slot_facts.h"

namespace host::suites {

namespace detail {

template <class T>
struct Results {
    using Tuple = std::tuple<T>;
};
template <>
struct Results<void> {
    using Tuple = std::tuple<>;
};
template <class... T>
struct Results<std::tuple<T...>> {
    using Tuple = std::tuple<T...>;
};

template <class Body>
struct BodyTraits;
template <class R, class... P>
struct BodyTraits<R (*)(P...)> {
    using Return = R;
    using Parameters = std::tuple<P...>;
    static constexpr bool kTakesHost = false;
};
template <class R, class... P>
struct BodyTraits<R (*)(HostState&, P...)> {
    using Return = R;
    using Parameters = std::tuple<P...>;
    static constexpr bool kTakesHost = true;
};

template <auto Body, class Arguments>
struct Runner {
    using Traits = BodyTraits<decltype(Body)>;
    using Parameters = typename Traits::Parameters;
    using ResultTuple = typename Results<typename Traits::Return>::Tuple;
    static constexpr std::size_t kInputs = std::tuple_size_v<Parameters>;
    static constexpr std::size_t kOutputs = std::tuple_size_v<ResultTuple>;
    static_assert(kInputs + kOutputs == std::tuple_size_v<Arguments>, "the body leaves arguments unused or wants more");

    static void run(HostState& host, void* raw_arguments) {
        auto& arguments = *static_cast<Arguments*>(raw_arguments);
        run(host, arguments, std::make_index_sequence<kInputs>(), std::make_index_sequence<kOutputs>());
    }

  private:
    template <std::size_t... I, std::size_t... O>
    static void run(HostState& host, Arguments& arguments, std::index_sequence<I...>, std::index_sequence<O...>) {
        // Braces evaluate from left to right, so the first bad argument is the one reported.
        std::tuple<std::tuple_element_t<I, Parameters>...> taken{
            Take<std::tuple_element_t<I, Parameters>>::from(host, std::get<I>(arguments))...};
        (require_result<std::tuple_element_t<O, ResultTuple>>(std::get<kInputs + O>(arguments)), ...);
        const auto call = [&host](auto&&... inputs) {
            static_cast<void>(host);
            if constexpr (Traits::kTakesHost)
                return Body(host, std::forward<decltype(inputs)>(inputs)...);
            else
                return Body(std::forward<decltype(inputs)>(inputs)...);
        };
        if constexpr (kOutputs == 0) {
            std::apply(call, std::move(taken));
        } else {
            ResultTuple results(std::apply(call, std::move(taken)));
            (give(host, std::move(std::get<O>(results)), std::get<kInputs + O>(arguments)), ...);
        }
    }
};

}  // namespace detail

template <auto Member, auto Body>
struct SlotFunction;
template <class Suite, class... Args, A_Err (*Suite::*Member)(Args...), auto Body>
struct SlotFunction<Member, Body> {
    static A_Err call(Args... args) noexcept {
        static constexpr SlotEntry kEntry{kSlots[slot_ordinal<Member>], true,
                                          &detail::Runner<Body, std::tuple<Args...>>::run,
                                          ArgumentText<records_are_inputs<Member>, Args...>::text};
        std::tuple<Args...> arguments(args...);
        return dispatch({kEntry, &arguments});
    }
};

template <auto Member, auto Body>
inline constexpr auto slot = &SlotFunction<Member, Body>::call;

}  // namespace host::suites
