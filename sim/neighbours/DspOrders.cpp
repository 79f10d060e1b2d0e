#include "DspOrders.h"

#include <algorithm>
#include <cstdio>
#include <fstream>

#include "sim/common/Json.h"

namespace sim {

std::string DspOrders::tell(const Words& words) {
  if (words.empty()) return "error: tell dsp what?";
  if (words.front() == "show") {
    JsonObject state;
    state.text("who", "dsp");
    for (const auto& [key, value] : m_orders)
      state.text(key, value);
    return state.toString();
  }
  const bool clear = words.front() == "clear" && words.size() == 1;
  if (!clear && !std::ranges::all_of(words, [](const std::string& word) { return keyAndValue(word).has_value(); })) {
    return "error: dsp takes key=value, clear or show";
  }
  if (clear) m_orders.clear();
  // A failure that was to happen once is not ordered again by what is told about something else.
  m_orders.erase("fail_once");
  for (std::size_t i = clear ? 1 : 0; i < words.size(); ++i) {
    const auto [key, value] = *keyAndValue(words[i]);
    m_orders[key] = value;
    if (value.empty()) m_orders.erase(key);
  }
  return write() ? "ok" : "error: cannot write " + m_path;
}

bool DspOrders::write() const {
  const std::string fresh = m_path + ".new";
  {
    std::ofstream file(fresh, std::ios::trunc);
    for (const auto& [key, value] : m_orders)
      file << key << '=' << value << '\n';
    if (!file.flush()) return false;
  }
  return std::rename(fresh.c_str(), m_path.c_str()) == 0;
}

}  // namespace sim
