#include <algorithm>
#include <array>
#include <cstdio>
#include <string_view>

#include "request/Log.h"
#include "service/CTmxdUtility.h"

namespace {

bool isAsciiAlphanumeric(char c) { return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

/** The byte that the two characters behind a "%" stand for, "?" when they are no hexadecimal number. */
char decodeByte(const std::string& digits) {
  unsigned long byte = 0;
  return sscanf(digits.c_str(), "%2lX", &byte) == 1 ? static_cast<char>(byte) : '?';
}

}  // namespace

std::string CTmxdUtility::encodeUrlAll(const std::string& text) {
  std::string encoded;
  for (const char c : text) {
    if (isAsciiAlphanumeric(c)) {
      encoded += c;
      continue;
    }
    std::array<char, 4> escape{};
    snprintf(escape.data(), escape.size(), "%%%x", static_cast<unsigned int>(static_cast<unsigned char>(c)));
    encoded += escape.data();
  }
  return encoded;
}

std::string CTmxdUtility::encodeValue(const std::string& text) {
  std::string encoded;
  for (const char c : text) {
    switch (c) {
      case '"':
        encoded += "%22";
        break;
      case '%':
        encoded += "%25";
        break;
      case '&':
        encoded += "%26";
        break;
      case '\0':
        encoded += "%00";
        break;
      default:
        encoded += c;
    }
  }
  return encoded;
}

std::string CTmxdUtility::decodeEscapes(const std::string& text, bool plusIsBlank) {
  std::string decoded;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '+' && plusIsBlank) {
      decoded += ' ';
    } else if (text[i] != '%') {
      decoded += text[i];
    } else if (i + 2 < text.size()) {
      decoded += decodeByte(text.substr(i + 1, 2));
      i += 2;
    } else {
      decoded += '#';  // an escape cut off by the end
      break;
    }
  }
  return decoded;
}

std::string CTmxdUtility::decodeValue(const std::string& text, bool plusIsBlank) {
  std::string decoded = decodeEscapes(text, plusIsBlank);
  // A NUL ends a value; so "%00" is the way to write an empty one.
  decoded.resize(std::min(decoded.find('\0'), decoded.size()));
  return decoded;
}

int32_t CTmxdUtility::findCharInStr(const std::string& text, const std::string& characters) {
  for (const char c : characters) {
    if (text.find(c) == std::string::npos) continue;
    TMX_LOG(LOG_ERR, "[%s] is include invalid character[%c]", text.c_str(), c);
    return -1;
  }
  return 0;
}
