#include "programs/command_line.h"

#include <algorithm>
#include <ostream>

#include "core/text.h"

namespace corvane {

namespace {

// "-o, --output DIR"
QString usageOf(const CommandOption &option) {
  QStringList names;
  for (const QString &name : option.names) {
    names << (name.size() == 1 ? QLatin1String("-") : QLatin1String("--")) + name;
  }
  const QString all = names.join(QLatin1String(", "));
  return option.value.isEmpty() ? all : all + QLatin1Char(' ') + option.value;
}

}  // namespace

CommandLine::CommandLine(ProgramText text, std::vector<CommandOption> options)
    : text_(std::move(text)), options_(std::move(options)) {
  options_.push_back({{QStringLiteral("help")}, {}, QStringLiteral("show this text")});
  options_.push_back({{QStringLiteral("version")}, {}, QStringLiteral("show the version")});
  for (const CommandOption &option : options_) {
    parser_.addOption(QCommandLineOption(option.names, option.description, option.value));
  }
}

std::optional<int> CommandLine::parse(int argc, char **argv, std::ostream &out, std::ostream &err) {
  QStringList arguments;
  for (int i = 0; i < argc; ++i) {
    arguments << QString::fromUtf8(argv[i]);
  }
  if (!parser_.parse(arguments)) {
    return refuse(parser_.errorText(), err);
  }
  if (has(QStringLiteral("help"))) {
    printHelp(out);
    return 0;
  }
  if (has(QStringLiteral("version"))) {
    out << utf8(text_.name) << " " << CORVANE_VERSION << std::endl;
    return 0;
  }
  const QStringList given = parser_.positionalArguments();
  if (given.size() > text_.maximumArguments) {
    return refuse(QStringLiteral("Unexpected argument '%1'.").arg(given[text_.maximumArguments]),
                  err);
  }
  return std::nullopt;
}

int CommandLine::refuse(const QString &why, std::ostream &err) const {
  err << utf8(text_.name) << ": " << utf8(why) << std::endl
      << "Try '" << utf8(text_.name) << " --help'." << std::endl;
  return kExitUsage;
}

void CommandLine::printHelp(std::ostream &out) const {
  out << "Usage: " << utf8(text_.name) << " [OPTION ...] " << utf8(text_.arguments) << std::endl
      << utf8(text_.description) << std::endl
      << std::endl
      << "Options:" << std::endl;
  qsizetype longest = 0;
  for (const CommandOption &option : options_) {
    longest = std::max(longest, usageOf(option).size());
  }
  for (const CommandOption &option : options_) {
    out << "  " << utf8(usageOf(option).leftJustified(longest)) << "  " << utf8(option.description)
        << std::endl;
  }
}

}  // namespace corvane
