#include "planning/freight_rate.h"

#include <ostream>

#include "core/numbers.h"
#include "core/text.h"

namespace corvane {

int FreightRateComp::compare(const FreightRate &a, const FreightRate &b) const {
  if (const int order = compareKeys(a.customer, b.customer); order != 0) {
    return order;
  }
  if (const int order = compareKeys(a.mill, b.mill); order != 0) {
    return order;
  }
  return compareKeys(a.mode, b.mode);
}

int FreightRateCustMillComp::compare(const FreightRate &a, const FreightRate &b) const {
  if (const int order = compareKeys(a.customer, b.customer); order != 0) {
    return order;
  }
  return compareKeys(a.mill, b.mill);
}

void printFreightRate(std::ostream &out, const FreightRate &rate) {
  out << "Customer: " << utf8(rate.customer) << " Mill: " << utf8(rate.mill)
      << " Mode: " << utf8(rate.mode) << " Rate: " << general(rate.rate)
      << " Delay: " << general(rate.delay);
}

}  // namespace corvane
