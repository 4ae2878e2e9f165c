#include "core/skip_levels.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bitset>
#include <cstdint>
#include <vector>

namespace corvane {
namespace {

constexpr quint32 kSeed = 0x1E9EB544U;

// The shift register once more, bit by bit: bits leave at the top; a 1 that leaves comes back into
// the lowest place, and flips those of 0x57 one place further up.
class BitwiseRegister {
 public:
  explicit BitwiseRegister(quint32 state) : bits_(state) {}

  int draw() {
    const bool out = bits_[31];
    std::bitset<32> next;
    for (std::size_t at = 1; at < 32; ++at) {
      next[at] = bits_[at - 1] != (out && std::bitset<32>(0x57)[at - 1]);
    }
    next[0] = out;
    bits_ = next;
    return out ? 1 : 0;
  }
  quint32 state() const { return static_cast<quint32>(bits_.to_ulong()); }

 private:
  std::bitset<32> bits_;
};

int drawsOfStep(int k) {
  return std::vector<int>{1, 1, 1, 1, 2, 2, 1, 1, 3}[static_cast<std::size_t>(k)];
}

int plainRandomLevel(BitwiseRegister &bits, int k) {
  int level = 1;
  for (bool zeros = true; zeros;) {
    for (int draw = 0; zeros && draw < drawsOfStep(k); ++draw) {
      zeros = bits.draw() == 0;
    }
    level += zeros ? 1 : 0;
  }
  return level >= 2 && k % 2 == 1 ? level - 1 : level;
}

int plainCountedLevel(std::uint64_t n, int k) {
  const std::vector<int> bits = {1, 1, 1, 1, 2, 2, 2, 2, 3};
  const std::uint64_t factor = std::uint64_t{1} << bits[static_cast<std::size_t>(k)];
  int level = 1;
  for (std::uint64_t multiple = factor; n % multiple == 0; multiple *= factor) {
    ++level;
  }
  return level >= 2 && k % 2 == 1 ? level - 1 : level;
}

TEST(SkipLevels, TheParameterOfEachConstructionArgument) {
  std::vector<int> parameters;
  for (int argument = 0; argument <= 8; ++argument) {
    parameters.push_back(skipLevelParameter(argument));
  }
  EXPECT_THAT(parameters, testing::ElementsAre(4, 4, 2, 3, 4, 5, 4, 4, 8));
}

TEST(SkipLevels, AnArgumentOutsideZeroToEightGivesFour) {
  EXPECT_EQ(skipLevelParameter(-1), 4);
  EXPECT_EQ(skipLevelParameter(9), 4);
  EXPECT_EQ(skipLevelParameter(1000000), 4);
}

TEST(SkipLevels, ADrawShiftsAClearTopBitOutAndFlipsTheTapsForASetOne) {
  quint32 state = kSeed;
  EXPECT_EQ(drawBit(state), 0U);
  EXPECT_EQ(state, 0x3D3D6A88U);
  EXPECT_EQ(drawBit(state), 0U);
  EXPECT_EQ(state, 0x7A7AD510U);
  EXPECT_EQ(drawBit(state), 0U);
  EXPECT_EQ(state, 0xF4F5AA20U);
  EXPECT_EQ(drawBit(state), 1U);
  EXPECT_EQ(state, 0xE9EB54EFU);
}

TEST(SkipLevels, DrawsAgreeWithABitwiseRegister) {
  quint32 state = kSeed;
  BitwiseRegister bits(kSeed);
  for (int draw = 0; draw < 20000; ++draw) {
    ASSERT_EQ(drawBit(state), static_cast<quint32>(bits.draw())) << draw;
    ASSERT_EQ(state, bits.state()) << draw;
  }
}

TEST(SkipLevels, TheRegisterNeverRunsDry) {
  quint32 state = 0x80000000U;
  EXPECT_EQ(drawBit(state), 1U);
  EXPECT_EQ(state, 0xAFU);
}

class LevelsOfParameter : public testing::TestWithParam<int> {};

TEST_P(LevelsOfParameter, RandomLevelsAgreeWithABitwiseRegister) {
  quint32 state = kSeed;
  BitwiseRegister bits(kSeed);
  for (int node = 0; node < 20000; ++node) {
    ASSERT_EQ(randomLevel(state, GetParam()), plainRandomLevel(bits, GetParam())) << node;
    ASSERT_EQ(state, bits.state()) << node;
  }
}

TEST_P(LevelsOfParameter, CountedLevelsFollowTheMultiplesOfThePowers) {
  for (quint32 n = 1; n <= 100000; ++n) {
    ASSERT_EQ(countedLevel(n, GetParam()), plainCountedLevel(n, GetParam())) << n;
  }
  for (quint32 power = 0; power < 32; ++power) {
    const quint32 n = quint32{1} << power;
    EXPECT_EQ(countedLevel(n, GetParam()), plainCountedLevel(n, GetParam())) << n;
    EXPECT_EQ(countedLevel(~(n - 1U), GetParam()), plainCountedLevel(n, GetParam())) << n;
  }
}

INSTANTIATE_TEST_SUITE_P(EveryParameter, LevelsOfParameter, testing::Range(0, 9));

TEST(SkipLevels, AnOddParameterGivesOneLevelLess) {
  for (quint32 seed = 1; seed < 2000; ++seed) {
    quint32 even = seed;
    quint32 odd = seed;
    const int full = randomLevel(even, 2);
    EXPECT_EQ(randomLevel(odd, 3), full >= 2 ? full - 1 : 1) << seed;
    EXPECT_EQ(odd, even) << seed;
    even = odd = seed;
    const int fullOfTwoDraws = randomLevel(even, 4);
    EXPECT_EQ(randomLevel(odd, 5), fullOfTwoDraws >= 2 ? fullOfTwoDraws - 1 : 1) << seed;
    EXPECT_EQ(countedLevel(seed, 3), std::max(1, countedLevel(seed, 2) - 1)) << seed;
    EXPECT_EQ(countedLevel(seed, 5), std::max(1, countedLevel(seed, 4) - 1)) << seed;
  }
}

TEST(SkipLevels, TheLongestRunOfZerosGivesLevel32) {
  quint32 state = 1;
  EXPECT_EQ(randomLevel(state, 2), 32);
  state = 1;
  EXPECT_EQ(randomLevel(state, 3), 31);
  state = 1;
  EXPECT_EQ(randomLevel(state, 4), 16);
  EXPECT_EQ(countedLevel(0x80000000U, 2), 32);
}

TEST(SkipLevels, NoLevelLiesAbove32EvenIfTheRegisterWereDry) {
  quint32 dry = 0;
  EXPECT_EQ(randomLevel(dry, 2), 32);
  EXPECT_EQ(countedLevel(0, 2), 32);
}

}  // namespace
}  // namespace corvane
