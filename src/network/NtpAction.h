#pragma once

#include <array>
#include <optional>

/** What a restart of the time client comes to. */
enum class NtpAction { Nothing, Start, Stop, Synchronise };

/** What a restart finds. */
struct NtpState {
  bool isChanged;   ///< something staged was taken over
  bool isSwitched;  ///< the status among it
  bool isOn;        ///< the client is to run
  bool hasServer;   ///< a host is set, or the address client brings one
};

/** One row of the table: none means either. */
struct NtpCase {
  std::optional<bool> isChanged;
  std::optional<bool> isSwitched;
  std::optional<bool> isOn;
  std::optional<bool> hasServer;
  NtpAction action;

  [[nodiscard]] constexpr bool holds(const NtpState& state) const {
    return isChanged.value_or(state.isChanged) == state.isChanged &&
           isSwitched.value_or(state.isSwitched) == state.isSwitched && isOn.value_or(state.isOn) == state.isOn &&
           hasServer.value_or(state.hasServer) == state.hasServer;
  }
};

inline constexpr std::nullopt_t kEither = std::nullopt;

inline constexpr std::array<NtpCase, 8> kNtpCases{{
    {true, true, false, kEither, NtpAction::Stop},
    {true, true, true, false, NtpAction::Nothing},  // a daemon that should not be there is left alone
    {true, true, true, true, NtpAction::Start},
    {true, false, false, kEither, NtpAction::Nothing},
    {true, false, true, false, NtpAction::Stop},
    {true, false, true, true, NtpAction::Start},
    {false, kEither, true, kEither, NtpAction::Synchronise},
    {false, kEither, false, kEither, NtpAction::Nothing},
}};

[[nodiscard]] constexpr NtpAction ntpAction(const NtpState& state) {
  for (const NtpCase& row : kNtpCases) {
    if (row.holds(state)) return row.action;
  }
  return NtpAction::Nothing;
}
