#include "mill_run.h"

#include <gmock/gmock.h>

#include <QRegularExpression>
#include <QString>
#include <fstream>
#include <iterator>
#include <sstream>

#include "demand_check.h"
#include "import_checker.h"

namespace corvane::faults {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

std::string contentOf(const std::filesystem::path &path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::string withoutTimes(const std::string &text) {
  static const QRegularExpression kTime(R"re(\d{4}/\d\d/\d\d \d\d:\d\d:\d\d \*\*\*\*)re");
  QString masked = QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
  masked.replace(kTime, "YYYY/MM/DD HH:MM:SS ****");
  return masked.toLatin1().toStdString();
}

int countLines(const std::string &text, const std::string &line) {
  std::istringstream lines(text);
  std::string one;
  int count = 0;
  while (std::getline(lines, one)) {
    count += one == line ? 1 : 0;
  }
  return count;
}

MillRun::MillRun() {
  std::filesystem::create_directory(folder() / "data");
  write("Parameters.data", kParameters);
  write("machines.data", kMachines);
  write("orders.data", kOrders);
  write("freightRates.data", kFreightRates);
}

void MillRun::write(const std::string &name, const std::string &bytes) const {
  folder_.write("data/" + name, bytes);
}

void MillRun::takeSample(const std::string &name) const {
  const std::filesystem::path sample =
      std::filesystem::path(CORVANE_SOURCE_DIR) / "samples" / name / "data";
  for (const char *file :
       {"Parameters.data", "machines.data", "orders.data", "freightRates.data"}) {
    write(file, contentOf(sample / file));
  }
}

Child MillRun::scripted() const {
  return {CORVANE_SCRIPTED, folder()};
}

Child MillRun::onClp() const {
  return {CORVANE_PROGRAM, folder()};
}

Result MillRun::run(const std::map<std::string, std::string> &environment) const {
  Child child = scripted();
  child.environment = environment;
  return runChild(child);
}

void expectWholeRun(const MillRun &mill, const Result &result) {
  EXPECT_EQ(result.status, 0) << result.out << result.err;
  EXPECT_THAT(withoutTimes(mill.log()), EndsWith("**** End Corvane. YYYY/MM/DD HH:MM:SS ****\n\n"));
  EXPECT_THAT(mill.importFile(), EndsWith("\n# End of Corvane. import file.\n"));
}

void expectFatal(const MillRun &mill, const Result &result, const std::string &words) {
  EXPECT_EQ(result.status, 1) << result.err;
  EXPECT_THAT(result.out, EndsWith(words + "\n"));
  const std::string log = mill.log();
  EXPECT_THAT(log, EndsWith("\n" + words + "\n"));
  EXPECT_THAT(log, Not(HasSubstr("Total ")));
  EXPECT_THAT(log, Not(HasSubstr("**** End")));
  EXPECT_TRUE(exists(mill.data("CV.imp")));
  EXPECT_EQ(mill.importFile(), "");
}

void expectGoodImport(const MillRun &mill, bool ordinaryData) {
  import_checker::ImportOptions options;
  options.ordinaryData = ordinaryData;
  const std::string text = mill.importFile();
  EXPECT_EQ(import_checker::describe(import_checker::checkImport(text, options)), "");
  const import_checker::OrderData data{contentOf(mill.data("machines.data")),
                                       contentOf(mill.data("orders.data"))};
  EXPECT_EQ(import_checker::describe(import_checker::checkDemand(text, data)), "");
}

}  // namespace corvane::faults
