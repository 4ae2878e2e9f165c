#pragma once

// Reads an import file back and says what is wrong with it.
//
// What is checked, beside the grammar of every line (import_grammar.h):
//  - the order of the sections, the root that fits the options, the trailer last and only once;
//  - that every node, commodity, period and set is declared before the line that uses it, each
//    declared once, and that each node stands in the periods and at the x of its family;
//  - that each arc joins two kinds of node its family allows, and that its commodity is attached to
//    both ends in the direction of the flow;
//  - that each pattern takes one deckle, and that its widths and its waste add up to it;
//  - that every width that is demanded is yielded by a pattern of its grade.
//
// Exceptions that the program makes by design and that are no complaint: the DemandWidth0 of a
// pattern without widths, a roll of width 0 that no arc takes from its pattern, a pattern wider
// than its deckle (its waste is then 0), delay nodes and their lines repeated for each cutter, and
// an order node without freight arcs.
//
// Of the programs only the reader of import files is used here, and none of what writes them, so
// that a fault in the writing cannot hide itself.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::import_checker {

// What the run was told, and what is known of its data.
struct ImportOptions {
  bool batch = false;
  bool delay = true;
  bool patternsOnly = false;
  // Number of periods, when known.
  std::optional<std::size_t> periods = std::nullopt;
  // The mill's numbers are finite and no two of its records have names or widths that are written
  // alike (cutters of one name at two mills, widths that differ beyond the printed digits). Without
  // it, repeated declarations and numbers that are not finite are let pass.
  bool ordinaryData = true;
  // Every customer has a freight rate from each mill that makes its grades, so that every order
  // node must be reached by a freight arc.
  bool freightComplete = false;
};

// A fault and the line it is on, counted from 1; 0 when it belongs to no line.
struct Complaint {
  std::size_t line = 0;
  std::string text;

  bool operator==(const Complaint &) const = default;
};

// All faults in the order of their lines, those of no line last; empty when the file is fine.
std::vector<Complaint> checkImport(std::string_view text, const ImportOptions &options);

// The complaints one a line, for a test's message.
std::string describe(const std::vector<Complaint> &complaints);

}  // namespace corvane::import_checker
