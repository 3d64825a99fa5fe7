// Tests of the engine's table: unset items read 0, writing 0 removes, empty windows disappear.
#include <gtest/gtest.h>

#include "frame/portable/SubclassTable.h"

using plumbing::SubclassTable;

TEST(SubclassTable, ZeroMeansAbsent) {
    SubclassTable table;
    int client = 0;
    EXPECT_EQ(table.WindowClientCount(5), 0);
    EXPECT_EQ(table.PreviousWindowProc(5), 0u);
    EXPECT_EQ(table.MessageClientCount(5, 15), 0);
    EXPECT_EQ(table.MessageClient(5, 15, 1), nullptr);
    EXPECT_EQ(table.MessageClientResponse(5, 15, 0), 0);
    EXPECT_EQ(table.MessageClientResponse(5, 15, -3), 0);

    ASSERT_TRUE(table.SetMessageClient(5, 15, 3, &client));
    ASSERT_TRUE(table.SetMessageClientResponse(5, 15, 3, 9));
    ASSERT_TRUE(table.SetPreviousWindowProc(5, 0x400));
    ASSERT_TRUE(table.SetWindowClientCount(6, 1));
    EXPECT_EQ(table.MessageClient(5, 15, 3), &client);
    EXPECT_EQ(table.MessageClient(5, 15, 2), nullptr);
    EXPECT_EQ(table.MessageClient(5, 16, 3), nullptr);
    EXPECT_EQ(table.MessageClientResponse(5, 15, 3), 9);
    EXPECT_EQ(table.ItemCount(5), 3u);
    EXPECT_EQ(table.WindowCount(), 2u);

    // Writing 0 to each item removes it; the window goes with its last item.
    ASSERT_TRUE(table.SetMessageClient(5, 15, 3, nullptr));
    EXPECT_EQ(table.ItemCount(5), 2u);
    ASSERT_TRUE(table.SetMessageClientResponse(5, 15, 3, 0));
    ASSERT_TRUE(table.SetPreviousWindowProc(5, 0));
    EXPECT_EQ(table.ItemCount(5), 0u);
    EXPECT_EQ(table.FindWindow(5), nullptr);
    EXPECT_EQ(table.WindowCount(), 1u);
    // Clearing what was never set is a successful no-op.
    EXPECT_TRUE(table.SetMessageClientCount(7, 1, 0));
    EXPECT_EQ(table.WindowCount(), 1u);
    // Index 0 and below name no entry.
    EXPECT_FALSE(table.SetMessageClient(6, 1, 0, &client));
    table.RemoveWindow(6);
    EXPECT_EQ(table.WindowCount(), 0u);
}
