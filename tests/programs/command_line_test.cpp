#include "programs/command_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

namespace corvane {
namespace {

using testing::HasSubstr;

// A parsed command line and what it said.
struct Parsed {
  explicit Parsed(std::vector<std::string> arguments)
      : line({QStringLiteral("corvane-try"), QStringLiteral("[FOLDER]"), QStringLiteral("Tries."),
              1},
             {{{QStringLiteral("o"), QStringLiteral("output")},
               QStringLiteral("DIR"),
               QStringLiteral("where to write")},
              {{QStringLiteral("quiet")}, {}, QStringLiteral("say nothing")}}) {
    arguments.insert(arguments.begin(), "corvane-try");
    std::vector<char *> pointers;
    for (std::string &argument : arguments) {
      pointers.push_back(argument.data());
    }
    status = line.parse(static_cast<int>(pointers.size()), pointers.data(), out, err);
  }

  CommandLine line;
  std::ostringstream out;
  std::ostringstream err;
  std::optional<int> status;
};

TEST(CommandLine, GivesOptionsAndArguments) {
  const Parsed parsed({"-o", "plan", "M\u00fchle", "--quiet"});
  EXPECT_EQ(parsed.status, std::nullopt);
  EXPECT_EQ(parsed.line.value(QStringLiteral("output")), QStringLiteral("plan"));
  EXPECT_TRUE(parsed.line.has(QStringLiteral("quiet")));
  EXPECT_EQ(parsed.line.arguments(), QStringList{QStringLiteral("M\u00fchle")});
  EXPECT_EQ(parsed.out.str() + parsed.err.str(), "");
}

TEST(CommandLine, RefusesAnOptionThatItDoesNotKnow) {
  const Parsed parsed({"--loud"});
  EXPECT_EQ(parsed.status, kExitUsage);
  EXPECT_THAT(parsed.err.str(), HasSubstr("corvane-try: Unknown option 'loud'."));
  EXPECT_THAT(parsed.err.str(), HasSubstr("Try 'corvane-try --help'."));
  EXPECT_EQ(parsed.out.str(), "");
}

TEST(CommandLine, RefusesAnOptionWithoutItsValue) {
  EXPECT_EQ(Parsed({"-o"}).status, kExitUsage);
}

TEST(CommandLine, RefusesOneArgumentTooMany) {
  const Parsed parsed({"a", "b"});
  EXPECT_EQ(parsed.status, kExitUsage);
  EXPECT_THAT(parsed.err.str(), HasSubstr("Unexpected argument 'b'."));
}

TEST(CommandLine, ShowsEveryOptionInItsHelp) {
  const Parsed parsed({"--help"});
  EXPECT_EQ(parsed.status, 0);
  EXPECT_EQ(parsed.out.str(),
            "Usage: corvane-try [OPTION ...] [FOLDER]\n"
            "Tries.\n"
            "\n"
            "Options:\n"
            "  -o, --output DIR  where to write\n"
            "  --quiet           say nothing\n"
            "  --help            show this text\n"
            "  --version         show the version\n");
}

TEST(CommandLine, ShowsTheVersionOfTheProject) {
  const Parsed parsed({"--version"});
  EXPECT_EQ(parsed.status, 0);
  EXPECT_THAT(parsed.out.str(), testing::MatchesRegex("corvane-try [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

}  // namespace
}  // namespace corvane
