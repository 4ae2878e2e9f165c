#pragma once

#include <QString>
#include <iosfwd>
#include <string>
#include <vector>

namespace corvane {

// The settings of a run, with their defaults. Flags are 1 for true and 0 for false.
struct RunParameters {
  qint32 batch = 0;
  qint32 delay = 1;
  qint32 maximumWidthsInPattern = 5;
  double threshold = 5.0;
  qint32 occurMin = 1;
  qint32 daysPerPeriod = 7;
  qint32 newPatternsPerIteration = 100;
  double widthPickSetSize = 10.0;  // percent
  qint32 stopGeneratingThreshold = 1000;
  QString orderFile = QStringLiteral("data\\orders.data");
  QString machineFile = QStringLiteral("data\\machines.data");
  QString freightRateFile = QStringLiteral("data\\freightRates.data");
  QString output = QStringLiteral("data\\CV.imp");
  QString logFile = QStringLiteral("data\\corvane.log");
  QString solver = QStringLiteral("Dual");
  qint32 patternsOnly = 0;
  qint32 seed = -1;       // negative: from the clock
  qint32 timeLimit = -1;  // seconds; negative: none
};

// Stores the value under the key of the parameter file, corrected where the key says so;
// corrections are told on the stream. False when there is no such key.
bool setParameter(RunParameters &parameters, const QString &key, const QString &value,
                  std::ostream &messages);

// What may stand under a key of the parameter file.
struct ParameterRule {
  enum class Kind { kFlag, kInteger, kDecimal, kSolver, kText };

  const char *key = nullptr;
  Kind kind = Kind::kText;
  // Of numbers.
  double low = 0;
  double high = 0;
  bool isLowExcluded = false;
  // Whether a number that is out of bounds is moved to lowBound or high; or else it changes
  // nothing.
  bool isMoved = false;
  double lowBound = 0;
};

// The rule of every key, in the order of the summary.
std::vector<ParameterRule> parameterRules();

// The value under a key as the summary shows it; empty where there is no such key.
std::string parameterText(const RunParameters &parameters, const QString &key);

// Writes the summary of the parameters.
void printParameters(const RunParameters &parameters, std::ostream &out);

}  // namespace corvane
