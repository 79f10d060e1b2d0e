#include "sim/common/Json.h"

#include <algorithm>
#include <cctype>
#include <charconv>

namespace sim {

namespace {

constexpr std::string_view hexDigits = "0123456789abcdef";

/** Length of the valid UTF-8 sequence of two bytes or more at the head of the text, 0 if there is none. */
std::size_t multiByteLength(std::string_view text) {
  const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
  const unsigned char lead = byte(0);
  const std::size_t length = lead >= 0xf0 ? 4 : lead >= 0xe0 ? 3 : 2;
  if (lead < 0xc2 || lead > 0xf4 || text.size() < length) return 0;
  const unsigned char second = byte(1);
  const bool overlong = (lead == 0xe0 && second < 0xa0) || (lead == 0xf0 && second < 0x90);
  const bool outside = (lead == 0xed && second > 0x9f) || (lead == 0xf4 && second > 0x8f);
  if (overlong || outside) return 0;
  for (std::size_t at = 1; at < length; ++at) {
    if ((byte(at) & 0xc0) != 0x80) return 0;
  }
  return length;
}

void appendEscape(std::string& out, unsigned char byte) {
  out += "\\u00";
  out += hexDigits[byte >> 4];
  out += hexDigits[byte & 15];
}

/** A cursor over the forms that JsonObject writes; every step gives false or nothing at the first other form. */
class Reader {
 public:
  explicit Reader(std::string_view text) : m_rest(text) {}

  bool take(char expected) {
    if (m_rest.empty() || m_rest.front() != expected) return false;
    m_rest.remove_prefix(1);
    return true;
  }

  [[nodiscard]] bool atEnd() const { return m_rest.empty(); }

  std::optional<std::string> value() {
    if (m_rest.starts_with('"')) return string();
    if (m_rest.starts_with('[')) return list();
    return number();
  }

  std::optional<std::string> string() {
    if (!take('"')) return std::nullopt;
    std::string out;
    while (!m_rest.empty() && m_rest.front() != '"') {
      const bool taken = m_rest.front() == '\\' ? escape(out) : plain(out);
      if (!taken) return std::nullopt;
    }
    return take('"') ? std::optional(out) : std::nullopt;
  }

 private:
  bool plain(std::string& out) {
    out += m_rest.front();
    m_rest.remove_prefix(1);
    return true;
  }

  bool escape(std::string& out) {
    m_rest.remove_prefix(1);
    if (!m_rest.starts_with('u')) return !m_rest.empty() && plain(out);
    constexpr std::size_t digits = 4;
    unsigned code = 0;
    const std::string_view text = m_rest.substr(1, digits);
    const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), code, 16);
    if (fault != std::errc{} || end != text.data() + digits) return false;
    out += static_cast<char>(code);
    m_rest.remove_prefix(1 + digits);
    return true;
  }

  std::optional<std::string> number() {
    const auto isPart = [](unsigned char c) { return std::isdigit(c) != 0 || c == '-' || c == '.'; };
    const auto* end = std::ranges::find_if_not(m_rest, isPart);
    const std::string text(m_rest.begin(), end);
    m_rest.remove_prefix(text.size());
    return text.empty() ? std::nullopt : std::optional(text);
  }

  std::optional<std::string> list() {
    std::string out;
    m_rest.remove_prefix(1);
    while (!take(']')) {
      if (!out.empty() && !take(',')) return std::nullopt;
      const auto item = string();
      if (!item) return std::nullopt;
      if (!out.empty()) out += ' ';
      const bool quoted = item->empty() || item->find(' ') != std::string::npos;
      out += quoted ? "'" + *item + "'" : *item;
    }
    return out;
  }

  std::string_view m_rest;
};

}  // namespace

std::string jsonString(std::string_view text) {
  std::string out = "\"";
  while (!text.empty()) {
    const auto byte = static_cast<unsigned char>(text.front());
    std::size_t used = 1;
    if (byte == '"' || byte == '\\') {
      out += '\\';
      out += text.front();
    } else if (byte < 0x20 || byte == 0x7f) {
      appendEscape(out, byte);
    } else if (byte < 0x80) {
      out += text.front();
    } else if (const std::size_t length = multiByteLength(text); length > 0) {
      out += text.substr(0, length);
      used = length;
    } else {
      appendEscape(out, byte);
    }
    text.remove_prefix(used);
  }
  return out + "\"";
}

JsonObject& JsonObject::literal(std::string_view key, std::string_view value) {
  if (!m_members.empty()) m_members += ',';
  m_members += jsonString(key);
  m_members += ':';
  m_members += value;
  return *this;
}

JsonObject& JsonObject::text(std::string_view key, std::string_view value) { return literal(key, jsonString(value)); }

JsonObject& JsonObject::number(std::string_view key, std::int64_t value) { return literal(key, std::to_string(value)); }

JsonObject& JsonObject::list(std::string_view key, const std::vector<std::string>& values) {
  std::string items;
  for (const std::string& value : values) {
    if (!items.empty()) items += ',';
    items += jsonString(value);
  }
  return literal(key, "[" + items + "]");
}

std::optional<JsonMembers> parseJsonObject(std::string_view line) {
  Reader reader(line);
  JsonMembers members;
  if (!reader.take('{')) return std::nullopt;
  while (!reader.take('}')) {
    if (!members.empty() && !reader.take(',')) return std::nullopt;
    auto key = reader.string();
    if (!key || !reader.take(':')) return std::nullopt;
    auto value = reader.value();
    if (!value) return std::nullopt;
    members.emplace_back(std::move(*key), std::move(*value));
  }
  return reader.atEnd() ? std::optional(members) : std::nullopt;
}

}  // namespace sim
