#include <algorithm>
#include <array>
#include <charconv>

#include "dsp/CameraDSP.h"
#include "dsp/Words.h"
#include "request/Log.h"

namespace frame = dsp::frame;

int32_t CameraDSP::setPrivacymaskStatus(uint32_t on, bool sendflag) {
  if (on > 1) {
    TMX_LOG(LOG_ERR, "privacy mask status out of range(%ld)", static_cast<long>(on));
    return dsp::kOutOfRange;
  }
  return m_apply(frame::kMaskStatus, on != 0, camera_row::PRIVACY_MASK_STATUS, on != 0 ? "on" : "off", sendflag);
}

/** The mask is grey: all three colours take the first two of the six digits. */
int32_t CameraDSP::setPrivacymaskColor(const std::string& color, bool sendflag) {
  uint32_t number = 0;
  const char* end = color.data() + color.size();
  const auto [stop, error] = std::from_chars(color.data(), end, number, 16);
  if (error != std::errc{} || stop != end) return dsp::kBadArgument;
  TMX_LOG(LOG_DEBUG, "set pmask color(%lx)", static_cast<unsigned long>(number));
  const auto grey = static_cast<int32_t>(number >> 16 & 0xFF);
  m_frames.set(frame::kMaskRed, grey);
  m_frames.set(frame::kMaskGreen, grey);
  TMX_LOG(LOG_DEBUG, "pmaskColor[Addr(%x):R(%d)G(%d)B(%d)]", frame::kMaskBlue.address, grey, grey, grey);
  return m_apply(frame::kMaskBlue, grey, camera_row::PRIVACY_MASK_COLOR, color, sendflag);
}

/** A shorter text covers the rest of the picture with nothing; what is no digit counts as 0. */
int32_t CameraDSP::setPrivacymaskArea(const std::string& digits, bool sendflag) {
  TMX_LOG(LOG_DEBUG, "mask(%s)", digits.c_str());
  std::array<uint8_t, 255> bytes;
  const auto digit = [&](size_t i) { return i < digits.size() ? std::max(convAtoi(digits[i]), 0) : 0; };
  for (size_t i = 0; i < bytes.size(); ++i)
    bytes[i] = static_cast<uint8_t>(digit(2 * i) << 4 | digit(2 * i + 1));
  const int32_t result = setPrivacyMaskAreaData(bytes, sendflag);
  if (result == dsp::kDone) m_store(camera_row::PRIVACY_MASK_AREA, digits);
  return result;
}

int32_t CameraDSP::setPrivacyMaskAreaData(std::span<const uint8_t> bytes, bool sendflag) {
  const dsp::Field data = frame::kMaskData;
  dsp::Frame& f = m_frames.at(data.address);
  TMX_LOG(LOG_DEBUG, "reinitilize (addr[%x]", f[0]);
  for (uint8_t page = 0; !bytes.empty(); ++page) {
    const auto part = bytes.first(std::min<size_t>(data.width, bytes.size()));
    f = dsp::blankFrame(data.address);
    dsp::put(f, frame::kMaskPage, page);
    std::ranges::copy(part, f.begin() + data.position);
    TMX_LOG(LOG_DEBUG, "send pmask [addr(%x) firstdata(%x) ", f[0], f[1]);
    TMX_LOG(LOG_DEBUG, "1(%x)2(%x)3(%x)4(%x)5(%x)6(%x)7(%x)8(%x) ", f[2], f[3], f[4], f[5], f[6], f[7], f[8], f[9]);
    if (sendToCameradsp(f, sendflag) < 0) return dsp::kSendFailed;
    bytes = bytes.subspan(part.size());
  }
  return dsp::kDone;
}
