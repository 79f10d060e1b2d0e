#include <algorithm>
#include <string>

#include "dsp/CameraDSP.h"
#include "platform/zr_com.h"
#include "request/Log.h"

namespace frame = dsp::frame;

int32_t CameraDSP::convAtoi(char character) const {
  if (character >= '0' && character <= '9') return character - '0';
  if (character >= 'a' && character <= 'f') return character - 'a' + 10;
  if (character >= 'A' && character <= 'F') return character - 'A' + 10;
  return -1;
}

std::string CameraDSP::convItoa(const uint8_t* bytes, size_t count) const {
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string text;
  for (size_t i = 0; i < count; ++i) {
    text += kDigits[bytes[i] >> 4];
    text += kDigits[bytes[i] & 0xF];
    TMX_LOG(LOG_DEBUG, "byte(%x) string(%s) ", bytes[i], text.c_str());
  }
  return text;
}

/** An odd last digit has no partner: the string's range error is the caller's to handle. */
int32_t CameraDSP::setVaData(const std::string& hexText, std::string& resultText) {
  dsp::Frame f{};
  for (size_t i = 0; i < f.size() && 2 * i < hexText.size(); ++i) {
    const auto high = static_cast<uint32_t>(convAtoi(hexText[2 * i]));
    const auto low = static_cast<uint32_t>(convAtoi(hexText.at(2 * i + 1)));
    f[i] = static_cast<uint8_t>(high << 4 | (low & 0xF));
  }
  TMX_LOG(LOG_DEBUG, "string senddata[%s] ", hexText.c_str());
  TMX_LOG(LOG_DEBUG, "hex senddata[%x:%x:%x:%x:%x:%x:%x:%x:%x:%x:%x:%x] ", f[0], f[1], f[2], f[3], f[4], f[5], f[6],
          f[7], f[8], f[9], f[10], f[11]);
  if (sendToCameradsp(f, true) < 0) {
    TMX_LOG(LOG_ERR, "set va error ");
    return dsp::kBadArgument;
  }
  resultText = convItoa(f.data(), f.size());
  TMX_LOG(LOG_DEBUG, "get va data (%s) ", resultText.c_str());
  return dsp::kDone;
}

int32_t CameraDSP::getVaData(const std::string& addressText, std::string& resultText) {
  if (addressText.size() != 2) return dsp::kReadFailed;
  const auto high = static_cast<uint32_t>(convAtoi(addressText[0]));
  const auto low = static_cast<uint32_t>(convAtoi(addressText[1]));
  dsp::Frame f = dsp::blankFrame(static_cast<uint8_t>(high << 4 | (low & 0xF)));
  if (recvFromCameradsp(f) < 0) {
    TMX_LOG(LOG_INFO, "get va error ");
    return dsp::kBadArgument;
  }
  resultText = convItoa(f.data(), f.size());
  TMX_LOG(LOG_DEBUG, "get va data (%s) ", resultText.c_str());
  return dsp::kDone;
}

int32_t CameraDSP::writeRegister(dsp::Field field, int32_t value) {
  if (value < 0 || value >= 1 << (8 * field.width)) {
    TMX_LOG(LOG_ERR, "register %x out of range(%ld)", field.address, long{value});
    return dsp::kOutOfRange;
  }
  m_frames.set(field, value);
  return m_send(field.address, true);
}

int32_t CameraDSP::readRegister(dsp::Field field, uint32_t& value) {
  dsp::Frame f = dsp::blankFrame(field.address);
  const int32_t result = recvFromCameradsp(f);
  if (result == dsp::kDone) value = dsp::take(f, field);
  return result;
}

int32_t CameraDSP::getSCPInformation(std::string& text) {
  text.clear();
  for (size_t i = 0; i < frame::kInformation.size(); ++i) {
    dsp::Frame f = dsp::blankFrame(frame::kInformation[i]);
    if (recvFromCameradsp(f) < 0) {
      TMX_LOG(LOG_ERR, "ID = %ld : reg = %X", static_cast<long>(i), frame::kInformation[i]);
      text.clear();
      return dsp::kReadFailed;
    }
    if (i > 0) text += '-';
    std::string hex = convItoa(f.data() + 1, f.size() - 1);
    std::ranges::transform(hex, hex.begin(), [](char c) { return c >= 'A' ? static_cast<char>(c - 'A' + 'a') : c; });
    text += hex;
  }
  return dsp::kDone;
}

/** Asks which sensor board is fitted: its id, or -1. */
int32_t CameraDSP::m_probeDevice() {
  constexpr int32_t kProbedDevice = 1;
  constexpr int32_t kProbedAddress = 0x20;
  dsp::Frame f = dsp::blankFrame(frame::kDeviceId.address);
  dsp::put(f, frame::kDeviceId, kProbedDevice);
  if (sendToCameradsp(f, true) < 0) {
    TMX_LOG(LOG_INFO, "set device id is failed");
    return dsp::kBadArgument;
  }
  f = dsp::blankFrame(frame::kRegisterAddress.address);
  dsp::put(f, frame::kRegisterAddress, kProbedAddress);
  if (sendToCameradsp(f, true) < 0) {
    TMX_LOG(LOG_INFO, "set device address is failed");
    return dsp::kBadArgument;
  }
  f = dsp::blankFrame(frame::kRegisterData.address);
  if (recvFromCameradsp(f) < 0) {
    TMX_LOG(LOG_INFO, "get device data is failed");
    return dsp::kBadArgument;
  }
  return f[3];
}

namespace {

/** The DSP's character generator has its own order of the two-byte characters: one pair of bytes into that order. */
uint32_t generatorCode(uint32_t lead, uint32_t trail) {
  const bool isEven = lead % 2 == 0;
  uint32_t code = lead << 8 | trail;
  code -= isEven ? 8194 + (lead - 160) * 128 : 8033 + (lead - 159) * 128;
  if (!isEven && trail >= 0xE0) ++code;
  if (lead >= 223) code += 16384;
  return code;
}

}  // namespace

int32_t CameraDSP::setId(const std::string& text) {
  constexpr size_t kShown = 40;
  std::string id = text.substr(0, kShown);
  for (size_t i = 0; i + 1 < id.size(); ++i) {
    const auto lead = static_cast<uint8_t>(id[i]);
    if (lead <= 127) continue;
    const uint32_t code = generatorCode(lead, static_cast<uint8_t>(id[i + 1]));
    id[i] = static_cast<char>(code >> 8);
    id[++i] = static_cast<char>(code);
  }
  if (zr_set_camera_id(id.c_str()) < 0) return dsp::kBadArgument;
  m_store(camera_row::COMMENT, text);
  return dsp::kDone;
}
