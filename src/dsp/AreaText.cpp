#include <array>
#include <optional>
#include <string>

#include "dsp/CameraDSP.h"
#include "request/Log.h"
#include "service/Numbers.h"

namespace {

/** The last coordinates of the picture; a 4:3 picture stands in its middle. */
constexpr int64_t kRight = 1918;
constexpr int64_t kBottom = 1078;
constexpr int64_t kNarrowWidth = 1440;
constexpr int64_t kNarrowLeft = 240;
constexpr size_t kLongestText = 128;

std::optional<int64_t> numberIn(const std::string& token) {
  const auto number = parseNumber(token);
  return number ? std::optional<int64_t>(*number) : std::nullopt;
}

std::optional<int64_t> horizontal(const std::string& token, int32_t aspect) {
  const bool isRaw = token.starts_with('s');
  const auto number = numberIn(isRaw ? token.substr(1) : token);
  if (!number) return std::nullopt;
  if (isRaw) {
    TMX_LOG(LOG_DEBUG, "x1(s%ld)[reso(%ld)]", static_cast<long>(*number), static_cast<long>(kRight));
    return number;
  }
  TMX_LOG(LOG_DEBUG, "x1(%ld)[reso(%ld) ]", static_cast<long>(*number), static_cast<long>(kRight));
  return aspect != 0 ? *number * kNarrowWidth / 100 + kNarrowLeft : *number * kRight / 100;
}

std::optional<int64_t> vertical(const std::string& token) {
  const bool isRaw = token.starts_with('s');
  const auto number = numberIn(isRaw ? token.substr(1) : token);
  if (!number || isRaw) return number;
  return *number * kBottom / 100;
}

/** The first four tokens between "-"; a missing one is empty. */
std::array<std::string, 4> tokensOf(const std::string& text) {
  std::array<std::string, 4> tokens;
  size_t begin = 0;
  for (std::string& token : tokens) {
    if (begin > text.size()) break;
    const size_t end = std::min(text.find('-', begin), text.size());
    token = text.substr(begin, end - begin);
    begin = end + 1;
  }
  return tokens;
}

}  // namespace

int32_t CameraDSP::cameraWBPointconvert(const std::string& text, dsp::Area& area, int32_t aspect) const {
  const auto tokens = tokensOf(text.substr(0, kLongestText));
  const auto x1 = horizontal(tokens[0], aspect);
  const auto y1 = vertical(tokens[1]);
  const auto x2 = horizontal(tokens[2], aspect);
  const auto y2 = vertical(tokens[3]);
  if (!x1 || !y1 || !x2 || !y2) {
    TMX_LOG(LOG_ERR, "Parameter Not UnderStood[%s]", text.c_str());
    return dsp::kBadArgument;
  }
  if (*x2 <= *x1 || *y2 <= *y1) {
    TMX_LOG(LOG_ERR, "Parameter Not Understood [%ld,%ld], [%ld, %ld]", static_cast<long>(*x1), static_cast<long>(*y1),
            static_cast<long>(*x2), static_cast<long>(*y2));
    return dsp::kBadArgument;
  }
  if (*x1 < 0 || *y1 < 0 || *x2 > kRight || *y2 > kBottom) {
    TMX_LOG(LOG_ERR, " Parameter Not Understood [%ld,%ld], [%ld, %ld]", static_cast<long>(*x1), static_cast<long>(*y1),
            static_cast<long>(*x2), static_cast<long>(*y2));
    return dsp::kBadArgument;
  }
  area = {static_cast<int32_t>(*x1), static_cast<int32_t>(*y1), static_cast<int32_t>(*x2), static_cast<int32_t>(*y2)};
  return dsp::kDone;
}
