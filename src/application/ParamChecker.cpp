#include "application/ParamChecker.h"

#include <array>
#include <string_view>

#include "request/StatusCode.h"
#include "service/CTmxdNetworkUtility.h"
#include "service/Numbers.h"

namespace {

constexpr size_t kLongestHostName = 63;
constexpr size_t kLongestMailAddress = 96;
constexpr std::string_view kMailCharacters =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789!#$%&'*+-/=?^`-{}_|~.@";

constexpr int32_t kSlowest = -30;

/** A rate of a ladder stands for every number from its lowest one up to the next rate above it. */
struct Rate {
  int32_t lowest;
  const char* text;
};

constexpr auto kLadder30 = std::to_array<Rate>({{30, "30"},
                                                {15, "15"},
                                                {10, "10"},
                                                {8, "7.5"},
                                                {6, "6"},
                                                {5, "5"},
                                                {3, "3"},
                                                {2, "2"},
                                                {1, "1"},
                                                {-2, "-2"},
                                                {-3, "-3"},
                                                {-5, "-5"},
                                                {-10, "-10"},
                                                {-15, "-15"},
                                                {-20, "-20"},
                                                {-30, "-30"}});
constexpr auto kLadder25 = std::to_array<Rate>({{25, "25"},
                                                {13, "12.5"},
                                                {8, "8"},
                                                {6, "6"},
                                                {5, "5"},
                                                {4, "4"},
                                                {3, "3"},
                                                {2, "2"},
                                                {1, "1"},
                                                {-2, "-2"},
                                                {-3, "-3"},
                                                {-4, "-4"},
                                                {-5, "-5"},
                                                {-10, "-10"},
                                                {-15, "-15"},
                                                {-20, "-20"},
                                                {-30, "-30"}});

struct Ladder {
  std::span<const Rate> rates;  ///< the fastest first
  std::string_view fraction;    ///< the one rate that is no whole number
};

constexpr Ladder ladderOf(RateLadder ladder) {
  return ladder == RateLadder::Frames30 ? Ladder{kLadder30, "7.5"} : Ladder{kLadder25, "12.5"};
}

}  // namespace

int32_t ParamChecker::checkHostName(const std::string& host) {
  in_addr address{};
  const int32_t kind = CTmxdNetworkUtility::parseAddress(host, &address);
  if (kind < 0) return -1;
  if (kind > 0) return CTmxdNetworkUtility::checkHostAddress(address);
  return host.size() <= kLongestHostName ? 0 : -1;
}

int32_t ParamChecker::checkMailAddress(const std::string& address) {
  const bool fits = address.size() <= kLongestMailAddress && !address.starts_with('.') && !address.starts_with('@') &&
                    address.find('@') == address.rfind('@') &&
                    address.find_first_not_of(kMailCharacters) == std::string::npos;
  return fits ? 0 : -1;
}

int32_t ParamChecker::normaliseFrameRate(RateLadder ladder, const std::string& rate, std::string* normalised) {
  const Ladder chosen = ladderOf(ladder);
  if (rate == chosen.fraction) {
    *normalised = rate;
    return 0;
  }
  const auto number = parseNumber(rate);
  if (!number) return -status::kNotUnderstood;
  if (*number == 0 || *number < kSlowest || *number > chosen.rates.front().lowest) return -status::kInvalidRange;
  for (const Rate& step : chosen.rates) {
    if (*number < step.lowest) continue;
    *normalised = step.text;
    break;
  }
  return 0;
}
