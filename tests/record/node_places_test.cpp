#include "record/node_places.h"

#include <gtest/gtest.h>

#include <sstream>

namespace corvane::record {
namespace {

TEST(NodePlaces, AreThoseOfANodesFirstLineThatHasThem) {
  std::istringstream file(
      "addnode <type> \"Machine\" <name> \"M_AF1\" <period> \"1\"\n"
      "addnode <type> \"Machine\" <name> \"M_AF1\" <x> 10 <y> 210 <period> \"1\" <fixed> False\n"
      "addnode <type> \"Machine\" <name> \"M_AF1\" <x> 11 <y> 211 <period> \"2\" <fixed> False\n"
      "addnode <type> \"Batch\" <name> \"B 1\" <singlePeriodSetups> True <x> 420 <y> -5 <flow> 0\n"
      "addnode <type> \"Process\" <name> \"a <x> 7 <y> 8\" <period> \"1\"\n"
      "addnode <type> \"Process\" <name> \"cut");
  const QHash<QByteArray, QPoint> places = nodePlaces(file);
  EXPECT_EQ(places.size(), 2);
  EXPECT_EQ(places.value("M_AF1"), QPoint(10, 210));
  EXPECT_EQ(places.value("B 1"), QPoint(420, -5));
}

}  // namespace
}  // namespace corvane::record
