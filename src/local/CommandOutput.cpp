#include "local/CommandOutput.h"

#include <cstdio>
#include <memory>

#include "request/Log.h"

std::optional<std::vector<std::string>> linesOf(const std::string& command, size_t longestLine) {
  const std::unique_ptr<FILE, decltype(&pclose)> pipe(popen(command.c_str(), "re"), &pclose);
  if (pipe == nullptr) {
    TMX_LOG(LOG_ERR, "popen(%m)");
    return std::nullopt;
  }
  std::vector<std::string> lines(1);
  for (int character = 0; (character = std::fgetc(pipe.get())) != EOF;) {
    if (character == '\n') {
      lines.emplace_back();
    } else if (lines.back().size() < longestLine) {
      lines.back() += static_cast<char>(character);
    }
  }
  if (lines.back().empty()) lines.pop_back();
  return lines;
}
