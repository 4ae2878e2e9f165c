#pragma once

#include <QtGlobal>
#include <map>
#include <string>
#include <tuple>
#include <vector>

#include "network/warning.h"

namespace corvane::network {

// The values that a later line of the file replaced by different ones: a warning for each thing and
// attribute, with the first two lines and values and how often it happened.
class ReplacedValues {
 public:
  struct Change {
    quint32 line = 0;
    double value = 0.0;
    quint32 earlierLine = 0;
    double earlierValue = 0.0;
    std::string period;  // empty for what holds in all
  };

  // `thing` is how the text names it, such as `the delay of "Rail_G_A_30.000"`; `subject` tells
  // things apart that are named alike.
  void add(const char *kind, quint64 subject, const std::string &thing, const Change &change);

  std::vector<Warning> warnings() const;

 private:
  struct Entry {
    std::string thing;
    Change first;
    quint64 count = 0;
    quint32 lastLine = 0;
    double lastValue = 0.0;
  };
  std::map<std::tuple<std::string, quint64, std::string>, Entry> entries_;
};

}  // namespace corvane::network
