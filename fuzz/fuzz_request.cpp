// Any text of a request through the cut into items, the parse of an item, the walk through a small tree, the rights,
// and what rules accept.

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "request/InternalRequest.h"
#include "request/Items.h"
#include "request/Parameter.h"
#include "tree/CManBase.h"

namespace {

constexpr size_t kMostItems = 15;

int32_t act(Request& request) {
  assert(request.value.size() <= 1024);
  return 0;
}

class Leaf : public CApiBase {
 public:
  int32_t execRead(ExecArgs* args) override { return args->m_parameter->setResponse("=read&200 OK"); }
  int32_t execWrite(ExecArgs* args) override { return args->m_parameter->setResponse("&200 OK"); }
  int32_t checkAttribute(const std::string& selector, int32_t depth) override {
    assert(depth > 0);
    return selector == "x" ? -451 : 0;
  }
};

struct NumberLeaf : CApiBase {
  static constexpr Rule rule{.accepts = Number{.low = -5, .high = 5, .steps = true}, .act = act};
};
struct DecimalLeaf : CApiBase {
  static constexpr Rule rule{.accepts = Decimal{.low = 0, .high = 1}, .act = act};
};
struct HexLeaf : CApiBase {
  static constexpr Selector selector{.takes = SelectorNumber{.low = 1, .high = 9}, .without = "1"};
  static constexpr Rule rule{.accepts = Hex{.digits = 6}, .act = act};
};
struct TextLeaf : CApiBase {
  static constexpr Selector selector{.takes = SelectorWord{.words = Words{"x", "y"}, .anyCase = true}, .without = "x"};
  static constexpr Rule rule{.accepts = Text{.escapes = Escapes::DecodedPlus, .forbidden = "<>", .canBeEmpty = true},
                             .act = act};
};

class Manager : public CManBase {
 public:
  void build() override {
    add<Leaf>("a");
    add<Leaf>("a.b", "RWR-R-");
    add<Leaf>("a.b.c", "-W----");
    add<Leaf>("b", "------");
    add<NumberLeaf>("n", "RWRWRW");
    add<DecimalLeaf>("d", "RWRWRW");
    add<HexLeaf>("h", "RWRWRW");
    add<TextLeaf>("t", "RWRWRW");
  }
};

void check(const Parameter& parameter, const std::string& item) {
  const std::string& response = parameter.getResponse();
  assert(response.ends_with("\r\n"));
  // An item that begins with "=" has no path; every other answer stands behind its path.
  if (item.front() != '=') assert(response.starts_with(item.substr(0, item.find('='))));
}

}  // namespace

/** No rule of this tree asks for another. */
int32_t execApiCommandInternal(const std::string& /*query*/, std::string* /*response*/, int8_t /*userType*/,
                               int8_t /*contentType*/) {
  return -1;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static Manager manager;
  static const bool built = (manager.init(), true);
  static_cast<void>(built);
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
