#include "AddressServer.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <string_view>

namespace sim {

namespace {

constexpr std::array<std::string_view, 5> options{"mask", "gateway", "dns", "ntp", "hostname"};

bool isOption(const std::string& word) {
  const auto parts = keyAndValue(word);
  return parts && std::ranges::find(options, parts->first) != options.end();
}

}  // namespace

std::string AddressServer::tell(const Words& words) const {
  if (words == Words{"usual"}) {
    std::remove(m_path.c_str());
    return "ok";
  }
  const bool silent = words == Words{"silent"};
  const bool lease =
      words.size() > 1 && words.front() == "lease" && std::all_of(words.begin() + 2, words.end(), isOption);
  if (!silent && !lease) {
    return "error: dhcp takes lease ADDRESS [mask=] [gateway=] [dns=] [ntp=] [hostname=], silent or usual";
  }
  std::ofstream file(m_path, std::ios::trunc);
  for (std::size_t i = lease ? 1 : 0; i < words.size(); ++i)
    file << words[i] << ' ';
  file << '\n';
  return file.flush() ? "ok" : "error: cannot write " + m_path;
}

}  // namespace sim
