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

}  // namespace

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

Journal::Journal(std::string_view who, std::string_view what) {
  m_object.literal("t", now()).text("who", who).text("what", what);
}

Journal& Journal::text(std::string_view key, std::string_view value) {
  m_object.text(key, value);
  return *this;
}

Journal& Journal::number(std::string_view key, std::int64_t value) {
  m_object.number(key, value);
  return *this;
}

Journal& Journal::list(std::string_view key, const std::vector<std::string>& values) {
  m_object.list(key, values);
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
