#include "network/network_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "import_checker/good_files.h"
#include "network/told.h"

namespace corvane::network {
namespace {

using import_checker::kDelayFile;
using testing::ElementsAre;
using testing::HasSubstr;

// The good file with a text replaced wherever it stands, or where it stands first.
std::string changed(const std::string &old, const std::string &now) {
  std::string text = kDelayFile;
  const std::size_t at = text.find(old);
  EXPECT_NE(at, std::string::npos) << old;
  return text.replace(at, old.size(), now);
}

quint64 lineOf(const std::string &part) {
  const std::string text = kDelayFile;
  const auto end = text.begin() + static_cast<std::ptrdiff_t>(text.find(part));
  return 1 + static_cast<quint64>(std::count(text.begin(), end, '\n'));
}

const Node &nodeOf(const Network &network, const std::string &name) {
  return *std::find_if(network.nodes.begin(), network.nodes.end(),
                       [&](const Node &node) { return node.name == name; });
}

std::vector<double> valuesOf(const Series &series) {
  std::vector<double> values;
  for (const Datum &datum : series) {
    values.push_back(datum.value);
  }
  return values;
}

TEST(NetworkReader, AGoodFileBecomesItsNetwork) {
  const Network network = readNetworkText(kDelayFile);
  EXPECT_THAT(network.periods, ElementsAre("1", "2"));
  EXPECT_FALSE(network.batch);
  EXPECT_EQ(network.commodities.size(), 5U);
  EXPECT_EQ(network.commodities[1].width, 30);
  EXPECT_THAT(valuesOf(nodeOf(network, "M_C").days), ElementsAre(7, 7));
  const Node &order = nodeOf(network, "G_A_30.000");
  EXPECT_EQ(network.setNames[order.set], "G_A");
  EXPECT_EQ(order.amount[0].value, 5);
  EXPECT_THAT(valuesOf(nodeOf(network, "Truck_G_A_30.000").delay), ElementsAre(0.5, 0.5));
  EXPECT_TRUE(network.warnings.empty());
  EXPECT_EQ(network.bytes, std::string(kDelayFile).size());
}

// What only the first period has holds in the second, too: its costs, not its amounts.
TEST(NetworkReader, DataAreCarriedOverButNotAmounts) {
  const Network network =
      readNetworkText(changed("<cost> 10 <min> 0 <max> +infinity <period> \"2\"\naddnode",
                              "<cost> 10 <min> 0 <max> +infinity <period> \"1\"\naddnode"));
  const Index arc = static_cast<Index>(
      std::find_if(network.arcs.begin(), network.arcs.end(),
                   [&](const Arc &a) { return network.nodes[a.to].name == "G_Pattern_0_C_100"; }) -
      network.arcs.begin());
  EXPECT_EQ(network.arcCost(arc, 1), 10);
  EXPECT_EQ(network.arcDatum(arc, 1).line, 0U);
  EXPECT_EQ(nodeOf(network, "G_A_45.000").amount[1].line == 0,
            nodeOf(network, "G_A_45.000").amount[1].value == 0);
}

TEST(NetworkReader, EveryCutOfAGoodFileIsRefused) {
  const std::string text = kDelayFile;
  for (std::size_t end = 0; end + 1 < text.size(); ++end) {
    if (end == 0 || text[end - 1] == '\n') {
      const Told refusal = refusalOf(text.substr(0, end));
      EXPECT_THAT(refusal.text, end == 0 ? HasSubstr("is empty") : HasSubstr("did not finish"));
    }
  }
  for (std::size_t end = 1; end < text.size(); end += 41) {
    if (text[end - 1] != '\n') {
      EXPECT_THAT(refusalOf(text.substr(0, end)).text, HasSubstr("the file is cut")) << end;
    }
  }
  EXPECT_THAT(refusalOf(text.substr(0, text.size() - 1)).text, HasSubstr("the file is cut"));
}

// Without any one line the file is refused, or still plannable: a line said again, a drawing's
// place, a set that more than one line fills.
TEST(NetworkReader, AFileWithoutALineIsRefusedWithALineOrRead) {
  const std::string text = kDelayFile;
  int refused = 0;
  std::size_t begin = 0;
  while (begin < text.size()) {
    const std::size_t end = text.find('\n', begin) + 1;
    const Told refusal = refusalOf(text.substr(0, begin) + text.substr(end));
    refused += refusal.text.empty() ? 0 : 1;
    EXPECT_TRUE(refusal.text.empty() || refusal.line > 0) << refusal.text;
    begin = end;
  }
  EXPECT_GT(refused, 20);
}

TEST(NetworkReader, TwoRunsInOneFileAreRefused) {
  const std::string text = kDelayFile;
  EXPECT_THAT(refusalOf(text + text).text, HasSubstr("two runs"));
  const std::size_t middle = text.find("addnode <type> \"Demand\"");
  EXPECT_THAT(refusalOf(text.substr(0, middle) + text).text, HasSubstr("a second root"));
  EXPECT_EQ(refusalOf(text.substr(0, middle) + text).line, lineOf("addnode <type> \"Demand\""));
}

TEST(NetworkReader, WhatIsNotDeclaredIsRefusedWithItsLine) {
  const std::string arc = "<from> \"G_C_100\" <to> \"G_Pattern_1_C_100\"";
  EXPECT_EQ(refusalOf(changed(arc, "<from> \"G_C_1\" <to> \"G_Pattern_1_C_100\"")).line,
            lineOf(arc));
  EXPECT_THAT(refusalOf(changed(arc, "<from> \"G_C_1\" <to> \"G_Pattern_1_C_100\"")).text,
              HasSubstr("\"G_C_1\" is not declared"));
  EXPECT_THAT(refusalOf(changed("addperiod <name> \"2\"\n", "")).text,
              HasSubstr("the period \"2\" is not declared"));
  EXPECT_THAT(refusalOf(changed("addcommodity <name> \"DemandWidth30\"\n", "")).text,
              HasSubstr("\"DemandWidth30\" is not declared"));
  EXPECT_THAT(refusalOf(changed("blockset \"G_C\"", "blockset \"G_D\"")).text,
              HasSubstr("holds no node"));
}

TEST(NetworkReader, PeriodsAndCommoditiesStandInTheirPlaces) {
  const std::string second = "addperiod <name> \"2\"\n";
  EXPECT_THAT(refusalOf(changed(second, second + second)).text,
              HasSubstr("the period \"2\" stands out of place or twice"));
  EXPECT_EQ(refusalOf(changed(second, second + second)).line, lineOf(second) + 1);
  const std::string attach = "addattach <node> \"M_C\"";
  EXPECT_THAT(refusalOf(changed(attach, "addperiod <name> \"3\"\n" + attach)).text,
              HasSubstr("the period \"3\" stands out of place or twice"));
  EXPECT_THAT(refusalOf(changed(second, "addcommodity <name> \"DemandWidth50\"\n" + second)).text,
              HasSubstr("a commodity after the periods"));
}

TEST(NetworkReader, AnArcNeedsANodeThatGivesAndOneThatTakes) {
  EXPECT_THAT(refusalOf(changed("<from> \"G_C_100\" <to> \"G_Pattern_0_C_100\"",
                                "<from> \"M_C\" <to> \"G_Pattern_0_C_100\""))
                  .text,
              HasSubstr("\"M_C\" gives no \"Deckle100\""));
}

TEST(NetworkReader, NumbersMustBeFiniteAndMakeSense) {
  EXPECT_THAT(refusalOf(changed("<quantity> 46", "<quantity> nan")).text, HasSubstr("not finite"));
  EXPECT_THAT(refusalOf(changed("<quantity> 46", "<quantity> -46")).text, HasSubstr("below 0"));
  EXPECT_THAT(refusalOf(changed("<cost> 12.5", "<cost> inf")).text, HasSubstr("not finite"));
  EXPECT_THAT(refusalOf(changed("<periodstodelay> 1", "<periodstodelay> -1")).text,
              HasSubstr("the delay is below 0"));
  EXPECT_THAT(refusalOf(changed("<demandamount> 5", "<demandamount> -5")).text,
              HasSubstr("below 0"));
  EXPECT_THAT(refusalOf(changed("<undercost> 50000", "<undercost> 0")).text,
              HasSubstr("undercost"));
}

TEST(NetworkReader, AnotherTypeForANameIsRefused) {
  EXPECT_THAT(refusalOf(changed("\"StorageDemand\" <name> \"G_C_30.000\" <x>",
                                "\"StorageDemand\" <name> \"G_C_100\" <x>"))
                  .text,
              HasSubstr("is a StorageDemand here and was a Process in line"));
}

TEST(NetworkReader, ALaterLineReplacesAnEarlierOneWithAWarning) {
  const std::string node =
      "addnode <type> \"Delay\" <name> \"Rail_G_A_30.000\" <periodstodelay> 1 <period> \"2\"";
  const Network network =
      readNetworkText(changed(node, node + "\naddnode <type> \"Delay\" <name> \"Rail_G_A_30.000\" "
                                           "<periodstodelay> 3 <period> \"2\""));
  EXPECT_THAT(valuesOf(nodeOf(network, "Rail_G_A_30.000").delay), ElementsAre(1, 3));
  ASSERT_EQ(network.warnings.size(), 1U);
  EXPECT_EQ(network.warnings[0].kind, "delay-differs");
  EXPECT_EQ(network.warnings[0].line, lineOf(node) + 1);
  EXPECT_THAT(network.warnings[0].text,
              HasSubstr("is 3 here and was 1 in line " + std::to_string(lineOf(node))));
}

TEST(NetworkReader, OfManyReplacedValuesTheFirstAndTheLastAreTold) {
  const std::string node =
      "addnode <type> \"Delay\" <name> \"Rail_G_A_30.000\" <periodstodelay> 1 <period> \"2\"\n";
  std::string text;
  for (const char *delay : {"1", "3", "4", "5"}) {
    std::string line = node;
    text += line.replace(line.find("> 1 <") + 2, 1, delay);
  }
  const Network network = readNetworkText(changed(node, text));
  ASSERT_EQ(network.warnings.size(), 1U);
  EXPECT_THAT(network.warnings[0].text,
              HasSubstr("is 3 here and was 1 in line " + std::to_string(lineOf(node)) +
                        " (period 2); 2 more such lines, the last is line " +
                        std::to_string(lineOf(node) + 3) + " with 5; the later line"));
}

TEST(NetworkReader, AnAmountGivenTwiceIsTold) {
  const std::string line =
      "addattach <node> \"G_A_30.000\" <commodity> \"DemandWidth30\" <in> True";
  const Network network = readNetworkText(changed(
      line,
      "addnode <type> \"StorageDemand\" <name> \"G_A_30.000\" <undercost> 50000 <storagemax> 0 "
      "<demandamount> 9 <period> \"1\"\n" +
          line));
  EXPECT_EQ(nodeOf(network, "G_A_30.000").amount[0].value, 9);
  ASSERT_EQ(network.warnings.size(), 1U);
  EXPECT_THAT(network.warnings[0].text, HasSubstr("is for 9 rolls here and was for 5"));
}

TEST(NetworkReader, ARecipeDeclaredAgainMustBeTheSame) {
  const std::string text = kDelayFile;
  const std::size_t begin = text.find("addnode <type> \"Process\" <name> \"G_Pattern_1_C_100\"");
  const std::size_t end = text.find("addarc", begin);
  const std::string pattern = text.substr(begin, end - begin);
  std::string twice = text;
  twice.insert(end, pattern);
  EXPECT_EQ(refusalOf(twice).text, "");
  EXPECT_EQ(nodeOf(readNetworkText(twice), "G_Pattern_1_C_100").attachments[1].quantity, 1);
  std::string other = pattern;
  other.replace(other.find("<quantity> 1\n"), 13, "<quantity> 2\n");
  std::string two = text;
  two.insert(end, other);
  EXPECT_THAT(refusalOf(two).text, HasSubstr("has another recipe than in line"));
}

TEST(NetworkReader, YieldsOfOneWidthAddUp) {
  const std::string line =
      "addattach <node> \"G_Pattern_0_C_100\" <commodity> \"DemandWidth30\" <in> False <quantity> "
      "2\n";
  const Network network = readNetworkText(changed(line, line + line));
  EXPECT_EQ(nodeOf(network, "G_Pattern_0_C_100").attachments[1].quantity, 4);
}

TEST(NetworkReader, APatternWithoutWidthsIsTold) {
  const std::string line =
      "addattach <node> \"G_Pattern_0_C_100\" <commodity> \"DemandWidth30\" <in> False <quantity> "
      "2\n";
  const std::string none =
      "addattach <node> \"G_Pattern_0_C_100\" <commodity> \"DemandWidth0\" <in> False <quantity> "
      "0\n";
  const Network network = readNetworkText(changed(line, line + none));
  ASSERT_EQ(network.warnings.size(), 1U);
  EXPECT_EQ(network.warnings[0].kind, "no-widths");
}

TEST(NetworkReader, ACostWithoutAMeaningIsRefused) {
  EXPECT_THAT(refusalOf(changed("<to> \"G_C_100\" <flow> 0 <fixed> False <opportunity> 0 <cost> 0",
                                "<to> \"G_C_100\" <flow> 0 <fixed> False <opportunity> 0 <cost> 3"))
                  .text,
              HasSubstr("a cost where none has a meaning"));
}

TEST(NetworkReader, AFileGivesWhatItsTextGives) {
  QTemporaryDir folder;
  const QString path = folder.filePath("CV.imp");
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(kDelayFile);
  file.close();
  const Network network = readNetworkFile(path.toStdString());
  EXPECT_EQ(network.nodes.size(), readNetworkText(kDelayFile).nodes.size());
  EXPECT_EQ(network.lines, readNetworkText(kDelayFile).lines);
  EXPECT_THROW(readNetworkFile(folder.path().toStdString()), Refused);
  EXPECT_THROW(readNetworkFile(path.toStdString() + ".none"), Refused);
}

// Longer than a block of the reader, with lines across its bounds.
TEST(NetworkReader, AFileOfManyBlocksIsReadLineByLine) {
  const std::string line =
      "addattach <node> \"G_A_30.000\" <commodity> \"DemandWidth30\" <in> True\n";
  std::string many;
  for (int count = 0; count < 40000; ++count) {
    many += line;
  }
  QTemporaryDir folder;
  const QString path = folder.filePath("CV.imp");
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(changed(line, many).c_str());
  file.close();
  EXPECT_EQ(readNetworkFile(path.toStdString()).lines, readNetworkText(kDelayFile).lines + 39999);
}

}  // namespace
}  // namespace corvane::network
