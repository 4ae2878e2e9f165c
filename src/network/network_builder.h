#pragma once

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
  // The next line, without its line break. Throws Refused.
  void take(std::string_view line);

  // What follows the last line break of the file; REQUIRES: there is something. Throws Refused.
  [[noreturn]] void refuseCutLine() const;

  quint64 lines() const { return line_; }

  // Carries the data over to the periods that have none and gives the network away. Throws Refused
  // where the file is not whole. Call once, after the last line.
  Network finish(quint64 bytes);

 private:
  enum class Stage { kStart, kCommodities, kPeriods, kCommands, kEnd };
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

  [[noreturn]] void refuse(const std::string &text) const;
  void warn(const char *kind, std::string text);
  double finite(const Number &number) const;
  double notNegative(const Number &number, const char *what) const;

  void takeHeader(const ImportLine &line);
  void takeCommand(const ImportLine &line);
  void takeNode(const ImportLine &line);
  void takeGrouping(const ImportLine &line);
  void takeAttachment(const ImportLine &line);
  void takeArc(const ImportLine &line);

  Index declareNode(NodeType type, std::string_view name);
  void declareProcess(std::string_view name);
  void declareCommodity(const ImportLine &line);
  void setMachine(Index node, const ImportLine &line);
  void setStorage(Index node, const ImportLine &line);
  void attach(Index node, Index commodity, bool in, double quantity);
  void attachYield(Index node, const ImportLine &line);
  Index findOrAddArc(const Arc &arc);
  void setArc(Index arc, Index period, double cost);

  Index nodeOf(std::string_view name);
  Index commodityOf(std::string_view name);
  Index periodOf(std::string_view name);
  void set(Series &series, Index period, double value, Index node, const char *attribute);

  void compareRecipes();
  void compareRecipe(EarlierRecipe &earlier);
  void carryOver();

  Network network_;
  Stage stage_ = Stage::kStart;
  Index line_ = 0;
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
