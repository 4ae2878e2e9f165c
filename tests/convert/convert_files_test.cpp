// Tables as planners export them: each folder of spreadsheets/ is one, named after what it shows.

#include "convert/convert_files.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <sstream>

namespace corvane::convert {
namespace {

const QString kSpreadsheets = QStringLiteral(CORVANE_SOURCE_DIR "/tests/convert/spreadsheets");

QByteArray contentOf(const QString &name) {
  QFile file(name);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void write(const QString &name, const QByteArray &content) {
  QFile file(name);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(content);
}

std::vector<std::string> spreadsheets() {
  std::vector<std::string> names;
  for (const QString &name : QDir(kSpreadsheets).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
    names.push_back(name.toStdString());
  }
  return names;
}

Request requestOf(const QDir &folder, const QString &target) {
  Request request;
  for (const TableKind &kind : tableKinds()) {
    const QStringList found = folder.entryList({QLatin1String(kind.name) + QLatin1String(".*")});
    if (!found.isEmpty()) {
      request.tables[QLatin1String(kind.name)] = folder.filePath(found.front());
    }
  }
  const MapReading map = readMap(QString::fromUtf8(contentOf(folder.filePath("map.txt"))));
  EXPECT_TRUE(map.faults.isEmpty()) << map.faults.join("; ").toStdString();
  request.map = map.map;
  request.folder = target;
  return request;
}

class Spreadsheets : public testing::TestWithParam<std::string> {};

TEST_P(Spreadsheets, BecomeTheDataFilesThatAreExpected) {
  const QDir folder(kSpreadsheets + '/' + QString::fromStdString(GetParam()));
  const QTemporaryDir target;
  std::ostringstream out;
  std::ostringstream err;
  const bool good = convertFiles(requestOf(folder, target.path()), out, err);
  const QByteArray errors = contentOf(folder.filePath("expected/errors"));
  const QString told = QString::fromStdString(err.str()).remove(folder.path() + '/');
  EXPECT_EQ(told.toStdString(), errors.toStdString());
  EXPECT_EQ(good, errors.isEmpty());
  for (const TableKind &kind : tableKinds()) {
    EXPECT_EQ(contentOf(target.filePath(QLatin1String("data/") + kind.fileName)).toStdString(),
              contentOf(folder.filePath(QLatin1String("expected/") + kind.fileName)).toStdString());
  }
}

INSTANTIATE_TEST_SUITE_P(OfPlanners, Spreadsheets, testing::ValuesIn(spreadsheets()),
                         [](const auto &given) { return given.param; });

// A mill's folder with one good table of orders.
class ConvertFiles : public testing::Test {
 protected:
  void SetUp() override {
    const QString table = folder_.filePath("table.csv");
    write(table, "Week,Grade,Width,Rolls,Customer\n1,LB42,44.75,60,Badger Box\n");
    request_.tables[QStringLiteral("orders")] = table;
    request_.folder = folder_.path();
  }

  bool convert() { return convertFiles(request_, out_, err_); }
  QString data() const { return folder_.filePath("data/orders.data"); }

  QTemporaryDir folder_;
  Request request_;
  std::ostringstream out_;
  std::ostringstream err_;
};

TEST_F(ConvertFiles, SaysWhatItReadAndHow) {
  EXPECT_TRUE(convert());
  EXPECT_EQ(out_.str(), folder_.path().toStdString() +
                            "/table.csv: 1 rows (delimiter comma, decimal point) -> " +
                            data().toStdString() + "\n");
}

TEST_F(ConvertFiles, ReplacesADataFileOnlyWhenTold) {
  ASSERT_TRUE(convert());
  write(data(), "mine\n");
  EXPECT_FALSE(convert());
  EXPECT_EQ(contentOf(data()), "mine\n");
  EXPECT_NE(err_.str().find("is there already; --force replaces it"), std::string::npos);
  request_.force = true;
  EXPECT_TRUE(convert());
  EXPECT_EQ(contentOf(data()), "1,LB42,44.75,60,Badger Box\n");
}

TEST_F(ConvertFiles, WritesNothingWhenOneOfTheTablesIsMissing) {
  request_.tables[QStringLiteral("freight")] = folder_.filePath("none.csv");
  EXPECT_FALSE(convert());
  EXPECT_FALSE(QFile::exists(data()));
}

TEST_F(ConvertFiles, SaysThatAFolderCannotBeMade) {
  write(folder_.filePath("data"), "a file");
  EXPECT_FALSE(convert());
  EXPECT_NE(err_.str().find("cannot be made"), std::string::npos);
}

TEST_F(ConvertFiles, SaysThatAWorkbookCannotBeRead) {
  const QString table = folder_.filePath("orders.xlsx");
  write(table, "no workbook");
  request_.tables[QStringLiteral("orders")] = table;
  EXPECT_FALSE(convert());
  EXPECT_NE(err_.str().find("sheet 1 cannot be read"), std::string::npos);
}

TEST_F(ConvertFiles, ShowsTwentyProblemsAndCountsTheRest) {
  QByteArray table = "Week,Grade,Width,Rolls,Customer\n";
  for (int i = 0; i < 25; ++i) {
    table += "1,LB42,wide,60,Badger Box\n";
  }
  write(folder_.filePath("table.csv"), table);
  EXPECT_FALSE(convert());
  const QString told = QString::fromStdString(err_.str());
  EXPECT_EQ(told.count("is not a number"), 20);
  EXPECT_TRUE(told.contains("and 5 more"));
}

}  // namespace
}  // namespace corvane::convert
