#include "core/hash_dictionary.h"

#include <QScopedValueRollback>

#include "core/zem_mem_mgr.h"
#include "core/zem_mem_mgr_factory.h"

namespace corvane {

namespace {

constexpr quint32 kAssociationsPerChunk = 256;

ZemMemMgr *associationPool = nullptr;
bool creatingAssociationPool = false;

bool associationsArePooled() {
  return zemPooledAllocation != 0 && zemPooledAssociations != 0;
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

// While the pool is being made its own entry comes from the plain heap.
void hashDictionaryBase::prepareAssociations() {
  if (!associationsArePooled() || associationPool != nullptr || creatingAssociationPool) {
    return;
  }
  const QScopedValueRollback<bool> creating(creatingAssociationPool, true);
  associationPool = ZemMemMgrFactory::instance().create(sizeof(Association), "hashDictionaryAssoc",
                                                        kAssociationsPerChunk);
}

hashDictionaryBase::Association *hashDictionaryBase::allocateAssociation() {
  static_assert(sizeof(Association) == 32);
  prepareAssociations();
  const bool pooled = associationsArePooled() && associationPool != nullptr;
  void *memory = pooled ? associationPool->allocate() : heapAllocate(sizeof(Association));
  return static_cast<Association *>(memory);
}

void hashDictionaryBase::releaseAssociation(Association *association) {
  --count_;
  if (associationsArePooled() && associationPool != nullptr) {
    associationPool->freeFast(association);
  } else {
    heapFree(association);
  }
}

}  // namespace corvane
