// Every code of an import file five times at random lines of good files: it is found there, and
// nothing else is said of that line.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "checks/import_file_check.h"
#include "checks/random_mill.h"
#include "import_checker/good_files.h"

namespace corvane::checks {
namespace {

using Lines = std::vector<std::string>;

struct ImportPlanter {
  const char *code;
  // The lines from 1 where it is to be found.
  std::function<std::vector<std::size_t>(Lines &, Random &)> plant;
};

Lines linesOf(const std::string &text) {
  Lines lines;
  for (std::size_t begin = 0; begin < text.size();) {
    const std::size_t end = text.find('\n', begin);
    lines.push_back(text.substr(begin, end - begin));
    begin = end + 1;
  }
  return lines;
}

std::string textOf(const Lines &lines) {
  std::string text;
  for (const std::string &line : lines) {
    text += line + "\n";
  }
  return text;
}

// A random line that holds the part, from 0.
std::size_t lineWith(const Lines &lines, Random &random, const std::string &part) {
  std::vector<std::size_t> places;
  for (std::size_t at = 0; at < lines.size(); ++at) {
    if (lines[at].find(part) != std::string::npos) {
      places.push_back(at);
    }
  }
  return places.at(below(random, places.size()));
}

// In a random line with the part, what follows it up to the next blank is replaced.
std::vector<std::size_t> replacedBehind(Lines &lines, Random &random, const std::string &part,
                                        const std::string &value) {
  const std::size_t at = lineWith(lines, random, part);
  const std::size_t begin = lines[at].find(part) + part.size();
  const std::size_t end = std::min(lines[at].find(' ', begin), lines[at].size());
  lines[at].replace(begin, end - begin, value);
  return {at + 1};
}

std::vector<std::size_t> cut(Lines &lines, Random &random) {
  lines.resize(1 + below(random, lines.size() - 1));
  return {lines.size()};
}

std::vector<std::size_t> severalRuns(Lines &lines, Random &random) {
  const Lines once = lines;
  const std::size_t count = 1 + below(random, once.size());
  lines.insert(lines.end(), once.begin(), once.begin() + static_cast<std::ptrdiff_t>(count - 1));
  lines.push_back(once.back());
  return {once.size() + 1};
}

// A second blank where there is one.
std::vector<std::size_t> doubledBlank(Lines &lines, Random &random) {
  const std::size_t at = lineWith(lines, random, "add");
  std::vector<std::size_t> blanks;
  for (std::size_t i = 0; i < lines[at].size(); ++i) {
    if (lines[at][i] == ' ') {
      blanks.push_back(i);
    }
  }
  lines[at].insert(blanks.at(below(random, blanks.size())), 1, ' ');
  return {at + 1};
}

// In all lines, so that the name stays declared.
std::vector<std::size_t> oddName(Lines &lines, Random &random) {
  static const std::vector<std::string> kOdd = {"\r", "\x1b", "\xc2\x85", "\xe2\x80\xa8",
                                                "\xe2\x80\xa9"};
  const std::string odd = kOdd[below(random, kOdd.size())];
  const std::string declaring = "<type> \"Process\" <name> \"";
  const std::string &line = lines[lineWith(lines, random, declaring)];
  const std::size_t begin = line.find(declaring) + declaring.size();
  const std::string name = line.substr(begin, line.find('"', begin) - begin);
  const std::string old = "\"" + name + "\"";
  std::vector<std::size_t> places;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (const std::size_t found = lines[i].find(old); found != std::string::npos) {
      lines[i].insert(found + 2, odd);
      places.push_back(i + 1);
    }
  }
  return places;
}

std::vector<std::size_t> otherWidth(Lines &lines, Random &random) {
  const std::size_t at = lineWith(lines, random, "addarc <commodity> \"DemandWidth");
  const std::size_t digits = lines[at].find("DemandWidth") + 11;
  lines[at].replace(digits, 2, lines[at].substr(digits, 2) == "30" ? "45" : "30");
  return {at + 1};
}

std::vector<std::size_t> noSense(Lines &lines, Random &random) {
  static const std::vector<std::string> kParts = {"<demandamount> ", "<storagemax> "};
  const std::string part = kParts[below(random, kParts.size())];
  return replacedBehind(lines, random, part, "-3");
}

std::vector<ImportPlanter> importPlanters() {
  return {
      {"CV801", cut},
      {"CV802", severalRuns},
      {"CV803", doubledBlank},
      {"CV804", oddName},
      {"CV805",
       [](Lines &lines, Random &random) {
         return replacedBehind(lines, random, " <from> ", "\"Nobody\"");
       }},
      {"CV806", otherWidth},
      {"CV807",
       [](Lines &lines, Random &random) {
         return replacedBehind(lines, random, "<demandamount> ",
                               std::to_string(100 + below(random, 100)));
       }},
      {"CV808", noSense},
  };
}

TEST(SeededImportPlants, AreOfEveryCodeOfAnImportFile) {
  std::vector<std::string> planted;
  for (const ImportPlanter &planter : importPlanters()) {
    planted.emplace_back(planter.code);
  }
  std::vector<std::string> codes;
  for (const Check &check : allChecks()) {
    if (check.code >= Code::kImportCut) {
      codes.push_back(codeText(check.code));
    }
  }
  EXPECT_EQ(planted, codes);
}

TEST(SeededImportPlants, AreAllFoundAndNothingElse) {
  constexpr unsigned kTimes = 5;
  const TextCheck mill({"rand num gen seed=7\n", "Mill,C,G,100,46,2.5,12.5\n",
                        "1,G,30,5,A\n1,G,45,4,A\n2,G,30,6,A\n", "A,Mill,Truck,40,0\n"});
  for (const char *good : {import_checker::kDelayFile, import_checker::kBatchFile}) {
    for (const ImportPlanter &planter : importPlanters()) {
      for (unsigned seed = 1; seed <= kTimes; ++seed) {
        SCOPED_TRACE(std::string(planter.code) + ", seed " + std::to_string(seed));
        Random random(seed * 1000 + static_cast<unsigned>(std::stoi(planter.code + 2)));
        Lines lines = linesOf(good);
        const std::vector<std::size_t> places = planter.plant(lines, random);
        const SourceFile file("CV.imp", textOf(lines));
        std::vector<std::size_t> found;
        FindingSink sink(Selection(),
                         [&](const Finding &finding) {
                           if (codeText(finding.code) == planter.code) {
                             found.push_back(finding.line);
                           } else {
                             EXPECT_THAT(places, testing::Not(testing::Contains(finding.line)))
                                 << codeText(finding.code) << ": " << messageOf(finding);
                           }
                         },
                         {});
        checkImportFile(file, &mill.mill.records, sink);
        EXPECT_THAT(found, testing::IsSupersetOf(places));
      }
    }
  }
}

}  // namespace
}  // namespace corvane::checks
