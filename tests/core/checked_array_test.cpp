#include "core/checked_array.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <numeric>

namespace corvane {
namespace {

using testing::ElementsAre;

// More than any heap holds, and not known to the compiler.
std::size_t tooMuch() {
  static volatile std::size_t count = std::size_t{1} << 58U;
  return count;
}

TEST(CheckedArray, StartsEmptyWithoutABlock) {
  const CheckedArray<int> array;
  EXPECT_EQ(array.size(), 0U);
  EXPECT_EQ(array.data(), nullptr);
}

TEST(CheckedArray, AllocateFillsWithTheValue) {
  CheckedArray<double> array;
  ASSERT_TRUE(array.allocate(3, 2.5));
  EXPECT_THAT(std::vector<double>(array.begin(), array.end()), ElementsAre(2.5, 2.5, 2.5));
  ASSERT_TRUE(array.allocate(2, 1));
  EXPECT_EQ(array.size(), 2U);
  EXPECT_EQ(array[1], 1);
}

TEST(CheckedArray, AnAllocatedArrayOfNoValuesStillHasABlock) {
  CheckedArray<int> array;
  ASSERT_TRUE(array.allocate(0, 7));
  EXPECT_NE(array.data(), nullptr);
  EXPECT_EQ(array.size(), 0U);
}

TEST(CheckedArray, WithoutMemoryItSaysSoAndIsEmpty) {
  CheckedArray<double> array;
  ASSERT_TRUE(array.allocate(3, 1));
  EXPECT_FALSE(array.allocate(tooMuch(), 1));
  EXPECT_EQ(array.size(), 0U);
  EXPECT_EQ(array.data(), nullptr);
}

TEST(CheckedArray, ACountWhoseBytesLeaveTheAddressSpaceIsRefused) {
  CheckedArray<double> array;
  EXPECT_FALSE(array.allocate(std::numeric_limits<std::size_t>::max() / 4, 1));
  EXPECT_FALSE(array.reserve(std::numeric_limits<std::size_t>::max()));
}

TEST(CheckedArray, AppendKeepsWhatIsThere) {
  CheckedArray<int> array;
  for (int value = 0; value < 1000; ++value) {
    ASSERT_TRUE(array.append(value));
  }
  std::vector<int> expected(1000);
  std::iota(expected.begin(), expected.end(), 0);
  const CheckedArray<int> &constant = array;
  EXPECT_EQ(std::vector<int>(constant.begin(), constant.end()), expected);
  EXPECT_EQ(constant[999], 999);
  EXPECT_EQ(*constant.data(), 0);
}

TEST(CheckedArray, ReserveKeepsContentsAndAFailureTooKeepsThem) {
  CheckedArray<int> array;
  array.append(4);
  ASSERT_TRUE(array.reserve(100));
  const int *block = array.data();
  ASSERT_TRUE(array.reserve(50));
  for (int value = 1; value < 100; ++value) {
    array.append(value);
  }
  EXPECT_EQ(array.data(), block);
  EXPECT_FALSE(array.reserve(tooMuch()));
  EXPECT_EQ(array.size(), 100U);
  EXPECT_EQ(array[0], 4);
}

TEST(CheckedArray, ReleaseForgetsEverything) {
  CheckedArray<int> array;
  array.append(4);
  array.release();
  EXPECT_EQ(array.size(), 0U);
  EXPECT_EQ(array.data(), nullptr);
  ASSERT_TRUE(array.append(5));
  EXPECT_EQ(array[0], 5);
}

}  // namespace
}  // namespace corvane
