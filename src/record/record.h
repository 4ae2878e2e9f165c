#pragma once

#include <QString>
#include <QStringList>
#include <optional>
#include <utility>
#include <vector>

namespace corvane::record {

// The run record: what a run read, found and exported, and what the plan makes of it, in one value
// that needs no other file to be read or compared years later. docs/run-record.md tells each field
// and its JSON form.
//
// Lists refer to each other by index, which holds for every index of a record that was read
// (record_reader.h). Widths, trim and paper are in inches, money is as in the data files.

inline constexpr const char *kSchema = "corvane-run/1";

struct Parameter {
  QString key;
  QString value;
  QString origin;  // "default" or "file"
};

struct File {
  QString role;  // "orders", "machines", ...
  QString name;  // as the parameters name it
  bool isThere = false;
  qint64 bytes = 0;
  QString sha256;  // hexadecimal; empty where the file is not there
};

// What the last section of the log says.
struct LogSection {
  QString started;  // "2026/11/21 14:03:22", as logged; empty where there is no section
  QString ended;
  bool isComplete = false;
  std::optional<qint64> seed;
  std::optional<double> demandInches;
  std::optional<qint64> generatedPatterns;
  QStringList messages;
};

struct Machine {
  QString name;
  QString mill;  // empty where the machine file does not tell
};

struct Cutter {
  QString name;  // of its node
  int machine = 0;
  QString grade;
  double deckle = 0;
  double capacity = 0;   // deckles a day
  double wasteCost = 0;  // an inch
};

struct Store {
  QString name;
  int cutter = 0;
  double width = 0;
};

struct Order {
  QString name;
  QString grade;
  QString customer;
  double width = 0;
  std::vector<double> rolls;  // by period
};

// What pattern generation knew of the demand of a width: the first entry of each period.
struct SeenDemand {
  QString grade;
  double width = 0;
  std::vector<double> rolls;  // by period
};

struct Pattern {
  QString name;
  int cutter = 0;
  std::vector<std::pair<double, int>> rolls;  // width and count, widest first
  double trim = 0;
};

// Nodes of one kind, in the order of the record's list of them, or with names of their own.
struct NodeGroup {
  QString kind;       // "machine", "cutter", "pattern", "store", "order", "delay", "waste", "batch"
  QStringList names;  // empty where a list of the record has them
  std::vector<double> places;  // x and y of each
};

// Nodes are numbered through all groups, from 0.
struct Network {
  std::vector<NodeGroup> groups;
  std::vector<std::vector<int>> arcs;  // a node, and those that it gives to
};

struct Finding {
  QString code;
  QString severity;  // "error", "warning" or "note"
  QString file;
  qint64 line = 0;  // 0: the file as a whole
  QString text;
};

struct Reels {
  int pattern = 0;
  int period = 0;
  double reels = 0;
};

struct MachineTime {
  int machine = 0;
  int period = 0;
  double used = 0;  // days
  double available = 0;
};

struct Delivery {
  int order = 0;
  int period = 0;
  double delivered = 0;
  double unmet = 0;
  QString reason;  // empty where all is delivered
};

struct Shipment {
  int mode = 0;
  int store = 0;
  int order = 0;
  int leaves = 0;  // periods
  int arrives = 0;
  double rolls = 0;
  double cost = 0;
};

struct StoreRolls {
  int store = 0;
  int period = 0;
  double rolls = 0;
};

struct Flow {
  int from = 0;
  int to = 0;
  double inches = 0;  // of paper, over all periods
};

// The paper that a grade's delivered rolls need at least, with whatever patterns.
struct PaperBound {
  QString grade;
  double inches = 0;
};

struct Named {
  QString name;
  double value = 0;
};

struct Note {
  QString kind;
  qint64 line = 0;
  QString text;
};

struct Plan {
  bool wholeReels = false;
  std::vector<Named> cost;  // by kind, without a total
  double totalCost = 0;
  std::optional<double> boundCost;  // no plan of this network can cost less
  std::vector<Note> warnings;
  std::vector<Note> advice;  // what would make the plan better; without lines
  std::vector<PaperBound> paperBounds;
  QStringList modes;
  std::vector<Reels> reels;
  std::vector<MachineTime> machineTime;
  std::vector<Delivery> deliveries;
  std::vector<Shipment> shipments;
  std::vector<StoreRolls> surplus;
  std::vector<StoreRolls> stock;
  std::vector<Flow> flows;
};

struct Record {
  QString version;  // of the program that made the record
  QString name;     // of the run's folder
  LogSection log;
  std::vector<Parameter> parameters;
  std::vector<File> files;
  QStringList periods;
  double daysPerPeriod = 0;
  std::vector<Machine> machines;
  std::vector<Cutter> cutters;
  std::vector<Store> stores;
  std::vector<Order> orders;
  std::vector<SeenDemand> seen;  // empty where the order file cannot be read
  std::vector<Pattern> patterns;
  Network network;
  bool wereInputsChecked = false;
  std::vector<Finding> findings;
  qint64 findingsLeftOut = 0;  // beyond the most of a code that are listed
  std::optional<Plan> plan;
};

}  // namespace corvane::record
