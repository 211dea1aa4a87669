// The nests that come out of a run.
#include <gmock/gmock.h>

#include "cli/shared/selection.h"

namespace {

using cli::nests_of;
using cli::new_nests_of;
using host::model::Comp;
using host::model::Layer;
using host::model::LayerKind;
using testing::ElementsAre;
using testing::IsEmpty;

struct NewNests : testing::Test {
    host::model::Project project;
    Comp& inner = project.add_comp("inner");
    Comp& main = project.add_comp("main");
    Comp& other = project.add_comp("other");

    Layer& nest_at(Comp& comp, int index) {
        Layer& nest = comp.add_layer(inner);
        nest.move_to(index);
        return nest;
    }
};

TEST_F(NewNests, are_the_layers_made_since_in_stack_order) {
    nest_at(main, 0);
    const auto before = project.newest_layer_id();
    EXPECT_THAT(new_nests_of(main, before), IsEmpty());

    Layer& lower = nest_at(main, -1);
    Layer& upper = nest_at(main, 0);
    EXPECT_THAT(new_nests_of(main, before), ElementsAre(&upper, &lower));
    EXPECT_EQ(new_nests_of(main, 0), nests_of(main));
}

TEST_F(NewNests, are_nests_that_still_exist_in_that_composition) {
    const auto before = project.newest_layer_id();
    nest_at(other, 0);
    nest_at(main, 0).remove();
    main.load_layer(LayerKind::text, nullptr);
    EXPECT_THAT(new_nests_of(main, before), IsEmpty());
}

}  // namespace
