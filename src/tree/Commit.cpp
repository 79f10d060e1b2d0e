#include "tree/Commit.h"

#include <algorithm>

#include "config/Initialising.h"

int32_t carryOut(const Commit& commit, Request& request) {
  Config& config = *Config::getInstance();
  const CUserConfig& staged = *CUserConfig::getInstance();
  const bool isNew = std::ranges::any_of(commit.rows, [&](Row row) { return config.get(row) != staged.get(row); });
  if (!isNew && !isInitialising()) return kNothingWaits;
  if (commit.check != nullptr) {
    const int32_t refused = commit.check(request);
    if (refused < 0) return refused;
  }
  if (config.adopt(staged, commit.rows) && config.save(commit.rows.front().family) != Config::kDone) {
    return -status::kInternalError;
  }
  return commit.apply == nullptr ? 0 : commit.apply(request);
}
