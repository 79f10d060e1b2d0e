#pragma once

#include <string>
#include <vector>

/**
 * A command in the form that execvp takes. It points into the strings it was made from, which must outlive it; make it
 * before the fork, because a child of a process with threads must not allocate.
 */
class ArgumentVector {
 public:
  explicit ArgumentVector(const std::vector<std::string>& command) {
    m_pointers.reserve(command.size() + 1);
    for (const std::string& argument : command)
      m_pointers.push_back(const_cast<char*>(argument.c_str()));
    m_pointers.push_back(nullptr);
  }

  [[nodiscard]] char* const* get() const { return m_pointers.data(); }

 private:
  std::vector<char*> m_pointers;
};
