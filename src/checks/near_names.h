#pragma once

#include <QString>
#include <functional>
#include <optional>
#include <vector>

namespace corvane::checks {

// The known name nearest to a misspelt one: the fewest letters to change, add, drop or swap, case
// and blanks aside. Nothing where none is near. Linear in the known names.
std::optional<QString> nearestName(const QString &name, const std::vector<QString> &known);

// The letters to change, add, drop or swap with their neighbour: the optimal string alignment
// distance, E. Ukkonen, "Algorithms for approximate string matching", 1985. At most limit + 1.
int editDistance(const QString &a, const QString &b, int limit);

// The name without case, blanks and hyphens: what reads alike.
QString foldedName(const QString &name);

// Whether the names, of which neither is the other, are likely to be meant as one: they differ by
// case, blanks or hyphens, or, of longer ones, by one letter that is no digit and not a word of its
// own (Mill A and Mill B).
bool differByOneLetter(const QString &a, const QString &b);

// A name of a set, with whether it is known for sure (a grade that a cutter runs, say).
struct KnownName {
  QString text;
  bool isSure;
};

// Calls report(name, other) for every name that reads like another one of the set, or is one letter
// away from it and not known for sure. Of two such names the other is the surer one, or the one
// that stands first. Single letters are not looked for among very many names.
void forEachNearName(const std::vector<KnownName> &names,
                     const std::function<void(std::size_t, std::size_t)> &report);

}  // namespace corvane::checks
