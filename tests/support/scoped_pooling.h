#pragma once

#include "core/zem_mem_mgr.h"

namespace corvane::support {

// Sets the switches of pooled allocation and restores them. Containers that are filled inside must
// also be destroyed inside.
class ScopedPooling {
 public:
  explicit ScopedPooling(bool records, bool associations = false)
      : records_(zemPooledAllocation), associations_(zemPooledAssociations) {
    zemPooledAllocation = records ? 1 : 0;
    zemPooledAssociations = associations ? 1 : 0;
  }
  ScopedPooling(const ScopedPooling &) = delete;
  ScopedPooling &operator=(const ScopedPooling &) = delete;
  ~ScopedPooling() {
    zemPooledAllocation = records_;
    zemPooledAssociations = associations_;
  }

 private:
  qint32 records_;
  qint32 associations_;
};

}  // namespace corvane::support
