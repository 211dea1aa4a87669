// Copying the pre-comp's layers: what only shows with unusual projects.
#include "operation_test.h"

class CopyDetails : public OperationTest {
  protected:
    A_Err copy() { return copy_layers_to_parent(&info, fake::handle(nest), nullptr, &collection); }

    std::string script() const {
        const std::vector<std::string> calls = host.calls_of("ExecuteScript");
        return calls.size() == 1 ? calls[0] : "";
    }

    AEGP_Collection2H collection = fake::handle(host.add_collection("copies", {}));
};

TEST_F(CopyDetails, statements_for_the_thousandth_layer_are_whole) {
    while (inner->layers.size() < 1000) host.add_layer(inner, "more", footage);
    while (main->layers.size() < 1010) host.add_layer_on_top(main, "copy", footage);
    EXPECT_EQ(copy(), A_Err_NONE);
    const std::string layer = "app.project.item(2).layer(1000)";
    EXPECT_THAT(script(), testing::HasSubstr("tempName = " + layer + ".name; allNames.push(tempName);" +  //
                                             layer + ".name = tempName;" +                                //
                                             layer + ".copyToComp(app.project.item(3));" +                //
                                             layer + ".name = tempName;, false"));
}

TEST_F(CopyDetails, copies_into_item_zero_when_the_composition_is_not_in_the_project) {
    std::erase(host.items, main->item);
    for (const char* label : {"a'", "b'", "c'"}) host.add_layer_on_top(main, label, footage);
    EXPECT_EQ(copy(), A_Err_NONE);
    EXPECT_THAT(script(), testing::HasSubstr("app.project.item(2).layer(1).copyToComp(app.project.item(0));"));
}
