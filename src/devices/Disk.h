#pragma once

#include "devices/CStorageApiBase.h"
#include "tree/Leaf.h"

namespace Storage {

class CDisk : public Leaf<CDisk, CStorageApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.available = has<Feature::SDCARD>,
                                     .empty = status::kCommandNotFound,
                                     .takes = SelectorNumber{.low = 1, .high = 1}};
  class CStatus;
  class CInitialize;
  class CErecmode;
  class CSize;
  class CCheck;
  class CRec;
  class CErrcode;
  class CMount;
};

class CDisk::CStatus : public CStorageApiBase {
 public:
  using CStorageApiBase::CStorageApiBase;
};

class CDisk::CInitialize : public CStorageApiBase {
 public:
  using CStorageApiBase::CStorageApiBase;
};

class CDisk::CErecmode : public CStorageApiBase {
 public:
  using CStorageApiBase::CStorageApiBase;
};

class CDisk::CSize : public CStorageApiBase {
 public:
  using CStorageApiBase::CStorageApiBase;
};

class CDisk::CCheck : public CStorageApiBase {
 public:
  using CStorageApiBase::CStorageApiBase;
};

class CDisk::CRec : public CStorageApiBase {
 public:
  using CStorageApiBase::CStorageApiBase;
};

class CDisk::CErrcode : public CStorageApiBase {
 public:
  using CStorageApiBase::CStorageApiBase;
};

class CDisk::CMount : public CStorageApiBase {
 public:
  using CStorageApiBase::CStorageApiBase;
};

}  // namespace Storage
