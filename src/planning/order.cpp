#include "planning/order.h"

namespace corvane {

int OrderComp::compare(const Order &a, const Order &b) const {
  if (const int order = compareKeys(a.grade, b.grade); order != 0) {
    return order;
  }
  if (const int order = compareKeys(a.period, b.period); order != 0) {
    return order;
  }
  if (const int order = compareKeys(a.customerName, b.customerName); order != 0) {
    return order;
  }
  return compareKeys(a.width, b.width);
}

}  // namespace corvane
