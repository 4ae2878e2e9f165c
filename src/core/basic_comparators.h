#pragma once

#include <QString>

#include "core/comparison.h"

namespace corvane {

// Text order: code unit by code unit, case-sensitive.
class StrComp : public Comparison<QString> {
 public:
  int compare(const QString &a, const QString &b) const override { return compareKeys(a, b); }
};

// Numeric order, exact: no tolerance.
class DoubleComp : public Comparison<double> {
 public:
  int compare(const double &a, const double &b) const override { return compareKeys(a, b); }
};

}  // namespace corvane
