#pragma once

#include <string>
#include <utility>

namespace sim {

/** A file descriptor and its end: closes it when destroyed. */
class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int number) : m_number(number) {}
  Descriptor(Descriptor&& other) noexcept : m_number(std::exchange(other.m_number, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(m_number, other.m_number);
    return *this;
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor();

  [[nodiscard]] int number() const { return m_number; }
  [[nodiscard]] bool isOpen() const { return m_number >= 0; }

 private:
  int m_number = -1;
};

/** A listening, non-blocking Unix stream socket at the path, in the place of what stood there; not open on failure. */
[[nodiscard]] Descriptor listenAt(const std::string& path);

/** The next waiting connection of a listening socket, non-blocking; not open when there is none. */
[[nodiscard]] Descriptor acceptFrom(const Descriptor& listener);

/** A Unix stream socket, with the flags added to its type, connected to the path; not open on failure, errno says why.
 */
[[nodiscard]] Descriptor connectTo(const std::string& path, int flags = 0);

}  // namespace sim
