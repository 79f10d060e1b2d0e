#include "mqtt/Config.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>

namespace mqtt {
namespace {

constexpr std::string_view kBlanks = " \t\r";

std::string_view trimmed(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(kBlanks);
  return begin == text.npos ? std::string_view() : text.substr(begin, text.find_last_not_of(kBlanks) + 1 - begin);
}

/** "broker:8883" or "[::1]:8883". */
void takeEndpoint(std::string_view text, std::string& host, int& port) {
  const std::size_t colon = text.rfind(':');
  if (colon == text.npos) throw BadConfig("no HOST:PORT");
  std::string_view name = text.substr(0, colon);
  const bool isInBrackets = name.starts_with('[') && name.ends_with(']');
  if (isInBrackets) name = name.substr(1, name.size() - 2);
  const std::string_view digits = text.substr(colon + 1);
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), port);
  const bool isNumber = error == std::errc() && end == digits.data() + digits.size();
  if (!isNumber || port < 1 || port > 65535) throw BadConfig("a port is a number from 1 to 65535");
  if (name.empty() || name.find_first_of(" \t/[]") != name.npos || (!isInBrackets && name.find(':') != name.npos)) {
    throw BadConfig("no HOST:PORT");
  }
  host = name;
}

void takeFile(std::string_view text, std::string& file) {
  if (!text.starts_with('/')) throw BadConfig("a file's path begins with \"/\"");
  file = text;
}

void takeBroker(Config& config, std::string_view text) { takeEndpoint(text, config.broker.host, config.broker.port); }
void takeCa(Config& config, std::string_view text) { takeFile(text, config.broker.ca); }
void takeCertificate(Config& config, std::string_view text) { takeFile(text, config.broker.certificate); }
void takeKey(Config& config, std::string_view text) { takeFile(text, config.broker.key); }

void takeClass(Config& config, std::string_view text) {
  if (text != "operator" && text != "administrator") throw BadConfig("a class is \"operator\" or \"administrator\"");
  config.user = text == "operator" ? tmx::UserClass::kOperator : tmx::UserClass::kAdmin;
}

void takeAddress(Config& config, std::string_view text) {
  std::string host;
  int port = 0;
  takeEndpoint(text, host, port);
  config.address = text;
}

void takeValues(Config& config, std::string_view text) {
  std::istringstream words{std::string(text)};
  config.values.assign(std::istream_iterator<std::string>(words), {});
  const auto isPath = [](const std::string& path) { return path.find_first_of("/+#=&") == path.npos; };
  if (!std::ranges::all_of(config.values, isPath)) throw BadConfig("paths are needed, parted by blanks");
}

void takeDiscovery(Config& config, std::string_view text) {
  if (text.find_first_of(" +#") != text.npos || text.starts_with('/') || text.ends_with('/')) {
    throw BadConfig("a topic's beginning is needed, without wildcards");
  }
  config.discovery = text;
}

struct Key {
  std::string_view name;
  void (*take)(Config&, std::string_view);
};

constexpr std::array<Key, 8> kKeys{{{"broker", takeBroker},
                                    {"ca", takeCa},
                                    {"certificate", takeCertificate},
                                    {"key", takeKey},
                                    {"class", takeClass},
                                    {"address", takeAddress},
                                    {"values", takeValues},
                                    {"discovery", takeDiscovery}}};

void takeLine(Config& config, std::set<std::string_view>& given, std::string_view line) {
  const std::size_t equals = line.find('=');
  if (equals == line.npos) throw BadConfig("no KEY=VALUE");
  const std::string_view name = trimmed(line.substr(0, equals));
  const std::string_view value = trimmed(line.substr(equals + 1));
  const auto* key = std::ranges::find(kKeys, name, &Key::name);
  if (key == kKeys.end()) throw BadConfig("no such key");
  if (!given.insert(key->name).second) throw BadConfig("this key stands twice");
  if (value.empty()) throw BadConfig("no value");
  if (std::ranges::any_of(value, [](unsigned char c) { return c < ' ' || c == 0x7f; })) {
    throw BadConfig("a control character");
  }
  key->take(config, value);
}

}  // namespace

Config parseConfig(std::string_view text) {
  Config config;
  std::set<std::string_view> given;
  for (int number = 1; !text.empty(); ++number) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = trimmed(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    if (line.empty() || line.starts_with('#')) continue;
    try {
      takeLine(config, given, line);
    } catch (const BadConfig& bad) {
      throw BadConfig("line " + std::to_string(number) + ": " + bad.what() + ": " + std::string(line));
    }
  }
  if (!given.contains("broker")) throw BadConfig("there is no \"broker\"");
  const auto ofTls = {given.contains("ca"), given.contains("certificate"), given.contains("key")};
  if (std::ranges::count(ofTls, true) % 3 != 0) throw BadConfig("\"ca\", \"certificate\" and \"key\" need each other");
  return config;
}

Config readConfig(const std::string& file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) throw BadConfig(std::strerror(errno));
  return parseConfig(std::string(std::istreambuf_iterator<char>(stream), {}));
}

}  // namespace mqtt
