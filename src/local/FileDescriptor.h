#pragma once

#include <unistd.h>

#include <utility>

/** Owns one open descriptor and closes it at the end of its life; below 0 it holds none. */
class FileDescriptor {
 public:
  FileDescriptor() = default;
  explicit FileDescriptor(int descriptor) : m_descriptor(descriptor) {}
  FileDescriptor(FileDescriptor&& other) noexcept : m_descriptor(other.release()) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    reset(other.release());
    return *this;
  }
  ~FileDescriptor() { reset(); }

  [[nodiscard]] int get() const { return m_descriptor; }
  [[nodiscard]] bool isValid() const { return m_descriptor >= 0; }

  /** Hands the descriptor over; this object no longer closes it. */
  [[nodiscard]] int release() { return std::exchange(m_descriptor, -1); }

  /** Closes what is held and takes over another descriptor, or none. */
  void reset(int descriptor = -1) {
    const int before = std::exchange(m_descriptor, descriptor);
    if (before >= 0) ::close(before);
  }

 private:
  int m_descriptor = -1;
};
