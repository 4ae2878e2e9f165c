#include "generation/pattern.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "core/zem_mem_mgr_factory.h"
#include "support/scoped_pooling.h"

namespace corvane {
namespace {

using support::ScopedPooling;
using testing::ElementsAre;
using testing::IsEmpty;

// The pool that the registry answers for the geometry of patterns: its own, since pools are shared.
ZemMemMgr &patternPool() {
  static ZemMemMgr *pool = [] {
    createPatternPool();
    return ZemMemMgrFactory::instance().create(sizeof(Pattern), "test", 256);
  }();
  return *pool;
}

TEST(Pattern, IsNewWithEmptySequencesAndTheTrimOfItsCreator) {
  const Pattern pattern(62.5);
  EXPECT_EQ(pattern.trim, 62.5);
  EXPECT_TRUE(pattern.widths.isEmpty());
  EXPECT_TRUE(pattern.xValues.isEmpty());
  EXPECT_TRUE(pattern.reducedCosts.isEmpty());
  EXPECT_TRUE(pattern.inModel.isEmpty());
}

TEST(Pattern, TakesFortyBytes) {
  EXPECT_EQ(sizeof(Pattern), 40U);
}

TEST(Pattern, SortsItsWidthsDescendingAndKeepsEveryOne) {
  Pattern pattern(0);
  pattern.widths = {30, 45.5, 30, 12, 45.25};
  sortWidthsDescending(pattern);
  EXPECT_THAT(pattern.widths, ElementsAre(45.5, 45.25, 30, 30, 12));
}

TEST(Pattern, SortsNoWidthsAndOneWidth) {
  Pattern pattern(0);
  sortWidthsDescending(pattern);
  EXPECT_THAT(pattern.widths, IsEmpty());
  pattern.widths = {30};
  sortWidthsDescending(pattern);
  EXPECT_THAT(pattern.widths, ElementsAre(30));
}

TEST(PatternPool, IsNamedPatternAndHoldsBlocksOfFortyBytes) {
  EXPECT_EQ(patternPool().name().substr(0, 7), "Pattern");
  EXPECT_EQ(patternPool().blockSize(), 40U);
}

TEST(PatternPool, ServesPatternsWhilePoolingIsOn) {
  const quint32 before = patternPool().usedBlocks();
  const ScopedPooling pooling(true);
  auto pattern = std::make_unique<Pattern>(1);
  EXPECT_EQ(patternPool().usedBlocks(), before + 1);
  pattern.reset();
  EXPECT_EQ(patternPool().usedBlocks(), before);
}

TEST(PatternPool, ServesNothingWhilePoolingIsOff) {
  const quint32 before = patternPool().usedBlocks();
  const ScopedPooling pooling(false);
  const auto pattern = std::make_unique<Pattern>(1);
  EXPECT_EQ(patternPool().usedBlocks(), before);
}

}  // namespace
}  // namespace corvane
