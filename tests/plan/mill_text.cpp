#include "plan/mill_text.h"

#include <map>
#include <numeric>
#include <set>
#include <sstream>

#include "core/numbers.h"
#include "export/import_file.h"

namespace corvane::plan {

namespace {

constexpr const char *kArc = " <flow> 0 <fixed> False <opportunity> 0";
constexpr const char *kLimits = " <min> 0 <max> +infinity";

std::string quoted(const std::string &text) {
  return '"' + text + '"';
}

class MillText {
 public:
  explicit MillText(const TestMill &mill) : mill_(mill), file_(out_) {}

  std::string write() {
    writeHeader();
    writeMachines();
    for (const TestCutter &cutter : mill_.cutters) {
      forEachPattern(cutter,
                     [&](const auto &widths, int index) { writePattern(cutter, widths, index); });
    }
    for (const TestCutter &cutter : mill_.cutters) {
      writeStores(cutter);
    }
    writeWaste();
    writeOrders();
    file_.line("# End of Corvane. import file.");
    return out_.str();
  }

 private:
  std::string process(const TestCutter &cutter) const {
    return quoted(cutter.grade + '_' + cutter.name + '_' + fixed(cutter.deckle, 0));
  }
  std::string pattern(const TestCutter &cutter, const char *family, int index) const {
    return quoted(cutter.grade + family + std::to_string(index) + '_' + cutter.name + '_' +
                  fixed(cutter.deckle, 0));
  }
  std::string store(const TestCutter &cutter, double width) const {
    return quoted(cutter.grade + '_' + cutter.name + '_' + fixed(width, 3));
  }
  std::string orderName(const TestOrder &order) const {
    return order.grade + '_' + order.customer + '_' + fixed(order.width, 3);
  }
  std::string widthName(double width) const { return "\"DemandWidth" + general(width) + '"'; }
  std::string period(std::size_t at) const { return quoted(mill_.periods[at]); }

  std::set<double> widthsOf(const std::string &grade) const {
    std::set<double> widths;
    for (const TestOrder &order : mill_.orders) {
      if (grade.empty() || order.grade == grade) {
        widths.insert(order.width);
      }
    }
    for (const TestCutter &cutter : mill_.cutters) {
      for (const std::vector<double> &rolls : cutter.patterns) {
        if (grade.empty() || cutter.grade == grade) {
          widths.insert(rolls.begin(), rolls.end());
        }
      }
    }
    return widths;
  }

  template <typename Visit>
  void forEachPattern(const TestCutter &cutter, const Visit &visit) {
    int index = 0;
    for (const std::vector<double> &widths : cutter.patterns) {
      visit(widths, index++);
    }
  }

  void writeHeader() {
    file_.line("addroot <CompressBlockNodes> True <batchSizeSolve> False <batchSizeTune> ",
               mill_.batch ? "True" : "False",
               " <initialSolverAlgorithm> networkDualSolve <BatLP> dualSolve <batchSizePeriods> 1 "
               "<batchTuneStopThreshold> ",
               mill_.batch ? "0" : "100", " <batchTuneTries> 99999 <batchSizeMode> ",
               mill_.batch ? "1" : "0", " <batchSizePeriods> 9999 <batchSizeResolveFrequency> 5");
    std::set<double> deckles;
    for (const TestCutter &cutter : mill_.cutters) {
      deckles.insert(cutter.deckle);
    }
    for (const double deckle : deckles) {
      file_.line("addcommodity <name> \"Deckle", deckle, "\"");
    }
    for (const double width : widthsOf("")) {
      file_.line("addcommodity <name> ", widthName(width));
    }
    file_.line("addcommodity <name> \"Waste\"");
    file_.line("addcommodity <name> \"Machine_Time\"");
    for (std::size_t at = 0; at < mill_.periods.size(); ++at) {
      file_.line("addperiod <name> ", period(at));
    }
  }

  void writeMachines() {
    std::set<std::string> written;
    for (const TestCutter &cutter : mill_.cutters) {
      const std::string machine = quoted("M_" + cutter.name);
      if (written.insert(cutter.mill + '/' + cutter.name).second) {
        for (std::size_t at = 0; at < mill_.periods.size(); ++at) {
          file_.line("addnode <type> \"Machine\" <name> ", machine,
                     at == 0 ? " <x> 10 <y> 210" : "", " <period> ", period(at),
                     " <fixed> False <min> 0 <max> ", mill_.days, " <cost> 0 <overcost> +infinity");
        }
        file_.line("addattach <node> ", machine, " <commodity> \"Machine_Time\" <in> False");
      }
      file_.line("addnode <type> \"Process\" <name> ", process(cutter),
                 " <x> 180 <y> 210 <period> ", period(0));
      file_.line("addattach <node> ", process(cutter), " <commodity> \"Machine_Time\" <in> True");
      file_.line("addattach <node> ", process(cutter), " <commodity> \"Deckle", cutter.deckle,
                 "\" <quantity> ", cutter.capacity, " <in> False");
      file_.line("addarc <commodity> \"Machine_Time\" <from> ", machine, " <to> ", process(cutter),
                 kArc, " <cost> 0", kLimits);
    }
  }

  void writePattern(const TestCutter &cutter, const std::vector<double> &widths, int index) {
    const std::string name = pattern(cutter, "_Pattern_", index);
    const std::string batch = pattern(cutter, "_Batch_", index);
    const std::string deckle = "\"Deckle" + general(cutter.deckle) + '"';
    for (std::size_t at = 0; mill_.batch && at < mill_.periods.size(); ++at) {
      file_.line("addnode <type> \"Batch\" <name> ", batch,
                 " <singlePeriodSetups> True <x> 420 <y> 0 <flow> 0 <fixed> False <minrunlength> 0 "
                 "<batchsize> 1 <setup> 0 <period> ",
                 period(at));
    }
    if (mill_.batch) {
      file_.line("addattach <node> ", batch, " <commodity> ", deckle, " <in> True");
      file_.line("addattach <node> ", batch, " <commodity> ", deckle, " <in> False");
    }
    file_.line("addnode <type> \"Process\" <name> ", name, " <x> 420 <y> 0 <period> ", period(0));
    file_.line("addattach <node> ", name, " <commodity> ", deckle, " <in> True <quantity> -1");
    for (std::size_t at = 0; at < widths.size();) {
      std::size_t end = at;
      while (end < widths.size() && widths[end] == widths[at]) {
        ++end;
      }
      file_.line("addattach <node> ", name, " <commodity> ", widthName(widths[at]),
                 " <in> False <quantity> ", static_cast<int>(end - at));
      at = end;
    }
    const double trim = cutter.deckle - std::accumulate(widths.begin(), widths.end(), 0.0);
    file_.line("addattach <node> ", name, " <commodity> \"Waste\" <in> False <quantity> ",
               trim < 1e-8 ? 0.0 : trim);
    for (std::size_t at = 0; at < mill_.periods.size(); ++at) {
      file_.line("addarc <commodity> ", deckle, " <from> ", process(cutter), " <to> ",
                 mill_.batch ? batch : name, kArc, " <cost> 10", kLimits, " <period> ", period(at));
    }
    if (mill_.batch) {
      file_.line("addarc <commodity> ", deckle, " <from> ", batch, " <to> ", name, kArc,
                 " <cost> 0", kLimits, " <period> ", period(0));
    }
  }

  void writeStores(const TestCutter &cutter) {
    const std::string set = quoted(cutter.grade + '_' + cutter.name);
    for (const double width : widthsOf(cutter.grade)) {
      const std::string name = store(cutter, width);
      for (std::size_t at = 0; at < mill_.periods.size(); ++at) {
        file_.line("addnode <type> \"StorageDemand\" <name> ", name,
                   at == 0 ? " <x> 710 <y> 0" : "", " <storagemax> 0 <period> ", period(at));
      }
      file_.line("addattach <node> ", name, " <commodity> ", widthName(width), " <in> True");
      file_.line("addattach <node> ", name, " <commodity> ", widthName(width), " <in> False");
      file_.line("addnodetoset ", set, " ", name);
    }
    file_.line("blockset ", set);
  }

  void writeWaste() {
    std::set<std::string> grades;
    for (const TestCutter &cutter : mill_.cutters) {
      if (grades.insert(cutter.grade).second) {
        const std::string name = quoted(cutter.grade + "_Waste");
        file_.line("addnode <type> \"Demand\" <name> ", name,
                   " <x> 710 <y> 80 <amount> 0 <fixed> False <period> ", period(0));
        file_.line("addattach <node> ", name, " <commodity> \"Waste\" <in> True");
      }
    }
    for (const TestCutter &cutter : mill_.cutters) {
      forEachPattern(cutter, [&](const std::vector<double> &widths, int index) {
        const std::string name = pattern(cutter, "_Pattern_", index);
        for (const double width : std::set<double>(widths.begin(), widths.end())) {
          file_.line("addarc <commodity> ", widthName(width), " <from> ", name, " <to> ",
                     store(cutter, width), kArc, " <cost> 0", kLimits, " <period> ", period(0));
        }
        for (std::size_t at = 0; at < mill_.periods.size(); ++at) {
          file_.line("addarc <commodity> \"Waste\" <from> ", name, " <to> ",
                     quoted(cutter.grade + "_Waste"), kArc, " <cost> ", cutter.wasteCost, kLimits,
                     " <period> ", period(at));
        }
      });
    }
  }

  void writeOrders() {
    std::set<std::string> written;
    for (const TestOrder &order : mill_.orders) {
      const std::string name = quoted(orderName(order));
      const bool first = written.insert(name).second;
      file_.line("addnode <type> \"StorageDemand\" <name> ", name, first ? " <x> 910 <y> 0" : "",
                 " <undercost> 50000 <storagemax> 0 <demandamount> ", order.rolls, " <period> ",
                 period(static_cast<std::size_t>(order.period)));
      if (!first) {
        continue;
      }
      file_.line("addattach <node> ", name, " <commodity> ", widthName(order.width), " <in> True");
      file_.line("addnodetoset ", quoted(order.grade + '_' + order.customer), " ", name);
      for (const TestCutter &cutter : mill_.cutters) {
        if (cutter.grade == order.grade) {
          writeFreight(cutter, order);
        }
      }
    }
    for (const std::string &name : written) {
      for (std::size_t at = 0; at < mill_.periods.size(); ++at) {
        file_.line("addnode <type> \"StorageDemand\" <name> ", name,
                   " <undercost> 50000 <storagemax> 0 <period> ", period(at));
      }
    }
  }

  void writeFreight(const TestCutter &cutter, const TestOrder &order) {
    for (const TestRate &rate : mill_.rates) {
      if (rate.mill != cutter.mill || rate.customer != order.customer) {
        continue;
      }
      const std::string width = widthName(order.width);
      const std::string to = quoted(orderName(order));
      const std::string delay = quoted(rate.mode + '_' + orderName(order));
      for (std::size_t at = 0; at < mill_.periods.size(); ++at) {
        if (mill_.delay) {
          file_.line("addnode <type> \"Delay\" <name> ", delay, at == 0 ? " <x> 910 <y> 0" : "",
                     " <periodstodelay> ", rate.delay, " <period> ", period(at));
          file_.line("addattach <node> ", delay, " <commodity> ", width, " <in> True");
          file_.line("addattach <node> ", delay, " <commodity> ", width, " <in> False");
          writeArc(width, store(cutter, order.width), delay, at, rate.cost);
          writeArc(width, delay, to, at, 0.0);
        } else {
          writeArc(width, store(cutter, order.width), to, at, rate.cost);
        }
      }
      if (!mill_.delay) {
        return;
      }
    }
  }

  void writeArc(const std::string &width, const std::string &from, const std::string &to,
                std::size_t at, double cost) {
    file_.line("addarc <commodity> ", width, " <from> ", from, " <to> ", to, kArc, kLimits,
               " <period> ", period(at), " <cost> ", cost);
  }

  const TestMill &mill_;
  std::ostringstream out_;
  ImportFile file_;
};

}  // namespace

std::string importText(const TestMill &mill) {
  return MillText(mill).write();
}

TestMill smallMill() {
  TestMill mill;
  mill.cutters = {{"North", "C", "G", 100.0, 10.0, 2.0, {{50, 50}, {60, 30}}}};
  mill.orders = {{"G", "A", 50.0, 0, 20}};
  mill.rates = {{"North", "A", "Truck", 5.0, 0.0}};
  return mill;
}

}  // namespace corvane::plan
