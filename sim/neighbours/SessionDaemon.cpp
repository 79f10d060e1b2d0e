#include "SessionDaemon.h"

#include <algorithm>

#include "Bytes.h"

namespace sim {

namespace {

constexpr std::size_t headerSize = 8;
/** A request without a payload counts its command alone. */
constexpr std::uint32_t bareLength = 4;
/** Longer than any request; a connection that announces more never completes one. */
constexpr std::uint32_t longestLength = 4096;

enum Command {
  totalRate = 5,
  sendingTotal = 6,
  firstSending = 7,
  lastSending = 15,
  receivingTotal = 22,
  firstReceiving = 23,
  lastReceiving = 31,
  priority = 38,
  priorityReload = 40,
  codecCount = 42,
  onvifChange = 43
};

struct CommandName {
  int number;
  std::string_view name;
};

constexpr auto commandNames = std::to_array<CommandName>({
    {5, "total_bitrate"},
    {6, "sending_count"},
    {7, "sending.bitrate"},
    {8, "sending.ip"},
    {9, "sending.port"},
    {10, "sending.protocol"},
    {11, "sending.session"},
    {12, "sending.unused"},
    {13, "sending.framerate"},
    {14, "sending.encode"},
    {15, "sending.framesize"},
    {22, "receiving_count"},
    {23, "receiving.bitrate"},
    {24, "receiving.ip"},
    {25, "receiving.port"},
    {26, "receiving.protocol"},
    {27, "receiving.session"},
    {30, "receiving.decode"},
    {31, "receiving.channel"},
    {38, "priority"},
    {40, "priority_reload"},
    {42, "codec_count"},
    {43, "onvif"},
});

constexpr const char* freeText = "-";

std::string framed(const std::string& text) {
  std::string bytes(4, '\0');
  putWord32(bytes, 0, static_cast<std::uint32_t>(text.size()));
  return bytes + text;
}

bool takesText(int command) { return command == codecCount; }

bool hasPayload(std::string_view request) { return request.size() >= headerSize + 4; }

int indexOf(std::string_view request) { return hasPayload(request) ? signed32(request, headerSize) : 0; }

}  // namespace

SessionDaemon::SessionDaemon(Loop& loop, const std::string& root) : Neighbour(loop, "session", root + "/tmp/session") {}

/** The payload is as long as the length says, four bytes more than its index or text needs. */
std::size_t SessionDaemon::requestSize(std::string_view bytes) const {
  if (bytes.size() < headerSize) return 0;
  const std::uint32_t length = word32(bytes, 0);
  const std::size_t size = headerSize + (length > bareLength ? length : 0);
  return length <= longestLength && bytes.size() >= size ? size : 0;
}

std::string SessionDaemon::messageName(std::string_view request) const {
  const auto* found = std::ranges::find(commandNames, signed32(request, 4), &CommandName::number);
  return found == commandNames.end() ? "unknown" : std::string(found->name);
}

void SessionDaemon::describe(std::string_view request, Journal& line) const {
  line.number("command", signed32(request, 4));
  if (!hasPayload(request)) return;
  if (takesText(signed32(request, 4))) {
    line.text("text", textAt(request, headerSize));
  } else {
    line.number("index", indexOf(request));
  }
}

std::string SessionDaemon::readable(std::string_view reply) const { return textAt(reply, 4); }

std::size_t SessionDaemon::framingSize() const { return 4; }

std::string SessionDaemon::refusal(std::string_view /*request*/, std::optional<int> /*number*/) const {
  return framed(std::string(1, '\0'));
}

std::string SessionDaemon::answer(std::string_view request) {
  const int command = signed32(request, 4);
  if (command == priority) m_priority = indexOf(request);
  if (command == priorityReload) ++m_reloads;
  if (command == onvifChange) m_onvif = indexOf(request);
  return framed(query(command, request));
}

std::string SessionDaemon::query(int command, std::string_view request) const {
  if (command == totalRate) return totalBitrate();
  if (command == sendingTotal) return sendingCount();
  if (command == receivingTotal) return m_receiving ? "1" : "0";
  if (command == codecCount) return countOf(textAt(request, std::min(headerSize, request.size())));
  if (command == priority || command == priorityReload || command == onvifChange) return "ok";

  const bool sending = command >= firstSending && command <= lastSending;
  const bool receiving = command >= firstReceiving && command <= lastReceiving;
  const int item = sending ? command - firstSending : receiving ? command - firstReceiving : -1;
  const Slot& slot = sending ? sendingSlot(indexOf(request)) : indexOf(request) == 1 ? m_receiving : m_free;
  if (item == 0) return slot ? std::to_string(slot->bitrate) : "0";
  if (item < 0 || !slot) return freeText;
  switch (item) {
    case 1:
      return slot->ip;
    case 2:
      return slot->port;
    case 3:
      return slot->protocol;
    case 4:
      return slot->session;
    case 6:
      return slot->framerate;
    case 7:
      return slot->codec;
    case 8:
      return slot->encode;
    default:
      return freeText;
  }
}

const SessionDaemon::Slot& SessionDaemon::sendingSlot(int index) const {
  const bool exists = index >= 1 && index <= static_cast<int>(m_sending.size());
  return exists ? m_sending[static_cast<std::size_t>(index - 1)] : m_free;
}

std::string SessionDaemon::totalBitrate() const {
  int sum = 0;
  for (const Slot& slot : m_sending)
    sum += slot ? slot->bitrate : 0;
  return std::to_string(sum);
}

std::string SessionDaemon::sendingCount() const {
  return std::to_string(std::ranges::count_if(m_sending, [](const Slot& slot) { return slot.has_value(); }));
}

/** A family counts its profiles: "h264" those of "h264baseline" and "h264high". */
std::string SessionDaemon::countOf(const std::string& codec) const {
  const auto isOfCodec = [&](const Slot& slot) { return slot && slot->codec.starts_with(codec); };
  return std::to_string(std::ranges::count_if(m_sending, isOfCodec));
}

/** CODEC BITRATE PROTOCOL [ip=] [port=] [fps=] [session=] [encode=], behind the word of the command. */
std::optional<SessionDaemon::Stream> SessionDaemon::parseStream(const Words& words) {
  constexpr std::size_t fixedWords = 4;
  if (words.size() < fixedWords) return std::nullopt;
  Stream stream;
  stream.codec = words[1];
  stream.protocol = words[3];
  if (!setNumber(stream.bitrate, words[2])) return std::nullopt;
  for (std::size_t i = fixedWords; i < words.size(); ++i) {
    const auto [key, value] = keyAndValue(words[i]).value_or(std::pair<std::string, std::string>{});
    if (value.empty()) return std::nullopt;
    if (key == "ip") {
      stream.ip = value;
    } else if (key == "port") {
      stream.port = value;
    } else if (key == "fps") {
      stream.framerate = value;
    } else if (key == "session") {
      stream.session = value;
    } else if (key == "encode" || key == "channel") {
      stream.encode = value;
    } else {
      return std::nullopt;
    }
  }
  return stream;
}

std::string SessionDaemon::change(const Words& words) {
  const std::string& what = words.front();
  if (what == "add") return add(words);
  if (what == "remove") return remove(words);
  if (what == "receive") return receive(words);
  if (what != "clear") return "session knows add, remove, clear, receive";
  m_sending.fill(std::nullopt);
  m_receiving.reset();
  return "";
}

std::string SessionDaemon::add(const Words& words) {
  const auto stream = parseStream(words);
  if (!stream) return "session add CODEC BITRATE PROTOCOL [ip=] [port=] [fps=] [session=] [encode=]";
  auto* slot = std::ranges::find_if_not(m_sending, [](const Slot& used) { return used.has_value(); });
  if (slot == m_sending.end()) return "every sending slot is in use";
  *slot = stream;
  return "";
}

std::string SessionDaemon::remove(const Words& words) {
  int index = 0;
  if (words.size() != 2 || !setNumber(index, words[1]) || !sendingSlot(index)) return "session remove SLOT in use";
  m_sending[static_cast<std::size_t>(index - 1)].reset();
  return "";
}

std::string SessionDaemon::receive(const Words& words) {
  const auto stream = parseStream(words);
  const bool off = words.size() == 2 && words[1] == "off";
  if (!stream && !off) return "session receive off | CODEC BITRATE PROTOCOL [ip=] [port=] [session=] [channel=]";
  m_receiving = stream;
  return "";
}

void SessionDaemon::show(JsonObject& state) const {
  const auto line = [](const Stream& stream) {
    return stream.codec + " " + std::to_string(stream.bitrate) + " " + stream.protocol + " ip=" + stream.ip +
           " port=" + stream.port + " fps=" + stream.framerate + " session=" + stream.session +
           " encode=" + stream.encode;
  };
  std::vector<std::string> sending;
  for (std::size_t i = 0; i < m_sending.size(); ++i) {
    if (m_sending[i]) sending.push_back(std::to_string(i + 1) + ": " + line(*m_sending[i]));
  }
  state.list("sending", sending).text("receiving", m_receiving ? line(*m_receiving) : "off");
  state.number("priority", m_priority).number("priority_reloads", m_reloads).number("onvif", m_onvif);
}

}  // namespace sim
