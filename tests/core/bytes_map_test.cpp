#include "core/bytes_map.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <random>
#include <string>

#include "core/heap_probe.h"

namespace corvane {
namespace {

TEST(BytesMap, FindsWhatWasAddedAndNothingElse) {
  BytesMap<int> map;
  EXPECT_EQ(map.find("a"), nullptr);
  EXPECT_EQ(map.find(""), nullptr);
  EXPECT_EQ(map.add("a", 1), 1);
  EXPECT_EQ(map.add("", 2), 2);
  ASSERT_NE(map.find("a"), nullptr);
  EXPECT_EQ(*map.find("a"), 1);
  ASSERT_NE(map.find(""), nullptr);
  EXPECT_EQ(*map.find(""), 2);
  EXPECT_EQ(map.find("b"), nullptr);
  EXPECT_EQ(map.find("aa"), nullptr);
}

TEST(BytesMap, ANulIsAByteLikeAnyOther) {
  using namespace std::string_view_literals;
  BytesMap<int> map;
  map.add("a\0b"sv, 1);
  map.add("a\0c"sv, 2);
  EXPECT_EQ(map.find("a"), nullptr);
  EXPECT_EQ(*map.find("a\0b"sv), 1);
  EXPECT_EQ(*map.find("a\0c"sv), 2);
}

TEST(BytesMap, KeepsBytesOfItsOwn) {
  BytesMap<int> map;
  std::string bytes = "a key longer than any string holds in itself";
  map.add(bytes, 1);
  bytes[0] = 'b';
  EXPECT_EQ(map.find(bytes), nullptr);
  bytes[0] = 'a';
  ASSERT_NE(map.find(bytes), nullptr);
}

TEST(BytesMap, ValuesCanBeChangedInPlace) {
  BytesMap<std::unique_ptr<int>> map;
  map.add("a", nullptr);
  *map.find("a") = std::make_unique<int>(7);
  EXPECT_EQ(**map.find("a"), 7);
}

TEST(BytesMap, HoldsAsMuchAsAMap) {
  std::mt19937 random(1);
  BytesMap<int> map;
  std::map<std::string, int> expected;
  for (int at = 0; at < 20000; ++at) {
    const std::string key = std::to_string(random() % 9000);
    const int *found = map.find(key);
    const auto known = expected.find(key);
    ASSERT_EQ(found != nullptr, known != expected.end()) << key;
    if (found == nullptr) {
      map.add(key, at);
      expected.emplace(key, at);
    } else {
      ASSERT_EQ(*found, known->second) << key;
    }
  }
  for (const auto &[key, value] : expected) {
    ASSERT_NE(map.find(key), nullptr) << key;
    EXPECT_EQ(*map.find(key), value);
  }
}

// Into an empty map, and where the cells have to grow first.
TEST(BytesMap, AddingWithoutMemoryThrowsAndChangesNothing) {
  const std::string key = "a key longer than any string holds in itself";
  for (const int before : {0, 8}) {
    int failed = 0;
    for (bool added = false; !added; ++failed) {
      BytesMap<int> map;
      for (int at = 0; at < before; ++at) {
        map.add(std::to_string(at), at);
      }
      support::HeapProbe probe;
      probe.failRequest(failed + 1);
      try {
        map.add(key, 100);
        added = true;
      } catch (const std::bad_alloc &) {
        EXPECT_EQ(map.find(key), nullptr);
        map.add(key, 100);
      }
      for (int at = 0; at < before; ++at) {
        ASSERT_NE(map.find(std::to_string(at)), nullptr);
        EXPECT_EQ(*map.find(std::to_string(at)), at);
      }
      ASSERT_NE(map.find(key), nullptr);
      EXPECT_EQ(*map.find(key), 100);
    }
    EXPECT_GE(failed, before == 0 ? 3 : 4);
  }
}

}  // namespace
}  // namespace corvane
