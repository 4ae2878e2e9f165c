#include "app/run_parameters.h"

#include <array>
#include <limits>
#include <ostream>
#include <string>
#include <variant>

#include "core/numbers.h"
#include "core/text.h"

namespace corvane {

namespace {

using Kind = ParameterRule::Kind;

constexpr double kLowest = std::numeric_limits<qint32>::min();
constexpr double kLargest = std::numeric_limits<qint32>::max();

// The kinds of parameters: how a value is read and checked, how it is printed, and the rule
// of it. Each names the field that it fills.

// "True" or "False"; anything else changes nothing.
struct Flag {
  qint32 RunParameters::*field;

  void set(RunParameters &parameters, const QString &value, std::ostream & /*messages*/) const {
    if (value == QLatin1String("True")) {
      parameters.*field = 1;
    } else if (value == QLatin1String("False")) {
      parameters.*field = 0;
    }
  }
  std::string print(const RunParameters &parameters) const {
    return parameters.*field == 1 ? "True" : "False";
  }
  ParameterRule rule(const char *key) const { return {key, Kind::kFlag}; }
};

// An integer above 0; anything else changes nothing.
struct PositiveInteger {
  qint32 RunParameters::*field;

  void set(RunParameters &parameters, const QString &value, std::ostream & /*messages*/) const {
    if (const qint32 number = parameterInteger(value); number > 0) {
      parameters.*field = number;
    }
  }
  std::string print(const RunParameters &parameters) const {
    return std::to_string(parameters.*field);
  }
  ParameterRule rule(const char *key) const { return {key, Kind::kInteger, 1, kLargest}; }
};

// An integer that is moved to the nearer bound, with a message.
struct ClampedInteger {
  qint32 RunParameters::*field;
  qint32 low;
  qint32 high;
  const char *belowMessage;
  const char *aboveMessage;

  void set(RunParameters &parameters, const QString &value, std::ostream &messages) const {
    qint32 number = parameterInteger(value);
    if (number < low) {
      messages << belowMessage << std::endl;
      number = low;
    } else if (number > high) {
      messages << aboveMessage << std::endl;
      number = high;
    }
    parameters.*field = number;
  }
  std::string print(const RunParameters &parameters) const {
    return std::to_string(parameters.*field);
  }
  ParameterRule rule(const char *key) const {
    return {key,   Kind::kInteger, static_cast<double>(low), static_cast<double>(high),
            false, true,           static_cast<double>(low)};
  }
};

// Seconds; a negative number stands for none.
struct OptionalSeconds {
  qint32 RunParameters::*field;

  void set(RunParameters &parameters, const QString &value, std::ostream & /*messages*/) const {
    parameters.*field = parameterInteger(value);
  }
  std::string print(const RunParameters &parameters) const {
    return parameters.*field < 0 ? "None" : std::to_string(parameters.*field);
  }
  ParameterRule rule(const char *key) const { return {key, Kind::kInteger, kLowest, kLargest}; }
};

// A number from 0 to 100; anything else changes nothing.
struct Threshold {
  double RunParameters::*field;

  void set(RunParameters &parameters, const QString &value, std::ostream & /*messages*/) const {
    if (const double number = parameterFloat(value); 0.0 <= number && number <= 100.0) {
      parameters.*field = number;
    }
  }
  std::string print(const RunParameters &parameters) const { return general(parameters.*field); }
  ParameterRule rule(const char *key) const { return {key, Kind::kDecimal, 0, 100}; }
};

// A percentage above 0; what is out of bounds is moved to 1 or 100, with two messages.
struct PickSetPercentage {
  double RunParameters::*field;

  void set(RunParameters &parameters, const QString &value, std::ostream &messages) const {
    double number = parameterFloat(value);
    if (number <= 0.0) {
      messages << "Width Pick Set Size cannot be less than or equal to 0.0%." << std::endl
               << "Setting Width Pick Set Size to 1.0%." << std::endl;
      number = 1.0;
    } else if (number > 100.0) {
      messages << "Width Pick Set Size cannot be greater than 100.0%." << std::endl
               << "Setting Width Pick Set Size to 100.0%." << std::endl;
      number = 100.0;
    }
    parameters.*field = number;
  }
  std::string print(const RunParameters &parameters) const {
    return general(parameters.*field) + "%";
  }
  ParameterRule rule(const char *key) const { return {key, Kind::kDecimal, 0, 100, true, true, 1}; }
};

struct Text {
  QString RunParameters::*field;

  void set(RunParameters &parameters, const QString &value, std::ostream & /*messages*/) const {
    parameters.*field = value;
  }
  std::string print(const RunParameters &parameters) const { return utf8(parameters.*field); }
  ParameterRule rule(const char *key) const { return {key, Kind::kText}; }
};

// An unknown name changes nothing, whatever the message says of a default.
struct SolverName {
  QString RunParameters::*field;

  void set(RunParameters &parameters, const QString &value, std::ostream &messages) const {
    if (value == QLatin1String("Dual") || value == QLatin1String("Barrier")) {
      parameters.*field = value;
    } else {
      messages << "Solver " << utf8(value) << " invalid, using Dual by default." << std::endl;
    }
  }
  std::string print(const RunParameters &parameters) const { return utf8(parameters.*field); }
  ParameterRule rule(const char *key) const { return {key, Kind::kSolver}; }
};

struct Parameter {
  const char *key;
  const char *label;  // of the summary; null for none
  std::variant<Flag, PositiveInteger, ClampedInteger, OptionalSeconds, Threshold, PickSetPercentage,
               Text, SolverName>
      kind;
};

std::string printed(const Parameter &parameter, const RunParameters &parameters) {
  return std::visit([&](const auto &kind) { return kind.print(parameters); }, parameter.kind);
}

using Run = RunParameters;

// Every parameter once, in the order of the summary.
const std::array<Parameter, 18> kParameters = {{
    {"batch", "Batch                : ", Flag{&Run::batch}},
    {"delay", "Delay                : ", Flag{&Run::delay}},
    {"threshold", "Threshold            : ", Threshold{&Run::threshold}},
    {"occur min", "Occur Min            : ", PositiveInteger{&Run::occurMin}},
    {"days per period", "Days Per Period      : ", PositiveInteger{&Run::daysPerPeriod}},
    {"maximum widths in pattern", "Max Widths In Pattern: ",
     ClampedInteger{&Run::maximumWidthsInPattern, 5, 10,
                    "Maximum widths in pattern cannot be less than 5.",
                    "Maximum widths in pattern cannot be more than 10."}},
    {"new patterns per iteration", "New Patterns per Iter: ",
     ClampedInteger{&Run::newPatternsPerIteration, 10, 100000,
                    "New patterns per iteration cannot be less than 10.",
                    "New patterns per iteration cannot be greater than 100000."}},
    {"width pick set size", "Width Pick Set Size  : ", PickSetPercentage{&Run::widthPickSetSize}},
    {"stop generating threshold", "Stop Generating Thres: ",
     ClampedInteger{&Run::stopGeneratingThreshold, 100, 10000,
                    "Stop Generating Threshold cannot be less than 100.",
                    "Stop Generating Threshold cannot be greater than 10000."}},
    {"order file", "Order File           : ", Text{&Run::orderFile}},
    {"machine file", "Machine File         : ", Text{&Run::machineFile}},
    {"freight rate file", "Freight Rate File    : ", Text{&Run::freightRateFile}},
    {"output", "Output File          : ", Text{&Run::output}},
    {"log file", "Log File             : ", Text{&Run::logFile}},
    {"solver", "Solver               : ", SolverName{&Run::solver}},
    {"patterns only", "Patterns Only        : ", Flag{&Run::patternsOnly}},
    {"time limit", "Time Limit           : ", OptionalSeconds{&Run::timeLimit}},
    // Pattern generation logs the seed that it uses.
    {"rand num gen seed", nullptr,
     ClampedInteger{&Run::seed, 0, 10000, "Random Number Generator Seed cannot be less than 0.",
                    "Random Number Generator Seed cannot be greater than 10000."}},
}};

}  // namespace

bool setParameter(RunParameters &parameters, const QString &key, const QString &value,
                  std::ostream &messages) {
  for (const Parameter &parameter : kParameters) {
    if (key == QLatin1String(parameter.key)) {
      std::visit([&](const auto &kind) { kind.set(parameters, value, messages); }, parameter.kind);
      return true;
    }
  }
  return false;
}

std::vector<ParameterRule> parameterRules() {
  std::vector<ParameterRule> rules;
  for (const Parameter &parameter : kParameters) {
    rules.push_back(
        std::visit([&](const auto &kind) { return kind.rule(parameter.key); }, parameter.kind));
  }
  return rules;
}

std::string parameterText(const RunParameters &parameters, const QString &key) {
  for (const Parameter &parameter : kParameters) {
    if (key == QLatin1String(parameter.key)) {
      return printed(parameter, parameters);
    }
  }
  return {};
}

void printParameters(const RunParameters &parameters, std::ostream &out) {
  out << "Parameters:" << std::endl;
  for (const Parameter &parameter : kParameters) {
    if (parameter.label != nullptr) {
      out << parameter.label << printed(parameter, parameters) << std::endl;
    }
  }
}

}  // namespace corvane
