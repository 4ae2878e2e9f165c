#pragma once

#include <QString>

#include "core/comparison.h"

namespace corvane {

// A cutter (a winder with its slitters): the machine that slits a deckle of one grade.
struct Cutter {
  QString location;  // the mill or site where it stands
  QString name;
  QString grade;
  double width = 0;       // usable deckle width, inches
  double capacity = 0;    // deckle per unit of machine time
  double lbsPerInch = 0;  // weight of one roll per inch of its width
  double wasteCost = 0;   // cost of one inch of waste
};

// The key of a cutter: location, then name, then grade.
class CutterComp : public Comparison<Cutter> {
 public:
  int compare(const Cutter &a, const Cutter &b) const override;
};

// The cutters of one machine: location, then name. The location goes first here too.
class CutterCompByName : public Comparison<Cutter> {
 public:
  int compare(const Cutter &a, const Cutter &b) const override;
};

}  // namespace corvane
