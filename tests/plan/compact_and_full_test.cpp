// The compact form against the full one, on random networks.

#include <gtest/gtest.h>

#include <random>

#include "plan/full_form.h"
#include "plan/mill_text.h"
#include "plan/planned.h"

namespace corvane::plan {
namespace {

class RandomNetworkMill {
 public:
  explicit RandomNetworkMill(unsigned seed) : random_(seed) {}

  TestMill make() {
    TestMill mill;
    mill.periods.clear();
    for (int period = 0; period < between(1, 4); ++period) {
      mill.periods.push_back("P" + std::to_string(period));
    }
    mill.days = between(1, 7);
    mill.batch = chance(3);
    mill.delay = !chance(4);
    const std::vector<double> widths = {23.5, 31.25, 40, 44.75, 58.125};
    const char *mills[] = {"North", "South"};
    for (int cutter = 0; cutter < between(1, 4); ++cutter) {
      // Few names, so that some meet.
      TestCutter made{mills[between(0, 1)],
                      chance(3) ? "C" : "C" + std::to_string(cutter),
                      chance(2) ? "G" : "H",
                      chance(4) ? 140.0 : 120.5,
                      static_cast<double>(between(chance(5) ? 0 : 1, 9)),
                      0.5 * between(0, 6),
                      {}};
      for (int pattern = 0; pattern < between(1, 6); ++pattern) {
        made.patterns.push_back(cut(widths, made.deckle));
      }
      mill.cutters.push_back(made);
    }
    for (int order = 0; order < between(1, 12); ++order) {
      mill.orders.push_back(
          {mill.cutters[at(mill.cutters)].grade, chance(2) ? "A" : "B", widths[at(widths)],
           between(0, static_cast<int>(mill.periods.size()) - 1), between(1, 80)});
    }
    for (const char *customer : {"A", "B"}) {
      for (const char *place : mills) {
        for (const char *mode : {"Rail", "Truck"}) {
          if (!chance(4)) {
            mill.rates.push_back(
                {place, customer, mode, 0.25 * between(0, 40), chance(5) ? 0.5 : between(0, 2)});
          }
        }
      }
    }
    return mill;
  }

 private:
  int between(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }
  bool chance(int of) { return between(1, of) == 1; }
  template <typename List>
  std::size_t at(const List &list) {
    return static_cast<std::size_t>(between(0, static_cast<int>(list.size()) - 1));
  }

  // Now and then wider than the deckle.
  std::vector<double> cut(const std::vector<double> &widths, double deckle) {
    std::vector<double> rolls;
    double room = deckle + (chance(12) ? 20.0 : 0.0);
    for (int tries = 0; tries < 6; ++tries) {
      const double width = widths[at(widths)];
      if (width <= room) {
        rolls.push_back(width);
        room -= width;
      }
    }
    std::sort(rolls.rbegin(), rolls.rend());
    return rolls.empty() ? std::vector<double>{widths.front()} : rolls;
  }

  std::mt19937 random_;
};

void expectEqual(const std::string &text, const ProblemOptions &options) {
  const Planned planned(text, options);
  EXPECT_TRUE(planned.record.faults.empty()) << planned.record.faults.front();
  const FullAnswer full = solveFullForm(planned.network, planned.problem);
  ASSERT_TRUE(full.solved);
  const Totals &totals = planned.record.totals;
  EXPECT_NEAR(totals.unmetRolls, full.unmet, 1e-6 * (1.0 + full.unmet));
  EXPECT_NEAR(totals.cost.total(), full.cost, 1e-6 * (1.0 + full.cost));
}

TEST(CompactAndFull, AgreeOnRandomNetworks) {
  int planned = 0;
  int unmet = 0;
  for (unsigned seed = 1; seed <= 60; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    const std::string text = importText(RandomNetworkMill(seed).make());
    try {
      expectEqual(text, {});
      expectEqual(text, {.freeStock = true});
      expectEqual(text, {.delaysByMill = true, .keepImpossible = true});
      ++planned;
      unmet += Planned(text).record.totals.unmetRolls > 1.0 ? 1 : 0;
    } catch (const network::Refused &) {
      // Names that meet in a way that cannot be planned.
    }
  }
  EXPECT_GT(planned, 40);
  EXPECT_GT(unmet, 15);
}

}  // namespace
}  // namespace corvane::plan
