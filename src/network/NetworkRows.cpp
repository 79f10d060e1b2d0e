#include "network/NetworkRows.h"

#include <algorithm>

#include "config/Config.h"

namespace network_rows {

std::string active(Row row) { return Config::getInstance()->getNetworkConfig(row); }

std::string staged(Row row) { return CUserConfig::getInstance()->getNetworkConfig(row); }

bool isOn(Row row) { return active(row) == "on"; }

bool isLeased(Row dhcpOption) { return isOn(network_row::IF1_DHCP) && isOn(dhcpOption); }

void stage(Row row, const std::string& text) { CUserConfig::getInstance()->setNetworkConfig(row, text); }

bool differ(Rows rows) {
  return std::any_of(rows.begin(), rows.end(), [](Row row) { return active(row) != staged(row); });
}

bool takeOver(Rows rows) {
  const bool hasChanged = differ(rows);
  for (const Row row : rows)
    Config::getInstance()->setNetworkConfig(row, staged(row));
  return hasChanged;
}

void rollBack(Rows rows) {
  for (const Row row : rows)
    stage(row, active(row));
}

int32_t commit(Rows rows) {
  if (!takeOver(rows)) return kNothingChanged;
  return Config::getInstance()->saveNetworkConfig();
}

}  // namespace network_rows
