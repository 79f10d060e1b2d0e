#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "encoder/EncodeCodes.h"
#include "encoder/RangeTables.h"

/** What one channel does; both NoEncoder and NoResolution for a channel that is off. */
struct EncoderInfo {
  int32_t encoder = encoder_code::NoEncoder;
  int32_t resolution = resolution_code::NoResolution;
};

/**
 * The rules that tell what one encoder channel may do while the two others do what they do.
 *
 * A node makes one for each read of a range: it tells the state of the two other channels and of the analog output,
 * then the encoder and frame size in question, and asks one getter for the channel in question. Channels are 1 to 3.
 * An operation that returns bool is false for a text that is not known.
 */
class EncodeRangeData {
 public:
  [[nodiscard]] bool SetEncoderInfo(int32_t attr, const std::string& encoder, const std::string& resolution,
                                    const std::string& status);
  void SetEncoderInfo(int32_t attr, int32_t encoder, int32_t resolution);
  [[nodiscard]] bool SetEncoder(std::string_view encoder, std::string_view status);
  /** "none", for who has no frame size to ask about, stands for 1920x1080. */
  [[nodiscard]] bool SetResolution(std::string_view resolution);
  void setAnalogOutPutOn(bool isOn) { m_analogOutPutOn = isOn; }

  /** The entry for what is recorded of the channel; the reference is to a table that never changes. */
  [[nodiscard]] const RangeEntry& getEncoderInfo(int32_t attr) const;

  // Each takes the encoder and frame size in question for those of the channel, which stay recorded.
  [[nodiscard]] std::string getQualityRange(int32_t attr) { return candidateRange(attr, &RangeEntry::quality); }
  [[nodiscard]] std::string getFramerateRange(int32_t attr) { return candidateRange(attr, &RangeEntry::framerate); }
  [[nodiscard]] std::string getBitrateRange(int32_t attr) { return candidateRange(attr, &RangeEntry::bitrate); }
  [[nodiscard]] std::string getIframeintervalRange(int32_t attr) {
    return candidateRange(attr, &RangeEntry::iframeinterval);
  }

  /** The frame sizes there are; empty without an encoder in question. */
  [[nodiscard]] std::string getFramesizeRange() const;

 private:
  std::string candidateRange(int32_t attr, std::string_view RangeEntry::*range);
  [[nodiscard]] int32_t checkResolutionType(std::size_t index) const;
  [[nodiscard]] int32_t checkEncoderType(std::size_t index) const;
  [[nodiscard]] int32_t checkType(std::size_t index, int32_t EncoderInfo::*field, const char* word) const;

  std::array<EncoderInfo, 3> m_info;  ///< by channel - 1
  bool m_analogOutPutOn = false;
  int32_t m_encoder = encoder_code::NoEncoder;  ///< in question
  int32_t m_resolution = resolution_code::NoResolution;
};
