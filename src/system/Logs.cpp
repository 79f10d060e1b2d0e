#include "system/Logs.h"

#include <array>
#include <cstdlib>
#include <optional>
#include <vector>

#include "local/CommandOutput.h"
#include "request/Log.h"
#include "request/Parameter.h"
#include "service/Numbers.h"
#include "service/Words.h"
#include "tree/RuleEngine.h"

namespace System {
namespace {

constexpr Words kLevels{"LOG_EMERG",   "LOG_ALERT",  "LOG_CRIT", "LOG_ERR",
                        "LOG_WARNING", "LOG_NOTICE", "LOG_INFO", "LOG_DEBUG"};

/** Characters of one line of a tool's output that are shown. */
constexpr size_t kLineLength = 256;

/** One kind of event lines: how they get into their file, which heading they have, and how many are shown. */
struct Category {
  const char* extract;
  const char* file;
  const char* heading;
  int32_t mostLines;
};

constexpr std::array<Category, 4> kCategories = {{
    {"/bin/sed -n \"/[mb]1/p\" /tmp/user.info | grep evman > /tmp/alarm1", "/tmp/alarm1", "Alarm Detect 1", 10},
    {"/bin/sed -n \"/[mb]2/p\" /tmp/user.info | grep evman > /tmp/alarm2", "/tmp/alarm2", "Alarm Detect 2", 10},
    {"/bin/sed -n \"/Motion Detect/p\" /tmp/user.info | grep evman > /tmp/motion", "/tmp/motion", "Motion Detect", 10},
    {nullptr, "/tmp/user.info", nullptr, 80},
}};
constexpr size_t kAllEvents = 3;

std::string firstOf(const std::vector<std::string>& lines) { return lines.empty() ? std::string() : lines.front(); }

/** Appends the last lines of a category; false when a tool could not be run. */
bool appendEvents(const Category& category, const Parameter& parameter, std::string& text) {
  if (category.extract != nullptr && std::system(category.extract) < 0) return false;
  const std::string file = category.file;
  const auto printed = linesOf("/bin/sed -n $= " + file, kLineLength);
  if (!printed) return false;
  const int32_t count = parseNumber(firstOf(*printed)).value_or(0);
  if (count == 0) {
    if (parameter.getContentType() == content_type::kHtml) text.resize(text.size() - 2);
    return true;
  }
  const std::string lineEnd = parameter.getLineEnd();
  if (category.heading != nullptr) {
    text += category.heading + (" (total " + std::to_string(count)) + " times)" + lineEnd;
  }
  const int32_t first = std::max(count - category.mostLines + 1, 1);
  const auto shown =
      linesOf("/bin/sed -n " + std::to_string(first) + "," + std::to_string(count) + "p " + file, kLineLength);
  if (!shown) return false;
  for (const std::string& line : *shown) {
    text += line + lineEnd;
  }
  return true;
}

/** The whole answer; none when a tool could not be run. */
std::optional<std::string> compose(const Parameter& parameter) {
  const std::string lineEnd = parameter.getLineEnd();
  const auto uptime = linesOf("cat /proc/uptime", kLineLength);
  if (!uptime) return std::nullopt;
  const std::string line = firstOf(*uptime);
  std::string text = "system.log=&200 OK" + lineEnd;
  text += "system alive time: " + line.substr(0, line.find(' ')) + "sec" + lineEnd;
  for (const char* command : {"/bin/sed -n \"/Detect/p\" /var/log/messages.0 | grep evman > /tmp/user.info",
                              "/bin/sed -n \"/Detect/p\" /var/log/messages | grep evman >> /tmp/user.info"}) {
    if (std::system(command) < 0) return std::nullopt;
  }
  if (!appendEvents(kCategories[kAllEvents], parameter, text)) return std::nullopt;
  return text;
}

}  // namespace

int32_t CLog::execRead(ExecArgs* args) {
  Parameter& parameter = *args->m_parameter;
  const auto text = compose(parameter);
  if (!text) return RuleEngine::answerStatus(parameter, status::kInternalError);
  const int32_t result = parameter.setMultiLineResponse(*text);
  if (std::system("rm -f /tmp/user.info") < 0) TMX_LOG(LOG_ERR, "system(%m)");
  return result;
}

int32_t CLoglevel::check(Request& request) {
  if (!kLevels.find(request.value)) request.value = "LOG_INFO";
  request.number = kLevels.find(request.value).value_or(LOG_INFO);
  return 0;
}

int32_t CLoglevel::act(Request& request) {
  const int mask = LOG_UPTO(request.number);
  TMX_LOG(LOG_WARNING, "logmask(%lx):mask(%x)", static_cast<unsigned long>(request.number),
          static_cast<unsigned>(mask));
  setlogmask(mask);
  return 0;
}

}  // namespace System
