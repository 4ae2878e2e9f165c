#include "core/zem_mem_mgr_factory.h"

#include <iostream>
#include <memory>

namespace corvane {

namespace {

constexpr quint32 kRequestedBuckets = 19;

void reportCollision(const std::string &name, quint32 size, quint32 count, const ZemMemMgr &old) {
  std::cout << "ZemMemMgrFactory::create - hash key collision between " << name << "(" << size
            << "," << count << ") and" << old.name() << "(" << old.blockSize() << ","
            << old.blocksPerChunk() << "). Adjusting... " << std::endl;
}

}  // namespace

ZemMemMgrFactory::ZemMemMgrFactory(bool sharing)
    : hashDictionary(kRequestedBuckets, true), sharing_(sharing) {}

ZemMemMgrFactory::~ZemMemMgrFactory() {
  clear();
}

ZemMemMgrFactory &ZemMemMgrFactory::instance() {
  static auto *factory = new ZemMemMgrFactory;
  return *factory;
}

bool ZemMemMgrFactory::keysEqual(const ZemMemMgrKey &a, const ZemMemMgrKey &b) const {
  return a == b;
}

void ZemMemMgrFactory::deleteKey(ZemMemMgrKey *key) {
  delete key;
}

void ZemMemMgrFactory::deleteValue(ZemMemMgr *value) {
  delete value;
}

ZemMemMgr *ZemMemMgrFactory::create(quint32 blockSize, const std::string &name,
                                    quint32 requestedCount) {
  // Made first: it may have the geometry that is asked for, and is then shared.
  prepareAssociations();
  if (!sharing_) {
    return enter({static_cast<quint32>(count()) + 1U}, blockSize, name, requestedCount);
  }
  const quint32 size = (blockSize + 3U) & ~3U;
  const ZemMemGeometry geometry = ZemMemGeometry::of(size, requestedCount);
  ZemMemMgrKey key{geometry.chunkSize * geometry.blocksPerChunk + size};
  while (ZemMemMgr *pool = lookup(key)) {
    if (pool->blockSize() == size) {
      pool->extendName(name);
      return pool;
    }
    reportCollision(name, size, requestedCount, *pool);
    key.value += geometry.chunkSize;
  }
  return enter(key, blockSize, name, requestedCount);
}

ZemMemMgr *ZemMemMgrFactory::enter(ZemMemMgrKey key, quint32 blockSize, const std::string &name,
                                   quint32 requestedCount) {
  auto ownedKey = std::make_unique<ZemMemMgrKey>(key);
  auto pool = std::make_unique<ZemMemMgr>(blockSize, name, requestedCount);
  insert(ownedKey.get(), pool.get());
  // The dictionary owns both now.
  (void)ownedKey.release();
  return pool.release();  // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks)
}

}  // namespace corvane
