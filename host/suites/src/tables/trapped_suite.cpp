// Suite tables in which every slot returns "not implemented".
#include "tables/trapped_suite.h"

#include "calls/argument_text.h"
#include "calls/dispatch.h"
#include "model/error.h"

namespace host::suites {

namespace {

void not_implemented(HostState& host, void*) {
    throw model::Error(model::ErrorKind::unsupported, full_name(*host.now.slot) + " is not implemented by this host.");
}

template <auto Member>
struct Trap;
template <class Suite, class... Args, A_Err (*Suite::*Member)(Args...)>
struct Trap<Member> {
    static A_Err call(Args... args) noexcept {
        static constexpr SlotEntry kEntry{kSlots[slot_ordinal<Member>], false, &not_implemented,
                                          ArgumentText<false, Args...>::text};
        std::tuple<Args...> arguments(args...);
        return dispatch({kEntry, &arguments});
    }
};

}  // namespace

#define SUITE(structure, accessor, name, version) \
    template <>                                   \
    structure trapped_suite<structure>() {        \
        structure suite;
#define SLOT(structure, index, function) suite.function = &Trap<&structure::function>::call;
#define SUITE_END(structure) \
    return suite;            \
    }
#include "suites.def"

}  // namespace host::suites
