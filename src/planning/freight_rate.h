#pragma once

#include <QString>
#include <iosfwd>

#include "core/comparison.h"

namespace corvane {

// What it costs and how long it takes to ship from a mill to a customer by one mode of transport.
struct FreightRate {
  QString customer;
  QString mill;
  QString mode;
  double rate = 0;   // per 2000 pounds
  double delay = 0;  // in periods
};

// The key of a rate: customer, then mill, then mode.
class FreightRateComp : public Comparison<FreightRate> {
 public:
  int compare(const FreightRate &a, const FreightRate &b) const override;
};

// All modes of one customer and mill: customer, then mill.
class FreightRateCustMillComp : public Comparison<FreightRate> {
 public:
  int compare(const FreightRate &a, const FreightRate &b) const override;
};

// Writes "Customer: {} Mill: {} Mode: {} Rate: {} Delay: {}", without a line end.
void printFreightRate(std::ostream &out, const FreightRate &rate);

}  // namespace corvane
