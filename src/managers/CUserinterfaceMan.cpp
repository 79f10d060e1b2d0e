#include "managers/CUserinterfaceMan.h"

#include "devices/UserinterfaceEncode.h"

int32_t CUserinterfaceMan::init() {
  add<Userinterface::CEncode>("encode");
  add<Userinterface::CEncode::CCbrMode>("encode.cbr_mode", "RWRWR-");
  return 0;
}
