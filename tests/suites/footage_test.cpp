// Solids and the interpretation of footage.
#include <cstring>

#include "model/item.h"
#include "world.h"

namespace host::suites {

class Footage : public World {
  public:
    const AEGP_FootageSuite5* footages = suite<AEGP_FootageSuite5>();
    const AEGP_ItemH red = host.handle(footage);
    const AEGP_ItemH root = host.handle(project.root_folder());
    static constexpr AEGP_ColorVal kBlue{0.5, 0, 0.25, 1};  // alpha first

    AEGP_FootageH make() {
        AEGP_FootageH made = nullptr;
        EXPECT_EQ(footages->AEGP_NewSolidFootage("Blue", 40, 30, &kBlue, &made), 0);
        return made;
    }
    AEGP_FootageInterp interpretation() {
        AEGP_FootageInterp record;
        std::memset(&record, 0, sizeof record);
        EXPECT_EQ(footages->AEGP_GetFootageInterpretation(red, false, &record), 0);
        return record;
    }
};

TEST_F(Footage, is_not_in_the_project_until_it_is_added) {
    const int items = project.item_count();
    const AEGP_FootageH made = make();
    EXPECT_EQ(project.item_count(), items);
    AEGP_ItemH item = nullptr;
    EXPECT_EQ(footages->AEGP_AddFootageToProject(made, root, &item), 0);
    ASSERT_EQ(project.item_count(), items + 1);
    const model::Item& added = project.item_by_number(items + 1);
    EXPECT_EQ(host.handle(added), item);
    EXPECT_EQ(added.name(), "Blue");
    EXPECT_EQ(added.type(), model::ItemType::footage);
    EXPECT_EQ(added.width(), 40);
    EXPECT_EQ(added.height(), 30);
    EXPECT_TRUE(added.footage().is_solid);
    EXPECT_THAT(added.footage().color, testing::ElementsAre(0, 0.25, 1, 0.5));
    project.undo().undo();
    EXPECT_EQ(project.item_count(), items);
}

TEST_F(Footage, is_adopted_by_the_project_once) {
    const AEGP_FootageH made = make();
    EXPECT_EQ(host.ledger().never_disposed.size(), 1U);
    EXPECT_EQ(footages->AEGP_AddFootageToProject(made, root, nullptr), 0);
    EXPECT_EQ(footages->AEGP_AddFootageToProject(made, root, nullptr), kBadArgument);
    EXPECT_EQ(footages->AEGP_DisposeFootage(made), kBadArgument);
    EXPECT_TRUE(host.ledger().never_disposed.empty());
}

TEST_F(Footage, is_disposed_of_by_who_does_not_add_it) {
    const AEGP_FootageH made = make();
    EXPECT_EQ(footages->AEGP_DisposeFootage(made), 0);
    EXPECT_EQ(footages->AEGP_DisposeFootage(made), kBadArgument);
}

TEST_F(Footage, goes_into_folders_only_and_stays_with_the_caller_otherwise) {
    const AEGP_FootageH made = make();
    EXPECT_EQ(footages->AEGP_AddFootageToProject(made, red, nullptr), kBadArgument);
    const model::Item& folder = project.add_folder("Folder");
    AEGP_ItemH item = nullptr;
    EXPECT_EQ(footages->AEGP_AddFootageToProject(made, host.handle(folder), &item), 0);
    EXPECT_EQ(folder.folder_contents().size(), 1U);
}

TEST_F(Footage, of_impossible_size_or_without_a_name_or_colour_is_refused) {
    AEGP_FootageH made = nullptr;
    EXPECT_EQ(footages->AEGP_NewSolidFootage("x", 0, 10, &kBlue, &made), kBadArgument);
    EXPECT_EQ(footages->AEGP_NewSolidFootage("x", 10, -1, &kBlue, &made), kBadArgument);
    EXPECT_EQ(footages->AEGP_NewSolidFootage("x", 30'001, 10, &kBlue, &made), kBadArgument);
    EXPECT_EQ(footages->AEGP_NewSolidFootage(nullptr, 10, 10, &kBlue, &made), kBadArgument);
    EXPECT_EQ(footages->AEGP_NewSolidFootage("x", 10, 10, nullptr, &made), kBadArgument);
    EXPECT_EQ(footages->AEGP_NewSolidFootage("x", 10, 10, &kBlue, nullptr), kBadArgument);
    EXPECT_EQ(made, nullptr);
    EXPECT_TRUE(host.ledger().never_disposed.empty());
    EXPECT_EQ(footages->AEGP_NewSolidFootage("x", 30'000, 1, &kBlue, &made), 0);
}

TEST_F(Footage, takes_another_pixel_aspect_through_its_interpretation) {
    AEGP_FootageInterp record = interpretation();
    EXPECT_EQ(record.pix_aspect_ratio.num, 1);
    EXPECT_EQ(record.pix_aspect_ratio.den, 1U);
    record.pix_aspect_ratio = {10, 11};
    EXPECT_EQ(footages->AEGP_SetFootageInterpretation(red, false, &record), 0);
    EXPECT_EQ(footage.pixel_aspect(), (model::PixelAspect{10, 11}));
    EXPECT_EQ(interpretation().pix_aspect_ratio.den, 11U);
    project.undo().undo();
    EXPECT_EQ(footage.pixel_aspect(), model::PixelAspect{});
}

TEST_F(Footage, takes_no_other_change_of_its_interpretation) {
    AEGP_FootageInterp record = interpretation();
    record.pix_aspect_ratio = {2, 1};
    record.conform_fpsF = 12;
    EXPECT_EQ(footages->AEGP_SetFootageInterpretation(red, false, &record), kNotImplemented);
    record = interpretation();
    for (const A_Ratio impossible : {A_Ratio{0, 1}, A_Ratio{-1, 1}, A_Ratio{1, 0}}) {
        record.pix_aspect_ratio = impossible;
        EXPECT_EQ(footages->AEGP_SetFootageInterpretation(red, false, &record), kBadArgument);
    }
    EXPECT_EQ(footages->AEGP_SetFootageInterpretation(red, false, nullptr), kBadArgument);
    EXPECT_EQ(footage.pixel_aspect(), model::PixelAspect{});
    EXPECT_FALSE(project.undo().can_undo());
}

TEST_F(Footage, alone_has_an_interpretation_and_it_has_no_proxy) {
    AEGP_FootageInterp record = interpretation();
    for (const AEGP_ItemH other : {root, host.handle(static_cast<model::Item&>(main))}) {
        EXPECT_EQ(footages->AEGP_GetFootageInterpretation(other, false, &record), kBadArgument);
        EXPECT_EQ(footages->AEGP_SetFootageInterpretation(other, false, &record), kBadArgument);
    }
    EXPECT_EQ(footages->AEGP_GetFootageInterpretation(red, true, &record), kBadArgument);
    EXPECT_EQ(footages->AEGP_SetFootageInterpretation(red, true, &record), kBadArgument);
    EXPECT_EQ(footages->AEGP_GetFootageInterpretation(red, false, nullptr), kBadArgument);
}

}  // namespace host::suites
