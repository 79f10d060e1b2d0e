#include "dsp/CameraDspInstance.h"

#include <cassert>

namespace {

CameraDSP* instance = nullptr;

}  // namespace

CameraDSP& cameraDsp() {
  assert(instance != nullptr);  // clients are served when the whole tree stands
  return *instance;
}

CameraDspInstance::CameraDspInstance(CameraDSP& dsp) {
  assert(instance == nullptr);
  instance = &dsp;
}

CameraDspInstance::~CameraDspInstance() { instance = nullptr; }
