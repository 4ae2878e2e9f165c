#include "formats/json_writer.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <cmath>
#include <limits>
#include <random>
#include <sstream>
#include <vector>

namespace corvane {
namespace {

using Layout = JsonWriter::Layout;

TEST(JsonWriter, GivesEveryMemberALine) {
  std::ostringstream out;
  JsonWriter json(out);
  json.beginObject();
  json.member("grade", "LB42");
  json.key("widths");
  json.beginArray();
  json.value(42.5);
  json.value(7);
  json.endArray();
  json.endObject();
  EXPECT_EQ(out.str(), "{\n  \"grade\": \"LB42\",\n  \"widths\": [\n    42.5,\n    7\n  ]\n}\n");
}

TEST(JsonWriter, KeepsARecordOnOneLineWithAllThatIsInIt) {
  std::ostringstream out;
  JsonWriter json(out);
  json.beginArray();
  for (int i = 0; i < 2; ++i) {
    json.beginObject(Layout::kOneLine);
    json.member("i", i);
    json.key("rolls");
    json.beginArray();
    json.value(1);
    json.value(2);
    json.endArray();
    json.endObject();
  }
  json.endArray();
  EXPECT_EQ(out.str(), "[\n  {\"i\": 0, \"rolls\": [1, 2]},\n  {\"i\": 1, \"rolls\": [1, 2]}\n]\n");
}

TEST(JsonWriter, LeavesNothingBetweenTheBracketsOfWhatIsEmpty) {
  std::ostringstream out;
  JsonWriter json(out);
  json.beginObject();
  json.key("a");
  json.beginArray();
  json.endArray();
  json.key("o");
  json.beginObject();
  json.endObject();
  json.endObject();
  EXPECT_EQ(out.str(), "{\n  \"a\": [],\n  \"o\": {}\n}\n");
}

TEST(JsonWriter, WritesWhatIsNoNumberAsNull) {
  std::ostringstream out;
  JsonWriter json(out);
  json.beginArray(Layout::kOneLine);
  json.value(std::numeric_limits<double>::quiet_NaN());
  json.value(-std::numeric_limits<double>::infinity());
  json.value(-0.0);
  json.value(true);
  json.null();
  json.endArray();
  EXPECT_EQ(out.str(), "[null, null, 0, true, null]\n");
}

TEST(JsonWriter, ReadsBackToTheSameTextsAndNumbers) {
  std::mt19937 random(7);
  std::vector<QString> texts;
  std::vector<double> numbers;
  std::ostringstream out;
  JsonWriter json(out);
  json.beginArray();
  for (int i = 0; i < 2000; ++i) {
    QString text;
    for (auto length = random() % 6; length > 0; --length) {
      text += QChar(static_cast<char16_t>(random() % 3 == 0 ? random() % 0xd800 : random() % 128));
    }
    const double number =
        std::ldexp(static_cast<double>(random()), static_cast<int>(random() % 99) - 60);
    json.value(text);
    json.value(number);
    texts.push_back(text);
    numbers.push_back(number);
  }
  json.endArray();
  const QJsonArray read = QJsonDocument::fromJson(QByteArray::fromStdString(out.str())).array();
  ASSERT_EQ(read.size(), qsizetype{4000});
  for (std::size_t i = 0; i < texts.size(); ++i) {
    EXPECT_EQ(read[static_cast<qsizetype>(2 * i)].toString(), texts[i]);
    EXPECT_EQ(read[static_cast<qsizetype>(2 * i + 1)].toDouble(), numbers[i]);
  }
}

}  // namespace
}  // namespace corvane
