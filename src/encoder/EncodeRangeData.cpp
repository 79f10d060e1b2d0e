#include "encoder/EncodeRangeData.h"

#include <cassert>

#include "request/Log.h"

namespace {

/** The two other channels of each one, as indexes in rising order. */
constexpr std::array<std::array<std::size_t, 2>, 3> kOthers = {{{1, 2}, {0, 2}, {0, 1}}};

std::size_t indexOf(int32_t attr) {
  assert(attr >= 1 && attr <= 3);
  return static_cast<std::size_t>(attr - 1);
}

const RangeEntry& entryOf(const RangeTable& table, const EncoderInfo& info) {
  return table[static_cast<std::size_t>(info.encoder)][static_cast<std::size_t>(info.resolution)];
}

}  // namespace

bool EncodeRangeData::SetEncoderInfo(int32_t attr, const std::string& encoder, const std::string& resolution,
                                     const std::string& status) {
  int32_t encoderNumber = encoderCode(encoder);
  int32_t resolutionNumber = resolutionCode(resolution);
  TMX_LOG(LOG_DEBUG, "attr = %ld // encoder = %s // resolution = %s // status = %s", static_cast<long>(attr),
          encoder.c_str(), resolution.c_str(), status.c_str());
  if (encoderNumber == encoder_code::NoEncoder || resolutionNumber == resolution_code::NoResolution) return false;
  if (status == "off") {
    TMX_LOG(LOG_DEBUG, "NoEncoder");
    encoderNumber = encoder_code::NoEncoder;
    resolutionNumber = resolution_code::NoResolution;
  }
  SetEncoderInfo(attr, encoderNumber, resolutionNumber);
  return true;
}

void EncodeRangeData::SetEncoderInfo(int32_t attr, int32_t encoder, int32_t resolution) {
  assert(encoder >= 0 && encoder < encoder_code::kCount);
  assert(resolution >= 0 && resolution < resolution_code::kCount);
  m_info[indexOf(attr)] = {encoder, resolution};
}

bool EncodeRangeData::SetEncoder(std::string_view encoder, std::string_view status) {
  if (status == "off") {
    m_encoder = encoder_code::NoEncoder;
    return true;
  }
  m_encoder = encoderCode(encoder);
  return m_encoder != encoder_code::NoEncoder;
}

bool EncodeRangeData::SetResolution(std::string_view resolution) {
  m_resolution = resolutionCode(resolution == "none" ? "1920x1080" : resolution);
  return m_resolution != resolution_code::NoResolution;
}

const RangeEntry& EncodeRangeData::getEncoderInfo(int32_t attr) const {
  const std::size_t index = indexOf(attr);
  const bool isEncoderMixed = checkEncoderType(index) == 1;
  const bool isResolutionMixed = checkResolutionType(index) == 1;
  const EncoderInfo& info = m_info[index];
  const long encoder = info.encoder;
  const long resolution = info.resolution;
  if (m_analogOutPutOn) {
    TMX_LOG(LOG_DEBUG, "AnalogOutPutOn[%ld][%ld]", encoder, resolution);
    return entryOf(range_tables::kAnalogOutPutOn, info);
  }
  if (isResolutionMixed) {
    TMX_LOG(LOG_DEBUG, "MultiResolution[%ld][%ld]", encoder, resolution);
    return entryOf(range_tables::kMultiResolution, info);
  }
  if (isEncoderMixed) {
    TMX_LOG(LOG_DEBUG, "MultiEncode[%ld][%ld]", encoder, resolution);
    return entryOf(range_tables::kMultiEncode, info);
  }
  TMX_LOG(LOG_DEBUG, "SingleEncode[%ld][%ld]", encoder, resolution);
  return entryOf(range_tables::kSingleEncode, info);
}

std::string EncodeRangeData::getFramesizeRange() const {
  if (m_encoder == encoder_code::NoEncoder) return "";
  return m_analogOutPutOn ? "1920x1080" : "320x240-640x360-640x480-1280x720-1280x960-1920x1080";
}

std::string EncodeRangeData::candidateRange(int32_t attr, std::string_view RangeEntry::*range) {
  SetEncoderInfo(attr, m_encoder, m_resolution);
  return std::string(getEncoderInfo(attr).*range);
}

int32_t EncodeRangeData::checkResolutionType(std::size_t index) const {
  return checkType(index, &EncoderInfo::resolution, "resolution");
}

int32_t EncodeRangeData::checkEncoderType(std::size_t index) const {
  return checkType(index, &EncoderInfo::encoder, "encoder");
}

/** 1 when the channel differs from one of the others in the field; a channel that is off has 0 there and is no peer. */
int32_t EncodeRangeData::checkType(std::size_t index, int32_t EncoderInfo::*field, const char* word) const {
  const int32_t own = m_info[index].*field;
  const int32_t first = m_info[kOthers[index][0]].*field;
  const int32_t second = m_info[kOthers[index][1]].*field;
  const bool isFirstDifferent = first != 0 && own != first;
  const bool isSecondDifferent = second != 0 && own != second;
  if (!isFirstDifferent && !isSecondDifferent) return 0;
  if (first != 0 && second != 0) {
    TMX_LOG(LOG_DEBUG, "info[attr].%s != info[checkAttr1].%s ||", word, word);
  } else {
    TMX_LOG(LOG_DEBUG, "info[attr].%s != info[checkAttr%d].%s", word, first != 0 ? 1 : 2, word);
  }
  return 1;
}
