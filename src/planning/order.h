#pragma once

#include <QString>

#include "core/comparison.h"

namespace corvane {

// A customer order: rolls of one width of one grade in one period.
struct Order {
  QString grade;
  QString customerName;
  double width = 0;     // width of the rolls, inches (demand width)
  qint32 quantity = 0;  // number of rolls
  qint32 good = 1;      // 1 when its line was accepted, 0 when it is bad
  QString period;       // kept as text
};

// The key of an order: grade, then period, then customer name, then width. The quantity takes no
// part.
class OrderComp : public Comparison<Order> {
 public:
  int compare(const Order &a, const Order &b) const override;
};

}  // namespace corvane
