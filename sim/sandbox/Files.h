#pragma once

#include <filesystem>
#include <string>
#include <utility>

namespace sim {

using Path = std::filesystem::path;

/** Owner of a descriptor: closes it at the end of its life. Negative means none. */
class Fd {
 public:
  explicit Fd(int descriptor = -1) : m_descriptor(descriptor) {}
  Fd(Fd&& other) noexcept : m_descriptor(std::exchange(other.m_descriptor, -1)) {}
  Fd& operator=(Fd&& other) noexcept {
    std::swap(m_descriptor, other.m_descriptor);
    return *this;
  }
  ~Fd() { reset(); }

  void reset();
  [[nodiscard]] int get() const { return m_descriptor; }
  [[nodiscard]] bool valid() const { return m_descriptor >= 0; }

 private:
  int m_descriptor;
};

/** Says on standard error what could not be done, with the text of errno, and ends the process with status 1. */
[[noreturn]] void die(const std::string& what);

/** Ends the process as die() does unless it is done. */
void must(bool done, const std::string& what);

/** The content of a file, empty when it cannot be read. */
[[nodiscard]] std::string readFile(const Path& path);

/** Replaces a file's content; ends the process when that fails. */
void writeFile(const Path& path, const std::string& text);

/** The last lines of a file, at most as many as told. */
[[nodiscard]] std::string lastLines(const Path& path, int lines);

}  // namespace sim
