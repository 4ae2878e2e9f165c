#include "export/drawing.h"

#include <gtest/gtest.h>

#include "export/model_data.h"

namespace corvane {
namespace {

TEST(Drawing, BatchAndDelayNodesPushTheColumnsBehindThemToTheRight) {
  struct Case {
    bool batch, delay, patternsOnly;
    int pattern, storage, delayColumn, order;
  };
  for (const Case &expected : {Case{false, false, false, 420, 710, 910, 910},
                               Case{true, false, false, 710, 1000, 1200, 1200},
                               Case{false, true, false, 420, 710, 910, 1200},
                               Case{true, true, false, 710, 1000, 1200, 1490},
                               Case{true, true, true, 420, 1000, 1200, 1490}}) {
    ExportSettings settings;
    settings.batch = expected.batch;
    settings.delay = expected.delay;
    settings.patternsOnly = expected.patternsOnly;
    const DrawingColumns columns(settings);
    EXPECT_EQ(columns.pattern, expected.pattern);
    EXPECT_EQ(columns.storage, expected.storage);
    EXPECT_EQ(columns.delay, expected.delayColumn);
    EXPECT_EQ(columns.order, expected.order);
  }
}

TEST(Drawing, CoordinatesAreWrittenAsTheirAttributes) {
  EXPECT_EQ(coordinatesAt(10, 4000000000U), " <x> 10 <y> 4000000000");
}

}  // namespace
}  // namespace corvane
