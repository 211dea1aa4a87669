// Compositions: their items, nulls, selections.
#include <array>

#include "model/item.h"
#include "world.h"

namespace host::suites {

using testing::ElementsAre;

class Comps : public World {
  public:
    const AEGP_CompSuite11* comps = suite<AEGP_CompSuite11>();
    const AEGP_CompH comp = host.comp_handle(main);
    static constexpr std::array<A_UTF16Char, 3> kName{'N', 0xFC, 0};

    model::Layer& make_null(const A_Time* duration = nullptr) {
        AEGP_LayerH made = nullptr;
        EXPECT_EQ(comps->AEGP_CreateNullInComp(kName.data(), comp, duration, &made), 0);
        EXPECT_EQ(host.handle(main.layer_at(0)), made);
        return main.layer_at(0);
    }
    AEGP_Collection2H collection_of(const std::vector<AEGP_LayerH>& handles) {
        AEGP_Collection2H made = nullptr;
        EXPECT_EQ(collections()->AEGP_NewCollection(plugin, &made), 0);
        for (AEGP_LayerH handle : handles) {
            AEGP_CollectionItemV2 item{};
            item.type = AEGP_CollectionItemType_LAYER;
            item.u.layer.layerH = handle;
            EXPECT_EQ(collections()->AEGP_CollectionPushBack(made, &item), 0);
        }
        return made;
    }
    A_Err select(const std::vector<AEGP_LayerH>& handles) {
        const AEGP_Collection2H collection = collection_of(handles);
        const A_Err result = comps->AEGP_SetSelection(comp, collection);
        EXPECT_EQ(collections()->AEGP_DisposeCollection(collection), 0);  // still the caller's
        return result;
    }
    std::vector<AEGP_LayerH> selection() {
        AEGP_Collection2H collection = nullptr;
        EXPECT_EQ(comps->AEGP_GetNewCollectionFromCompSelection(plugin, comp, &collection), 0);
        A_u_long count = 0;
        EXPECT_EQ(collections()->AEGP_GetCollectionNumItems(collection, &count), 0);
        std::vector<AEGP_LayerH> handles;
        for (A_u_long i = 0; i < count; ++i) {
            AEGP_CollectionItemV2 item{};
            EXPECT_EQ(collections()->AEGP_GetCollectionItemByIndex(collection, i, &item), 0);
            EXPECT_EQ(item.type, AEGP_CollectionItemType_LAYER);
            handles.push_back(item.u.layer.layerH);
        }
        EXPECT_EQ(collections()->AEGP_DisposeCollection(collection), 0);
        return handles;
    }
};

TEST_F(Comps, are_found_from_their_items_and_back) {
    AEGP_CompH found = nullptr;
    EXPECT_EQ(comps->AEGP_GetCompFromItem(host.handle(static_cast<model::Item&>(main)), &found), 0);
    EXPECT_EQ(found, comp);
    AEGP_ItemH item = nullptr;
    EXPECT_EQ(comps->AEGP_GetItemFromComp(comp, &item), 0);
    EXPECT_EQ(item, host.handle(static_cast<model::Item&>(main)));
}

TEST_F(Comps, are_null_without_an_error_for_items_of_other_kinds) {
    AEGP_CompH found = comp;
    EXPECT_EQ(comps->AEGP_GetCompFromItem(host.handle(footage), &found), 0);
    EXPECT_EQ(found, nullptr);
    found = comp;
    EXPECT_EQ(comps->AEGP_GetCompFromItem(host.handle(project.root_folder()), &found), 0);
    EXPECT_EQ(found, nullptr);
}

TEST_F(Comps, get_a_null_on_top_in_their_middle_that_lasts_as_long_as_they_do) {
    add_layer("A");
    model::Layer& null = make_null();
    EXPECT_EQ(null.index(), 0);
    EXPECT_EQ(null.offset(), model::Time{});
    EXPECT_EQ(null.in_point(), model::Time{});
    EXPECT_EQ(null.duration(), main.duration());
    EXPECT_TRUE(null.has_flag(model::kIsNull));
    EXPECT_EQ(null.kind(), model::LayerKind::av);
    EXPECT_EQ(null.stream(model::kAnchorPoint).data().static_value, model::Value{});
    EXPECT_EQ(null.stream(model::kPosition).data().static_value, (model::Value{{500, 250, 0, 0}}));
    EXPECT_EQ(null.stream(model::kScale).data().static_value.n[0], 100);
    EXPECT_EQ(null.stream(model::kOpacity).data().static_value.n[0], 100);
    EXPECT_EQ(null.display_name(), "N\xC3\xBC");
    EXPECT_EQ(null.own_name(), "");
}

TEST_F(Comps, get_nulls_of_the_duration_asked_for) {
    const A_Time two_seconds{48, 24};
    EXPECT_EQ(make_null(&two_seconds).duration(), model::from_seconds(2));
    for (const A_Time whole : {A_Time{0, 24}, A_Time{5, 0}, A_Time{-5, 24}})
        EXPECT_EQ(make_null(&whole).duration(), main.duration());
}

TEST_F(Comps, get_nulls_with_solids_of_their_own_in_one_folder) {
    const model::Item* first = make_null().source();
    const model::Item* second = make_null().source();
    EXPECT_NE(first, second);
    EXPECT_EQ(first->type(), model::ItemType::footage);
    EXPECT_EQ(first->name(), "N\xC3\xBC");
    EXPECT_EQ(first->width(), 100);
    EXPECT_EQ(first->height(), 100);
    EXPECT_TRUE(first->footage().is_solid);
    EXPECT_EQ(first->parent_folder()->name(), "Solids");
    EXPECT_EQ(first->parent_folder(), second->parent_folder());
    EXPECT_EQ(first->parent_folder()->parent_folder(), &project.root_folder());
}

TEST_F(Comps, get_nulls_as_the_rules_say) {
    project.rules().null_layer_gets_own_name = true;
    project.rules().null_size = 60;
    project.rules().solids_folder_name = "Flat";
    project.rules().null_opacity = 0;
    project.rules().new_null_is_selected = true;
    const model::Layer& before = add_layer("A");
    main.select({&main.layer_at(before.index())});
    model::Layer& null = make_null();
    EXPECT_EQ(null.own_name(), "N\xC3\xBC");
    EXPECT_EQ(null.source()->width(), 60);
    EXPECT_EQ(null.source()->parent_folder()->name(), "Flat");
    EXPECT_EQ(null.stream(model::kOpacity).data().static_value.n[0], 0);
    EXPECT_THAT(selection(), ElementsAre(host.handle(null)));
}

TEST_F(Comps, keep_their_selection_when_they_get_a_null) {
    model::Layer& a = add_layer("A");
    main.select({&a});
    make_null();
    EXPECT_THAT(selection(), ElementsAre(host.handle(a)));
}

TEST_F(Comps, lose_the_null_by_undoing_one_step) {
    const int items = project.item_count();
    make_null();
    project.undo().undo();
    EXPECT_EQ(main.layer_count(), 0);
    EXPECT_EQ(project.item_count(), items);
    EXPECT_FALSE(project.undo().can_undo());
}

TEST_F(Comps, get_nulls_with_narrow_names_from_the_older_suites) {
    AEGP_LayerH made = nullptr;
    EXPECT_EQ(suite<AEGP_CompSuite4>()->AEGP_CreateNullInComp("Four", comp, nullptr, &made), 0);
    EXPECT_EQ(main.layer_at(0).display_name(), "Four");
    EXPECT_EQ(suite<AEGP_CompSuite6>()->AEGP_CreateNullInComp("Six", comp, nullptr, &made), 0);
    EXPECT_EQ(main.layer_at(0).display_name(), "Six");
    EXPECT_EQ(suite<AEGP_CompSuite7>()->AEGP_CreateNullInComp(kName.data(), comp, nullptr, &made), 0);
    EXPECT_EQ(main.layer_at(0).display_name(), "N\xC3\xBC");
}

TEST_F(Comps, get_no_null_without_a_name_or_a_place_for_its_handle) {
    AEGP_LayerH made = nullptr;
    EXPECT_EQ(comps->AEGP_CreateNullInComp(nullptr, comp, nullptr, &made), kBadArgument);
    EXPECT_EQ(comps->AEGP_CreateNullInComp(kName.data(), comp, nullptr, nullptr), kBadArgument);
    EXPECT_EQ(main.layer_count(), 0);
}

class Selections : public Comps {
  public:
    const AEGP_LayerH c = host.handle(add_layer("C"));
    const AEGP_LayerH b = host.handle(add_layer("B"));
    const AEGP_LayerH a = host.handle(add_layer("A"));
};

TEST_F(Selections, that_are_empty_give_an_empty_collection) {
    EXPECT_THAT(selection(), ElementsAre());
}

TEST_F(Selections, come_in_the_order_of_selecting) {
    EXPECT_EQ(select({b, a, c}), 0);
    EXPECT_THAT(selection(), ElementsAre(b, a, c));
}

TEST_F(Selections, come_from_top_to_bottom_if_the_rules_say_so) {
    project.rules().selection_order = model::SelectionOrder::top_to_bottom;
    EXPECT_EQ(select({b, c, a}), 0);
    EXPECT_THAT(selection(), ElementsAre(a, b, c));
}

TEST_F(Selections, are_replaced_as_a_whole) {
    EXPECT_EQ(select({a, b}), 0);
    EXPECT_EQ(select({c}), 0);
    EXPECT_THAT(selection(), ElementsAre(c));
    EXPECT_EQ(select({}), 0);
    EXPECT_THAT(selection(), ElementsAre());
}

TEST_F(Selections, hold_a_layer_once) {
    EXPECT_EQ(select({b, a, b}), 0);
    EXPECT_THAT(selection(), ElementsAre(b, a));
}

TEST_F(Selections, stay_when_a_member_is_gone) {
    EXPECT_EQ(select({a}), 0);
    const AEGP_Collection2H collection = collection_of({b, c});
    ASSERT_EQ(layers()->AEGP_DeleteLayer(c), 0);
    EXPECT_EQ(comps->AEGP_SetSelection(comp, collection), kBadArgument);
    EXPECT_THAT(selection(), ElementsAre(a));
}

TEST_F(Selections, stay_when_a_member_is_of_another_composition) {
    model::Comp& other = project.add_comp("Other");
    const AEGP_LayerH foreign = host.handle(other.add_layer(footage));
    EXPECT_EQ(select({a}), 0);
    EXPECT_EQ(select({b, foreign}), kBadArgument);
    EXPECT_THAT(selection(), ElementsAre(a));
}

TEST_F(Selections, hold_layers_only) {
    EXPECT_EQ(select({a}), 0);
    const AEGP_Collection2H collection = collection_of({b});
    AEGP_CollectionItemV2 item{};
    item.type = AEGP_CollectionItemType_MASK;
    ASSERT_EQ(collections()->AEGP_CollectionPushBack(collection, &item), 0);
    EXPECT_EQ(comps->AEGP_SetSelection(comp, collection), kNotImplemented);
    EXPECT_THAT(selection(), ElementsAre(a));
}

TEST_F(Selections, lose_deleted_layers_and_keep_the_others) {
    EXPECT_EQ(select({c, b, a}), 0);
    ASSERT_EQ(layers()->AEGP_DeleteLayer(b), 0);
    EXPECT_THAT(selection(), ElementsAre(c, a));
}

}  // namespace host::suites
