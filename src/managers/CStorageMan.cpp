#include "managers/CStorageMan.h"

#include "devices/Disk.h"

void CStorageMan::build() {
  add<Storage::CDisk>("disk");
  add<Storage::CDisk::CStatus>("disk.status", "RWRWR-");
  add<Storage::CDisk::CInitialize>("disk.initialize", "RWRWR-");
  add<Storage::CDisk::CErecmode>("disk.erecmode", "RWRWR-");
  add<Storage::CDisk::CSize>("disk.size", "R-R-R-");
  add<Storage::CDisk::CCheck>("disk.check", "R-R-R-");
  add<Storage::CDisk::CRec>("disk.rec", "R-R-R-");
  add<Storage::CDisk::CErrcode>("disk.errcode", "R-R-R-");
  add<Storage::CDisk::CMount>("disk.mount", "-W-W--");
}
