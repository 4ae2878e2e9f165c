#pragma once

#include <QtGlobal>
#include <string>

namespace corvane {

struct ExportSettings;

// Where the nodes of the model stand when the tool draws it: a column for each family, and in it a
// row for each node or group. Batch nodes push what stands behind them to the right, and so do
// delay nodes.
struct DrawingColumns {
  explicit DrawingColumns(const ExportSettings &settings);

  static constexpr int kMachine = 10;
  static constexpr int kProcess = 180;
  static constexpr int kBatch = 420;
  int pattern;
  int storage;  // of the cutters, and of the waste
  int delay;
  int order;
};

// The distances of the rows.
inline constexpr quint32 kFirstMachineRow = 210;
inline constexpr quint32 kMachineRowStep = 50;
inline constexpr quint32 kPatternRowStep = 20;
inline constexpr quint32 kStorageRowStep = 20;
inline constexpr quint32 kStorageBlockRowStep = 80;
inline constexpr quint32 kWasteRowStep = 80;
inline constexpr quint32 kDelayRowStep = 20;
inline constexpr quint32 kOrderRowStep = 20;

// " <x> {x} <y> {y}"
std::string coordinatesAt(int x, quint32 y);

}  // namespace corvane
