#include "sim/common/Journal.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace sim {

namespace {

constexpr const char* defaultPath = "/run/camera/journal.jsonl";
constexpr std::string_view hexDigits = "0123456789abcdef";

/** Seconds since the epoch, to the millisecond. */
std::string now() {
  timespec time{};
  clock_gettime(CLOCK_REALTIME, &time);
  std::array<char, 48> text{};
  std::snprintf(text.data(), text.size(), "%lld.%03ld", static_cast<long long>(time.tv_sec), time.tv_nsec / 1000000);
  return text.data();
}

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

std::string hexText(const void* data, std::size_t size) {
  std::string text;
  text.reserve(2 * size);
  const auto* bytes = static_cast<const unsigned char*>(data);
  std::for_each(bytes, bytes + size, [&](unsigned char byte) {
    text += hexDigits[byte >> 4];
    text += hexDigits[byte & 15];
  });
  return text;
}

std::string hexNumber(std::uint32_t number) {
  std::array<char, 16> text{};
  std::snprintf(text.data(), text.size(), "0x%02x", number);
  return text.data();
}

Journal::Journal(std::string_view who, std::string_view what) : m_line("{\"t\":" + now()) {
  text("who", who);
  text("what", what);
}

void Journal::key(std::string_view name) {
  m_line += ',';
  m_line += jsonString(name);
  m_line += ':';
}

Journal& Journal::text(std::string_view name, std::string_view value) {
  key(name);
  m_line += jsonString(value);
  return *this;
}

Journal& Journal::number(std::string_view name, std::int64_t value) {
  key(name);
  m_line += std::to_string(value);
  return *this;
}

Journal& Journal::list(std::string_view name, const std::vector<std::string>& values) {
  key(name);
  m_line += '[';
  for (const std::string& value : values) {
    if (m_line.back() != '[') m_line += ',';
    m_line += jsonString(value);
  }
  m_line += ']';
  return *this;
}

Journal& Journal::raw(const void* data, std::size_t size) { return text("raw", hexText(data, size)); }

void Journal::write() const {
  const int savedErrno = errno;
  const char* path = std::getenv("CAMERA_JOURNAL");
  const int descriptor = ::open(path != nullptr ? path : defaultPath, O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0666);
  if (descriptor >= 0) {
    const std::string bytes = line() + "\n";
    [[maybe_unused]] const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
    ::close(descriptor);
  }
  errno = savedErrno;
}

}  // namespace sim
