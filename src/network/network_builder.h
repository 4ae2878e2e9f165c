#pragma once

#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "network/import_line.h"
#include "network/name_table.h"
#include "network/network.h"
#include "network/replaced_values.h"

namespace corvane::network {

// Takes the lines of an import file one by one and makes the network of them.
class NetworkBuilder {
 public:
  using OnFault = std::function<void(const Refused &)>;

  // Without onFault the first fault is thrown. With it every fault is handed to it and nothing is
  // thrown: what cannot be taken of a line is left out of the network, and what follows the end of
  // the first run, or the root of a second one, is passed over. Of the network then only its places
  // are sure: its arcs lead from and to nodes that are there, its series have an entry a period.
  explicit NetworkBuilder(OnFault onFault = {}) : onFault_(std::move(onFault)) {}

  // The next line, without its line break.
  void take(std::string_view text);

  // What follows the last line break of the file; REQUIRES: there is something.
  void takeCutLine();

  quint64 lines() const { return line_; }

  // Carries the data over to the periods that have none and gives the network away; a file that is
  // not whole is a fault. Call once, after the last line.
  Network finish(quint64 bytes);

 private:
  // kEnd: behind the trailer. kOver: in another run.
  enum class Stage { kStart, kCommodities, kPeriods, kCommands, kEnd, kOver };
  // What a process took and gave before it was declared again.
  struct EarlierRecipe {
    Index node = kNone;
    Index line = 0;
    std::vector<Attachment> attachments;
  };
  struct ArcKey {
    quint64 ends;
    Index commodity;
    bool operator==(const ArcKey &) const = default;
  };
  struct ArcKeyHash {
    std::size_t operator()(const ArcKey &key) const {
      return (key.ends ^ (key.ends >> 29) ^ key.commodity) * 0x9E3779B97F4A7C15ULL;
    }
  };

  // Hands the fault on, or throws it.
  void tell(const Refused &refused) const;
  [[noreturn]] void refuse(Fault fault, const std::string &text, std::string_view part) const;
  [[noreturn]] void refuse(const std::string &text) const;
  void warn(const char *kind, std::string text);
  double finite(const Number &number) const;
  double notNegative(const Number &number, const char *what) const;

  void takeLine();
  ImportLine parse();
  void takeRoot(const ImportLine &line);
  void takePeriod(const ImportLine &line);
  void takeHeader(const ImportLine &line);
  void takeCommand(const ImportLine &line);
  void takeNode(const ImportLine &line);
  void takeGrouping(const ImportLine &line);
  void takeAttachment(const ImportLine &line);
  void takeArc(const ImportLine &line);

  Index declareNode(NodeType type, std::string_view name);
  void declareProcess(std::string_view name);
  void declareCommodity(const ImportLine &line);
  void setMachine(Index index, const ImportLine &line);
  void setStorage(Index index, const ImportLine &line);
  void attach(Index index, Index commodity, bool in, double quantity);
  void attachYield(Index node, const ImportLine &line);
  Index findOrAddArc(const Arc &arc, const ImportLine &line);
  void requireEnds(const Arc &arc, const ImportLine &line);
  void setArc(Index index, Index period, double cost);

  Index nodeOf(std::string_view name);
  Index commodityOf(std::string_view name);
  Index periodOf(std::string_view name);
  void set(Series &series, Index period, double value, Index node, const char *attribute);

  void compareRecipes();
  void compareRecipe(EarlierRecipe &earlier);
  void carryOver();

  OnFault onFault_;
  Network network_;
  Stage stage_ = Stage::kStart;
  Index line_ = 0;
  std::string_view text_;      // of the line that is being taken
  bool endIsThere_ = false;    // the last line taken is a trailer
  bool isCutInALine_ = false;  // and told of
  NameTable nodes_;
  NameTable commodities_;
  NameTable periods_;
  NameTable sets_;
  std::unordered_map<ArcKey, Index, ArcKeyHash> arcs_;
  std::vector<Index> recipeLine_;  // by node: where its last declaration stands
  std::vector<EarlierRecipe> earlierRecipes_;
  std::set<Index> sharedMachines_;  // told of already
  ReplacedValues replaced_;
  // The last answers of the look-ups: neighbouring lines speak of the same things.
  Index lastCommodity_ = kNone;
  Index lastPeriod_ = kNone;
  Index lastFrom_ = kNone;
  Index lastTo_ = kNone;
  Index lastArc_ = kNone;
};

}  // namespace corvane::network
