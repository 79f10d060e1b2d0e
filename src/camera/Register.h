#pragma once

#include <cstdint>
#include <string>

#include "camera/CCameraApiBase.h"

/** The DSP as it stands: the registers of its devices, and its frames. */
namespace Camera {

template <dsp::Field field>
int32_t toRegister(Request& request) {
  return cameraDsp().writeRegister(field, request.number);
}
template <dsp::Field field>
int32_t fromRegister(const Request& /*request*/, std::string& text) {
  uint32_t value = 0;
  const int32_t result = cameraDsp().readRegister(field, value);
  text = std::to_string(value);
  return result;
}

/** The rule of one of the three frames through which a register is reached. */
template <dsp::Field field>
constexpr Rule registerRule() {
  return {
      .accepts = Number{.low = 0, .high = (1 << 8 * field.width) - 1},
      .act = toRegister<field>,
      .fetch = fromRegister<field>,
  };
}

struct CInternal : CCameraApiBase {
  struct CData;
  struct CDeviceid;
  struct CAddress;
};

struct CInternal::CData : CCameraApiBase {
  static constexpr Rule rule = registerRule<dsp::frame::kRegisterData>();
};

struct CInternal::CDeviceid : CCameraApiBase {
  static constexpr Rule rule = registerRule<dsp::frame::kDeviceId>();
};

struct CInternal::CAddress : CCameraApiBase {
  static constexpr Rule rule = registerRule<dsp::frame::kRegisterAddress>();
};

/** A frame as hexadecimal digits. Read and write are the same exchange, and are answered by the whole frame. */
struct CRawFrame : CCameraApiBase {
  using Exchange = int32_t (CameraDSP::*)(const std::string& digits, std::string& frame);
  explicit CRawFrame(Exchange exchange) : m_exchange(exchange) {}
  int32_t execRead(ExecArgs* args) override;
  int32_t execWrite(ExecArgs* args) override { return execRead(args); }

 private:
  Exchange m_exchange;
};

/** "AA": reads the frame of that address. */
struct CScpGet : CRawFrame {
  CScpGet() : CRawFrame(&CameraDSP::getVaData) {}
};

/** Sends up to twelve bytes. */
struct CScpSet : CRawFrame {
  CScpSet() : CRawFrame(&CameraDSP::setVaData) {}
};

}  // namespace Camera
