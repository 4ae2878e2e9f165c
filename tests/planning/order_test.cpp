#include "planning/order.h"

#include <gtest/gtest.h>

#include <cmath>

namespace corvane {
namespace {

Order order(const char *grade, const char *period, const char *customer, double width,
            qint32 quantity = 1) {
  return {grade, customer, width, quantity, 1, period};
}

TEST(Order, ANewOneIsGoodAndEmpty) {
  const Order order;
  EXPECT_EQ(order.good, 1);
  EXPECT_TRUE(order.grade.isEmpty());
  EXPECT_TRUE(order.customerName.isEmpty());
  EXPECT_TRUE(order.period.isEmpty());
  EXPECT_EQ(order.width, 0);
  EXPECT_EQ(order.quantity, 0);
}

struct OrderPair {
  Order a;
  Order b;
  int expected;
};

TEST(OrderComp, GradeThenPeriodThenCustomerThenWidth) {
  const OrderPair pairs[] = {
      {order("A", "2", "2", 2), order("B", "1", "1", 1), -1},
      {order("A", "1", "2", 2), order("A", "2", "1", 1), -1},
      {order("A", "1", "1", 2), order("A", "1", "2", 1), -1},
      {order("A", "1", "1", 9), order("A", "1", "1", 10), -1},
      {order("A", "10", "1", 1), order("A", "9", "1", 1), -1},
      {order("A", "1", "1", 30), order("A", "1", "1", std::nextafter(30.0, 31.0)), -1},
      {order("a", "1", "1", 1), order("B", "1", "1", 1), 1},
      {order("A", "1", "1", 30, 10), order("A", "1", "1", 30, 20), 0},
  };
  for (const OrderPair &pair : pairs) {
    EXPECT_EQ(OrderComp().compare(pair.a, pair.b), pair.expected);
    EXPECT_EQ(OrderComp().compare(pair.b, pair.a), -pair.expected);
  }
}

}  // namespace
}  // namespace corvane
