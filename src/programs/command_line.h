#pragma once

#include <QCommandLineParser>
#include <QString>
#include <QStringList>
#include <iosfwd>
#include <optional>
#include <vector>

namespace corvane {

inline constexpr int kExitUsage = 2;

// An option of a program: its names without dashes, the name of its value (empty for a flag), and
// what it does, in lower case and without a full stop.
struct CommandOption {
  QStringList names;
  QString value;
  QString description;
};

// What a program says of itself.
struct ProgramText {
  QString name;         // "corvane-plan"
  QString arguments;    // what stands behind the options: "[FOLDER]"
  QString description;  // one or more lines
  int maximumArguments = 0;
};

// The command line of a companion program, with --help and --version besides its own options.
//
// There is no application object: it would take the user's locale, and numbers would be read and
// written with its decimal sign.
class CommandLine {
 public:
  CommandLine(ProgramText text, std::vector<CommandOption> options);

  // Reads the arguments. Returns the exit status where the program has nothing more to do: 0 after
  // --help and --version, kExitUsage after an argument that it does not know or cannot take.
  std::optional<int> parse(int argc, char **argv, std::ostream &out, std::ostream &err);

  // The following hold after parse().
  bool has(const QString &option) const { return parser_.isSet(option); }
  QString value(const QString &option) const { return parser_.value(option); }
  QStringList values(const QString &option) const { return parser_.values(option); }
  QStringList arguments() const { return parser_.positionalArguments(); }

  // Says what is wrong with the arguments and how to get help; returns kExitUsage.
  int refuse(const QString &why, std::ostream &err) const;

 private:
  void printHelp(std::ostream &out) const;

  ProgramText text_;
  std::vector<CommandOption> options_;
  QCommandLineParser parser_;
};

}  // namespace corvane
