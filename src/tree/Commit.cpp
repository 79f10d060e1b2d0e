#include "tree/Commit.h"

#include <algorithm>

#include "config/Initialising.h"

int32_t carryOut(const Commit& commit, Request& request) {
  Config& config = *Config::getInstance();
  const CUserConfig& staged = *CUserConfig::getInstance();
  const bool isNew = std::ranges::any_of(
      commit.rows, [&](Row row) { return config.get(row) != staged.get(row) || !config.isSaved(row); });
  if (!isNew && !isInitialising()) return kNothingWaits;
  if (commit.check != nullptr) {
    const int32_t refused = commit.check(request);
    if (refused < 0) return refused;
  }
  const Row first = commit.rows.front();
  const bool isDue = config.adopt(staged, commit.rows) || !config.isSaved(first);
  if (isDue && config.save(first.family) != Config::kDone) return -status::kInternalError;
  return commit.apply == nullptr ? 0 : commit.apply(request);
}
