#include "cli/Item.h"

#include <algorithm>
#include <cctype>

#include "cli/Client.h"

namespace tmx {
namespace {

constexpr std::string_view kEmptyValue = "%00";

bool isDigit(char c) { return std::isdigit(static_cast<unsigned char>(c)) != 0; }

std::vector<std::string_view> splitLines(std::string_view text) {
  constexpr std::string_view kEnd = "\r\n";
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const std::size_t end = text.find(kEnd);
    lines.push_back(text.substr(0, end));
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + kEnd.size());
  }
  return lines;
}

/** True when the line opens the answer about this path: the path stands in front, a value or a status behind it. */
bool opens(std::string_view line, const std::string& path) {
  if (!line.starts_with(path)) return false;
  line.remove_prefix(path.size());
  return line.starts_with('=') || line.starts_with('&');
}

/** The place of the "&" of the status: the last "&" with three digits and a blank behind it. */
std::size_t findStatus(std::string_view text) {
  for (std::size_t at = text.rfind('&'); at != std::string_view::npos; at = text.rfind('&', at - 1)) {
    const std::string_view tail = text.substr(at + 1);
    if (tail.size() > 3 && isDigit(tail[0]) && isDigit(tail[1]) && isDigit(tail[2]) && tail[3] == ' ') return at;
    if (at == 0) break;
  }
  return std::string_view::npos;
}

/** Fills in status, text and hint from what stands behind the "&", as in "202 Accepted(camera.scene(1).status=save)".
 */
void readStatus(std::string_view text, Answer& answer) {
  answer.status = (text[0] - '0') * 100 + (text[1] - '0') * 10 + (text[2] - '0');
  text.remove_prefix(4);
  text = text.substr(0, text.find('\n'));
  const std::size_t open = text.find('(');
  if (answer.status == 202 && open != std::string_view::npos && text.ends_with(')')) {
    answer.hint = text.substr(open + 1, text.size() - open - 2);
    text = text.substr(0, open);
    while (text.ends_with(' '))
      text.remove_suffix(1);
  }
  answer.statusText = text;
}

Answer parseAnswer(const Item& item, std::string lines) {
  Answer answer;
  answer.path = item.path;
  answer.lines = std::move(lines);
  const std::string_view text = answer.lines;
  // An answer of many lines, such as the log, has its status in the first line and its value in the others.
  const std::size_t firstEnd = std::min(text.find('\n'), text.size());
  std::size_t status = findStatus(text.substr(0, firstEnd));
  const bool isFirstLine = status != std::string_view::npos;
  if (!isFirstLine) status = findStatus(text);
  if (status != std::string_view::npos) readStatus(text.substr(status + 1), answer);
  const std::string_view front = text.substr(0, status);
  if (opens(front, item.path) && front[item.path.size()] == '=') {
    answer.value = front.substr(item.path.size() + 1);
    answer.hasValue = true;
    if (isFirstLine && firstEnd < text.size())
      answer.value += text.substr(answer.value.empty() ? firstEnd + 1 : firstEnd);
  }
  return answer;
}

}  // namespace

std::string escapeValue(std::string_view plain) {
  if (plain.empty()) return std::string(kEmptyValue);
  std::string wire;
  for (const char c : plain) {
    switch (c) {
      case '"':
        wire += "%22";
        break;
      case '%':
        wire += "%25";
        break;
      case '&':
        wire += "%26";
        break;
      default:
        wire += c;
    }
  }
  return wire;
}

std::string unescapeValue(std::string_view wire) {
  if (wire == kEmptyValue) return {};
  std::string plain;
  while (!wire.empty()) {
    const std::string_view code = wire.substr(0, 3);
    const char c = code == "%22" ? '"' : code == "%25" ? '%' : code == "%26" ? '&' : '\0';
    plain += c != '\0' ? c : wire.front();
    wire.remove_prefix(c != '\0' ? 3 : 1);
  }
  return plain;
}

const char* faultOf(const Item& item) {
  const std::string text = item.text();
  const char* fault = nullptr;
  if (item.path.empty()) fault = "the path is missing";
  if (text.find('\0') != std::string::npos) fault = "a NUL byte cannot be sent";
  if (text.find('&') != std::string::npos) fault = "a \"&\" would divide it";
  if (text.size() > kMaxText) fault = "longer than the 1024 bytes that the daemon takes";
  return fault;
}

namespace {

/** Its lines look like the answers of other items. */
bool isListing(const Item& item) { return !item.isWrite && item.path == "system.session"; }

}  // namespace

std::vector<std::vector<Item>> splitRequests(const std::vector<Item>& items) {
  std::vector<std::vector<Item>> requests;
  std::size_t size = 0;
  for (const Item& item : items) {
    const std::size_t length = item.text().size();
    if (requests.empty() || requests.back().size() == kMaxItems || size + 1 + length > kMaxText || isListing(item) ||
        isListing(requests.back().back())) {
      requests.emplace_back();
      size = length;
    } else {
      size += 1 + length;
    }
    requests.back().push_back(item);
  }
  return requests;
}

std::string requestText(const std::vector<Item>& items) {
  std::string text;
  for (const Item& item : items)
    text += (text.empty() ? "" : "&") + item.text();
  return text;
}

std::vector<Answer> parseAnswers(const std::vector<Item>& items, std::string_view text) {
  const std::vector<std::string_view> lines = splitLines(text);
  std::vector<std::string> shares(items.size());
  std::size_t item = 0;
  for (std::size_t i = 0; i < lines.size() && !items.empty(); ++i) {
    // As many lines as items is the rule. The few answers of many lines run on until the next item's path stands
    // in front of a line.
    const bool isNext =
        i > 0 && item + 1 < items.size() && (lines.size() == items.size() || opens(lines[i], items[item + 1].path));
    if (isNext) ++item;
    std::string& share = shares[item];
    if (i > 0 && !isNext) share += '\n';
    share += lines[i];
  }
  std::vector<Answer> answers;
  for (std::size_t i = 0; i < items.size(); ++i)
    answers.push_back(parseAnswer(items[i], std::move(shares[i])));
  return answers;
}

}  // namespace tmx
