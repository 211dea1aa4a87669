// Layers: places, switches, parents, coming and going.
#include <array>

#include "model/item.h"
#include "world.h"

namespace host::suites {

using testing::ElementsAre;

class Layers : public World {
  public:
    const AEGP_LayerSuite5* table = layers();
    const AEGP_CompH comp = host.comp_handle(main);
    model::Layer& d = add_layer("D");
    model::Layer& c = add_layer("C");
    model::Layer& b = add_layer("B");
    model::Layer& a = add_layer("A");

    Layers() { project.undo().clear(); }

    A_Err reorder(model::Layer& layer, A_long index) { return table->AEGP_ReorderLayer(host.handle(layer), index); }
    A_Err set_parent(model::Layer& layer, model::Layer* parent) {
        return table->AEGP_SetLayerParent(host.handle(layer), parent ? host.handle(*parent) : nullptr);
    }
    AEGP_LayerFlags flags(model::Layer& layer) {
        AEGP_LayerFlags all = -1;
        EXPECT_EQ(table->AEGP_GetLayerFlags(host.handle(layer), &all), 0);
        return all;
    }
    static const model::Value& place(model::Layer& layer) { return layer.stream(model::kPosition).data().static_value; }
};

TEST_F(Layers, are_numbered_from_the_top) {
    A_long count = -1;
    EXPECT_EQ(table->AEGP_GetCompNumLayers(comp, &count), 0);
    EXPECT_EQ(count, 4);
    const std::array<model::Layer*, 4> from_top{&a, &b, &c, &d};
    for (int i = 0; i < 4; ++i) {
        const model::Layer& expected = *from_top[static_cast<std::size_t>(i)];
        AEGP_LayerH found = nullptr;
        EXPECT_EQ(table->AEGP_GetCompLayerByIndex(comp, i, &found), 0);
        EXPECT_EQ(found, host.handle(expected));
        A_long index = -1;
        EXPECT_EQ(table->AEGP_GetLayerIndex(found, &index), 0);
        EXPECT_EQ(index, i);
    }
    for (const A_long wrong : {-1, 4}) {
        AEGP_LayerH untouched = nullptr;
        EXPECT_EQ(table->AEGP_GetCompLayerByIndex(comp, wrong, &untouched), kBadArgument);
        EXPECT_EQ(untouched, nullptr);
    }
}

TEST_F(Layers, know_their_source_their_composition_and_their_kind) {
    model::Layer& camera = main.load_layer(model::LayerKind::camera, nullptr);
    AEGP_ItemH source = nullptr;
    EXPECT_EQ(table->AEGP_GetLayerSourceItem(host.handle(a), &source), 0);
    EXPECT_EQ(source, host.handle(footage));
    EXPECT_EQ(table->AEGP_GetLayerSourceItem(host.handle(camera), &source), 0);
    EXPECT_EQ(source, nullptr);
    AEGP_CompH found = nullptr;
    EXPECT_EQ(table->AEGP_GetLayerParentComp(host.handle(a), &found), 0);
    EXPECT_EQ(found, comp);
    const auto kind = [this](const model::Layer& layer) {
        AEGP_ObjectType type = -9;
        EXPECT_EQ(table->AEGP_GetLayerObjectType(host.handle(layer), &type), 0);
        return type;
    };
    EXPECT_EQ(kind(a), AEGP_ObjectType_AV);
    EXPECT_EQ(kind(main.create_null("Null", {})), AEGP_ObjectType_AV);
    EXPECT_EQ(kind(camera), AEGP_ObjectType_CAMERA);
    EXPECT_EQ(kind(main.load_layer(model::LayerKind::light, nullptr)), AEGP_ObjectType_LIGHT);
    EXPECT_EQ(kind(main.load_layer(model::LayerKind::text, nullptr)), AEGP_ObjectType_TEXT);
    EXPECT_EQ(kind(main.load_layer(model::LayerKind::vector, nullptr)), AEGP_ObjectType_VECTOR);
}

TEST_F(Layers, are_found_by_their_id_in_their_composition) {
    AEGP_LayerIDVal id = 0;
    EXPECT_EQ(table->AEGP_GetLayerID(host.handle(b), &id), 0);
    AEGP_LayerH found = nullptr;
    EXPECT_EQ(table->AEGP_GetLayerFromLayerID(comp, id, &found), 0);
    EXPECT_EQ(found, host.handle(b));
    const AEGP_CompH other = host.comp_handle(project.add_comp("Other"));
    EXPECT_EQ(table->AEGP_GetLayerFromLayerID(other, id, &found), kBadArgument);
    EXPECT_EQ(table->AEGP_GetLayerFromLayerID(comp, 9999, &found), kBadArgument);
}

TEST_F(Layers, have_switches_set_one_by_one) {
    const AEGP_LayerFlags before = flags(a);
    EXPECT_EQ(table->AEGP_SetLayerFlag(host.handle(a), AEGP_LayerFlag_COLLAPSE, true), 0);
    EXPECT_EQ(flags(a), before | AEGP_LayerFlag_COLLAPSE);
    EXPECT_EQ(table->AEGP_SetLayerFlag(host.handle(a), AEGP_LayerFlag_VIDEO_ACTIVE, false), 0);
    EXPECT_EQ(flags(a), (before | AEGP_LayerFlag_COLLAPSE) & ~AEGP_LayerFlag_VIDEO_ACTIVE);
    for (const AEGP_LayerFlags wrong : {0, 3, 1 << 22, -1})
        EXPECT_EQ(table->AEGP_SetLayerFlag(host.handle(a), wrong, true), kBadArgument);
    project.undo().undo_all();
    EXPECT_EQ(flags(a), before);
}

TEST_F(Layers, are_flat_or_not) {
    const auto is_3d = [this](const model::Layer& layer) {
        A_Boolean three = 9;
        A_Boolean two = 9;
        EXPECT_EQ(table->AEGP_IsLayer3D(host.handle(layer), &three), 0);
        EXPECT_EQ(table->AEGP_IsLayer2D(host.handle(layer), &two), 0);
        EXPECT_NE(three, two);
        return three == 1;
    };
    EXPECT_FALSE(is_3d(a));
    EXPECT_EQ(table->AEGP_SetLayerFlag(host.handle(a), AEGP_LayerFlag_LAYER_IS_3D, true), 0);
    EXPECT_TRUE(is_3d(a));
    model::Layer& camera = main.load_layer(model::LayerKind::camera, nullptr);
    EXPECT_TRUE(is_3d(camera));
    const AEGP_LayerFlags before = flags(camera);
    for (const bool on : {true, false}) {
        EXPECT_EQ(table->AEGP_SetLayerFlag(host.handle(camera), AEGP_LayerFlag_LAYER_IS_3D, on), 0);
        EXPECT_EQ(flags(camera), before);
        EXPECT_TRUE(is_3d(camera));
    }
}

TEST_F(Layers, keep_their_own_values_under_a_new_parent) {
    const model::Value before = place(a);
    EXPECT_EQ(set_parent(a, &b), 0);
    AEGP_LayerH parent = nullptr;
    EXPECT_EQ(table->AEGP_GetLayerParent(host.handle(a), &parent), 0);
    EXPECT_EQ(parent, host.handle(b));
    EXPECT_EQ(place(a), before);
    EXPECT_EQ(set_parent(a, nullptr), 0);
    EXPECT_EQ(table->AEGP_GetLayerParent(host.handle(a), &parent), 0);
    EXPECT_EQ(parent, nullptr);
    EXPECT_EQ(place(a), before);
}

TEST_F(Layers, keep_their_place_under_a_new_parent_if_the_rules_say_so) {
    project.rules().suite_parenting_compensates = true;
    const model::Value before = place(a);
    EXPECT_EQ(set_parent(a, &b), 0);
    // Both lie in the middle, so the child is where the parent's anchor point is.
    EXPECT_EQ(place(a), (model::Value{{100, 50, 0, 0}}));
    EXPECT_EQ(set_parent(a, nullptr), 0);
    EXPECT_EQ(place(a), before);
}

TEST_F(Layers, have_no_descendants_or_strangers_for_parents) {
    EXPECT_EQ(set_parent(b, &a), 0);
    EXPECT_EQ(set_parent(c, &b), 0);
    model::Layer& stranger = project.add_comp("Other").add_layer(footage);
    EXPECT_EQ(set_parent(a, &a), kBadArgument);
    EXPECT_EQ(set_parent(a, &c), kBadArgument);
    EXPECT_EQ(set_parent(a, &stranger), kBadArgument);
    EXPECT_EQ(a.parent(), nullptr);
}

TEST_F(Layers, are_moved_to_the_index_they_shall_have) {
    EXPECT_EQ(reorder(a, 2), 0);
    EXPECT_THAT(layer_names(main), ElementsAre("B", "C", "A", "D"));
    EXPECT_EQ(reorder(d, 0), 0);
    EXPECT_THAT(layer_names(main), ElementsAre("D", "B", "C", "A"));
    EXPECT_EQ(reorder(b, AEGP_REORDER_LAYER_TO_END), 0);
    EXPECT_THAT(layer_names(main), ElementsAre("D", "C", "A", "B"));
    EXPECT_EQ(reorder(d, 99), 0);
    EXPECT_THAT(layer_names(main), ElementsAre("C", "A", "B", "D"));
    EXPECT_EQ(reorder(d, -2), kBadArgument);
    project.undo().undo_all();
    EXPECT_THAT(layer_names(main), ElementsAre("A", "B", "C", "D"));
}

TEST_F(Layers, are_moved_before_the_one_at_the_index_if_the_rules_say_so) {
    project.rules().reorder_meaning = model::ReorderMeaning::insert_before;
    EXPECT_EQ(reorder(a, 2), 0);
    EXPECT_THAT(layer_names(main), ElementsAre("B", "A", "C", "D"));
    EXPECT_EQ(reorder(d, 1), 0);
    EXPECT_THAT(layer_names(main), ElementsAre("B", "D", "A", "C"));
    EXPECT_EQ(reorder(b, 4), 0);
    EXPECT_THAT(layer_names(main), ElementsAre("D", "A", "C", "B"));
    EXPECT_EQ(reorder(d, 0), 0);
    EXPECT_EQ(reorder(d, AEGP_REORDER_LAYER_TO_END), 0);
    EXPECT_THAT(layer_names(main), ElementsAre("A", "C", "B", "D"));
}

TEST_F(Layers, are_added_above_all_others) {
    model::Comp& other = project.add_comp("Other");
    main.select({&c});
    AEGP_LayerH added = nullptr;
    EXPECT_EQ(table->AEGP_AddLayer(host.handle(static_cast<model::Item&>(other)), comp, &added), 0);
    EXPECT_EQ(added, host.handle(main.layer_at(0)));
    EXPECT_EQ(table->AEGP_AddLayer(host.handle(footage), comp, nullptr), 0);
    EXPECT_THAT(layer_names(main), ElementsAre("Red", "Other", "A", "B", "C", "D"));
}

TEST_F(Layers, are_not_added_where_they_would_contain_themselves) {
    model::Comp& other = project.add_comp("Other");
    main.add_layer(other);
    AEGP_LayerH added = nullptr;
    const AEGP_ItemH main_item = host.handle(static_cast<model::Item&>(main));
    EXPECT_EQ(table->AEGP_AddLayer(main_item, host.comp_handle(other), &added), kBadArgument);
    EXPECT_EQ(table->AEGP_AddLayer(main_item, comp, &added), kBadArgument);
    EXPECT_EQ(table->AEGP_AddLayer(host.handle(project.root_folder()), comp, &added), kBadArgument);
    EXPECT_EQ(added, nullptr);
}

TEST_F(Layers, leave_their_children_in_place_when_deleted) {
    a.stream(model::kPosition).set_static_value({{10, 20, 0, 0}});
    a.set_parent(&b, model::Parenting::keep_local_values);
    EXPECT_EQ(table->AEGP_DeleteLayer(host.handle(b)), 0);
    EXPECT_EQ(a.parent(), nullptr);
    EXPECT_EQ(place(a), (model::Value{{410, 220, 0, 0}}));  // from the parent's corner at (400, 200)
    EXPECT_TRUE(footage.is_alive());
    A_long index = -1;
    EXPECT_EQ(table->AEGP_GetLayerIndex(host.handle(b), &index), kBadArgument);
    project.undo().undo();
    EXPECT_EQ(a.parent(), &b);
    EXPECT_EQ(place(a), (model::Value{{10, 20, 0, 0}}));
}

TEST_F(Layers, let_their_children_jump_when_deleted_if_the_rules_say_so) {
    project.rules().deleting_a_parent_compensates = false;
    a.stream(model::kPosition).set_static_value({{10, 20, 0, 0}});
    a.set_parent(&b, model::Parenting::keep_local_values);
    EXPECT_EQ(table->AEGP_DeleteLayer(host.handle(b)), 0);
    EXPECT_EQ(a.parent(), nullptr);
    EXPECT_EQ(place(a), (model::Value{{10, 20, 0, 0}}));
}

TEST_F(Layers, that_are_locked_may_be_edited) {
    a.set_flag(model::kLocked, true);
    EXPECT_EQ(set_parent(a, &b), 0);
    EXPECT_EQ(reorder(a, 3), 0);
    EXPECT_EQ(table->AEGP_DeleteLayer(host.handle(a)), 0);
}

TEST_F(Layers, that_are_locked_refuse_edits_if_the_rules_say_so) {
    project.rules().locked_layers_refuse_edits = true;
    a.set_flag(model::kLocked, true);
    EXPECT_EQ(set_parent(a, &b), kNotAllowed);
    EXPECT_EQ(reorder(a, 3), kNotAllowed);
    EXPECT_EQ(table->AEGP_DeleteLayer(host.handle(a)), kNotAllowed);
    EXPECT_EQ(last_complaint(), "The layer \"A\" is locked.");
    EXPECT_THAT(layer_names(main), ElementsAre("A", "B", "C", "D"));
}

}  // namespace host::suites
