#pragma once

#include <string>
#include <vector>

namespace corvane::plan {

// A mill for tests, and the import file that the program would write for it with these patterns.

struct TestCutter {
  std::string mill;
  std::string name;
  std::string grade;
  double deckle = 100.0;
  double capacity = 10.0;
  double wasteCost = 1.0;
  std::vector<std::vector<double>> patterns;  // widths of the rolls, equal ones together
};

struct TestOrder {
  std::string grade;
  std::string customer;
  double width = 0.0;
  int period = 0;
  int rolls = 0;
};

struct TestRate {
  std::string mill;
  std::string customer;
  std::string mode;
  double cost = 0.0;  // money a roll
  double delay = 0.0;
};

struct TestMill {
  std::vector<std::string> periods{"1"};
  int days = 7;
  bool batch = false;
  bool delay = true;
  std::vector<TestCutter> cutters;
  std::vector<TestOrder> orders;
  std::vector<TestRate> rates;
};

std::string importText(const TestMill &mill);

// One grade G, one cutter C of 100 inches and 10 reels a day for 7 days, patterns of 50 + 50 and 60
// + 30, waste at 2 an inch; customer A ordered 20 rolls of 50 in the only period, by truck at 5 a
// roll without delay.
TestMill smallMill();

}  // namespace corvane::plan
