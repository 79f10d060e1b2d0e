#include "dsp/CameraDspInstance.h"

#include <cassert>

namespace {

CameraDSP* instance = nullptr;

}  // namespace

CameraDSP* getCameraDsp() { return instance; }

CameraDspInstance::CameraDspInstance(CameraDSP& dsp) {
  assert(instance == nullptr);
  instance = &dsp;
}

CameraDspInstance::~CameraDspInstance() { instance = nullptr; }
