#include "web/Journal.h"

#include <unistd.h>

#include <charconv>
#include <fstream>
#include <nlohmann/json.hpp>

namespace console {
namespace {

constexpr const char* kFile = "/run/camera/journal.jsonl";
constexpr int kMaxLines = 200;
constexpr std::size_t kMaxBytes = 262144;  // of one answer

}  // namespace

bool hasJournal() { return access(kFile, R_OK) == 0; }

Response journalBehind(std::string_view query) {
  if (!hasJournal()) return refusal(404, "only a simulated camera keeps a journal");
  constexpr std::string_view kAfter = "after=";
  std::uint64_t place = 0;
  const char* end = query.data() + query.size();
  if (!query.empty() && (!query.starts_with(kAfter) || std::from_chars(query.data() + kAfter.size(), end, place) !=
                                                           std::from_chars_result{end, {}})) {
    return refusal(400, "after=N is taken, the \"next\" of an earlier answer");
  }
  std::ifstream file(kFile, std::ios::binary | std::ios::ate);
  if (static_cast<std::uint64_t>(file.tellg()) < place) place = 0;  // another journal
  file.seekg(static_cast<std::streamoff>(place));
  std::string lines;
  std::string line;
  for (int count = 0; count < kMaxLines && lines.size() < kMaxBytes && std::getline(file, line) && !file.eof();
       ++count) {
    place += line.size() + 1;
    if (!nlohmann::json::accept(line)) continue;
    lines += (lines.empty() ? "" : ",\n") + line;
  }
  return json(R"({"next": )" + std::to_string(place) + R"(, "lines": [)" + lines + "]}\n");
}

}  // namespace console
