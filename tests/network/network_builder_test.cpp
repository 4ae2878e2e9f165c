#include "network/network_builder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include "import_checker/good_files.h"
#include "network/told.h"

namespace corvane::network {
namespace {

struct Reading {
  std::vector<Told> faults;
  Network network;
};

Reading readOn(const std::string &text) {
  Reading reading;
  NetworkBuilder builder(
      [&](const Refused &refused) { reading.faults.push_back(toldOf(refused)); });
  std::size_t begin = 0;
  for (std::size_t end = text.find('\n'); end != std::string::npos; end = text.find('\n', begin)) {
    builder.take(std::string_view(text).substr(begin, end - begin));
    begin = end + 1;
  }
  if (begin < text.size()) {
    builder.takeCutLine();
  }
  reading.network = builder.finish(text.size());
  return reading;
}

void expectSound(const Network &network) {
  const std::size_t periods = network.periodCount();
  EXPECT_EQ(network.arcData.size(), network.arcs.size() * periods);
  for (const Arc &arc : network.arcs) {
    ASSERT_LT(arc.from, network.nodes.size());
    ASSERT_LT(arc.to, network.nodes.size());
    ASSERT_LT(arc.commodity, network.commodities.size());
  }
  for (const Node &node : network.nodes) {
    for (const Series *series :
         {&node.days, &node.storageMax, &node.undercost, &node.amount, &node.delay}) {
      EXPECT_TRUE(series->empty() || series->size() == periods);
    }
  }
}

// Lines lost, doubled, swapped, cut and with a character changed.
std::string damaged(std::string text, std::mt19937 &random) {
  const auto below = [&](std::size_t bound) {
    return std::uniform_int_distribution<std::size_t>(0, bound - 1)(random);
  };
  for (std::size_t times = 1 + below(4); times > 0 && !text.empty(); --times) {
    const std::size_t at = below(text.size());
    const std::size_t begin = at == 0 ? 0 : text.rfind('\n', at - 1) + 1;
    const std::size_t end = std::min(text.find('\n', at), text.size() - 1) + 1;
    const std::string line = text.substr(begin, end - begin);
    switch (below(6)) {
      case 0:
        text.erase(begin, end - begin);
        break;
      case 1:
        text.insert(below(2) == 0 ? begin : text.size(), line);
        break;
      case 2:
        text[at] = "\n\r\" 0-9xA<>"[below(11)];
        break;
      case 3:
        text.erase(at, 1);
        break;
      case 4:
        text.resize(at);
        break;
      default:
        text += line;
    }
  }
  return text;
}

TEST(NetworkBuilder, WithoutAHandlerTheFirstFaultIsThrown) {
  NetworkBuilder builder;
  EXPECT_THROW(builder.take("nonsense"), Refused);
}

TEST(NetworkBuilder, ReadingOnTellsFirstWhatOtherwiseIsThrownAndStaysSound) {
  std::mt19937 random(20);
  int several = 0;
  for (int i = 0; i < 600; ++i) {
    const std::string text =
        damaged(i % 2 == 0 ? import_checker::kDelayFile : import_checker::kBatchFile, random);
    SCOPED_TRACE(text);
    const Reading reading = readOn(text);
    EXPECT_EQ(reading.faults.empty() ? Told() : reading.faults.front(), refusalOf(text));
    several += reading.faults.size() > 1 ? 1 : 0;
    expectSound(reading.network);
  }
  EXPECT_GT(several, 100);
}

TEST(NetworkBuilder, AnArcThatIsRefusedDoesNotCountAsThere) {
  std::string text = import_checker::kDelayFile;
  const std::string taking = "addattach <node> \"G_Waste\" <commodity> \"Waste\" <in> True\n";
  text.erase(text.find(taking), taking.size());
  const Reading reading = readOn(text);
  EXPECT_EQ(reading.faults.size(), 4U);  // two patterns in two periods
  expectSound(reading.network);
}

TEST(NetworkBuilder, TwoRecipesOfOneNameAreToldOnce) {
  std::string text = import_checker::kDelayFile;
  const std::string name = "G_Pattern_1_C_100";
  for (std::size_t at = text.find(name); at != std::string::npos; at = text.find(name)) {
    text.replace(at, name.size(), "G_Pattern_0_C_100");
  }
  const Reading reading = readOn(text);
  EXPECT_EQ(std::count_if(reading.faults.begin(), reading.faults.end(),
                          [](const Told &told) {
                            return told.text.find("another recipe") != std::string::npos;
                          }),
            1);
}

}  // namespace
}  // namespace corvane::network
