#pragma once

/**
 * The state in which stored settings are replayed into the hardware: nodes carry out a write of the value already
 * stored, and the stores keep nothing (m_writeInhibit of both).
 */
[[nodiscard]] bool isInitialising();

/** Raises that state for as long as the object lives, and puts back the state before. */
class InitialisingGuard {
 public:
  InitialisingGuard();
  ~InitialisingGuard();
  InitialisingGuard(const InitialisingGuard&) = delete;
  InitialisingGuard& operator=(const InitialisingGuard&) = delete;

 private:
  bool m_before;
};
