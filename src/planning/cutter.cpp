#include "planning/cutter.h"

namespace corvane {

int CutterComp::compare(const Cutter &a, const Cutter &b) const {
  if (const int order = compareKeys(a.location, b.location); order != 0) {
    return order;
  }
  if (const int order = compareKeys(a.name, b.name); order != 0) {
    return order;
  }
  return compareKeys(a.grade, b.grade);
}

int CutterCompByName::compare(const Cutter &a, const Cutter &b) const {
  if (const int order = compareKeys(a.location, b.location); order != 0) {
    return order;
  }
  return compareKeys(a.name, b.name);
}

}  // namespace corvane
