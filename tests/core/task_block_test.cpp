#include "core/task_block.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

TEST(TaskBlock, IsZeroedAndFreed) {
  const TaskBlock block(4716);
  ASSERT_TRUE(block);
  EXPECT_TRUE(std::all_of(block.Get(), block.Get() + 4716, [](BYTE value) { return value == 0; }));
}

TEST(TaskBlock, Empty) {
  TaskBlock block;
  EXPECT_FALSE(block);
  EXPECT_EQ(nullptr, block.Get());
  EXPECT_EQ(nullptr, block.Release());
  EXPECT_FALSE(TaskBlock::Attach(nullptr));
}

TEST(TaskBlock, ReleaseGivesTheBlockAway) {
  TaskBlock block(1);
  BYTE* const bytes = block.Release();
  ASSERT_NE(nullptr, bytes);
  EXPECT_FALSE(block);
  const TaskBlock again = TaskBlock::Attach(bytes);
  EXPECT_EQ(bytes, again.Get());
}

TEST(TaskBlock, Moves) {
  TaskBlock first(1);
  BYTE* const bytes = first.Get();
  TaskBlock second = std::move(first);
  EXPECT_EQ(bytes, second.Get());
  TaskBlock third(1);
  third = std::move(second);
  EXPECT_EQ(bytes, third.Get());
}
