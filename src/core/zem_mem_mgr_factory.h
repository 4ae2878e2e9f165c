#pragma once

#include <QtGlobal>
#include <string>

#include "core/hash_dictionary.h"
#include "core/zem_mem_mgr.h"

namespace corvane {

// Identifies the geometry of a pool: chunk size x blocks per chunk + block size, 32 bits wide, and
// further on where two geometries collide.
struct ZemMemMgrKey {
  quint32 value = 0;
  bool operator==(const ZemMemMgrKey &) const = default;
};

// A key is its own hash value.
template <typename K>
struct OrbHash {
  quint32 operator()(const K &key) const { return key.value; }
};

// The registry of pools: pools of one geometry are shared, so that small objects of one size come
// from the same chunks whoever asks for them. It owns its pools.
class ZemMemMgrFactory : public hashDictionary<ZemMemMgrKey, ZemMemMgr, OrbHash<ZemMemMgrKey>> {
 public:
  explicit ZemMemMgrFactory(bool sharing = true);
  ZemMemMgrFactory(const ZemMemMgrFactory &) = delete;
  ZemMemMgrFactory &operator=(const ZemMemMgrFactory &) = delete;
  ~ZemMemMgrFactory() override;

  // The registry of the process, made at the first call with sharing on and never destroyed.
  static ZemMemMgrFactory &instance();

  bool keysEqual(const ZemMemMgrKey &a, const ZemMemMgrKey &b) const override;
  void deleteKey(ZemMemMgrKey *key) override;
  void deleteValue(ZemMemMgr *value) override;

  // The pool for blocks of this size. With sharing on an existing pool of the same geometry is
  // answered, its name extended by the new one; a clash of keys is reported on standard output and
  // the key adjusted until it is free or its pool fits.
  ZemMemMgr *create(quint32 blockSize, const std::string &name, quint32 requestedCount);

 private:
  ZemMemMgr *enter(ZemMemMgrKey key, quint32 blockSize, const std::string &name,
                   quint32 requestedCount);

  bool sharing_;
};

}  // namespace corvane
