#include "ProgramOrders.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <string_view>

#include "sim/common/Json.h"

namespace sim {

namespace {

constexpr std::array<std::string_view, 6> programs{"rtpd", "rtspd", "nvt_apl", "amx_beacond", "pntpd", "dhcpcd"};
constexpr std::array<std::string_view, 5> conducts{"normal", "slow", "fail", "nopid", "hang"};

template <std::size_t count>
bool isOneOf(const std::array<std::string_view, count>& words, const std::string& word) {
  return std::ranges::find(words, word) != words.end();
}

}  // namespace

std::string ProgramOrders::tell(const Words& words) const {
  if (words.size() != 2 || !isOneOf(programs, words[0])) {
    return "error: program takes rtpd, rtspd, nvt_apl, amx_beacond, pntpd or dhcpcd, and one word";
  }
  const std::string path = m_prefix + words[0];
  if (words[1] == "show") {
    std::string conduct = "normal";
    std::getline(std::ifstream(path), conduct);
    return JsonObject().text("who", words[0]).text("conduct", conduct).toString();
  }
  if (!isOneOf(conducts, words[1])) return "error: a program is normal, slow, fail, nopid or hang";
  const std::string fresh = path + ".new";
  std::ofstream(fresh, std::ios::trunc) << words[1] << '\n';
  return std::rename(fresh.c_str(), path.c_str()) == 0 ? "ok" : "error: cannot write " + path;
}

}  // namespace sim
