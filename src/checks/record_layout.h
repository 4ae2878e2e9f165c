#pragma once

#include <array>
#include <span>
#include <string_view>

#include "checks/field_texts.h"

namespace corvane::checks {

// A column of a data file.
struct Column {
  std::string_view name;  // as in messages
  FieldKind kind;
};

using Layout = std::span<const Column>;

inline constexpr std::array kMachineColumns = {
    Column{"location", FieldKind::kName},     Column{"cutter", FieldKind::kName},
    Column{"grade", FieldKind::kName},        Column{"width", FieldKind::kNumber},
    Column{"capacity", FieldKind::kNumber},   Column{"pounds per inch", FieldKind::kNumber},
    Column{"waste cost", FieldKind::kNumber},
};
inline constexpr std::array kOrderColumns = {
    Column{"period", FieldKind::kName},   Column{"grade", FieldKind::kName},
    Column{"width", FieldKind::kNumber},  Column{"quantity", FieldKind::kQuantity},
    Column{"customer", FieldKind::kName},
};
inline constexpr std::array kRateColumns = {
    Column{"customer", FieldKind::kName}, Column{"mill", FieldKind::kName},
    Column{"mode", FieldKind::kName},     Column{"rate", FieldKind::kNumber},
    Column{"delay", FieldKind::kNumber},
};

// Where the columns of the families' findings stand.
inline constexpr int kMachineLocation = 0;
inline constexpr int kMachineName = 1;
inline constexpr int kMachineGrade = 2;
inline constexpr int kMachineWidth = 3;
inline constexpr int kMachineCapacity = 4;
inline constexpr int kMachinePounds = 5;
inline constexpr int kMachineWasteCost = 6;
inline constexpr int kOrderPeriod = 0;
inline constexpr int kOrderGrade = 1;
inline constexpr int kOrderWidth = 2;
inline constexpr int kOrderQuantity = 3;
inline constexpr int kOrderCustomer = 4;
inline constexpr int kRateCustomer = 0;
inline constexpr int kRateMill = 1;
inline constexpr int kRateMode = 2;
inline constexpr int kRateRate = 3;
inline constexpr int kRateDelay = 4;

}  // namespace corvane::checks
