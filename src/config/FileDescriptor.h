#pragma once

#include <unistd.h>

/** Owner of an open file descriptor; closes it. Negative: none. */
class FileDescriptor {
 public:
  explicit FileDescriptor(int descriptor) : m_descriptor(descriptor) {}
  ~FileDescriptor() {
    if (m_descriptor >= 0) ::close(m_descriptor);
  }
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;

  [[nodiscard]] int get() const { return m_descriptor; }
  [[nodiscard]] bool isOpen() const { return m_descriptor >= 0; }

 private:
  int m_descriptor;
};
