#pragma once

#include "devices/CStorageApiBase.h"
#include "tree/Node.h"

namespace Storage {

struct CDisk : CStorageApiBase {
  static constexpr Selector selector{.available = has<Feature::SDCARD>,
                                     .empty = status::kCommandNotFound,
                                     .takes = SelectorNumber{.low = 1, .high = 1}};
  struct CStatus;
  struct CInitialize;
  struct CErecmode;
  struct CSize;
  struct CCheck;
  struct CRec;
  struct CErrcode;
  struct CMount;
};

struct CDisk::CStatus : CStorageApiBase {};

struct CDisk::CInitialize : CStorageApiBase {};

struct CDisk::CErecmode : CStorageApiBase {};

struct CDisk::CSize : CStorageApiBase {};

struct CDisk::CCheck : CStorageApiBase {};

struct CDisk::CRec : CStorageApiBase {};

struct CDisk::CErrcode : CStorageApiBase {};

struct CDisk::CMount : CStorageApiBase {};

}  // namespace Storage
