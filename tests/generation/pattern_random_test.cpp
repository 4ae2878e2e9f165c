#include "generation/pattern_random.h"

#include <gtest/gtest.h>

#include "support/literal_pricing.h"

namespace corvane {
namespace {

TEST(PatternRandom, StartsWithState1AndTheRangeZeroToAHundred) {
  const PatternRandom random;
  EXPECT_EQ(random.state(), 1U);
  EXPECT_EQ(random.low(), 0U);
  EXPECT_EQ(random.high(), 100U);
}

TEST(PatternRandom, DrawsIndex3FirstFromFifteenWidths) {
  PatternRandom random;
  random.setRange(0, 14);
  EXPECT_EQ(random.draw(), 3U);
  EXPECT_EQ(random.state(), 29778U);
}

TEST(PatternRandom, TakesTheStateThatItIsSeededWith) {
  PatternRandom random;
  random.seed(42);
  EXPECT_EQ(random.state(), 42U);
  random.setRange(0, 9);
  // (205 x 42 + 29573) mod 139968 = 38183; 10 x 38183 / 139968 = 2
  EXPECT_EQ(random.draw(), 2U);
  EXPECT_EQ(random.state(), 38183U);
}

TEST(PatternRandom, KeepsItsStateWhenTheRangeChanges) {
  PatternRandom random;
  random.draw();
  random.setRange(5, 5);
  EXPECT_EQ(random.state(), 29778U);
  EXPECT_EQ(random.draw(), 5U);
}

TEST(PatternRandom, WrapsAt32Bits) {
  PatternRandom random;
  random.seed(4294967295U);
  random.setRange(0, 99);
  // 205 x (2^32 - 1) wraps to 2^32 - 205; plus 29573 wraps to 29368.
  random.draw();
  EXPECT_EQ(random.state(), 29368U);
}

TEST(PatternRandom, DrawsWhatTheLiteralGeneratorDraws) {
  PatternRandom random;
  support::LiteralRandom literal;
  for (quint32 n = 0; n < 300000; ++n) {
    if (n % 100 == 0) {
      // Up to ranges whose product with the state leaves 32 bits.
      const quint32 high = n % 7 == 0 ? n : n / 10;
      random.setRange(0, high);
      literal.high = high;
    }
    ASSERT_EQ(random.draw(), literal.draw()) << n;
    ASSERT_EQ(random.state(), literal.state) << n;
  }
}

}  // namespace
}  // namespace corvane
