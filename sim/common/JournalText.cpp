#include "sim/common/JournalText.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string_view>

namespace sim {

namespace {

/** Members that have a place of their own in the text. */
constexpr std::array<std::string_view, 7> placed{"t", "who", "what", "raw", "answer", "fault", "result"};

struct Word {
  std::string_view number;
  std::string_view text;
};

constexpr auto encoderFormats =
    std::to_array<Word>({{"0", "off"}, {"2", "jpeg"}, {"3", "mpeg4"}, {"50", "h264baseline"}, {"52", "h264high"}});
constexpr auto encoderActions = std::to_array<Word>({{"0", "stop"}, {"2", "start"}});

std::string member(const JsonMembers& members, std::string_view key) {
  const auto found = std::ranges::find(members, key, &JsonMembers::value_type::first);
  return found == members.end() ? "" : found->second;
}

template <typename Table>
std::string wordFor(const Table& table, const std::string& number) {
  const auto* found = std::ranges::find(table, number, &Word::number);
  return found == table.end() ? number : std::string(found->text);
}

std::string timeOfDay(const std::string& stamp) {
  const auto seconds = static_cast<std::time_t>(std::strtoll(stamp.c_str(), nullptr, 10));
  std::tm local{};
  localtime_r(&seconds, &local);
  std::array<char, 16> text{};
  std::strftime(text.data(), text.size(), "%H:%M:%S", &local);
  const std::size_t point = stamp.find('.');
  return text.data() + (point == std::string::npos ? "" : stamp.substr(point));
}

std::string valuesText(const JsonMembers& members, std::initializer_list<std::string_view> shown) {
  std::string text;
  for (const auto& [key, value] : members) {
    if (std::ranges::find(placed, key) != placed.end() || std::ranges::find(shown, key) != shown.end()) continue;
    text += (text.empty() ? "" : ", ") + key + " " + (value.empty() ? "\"\"" : value);
  }
  return text;
}

std::string join(const std::string& head, const std::string& values) {
  return values.empty() ? head : head + ": " + values;
}

std::string dspText(const JsonMembers& members) {
  const std::string head = member(members, "what") + " " + member(members, "addr") + " " + member(members, "name");
  return join(head, valuesText(members, {"addr", "name"}));
}

/** What a channel runs with from now on, where its format is known. */
std::string startText(const JsonMembers& members) {
  const std::string format = wordFor(encoderFormats, member(members, "format"));
  if (format.empty()) return "";
  const bool isJpeg = format == "jpeg";
  const bool isConstant = member(members, "cbr_mode") == "1";
  const char* mode = isJpeg ? (isConstant ? "afs" : "vfs") : (isConstant ? "cbr" : "vbr");
  const std::string size = isJpeg ? member(members, "filesize") + " kB"
                                  : member(members, "bitrate") + " kbit/s, interval " + member(members, "i_interval");
  return " " + format + " " + member(members, "width") + "x" + member(members, "height") + ", " +
         member(members, "framerate") + " fps, " + mode + " " + size;
}

std::string encoderText(const JsonMembers& members) {
  const std::string what = member(members, "what");
  const std::string value = member(members, "value");
  const std::string head = "channel " + member(members, "channel") + ": ";
  if (what == "resolution") return head + what + " " + member(members, "width") + "x" + member(members, "height");
  if (what == "format") return head + what + " " + wordFor(encoderFormats, value);
  if (what == "ctl") return head + wordFor(encoderActions, value) + startText(members);
  if (what == "bitrate") return head + what + " " + value + " kbit/s";
  if (what == "framerate") return head + what + " " + value + " fps";
  return head + what + " " + value;
}

std::string childText(const JsonMembers& members) {
  const std::string command = member(members, "command");
  return command.empty() ? join(member(members, "what"), valuesText(members, {})) : command;
}

std::string bodyText(const std::string& who, const JsonMembers& members) {
  if (who == "dsp") return dspText(members);
  if (who == "encoder") return encoderText(members);
  if (who == "child") return childText(members);
  if (who == "ptzseq") return member(members, "text");
  if (who == "recorder" && !member(members, "id").empty()) {
    const std::string name = member(members, "name");
    const std::string head = member(members, "what") + " " + member(members, "id") + " " + name;
    // A text of some letters is no number that somebody meant, and the encoder channels are told in texts alone.
    const bool isText = member(members, "text").size() > 1 || name.starts_with("channel(");
    const std::string_view number = isText ? "value" : "";
    return join(head, valuesText(members, {"command", "arg", "id", "name", number}));
  }
  return join(member(members, "what"), valuesText(members, {"command"}));
}

}  // namespace

std::string journalText(const JsonMembers& members, bool withRaw) {
  const std::string who = member(members, "who");
  std::array<char, 64> head{};
  std::snprintf(head.data(), head.size(), "%s %-9s ", timeOfDay(member(members, "t")).c_str(), who.c_str());
  std::string text = head.data() + bodyText(who, members);
  const std::string answer = member(members, "answer");
  const std::string fault = member(members, "fault");
  if (!answer.empty()) text += " -> " + answer;
  if (member(members, "result") == "-1") text += " FAILED";
  if (!fault.empty()) text += " [" + fault + "]";
  if (withRaw && !member(members, "raw").empty()) text += " {" + member(members, "raw") + "}";
  // One line of the journal stays one line of text.
  std::ranges::replace(text, '\n', ' ');
  return text;
}

}  // namespace sim
