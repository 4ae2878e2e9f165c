#pragma once

#include <map>
#include <tuple>
#include <vector>

#include "record/record.h"

namespace corvane::report {

// What the page tells, reckoned from a record. Without a plan everything that weighs patterns by
// their use stays 0.

// Reels and what they cost in paper.
struct Paper {
  double reels = 0;
  double inches = 0;  // of deckle
  double trim = 0;
  double wasteCost = 0;

  void add(const Paper &other);
  // Trim in percent of the paper; 0 without paper.
  double trimPercent() const { return inches > 0 ? 100 * trim / inches : 0; }
};

// Rolls of one width of one grade, over all periods.
struct WidthFigures {
  double ordered = 0;
  double made = 0;
  double delivered = 0;
  double unmet = 0;
  double surplus = 0;
  double seen = 0;  // by pattern generation
};

struct GradeFigures {
  std::vector<Paper> byPeriod;
  Paper all;
  // Widest first.
  std::map<double, WidthFigures, std::greater<>> widths;
  std::vector<double> orderedInches;  // by period
  std::vector<double> seenInches;
  int patterns = 0;
  int usedPatterns = 0;
};

struct PatternFigures {
  std::vector<double> byPeriod;  // reels; empty for a pattern that is not used
  double reels = 0;
};

// What was ordered, and what became of it: rolls and inches.
struct Amount {
  double rolls = 0;
  double inches = 0;

  void add(double someRolls, double width) {
    rolls += someRolls;
    inches += someRolls * width;
  }
};

// Freight of one mode from a mill (a machine where the mill is not known) to a customer.
struct Lane {
  QString mode;
  QString from;
  QString customer;

  friend bool operator<(const Lane &a, const Lane &b) {
    return std::tie(a.mode, a.from, a.customer) < std::tie(b.mode, b.from, b.customer);
  }
};

struct Freight {
  double rolls = 0;
  double inches = 0;
  double cost = 0;
};

struct Figures {
  std::map<QString, GradeFigures> grades;
  std::vector<Paper> byCutter;
  std::vector<PatternFigures> patterns;
  Paper all;
  int usedPatterns = 0;
  Amount ordered;
  Amount delivered;
  Amount unmet;
  Amount surplus;
  std::map<Lane, Freight> lanes;
  // Of grade, period and width with a demand: all, and those of which generation saw a part only.
  int demandGroups = 0;
  int partlySeenGroups = 0;
  double seenInches = 0;

  // Paper used less trim less surplus plus what is short, inches: the demand, where all adds up.
  double reckonedDemand() const { return all.inches - all.trim - surplus.inches + unmet.inches; }
  double deliveredPercent() const {
    return ordered.rolls > 0 ? 100 * delivered.rolls / ordered.rolls : 100;
  }
};

Figures figuresOf(const record::Record &record);

// Whether the machine has no time left: none at all, or less than a reel takes where reels are
// whole.
bool isFull(const record::Record &record, const record::MachineTime &time);

// The cost of a kind; 0 where the plan names none.
double costOf(const record::Plan &plan, const char *kind);

}  // namespace corvane::report
