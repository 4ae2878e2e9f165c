// The three readers beside their plain counterparts, on random files, dirty ones among them.

#include "support/literal_readers.h"

#include <functional>
#include <map>
#include <random>

#include "planning/planning_files.h"

namespace corvane {
namespace {

// Makes lines of comma-separated fields; some are short, empty, far too long or broken.
class FileMaker {
 public:
  explicit FileMaker(quint32 seed) : random_(seed) {}

  std::string machines(int lines) {
    return file(lines, [this] {
      return join(
          {text("Site"), text("W"), text("G"), number(120), number(9), number(9), number(9)});
    });
  }
  std::string orders(int lines) {
    return file(lines, [this] {
      return join({text(""), text("G"), number(120), quantity(), text("C")});
    });
  }
  std::string rates(int lines) {
    return file(lines, [this] {
      return join({text("C"), text("Site"), text("M"), number(500), number(4)});
    });
  }

 private:
  template <typename Line>
  std::string file(int lines, Line line) {
    std::string bytes = oneIn(20) ? "\xEF\xBB\xBF" : "";
    for (int at = 0; at < lines; ++at) {
      bytes += dirtied(line()) + (oneIn(10) ? "\r\n" : "\n");
    }
    if (oneIn(4) && !bytes.empty()) {
      bytes.pop_back();
    }
    return bytes;
  }

  std::string dirtied(std::string line) {
    if (oneIn(30)) {
      return "";
    }
    if (oneIn(20)) {
      line.resize(below(line.size() + 1));
    }
    if (oneIn(30)) {
      line.insert(below(line.size() + 1), 1, static_cast<char>(below(256)));
    }
    if (oneIn(60)) {
      line.insert(below(line.size() + 1), 1000 + below(50), 'x');
    }
    return line;
  }

  std::string join(const std::vector<std::string> &fields) {
    std::string line;
    for (const std::string &field : fields) {
      line += line.empty() ? "" : oneIn(60) ? ",," : ",";
      line += field;
    }
    return line;
  }

  std::string text(const std::string &stem) {
    if (oneIn(40)) {
      static const char *const kOdd[] = {"\xC3\xA9",         "\xE9", "\"q\"", " ",
                                         "\xF0\x9F\x98\x80", "g1"};
      return kOdd[below(6)];
    }
    return stem + std::to_string(below(4) + 1);
  }

  std::string number(std::size_t most) {
    if (oneIn(25)) {
      static const char *const kOdd[] = {"nan",  "inf",    "-inf", "1e308", "-0",  "0",
                                         "0x10", "1e-320", "-7",   "none",  "7in", "2147483648"};
      return kOdd[below(12)];
    }
    return general(static_cast<double>(below(most * 2)) / 8 + 1);
  }

  std::string quantity() {
    if (oneIn(15)) {
      static const char *const kOdd[] = {"0", "-3", "x", "2147483647", "2147483648", "1e9", "9.9"};
      return kOdd[below(7)];
    }
    return std::to_string(below(4) + 1);
  }

  bool oneIn(std::size_t n) { return below(n) == 0; }
  std::size_t below(std::size_t n) { return random_() % n; }

  std::mt19937 random_;
};

class ReadersReference : public PlanningFilesTest {
 protected:
  void expectSameWords(const support::LiteralPlanning &expected, std::string_view step) {
    saidOut_ += out;
    saidErrors_ += errors;
    EXPECT_EQ(saidOut_, expected.out) << step;
    EXPECT_EQ(saidErrors_, expected.errors) << step;
    EXPECT_EQ(log.str(), expected.log) << step;
  }

  // Of every period: the first entry of each width, the widest first.
  void expectDemandLists() const {
    for (const GradeDemand &grade : data.demand.grades) {
      for (const PeriodDemand &period : grade.periods) {
        std::map<double, qint32, std::greater<>> firsts;
        for (const DemandEntry &entry : period.demands) {
          firsts.emplace(entry.width, entry.quantity);
        }
        const std::vector<DemandEntry> &list = demandList(&period);
        EXPECT_TRUE(std::equal(list.begin(), list.end(), firsts.begin(), firsts.end(),
                               [](const DemandEntry &entry, const auto &first) {
                                 return entry.width == first.first &&
                                        entry.quantity == first.second;
                               }));
      }
    }
  }

  void compareOn(FileMaker &maker, int lines) {
    support::LiteralPlanning expected;
    const std::string machines = maker.machines(lines / 4);
    readMachines(machines);
    expected.readMachines(machines, fileName());
    expectSameWords(expected, "machine file");
    EXPECT_EQ(support::dumpCutters(data), expected.dumpCutters());
    EXPECT_EQ(support::dumpWidths(data), expected.dumpWidths());

    const std::string orders = maker.orders(lines);
    readOrders(orders);
    expected.readOrders(orders);
    expectSameWords(expected, "order file");
    EXPECT_EQ(support::dumpOrders(data), expected.dumpOrders());
    EXPECT_EQ(support::dumpDemand(data.demand), expected.dumpDemand());
    expectDemandLists();
    EXPECT_EQ(support::dumpTexts(data.grades), expected.dumpGrades());
    EXPECT_EQ(support::dumpTexts(data.periods), expected.dumpPeriods());

    const std::string rates = maker.rates(lines);
    readRates(rates);
    expected.readRates(rates, fileName());
    expectSameWords(expected, "freight rate file");
    EXPECT_EQ(support::dumpRates(data), expected.dumpRates());
  }

 private:
  std::string saidOut_;
  std::string saidErrors_;
};

class ReadersOnRandomFiles : public ReadersReference, public testing::WithParamInterface<int> {};

TEST_P(ReadersOnRandomFiles, SayAndStoreWhatThePlainOnesDo) {
  // One mill a case: a failure then names its seed.
  FileMaker maker(static_cast<quint32>(GetParam()));
  compareOn(maker, 20 + GetParam() * 3);
}

INSTANTIATE_TEST_SUITE_P(Seeds, ReadersOnRandomFiles, testing::Range(1, 101));

TEST_F(ReadersReference, ALargeMillAgrees) {
  FileMaker maker(4711);
  compareOn(maker, 3000);
}

}  // namespace
}  // namespace corvane
