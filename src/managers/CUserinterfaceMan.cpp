#include "managers/CUserinterfaceMan.h"

#include "devices/UserinterfaceEncode.h"

void CUserinterfaceMan::build() {
  add<Userinterface::CEncode>("encode");
  add<Userinterface::CEncode::CCbrMode>("encode.cbr_mode", "RWRWR-");
}
