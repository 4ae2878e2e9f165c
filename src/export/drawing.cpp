#include "export/drawing.h"

#include "export/model_data.h"

namespace corvane {

namespace {

constexpr int kShift = 290;

}  // namespace

DrawingColumns::DrawingColumns(const ExportSettings &settings)
    : pattern(settings.hasBatchNodes() ? kBatch + kShift : kBatch),
      storage(settings.batch ? 710 + kShift : 710),
      delay(settings.batch ? 910 + kShift : 910),
      order(settings.delay ? delay + kShift : delay) {}

std::string coordinatesAt(int x, quint32 y) {
  return " <x> " + std::to_string(x) + " <y> " + std::to_string(y);
}

}  // namespace corvane
