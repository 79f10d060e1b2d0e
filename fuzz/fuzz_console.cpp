// Any bytes as what the web server hands to the console: no request is found that was none, and no item that the daemon
// could take for another one.

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "access/Account.h"
#include "web/Body.h"
#include "web/Files.h"
#include "web/Scgi.h"

namespace {

using console::ScgiParser;

/** In one piece and in many, the end is the same. */
void parse(std::string_view bytes) {
  ScgiParser whole;
  const ScgiParser::State state = whole.take(bytes);
  ScgiParser parts;
  ScgiParser::State last = ScgiParser::State::Incomplete;
  for (std::size_t at = 0; at < bytes.size() && last == ScgiParser::State::Incomplete; at += 7)
    last = parts.take(bytes.substr(at, 7));
  assert((state == ScgiParser::State::Incomplete) == (last == ScgiParser::State::Incomplete));
  if (state != ScgiParser::State::Complete) return;
  const console::Request& request = whole.request();
  assert(request.header("SCGI") == "1" && request.body.size() <= console::kMaxBody);
  static_cast<void>(tmx::accountOf(request.header("REMOTE_USER")));
  assert(console::fileOf("/nowhere", request.header("PATH_INFO"), request.header("HTTP_IF_NONE_MATCH")).status == 404);
}

void check(const tmx::Item& item) {
  assert(!item.path.empty() && tmx::faultOf(item) == nullptr);
  assert(item.path.find_first_of(std::string_view("=&\r\n\0", 5)) == std::string::npos);
  assert(!item.isWrite || !item.value.empty());
}

template <class Parse>
void read(const Parse& parse, std::string_view body) {
  try {
    parse(body);
  } catch (const tmx::BadBody&) {
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  parse(bytes);
  read(
      [](std::string_view body) {
        for (const tmx::Item& item : console::parseItems(body))
          check(item);
      },
      bytes);
  read(
      [](std::string_view body) {
        const console::Application application = console::parseApplication(body);
        check(application.commit);
        for (const tmx::Item& item : application.items)
          check(item);
      },
      bytes);
  read([](std::string_view body) { static_cast<void>(console::parseView(body)); }, bytes);
  return 0;
}
