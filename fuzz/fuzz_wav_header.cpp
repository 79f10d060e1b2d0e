// Any bytes as an alarm clip: the look at its head ends, and finds no data where there is none.

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "application/ParamChecker.h"

namespace {

bool contains(const std::vector<uint8_t>& bytes, std::string_view tag) {
  return std::search(bytes.begin(), bytes.end(), tag.begin(), tag.end()) != bytes.end();
}

void look(const std::vector<uint8_t>& bytes) {
  uint32_t size = 0;
  const int32_t result = ParamChecker::checkFileHeader(bytes, &size);
  assert(result == 0 || result == -1);
  assert(result == 0 || size == 0);
  assert(result == -1 || (contains(bytes, "fmt ") && contains(bytes, "data")));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::vector<uint8_t> bytes(data, data + size);
  look(bytes);
  // The same behind a right beginning, which the fuzzer need not find anew each time.
  constexpr std::string_view kBegin("RIFF\0\0\0\0WAVE", 12);
  std::vector<uint8_t> file(kBegin.begin(), kBegin.end());
  file.insert(file.end(), bytes.begin(), bytes.end());
  look(file);
  return 0;
}
