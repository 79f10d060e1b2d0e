// Any text of a request through the cut into items, the parse of an item, the walk through a small tree, and the
// rights.

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "request/Items.h"
#include "request/Parameter.h"
#include "tree/CManBase.h"

namespace {

constexpr size_t kMostItems = 15;

class Leaf : public CApiBase {
 public:
  using CApiBase::CApiBase;
  int32_t execRead(ExecArgs* args) override { return args->m_parameter->setResponse("=read&200 OK"); }
  int32_t execWrite(ExecArgs* args) override { return args->m_parameter->setResponse("&200 OK"); }
  int32_t checkAttribute(const std::string& selector, int32_t depth) override {
    assert(depth > 0);
    return selector == "x" ? -451 : 0;
  }
};

class Manager : public CManBase {
 public:
  int32_t init() override {
    add<Leaf>("a", kBranch);
    add<Leaf>("a.b", "RWR-R-");
    add<Leaf>("a.b.c", "-W----");
    add<Leaf>("b", "------");
    return 0;
  }
};

void check(const Parameter& parameter, const std::string& item) {
  const std::string& response = parameter.getResponse();
  assert(response.ends_with("\r\n"));
  // An item that begins with "=" has no path; every other answer stands behind its path.
  if (item.front() != '=') assert(response.starts_with(item.substr(0, item.find('='))));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static Manager manager;
  static const bool built = manager.init() == 0;
  assert(built);
  if (size < 3) return 0;
  std::string text(reinterpret_cast<const char*>(data + 2), size - 2);
  text.resize(std::min(text.find(char{0}), text.size()));  // as in a frame
  if (text.empty()) return 0;

  std::vector<std::string> items;
  const size_t count = divideItems(text, kMostItems, &items);
  assert(items.size() == std::min(count, kMostItems));
  Parameter parameter;
  for (const std::string& item : items) {
    const int32_t result =
        parameter.setParameter(static_cast<int8_t>(data[0]), static_cast<int8_t>(data[1]), item.c_str());
    if (result == 0) {
      const std::string layer = parameter.getNextLayer();
      if (parameter.isInvalid()) {
        parameter.setResponse("&461 Command Not Found");
      } else {
        manager.APIsetup(parameter, layer);
      }
      check(parameter, item);
    }
    parameter.reset();
  }
  return 0;
}
