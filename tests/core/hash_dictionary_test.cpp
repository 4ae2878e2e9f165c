#include "core/hash_dictionary.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <random>
#include <set>

#include "core/zem_mem_mgr_factory.h"
#include "support/heap_probe.h"
#include "support/scoped_pooling.h"
#include "support/stream_capture.h"

namespace corvane {
namespace {

using support::HeapProbe;
using support::ScopedPooling;
using testing::ElementsAre;
using testing::IsEmpty;

struct Key {
  quint32 value;
  quint32 hash;
  bool operator==(const Key &other) const { return value == other.value; }
};

struct KeyHash {
  quint32 operator()(const Key &key) const { return key.hash; }
};

// A dictionary whose chains can be seen, and which tells what it deletes.
class OpenDictionary : public hashDictionary<Key, int, KeyHash> {
 public:
  explicit OpenDictionary(quint32 requestedBuckets, bool flag = false)
      : hashDictionary(requestedBuckets, flag) {}
  ~OpenDictionary() override { clear(); }

  void deleteKey(Key *key) override {
    deleted.push_back("key " + std::to_string(key->value));
    hashDictionary::deleteKey(key);
  }
  void deleteValue(int *value) override {
    deleted.push_back("value " + std::to_string(*value));
    hashDictionary::deleteValue(value);
  }

  bool add(quint32 key, quint32 hash, int value) {
    auto ownedKey = std::make_unique<Key>(Key{key, hash});
    auto ownedValue = std::make_unique<int>(value);
    if (!insert(ownedKey.get(), ownedValue.get())) {
      return false;
    }
    (void)ownedKey.release();
    (void)ownedValue.release();
    return true;
  }
  int valueOf(quint32 key, quint32 hash) {
    const int *value = lookup(Key{key, hash});
    return value == nullptr ? -1 : *value;
  }
  std::vector<quint32> chain(std::size_t bucket) {
    std::vector<quint32> keys;
    for (const Association *entry = buckets()[bucket]; entry != nullptr; entry = entry->next) {
      keys.push_back(static_cast<const Key *>(entry->key)->value);
    }
    return keys;
  }

  std::vector<std::string> deleted;
};

TEST(HashDictionary, TheBucketCountIsTheSmallestOddPrimeNotBelowTheRequest) {
  const std::map<quint32, quint32> expected = {
      {4, 5},     {5, 5},       {6, 7},         {8, 11},           {12, 13},
      {18, 19},   {19, 19},     {20, 23},       {24, 29},          {25, 29},
      {48, 53},   {49, 53},     {100, 101},     {118, 127},        {120, 127},
      {121, 127}, {1000, 1009}, {65536, 65537}, {1000000, 1000003}};
  for (const auto &[requested, buckets] : expected) {
    EXPECT_EQ(hashDictionaryBase::bucketCountFor(requested), buckets) << requested;
  }
}

TEST(HashDictionary, EveryBucketCountFrom5OnIsThePrimeThatASieveFinds) {
  constexpr quint32 kLimit = 20000;
  std::vector<bool> composite(kLimit, false);
  for (quint32 factor = 2; factor * factor < kLimit; ++factor) {
    for (quint32 multiple = factor * factor; multiple < kLimit; multiple += factor) {
      composite[multiple] = true;
    }
  }
  for (quint32 requested = 5; requested < kLimit - 200; ++requested) {
    quint32 prime = requested;
    while (composite[prime]) {
      ++prime;
    }
    ASSERT_EQ(hashDictionaryBase::bucketCountFor(requested), prime);
  }
}

TEST(HashDictionary, TheSmallestRequestsFollowTheRuleToo) {
  // 0 is raised to 1, which no divisor rules out; 3 is divisible by 3 and skipped.
  EXPECT_EQ(hashDictionaryBase::bucketCountFor(0), 1U);
  EXPECT_EQ(hashDictionaryBase::bucketCountFor(1), 1U);
  EXPECT_EQ(hashDictionaryBase::bucketCountFor(2), 5U);
  EXPECT_EQ(hashDictionaryBase::bucketCountFor(3), 5U);
}

TEST(HashDictionary, StartsEmptyWithItsBucketsAndFlag) {
  OpenDictionary dictionary(19, true);
  EXPECT_EQ(dictionary.count(), 0);
  EXPECT_EQ(dictionary.bucketCount(), 19U);
  EXPECT_TRUE(dictionary.flag());
  EXPECT_FALSE(OpenDictionary(19).flag());
  EXPECT_EQ(dictionary.valueOf(1, 1), -1);
}

TEST(HashDictionary, AnInsertGoesToTheHeadOfTheChainOfItsHash) {
  OpenDictionary dictionary(5);
  EXPECT_TRUE(dictionary.add(1, 7, 10));
  EXPECT_TRUE(dictionary.add(2, 2, 20));
  EXPECT_TRUE(dictionary.add(3, 12, 30));
  EXPECT_EQ(dictionary.count(), 3);
  EXPECT_THAT(dictionary.chain(2), ElementsAre(3, 2, 1));
  EXPECT_THAT(dictionary.chain(0), IsEmpty());
}

TEST(HashDictionary, AnEqualKeyIsRefusedAndNothingChanges) {
  OpenDictionary dictionary(5);
  dictionary.add(1, 7, 10);
  EXPECT_FALSE(dictionary.add(1, 7, 99));
  EXPECT_EQ(dictionary.count(), 1);
  EXPECT_EQ(dictionary.valueOf(1, 7), 10);
  EXPECT_THAT(dictionary.deleted, IsEmpty());
}

TEST(HashDictionary, ARefusedKeyLeavesTheOrderOfItsChain) {
  OpenDictionary dictionary(5);
  dictionary.add(1, 2, 10);
  dictionary.add(2, 2, 20);
  EXPECT_FALSE(dictionary.add(1, 2, 99));
  EXPECT_THAT(dictionary.chain(2), ElementsAre(2, 1));
}

TEST(HashDictionary, KeysOfOneHashAreToldApart) {
  OpenDictionary dictionary(5);
  EXPECT_TRUE(dictionary.add(1, 2, 10));
  EXPECT_TRUE(dictionary.add(2, 2, 20));
  EXPECT_EQ(dictionary.valueOf(1, 2), 10);
  EXPECT_EQ(dictionary.valueOf(2, 2), 20);
}

TEST(HashDictionary, AFoundEntryMovesToTheHeadOfItsChain) {
  OpenDictionary dictionary(5);
  for (quint32 key = 1; key <= 4; ++key) {
    dictionary.add(key, 2, static_cast<int>(key) * 10);
  }
  ASSERT_THAT(dictionary.chain(2), ElementsAre(4, 3, 2, 1));
  EXPECT_EQ(dictionary.valueOf(2, 2), 20);
  EXPECT_THAT(dictionary.chain(2), ElementsAre(2, 4, 3, 1));
  EXPECT_EQ(dictionary.valueOf(1, 2), 10);
  EXPECT_THAT(dictionary.chain(2), ElementsAre(1, 2, 4, 3));
  EXPECT_EQ(dictionary.valueOf(1, 2), 10);
  EXPECT_THAT(dictionary.chain(2), ElementsAre(1, 2, 4, 3));
}

TEST(HashDictionary, AMissLeavesTheChainAsItIs) {
  OpenDictionary dictionary(5);
  dictionary.add(1, 2, 10);
  dictionary.add(2, 2, 20);
  EXPECT_EQ(dictionary.valueOf(3, 2), -1);
  EXPECT_EQ(dictionary.valueOf(3, 7), -1);
  EXPECT_THAT(dictionary.chain(2), ElementsAre(2, 1));
}

TEST(HashDictionary, TheStoredHashIsComparedBeforeTheKey) {
  OpenDictionary dictionary(5);
  dictionary.add(1, 2, 10);
  EXPECT_EQ(dictionary.valueOf(1, 7), -1);  // same key and bucket, another hash
}

TEST(HashDictionary, ClearDeletesKeysAndValuesAndForgetsThem) {
  OpenDictionary dictionary(5);
  dictionary.add(1, 1, 10);
  dictionary.add(2, 2, 20);
  dictionary.clear();
  EXPECT_THAT(dictionary.deleted, ElementsAre("key 1", "value 10", "key 2", "value 20"));
  EXPECT_EQ(dictionary.count(), 0);
  EXPECT_EQ(dictionary.valueOf(1, 1), -1);
  EXPECT_TRUE(dictionary.add(1, 1, 11));
  EXPECT_EQ(dictionary.count(), 1);
}

TEST(HashDictionary, DestroyingDeletesWhatItHolds) {
  HeapProbe probe;
  std::size_t requests = 0;
  {
    hashDictionary<Key, int, KeyHash> dictionary(5, false);
    dictionary.insert(new Key{1, 1}, new int(10));
    requests = probe.requests();
  }
  EXPECT_EQ(requests, 4U);  // buckets, key, value, entry
  EXPECT_EQ(probe.releases(), requests);
}

TEST(HashDictionary, AnEntryIsABlockOf32Bytes) {
  OpenDictionary dictionary(5);
  auto *key = new Key{1, 1};
  auto *value = new int(10);
  const HeapProbe probe;
  dictionary.insert(key, value);
  EXPECT_EQ(probe.requestsOf(32), 1U);
  EXPECT_EQ(probe.requests(), 1U);
}

TEST(HashDictionary, WithoutMemoryForTheEntryNothingIsTakenOver) {
  OpenDictionary dictionary(5);
  Key key{1, 1};
  int value = 10;
  {
    HeapProbe probe;
    probe.failRequest(1);
    EXPECT_THROW(dictionary.insert(&key, &value), std::bad_alloc);
  }
  EXPECT_EQ(dictionary.count(), 0);
  EXPECT_THAT(dictionary.chain(1), IsEmpty());
}

ZemMemMgr *associationPool() {
  // 32 x 256 + 56 = 8248 is nearest to 8192: 254 blocks a chunk.
  return ZemMemMgrFactory::instance().lookup({8188U * 254U + 32U});
}

TEST(HashDictionary, WithBothSwitchesOnEntriesComeFromTheirPool) {
  const ScopedPooling pooling(true, true);
  OpenDictionary dictionary(5);
  dictionary.add(1, 1, 10);
  const ZemMemMgr *pool = associationPool();
  ASSERT_NE(pool, nullptr);
  EXPECT_THAT(pool->name(), testing::HasSubstr("hashDictionaryAssoc"));
  EXPECT_EQ(pool->blockSize(), 32U);
  EXPECT_EQ(pool->blocksPerChunk(), 254U);
  const quint32 used = pool->usedBlocks();
  dictionary.add(2, 2, 20);
  EXPECT_EQ(pool->usedBlocks(), used + 1);
  dictionary.clear();
  EXPECT_EQ(pool->usedBlocks(), used - 1);
}

TEST(HashDictionary, AllDictionariesShareThePoolOfTheEntries) {
  const ScopedPooling pooling(true, true);
  OpenDictionary first(5);
  OpenDictionary second(5);
  first.add(1, 1, 10);
  const quint32 used = associationPool()->usedBlocks();
  second.add(1, 1, 10);
  EXPECT_EQ(associationPool()->usedBlocks(), used + 1);
}

TEST(HashDictionary, WithOneSwitchOnEntriesComeFromThePlainHeap) {
  for (const bool records : {false, true}) {
    const ScopedPooling pooling(records, !records);
    OpenDictionary dictionary(5);
    auto *key = new Key{1, 1};
    auto *value = new int(10);
    const HeapProbe probe;
    dictionary.insert(key, value);
    EXPECT_EQ(probe.requestsOf(32), 1U);
  }
}

TEST(HashDictionary, ThePoolOfTheEntriesIsSharedWithARequestForItsOwnGeometry) {
  const support::StreamCapture out(std::cout);
  const ScopedPooling pooling(true, true);
  ZemMemMgr *asked = ZemMemMgrFactory::instance().create(32, "mine", 256);
  OpenDictionary dictionary(5);
  dictionary.add(1, 1, 10);
  EXPECT_EQ(asked, associationPool());
  EXPECT_THAT(asked->name(), testing::HasSubstr("hashDictionaryAssoc"));
  EXPECT_THAT(asked->name(), testing::HasSubstr("mine"));
  EXPECT_EQ(out.text(), "");
}

TEST(HashDictionary, RandomOperationsAgreeWithAMap) {
  for (const bool pooled : {false, true}) {
    const ScopedPooling pooling(pooled, pooled);
    std::mt19937 random(3);
    OpenDictionary dictionary(11);
    std::map<quint32, int> reference;
    for (int step = 0; step < 20000; ++step) {
      const auto key = static_cast<quint32>(random() % 200);
      const quint32 hash = key % 37;
      if (random() % 500 == 0) {
        dictionary.clear();
        reference.clear();
      } else if (random() % 2 == 0) {
        ASSERT_EQ(dictionary.add(key, hash, step), reference.emplace(key, step).second);
      } else {
        const auto known = reference.find(key);
        ASSERT_EQ(dictionary.valueOf(key, hash), known == reference.end() ? -1 : known->second);
      }
      ASSERT_EQ(dictionary.count(), static_cast<qint32>(reference.size()));
    }
  }
}

}  // namespace
}  // namespace corvane
