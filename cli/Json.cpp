#include "cli/Json.h"

#include <cstdint>
#include <cstdio>

namespace tmx {
namespace {

/** The length of the UTF-8 sequence at the front, 0 when there is none or when it is not the shortest. */
std::size_t utf8Length(std::string_view text) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char first = byte(0);
  const std::size_t length = first < 0x80 ? 1 : first < 0xC2 ? 0 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
  if (first > 0xF4 || length > text.size()) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return 0;
  }
  if ((first == 0xE0 && byte(1) < 0xA0) || (first == 0xED && byte(1) > 0x9F)) return 0;
  if ((first == 0xF0 && byte(1) < 0x90) || (first == 0xF4 && byte(1) > 0x8F)) return 0;
  return length;
}

std::string codeUnit(unsigned char byte) {
  char text[8];
  std::snprintf(text, sizeof text, "\\u%04x", unsigned{byte});
  return text;
}

}  // namespace

std::string jsonString(std::string_view text) {
  std::string json = "\"";
  while (!text.empty()) {
    const char c = text.front();
    const std::size_t length = utf8Length(text);
    if (c == '"' || c == '\\') {
      json += '\\';
      json += c;
    } else if (length == 0 || static_cast<unsigned char>(c) < 0x20) {
      json += codeUnit(static_cast<unsigned char>(c));
    } else {
      json += text.substr(0, length);
    }
    text.remove_prefix(length == 0 ? 1 : length);
  }
  return json + "\"";
}

JsonObject& JsonObject::member(std::string_view key, std::string_view json) {
  if (!m_members.empty()) m_members += ", ";
  m_members += jsonString(key) + ": ";
  m_members += json;
  return *this;
}

JsonArray::JsonArray() { std::printf("["); }

JsonArray::~JsonArray() { std::printf("%s]\n", m_isEmpty ? "" : "\n"); }

void JsonArray::add(const JsonObject& object) {
  std::printf("%s%s", m_isEmpty ? "\n  " : ",\n  ", object.str().c_str());
  m_isEmpty = false;
}

}  // namespace tmx
