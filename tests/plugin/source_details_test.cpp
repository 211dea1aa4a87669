// Counting an item's uses: layers without a source.
#include "operation_test.h"

class SourceDetails : public OperationTest {};

TEST_F(SourceDetails, layer_without_a_source_uses_no_item_whatever_its_number) {
    host.add_layer(main, "light", nullptr);
    fake::Item* unused = host.add_item("unused", AEGP_ItemType_FOOTAGE);
    for (const A_long id : {0, 1, -2}) {
        unused->id = id;
        int count = 9;
        EXPECT_EQ(item_use_count(&info, fake::handle(unused), &count), A_Err_NONE);
        EXPECT_EQ(count, 0) << id;
    }
}
