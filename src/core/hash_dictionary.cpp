#include "core/hash_dictionary.h"

#include "core/pooled_allocation.h"
#include "core/zem_mem_mgr_factory.h"

namespace {

constexpr quint32 kAssociationsPerChunk = 256;

ZemMemMgr *associationPool = nullptr;
bool creatingAssociationPool = false;

bool associationsArePooled() {
  return zemPooledAllocation != 0 && zemPooledAssociations != 0;
}

// Null while the pool is being made: making it enters it in the registry, which is a dictionary and
// asks for an entry in turn.
ZemMemMgr *poolOfAssociations(quint32 size) {
  if (associationPool == nullptr && !creatingAssociationPool) {
    creatingAssociationPool = true;
    associationPool =
        ZemMemMgrFactory::instance().create(size, "hashDictionaryAssoc", kAssociationsPerChunk);
    creatingAssociationPool = false;
  }
  return associationPool;
}

bool isOddPrime(quint32 candidate) {
  if (candidate % 3 == 0) {
    return false;
  }
  for (quint64 divisor = 3; divisor * divisor <= candidate; divisor += 2) {
    if (candidate % divisor == 0) {
      return false;
    }
  }
  return true;
}

}  // namespace

hashDictionaryBase::hashDictionaryBase(quint32 requestedBuckets, bool flag)
    : buckets_(bucketCountFor(requestedBuckets), nullptr), flag_(flag) {}

quint32 hashDictionaryBase::bucketCountFor(quint32 requestedBuckets) {
  quint32 candidate = requestedBuckets | 1U;
  while (!isOddPrime(candidate)) {
    candidate += 2;
  }
  return candidate;
}

void hashDictionaryBase::addAtHead(void *key, void *value, quint32 hash) {
  Association *entry = allocateAssociation();
  Association *&head = bucketOf(hash);
  *entry = {key, value, head, hash};
  head = entry;
  ++count_;
}

hashDictionaryBase::Association *hashDictionaryBase::allocateAssociation() {
  static_assert(sizeof(Association) == 32);
  ZemMemMgr *pool = associationsArePooled() ? poolOfAssociations(sizeof(Association)) : nullptr;
  void *memory = pool != nullptr ? pool->allocate() : heapAllocate(sizeof(Association));
  return static_cast<Association *>(memory);
}

void hashDictionaryBase::releaseAssociation(Association *association) {
  if (associationsArePooled() && associationPool != nullptr) {
    associationPool->freeFast(association);
  } else {
    heapFree(association);
  }
}
