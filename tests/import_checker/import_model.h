#pragma once

// What an import file has declared so far, and the rules that bind its lines to each other.

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "import_checker.h"
#include "import_grammar.h"

namespace corvane::import_checker {

// The kinds of node, finer than the <type> in the file: the program uses one type for a cutter and
// a pattern, and one for a store at a cutter and an order.
enum class Kind {
  kMachine,
  kCutter,
  kBatch,
  kPattern,
  kStore,
  kWasteDemand,
  kOrder,
  kDelay,
  kBlock
};

class ImportModel {
 public:
  explicit ImportModel(const ImportOptions &options) : options_(options) {}

  // Takes the next line that parsed; complaints about it are kept.
  void take(std::size_t line, const Command &command);
  // Checks what only the whole file shows. Call once, after the last line.
  void finish();

  void complain(std::size_t line, std::string text) {
    complaints_.push_back({line, std::move(text)});
  }
  const std::vector<Complaint> &complaints() const { return complaints_; }

 private:
  struct Node {
    std::size_t line = 0;
    std::map<std::string, int> periods;  // how often the node stands in each
  };
  struct PatternContent {
    std::size_t line = 0;
    std::vector<double> deckles;
    std::vector<double> wastes;
    int yields = 0;
    double cut = 0.0;
    std::set<std::string> flows;  // commodities that it gives
  };
  struct Arcs {
    std::size_t line = 0;
    std::map<std::string, int> periods;
  };
  using NodeKey = std::pair<Kind, std::string>;

  void checkOptions(Family family);
  void checkNumbers(const Command &command);
  void takeHeader(const Command &command);
  void takeNode(const Command &command);
  void takeAttachment(const Command &command);
  void takeArc(const Command &command);
  void takeGrouping(const Command &command);
  void putIntoSet(const std::string &set, const std::string &node);
  void makeBlockSet(const std::string &set);
  void declareBlock(const std::string &name);

  void declareCommodity(const std::string &name);
  void declareWidthCommodity(const std::string &prefix, const std::string &width);
  std::string widthCommodity(const std::string &prefix, const std::string &width) const;
  void declareNode(Kind kind, const Command &command, bool first);
  void declareProcess(const Command &command);
  void declareOrder(const Command &command, bool first);
  void useCommodity(const std::string &name);
  void usePeriod(const std::string &period);
  void attach(const Command &command, const std::string &commodity, bool in,
              const std::set<Kind> &kinds);
  void takePatternLine(const Command &command);
  void join(const Command &command, const std::string &commodity,
            const std::vector<std::pair<Kind, Kind>> &kinds);
  void expectFirstPeriod(const std::string &period);
  void expectNumber(std::string_view what, const std::string &text, long long wanted);
  void expectX(Kind kind, const std::string &x);
  bool isNode(Kind kind, const std::string &name) const { return nodes_.contains({kind, name}); }

  void checkHeader();
  void checkNodePeriods();
  void checkArcPeriods();
  void checkPatterns();
  void checkFlows();
  void checkSupply();
  void checkSets();
  bool isYielded(const std::string &orderNode, const std::string &commodity) const;
  bool fillsEveryPeriod(const std::map<std::string, int> &periods) const;

  ImportOptions options_;
  std::vector<Complaint> complaints_;
  std::size_t line_ = 0;
  int section_ = 0;
  std::set<Family> seen_;

  std::set<std::string> commodities_;
  std::map<std::string, double> lastWidth_;  // by commodity prefix
  std::vector<std::string> periods_;
  std::map<NodeKey, Node> nodes_;
  std::set<std::tuple<std::string, std::string, bool>> attachments_;  // node, commodity, in
  std::map<std::string, PatternContent> patterns_;
  std::map<std::string, std::set<std::string>> yieldingPatterns_;  // by commodity
  std::map<std::string, std::string> orderCommodity_;              // by order node
  std::map<std::string, std::set<std::string>> amountPeriods_;     // by order node
  std::map<std::string, Node> undercosts_;                         // by order node
  std::map<std::tuple<Family, std::string, std::string>, Arcs> arcs_;
  std::set<std::string> entered_;                          // nodes that an arc leads to
  std::set<std::pair<std::string, std::string>> left_;     // node and commodity that an arc takes
  std::map<std::string, std::size_t> setLines_;            // first line that fills the set
  std::set<std::string> grouped_;                          // nodes that are in a set
  std::set<std::pair<std::string, std::string>> members_;  // set and node
  std::map<std::string, std::size_t> blockSets_;
};

}  // namespace corvane::import_checker
