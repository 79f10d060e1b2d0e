#include "daemon/Signals.h"

#include <signal.h>

#include <cstdlib>
#include <initializer_list>

#include "request/Log.h"

namespace {

volatile sig_atomic_t g_keepRunning = 1;

void sigStopHandler(int number) {
  if (number > SIGTERM) return;
  if (number == SIGINT || number == SIGQUIT || number == SIGTERM) g_keepRunning = 0;
}

[[noreturn]] void sigSegvHandler(int /*number*/, siginfo_t* info, void* /*context*/) {
  const auto address = reinterpret_cast<unsigned long>(info->si_addr);
  if (info->si_code == SEGV_MAPERR) {
    TMX_LOG(LOG_CRIT, "SIGSEGV : Address(0x%08lx) not mapped to object", address);
  } else if (info->si_code == SEGV_ACCERR) {
    TMX_LOG(LOG_CRIT, "SIGSEGV : Invalid permissions for mapped object(0x%08lx)", address);
  }
  std::exit(10);
}

bool setMask() {
  sigset_t signals;
  if (sigfillset(&signals) < 0) {
    TMX_LOG(LOG_ERR, "sigfillset error(%m)");
    return false;
  }
  if (sigprocmask(SIG_UNBLOCK, &signals, nullptr) < 0) {
    TMX_LOG(LOG_ERR, "sigprocmask error(%m)");
    return false;
  }
  for (const int number : {SIGINT, SIGTERM, SIGQUIT, SIGSEGV, SIGPIPE}) {
    if (sigdelset(&signals, number) < 0) {
      TMX_LOG(LOG_ERR, "sigdelset error(%m)");
      return false;
    }
  }
  if (sigprocmask(SIG_BLOCK, &signals, nullptr) < 0) {
    TMX_LOG(LOG_ERR, "sigprocmask error(%m)");
    return false;
  }
  return true;
}

bool setAction(int number, const struct sigaction& action) {
  if (sigaction(number, &action, nullptr) == 0) return true;
  TMX_LOG(LOG_ERR, "sigaction error(%m)");
  return false;
}

struct sigaction plainAction(void (*handler)(int)) {
  struct sigaction action {};
  action.sa_handler = handler;
  sigemptyset(&action.sa_mask);
  return action;
}

}  // namespace

int32_t Signals::set() {
  if (!setMask()) return -1;
  // A client that leaves before its response arrives only makes the write fail.
  if (!setAction(SIGPIPE, plainAction(SIG_IGN))) return -1;
  // No SA_RESTART: a waiting accept returns.
  for (const int number : {SIGINT, SIGTERM, SIGQUIT}) {
    if (!setAction(number, plainAction(sigStopHandler))) return -1;
  }
  struct sigaction segv {};
  segv.sa_sigaction = sigSegvHandler;
  segv.sa_flags = SA_SIGINFO;
  sigemptyset(&segv.sa_mask);
  return setAction(SIGSEGV, segv) ? 0 : -1;
}

bool Signals::keepsRunning() { return g_keepRunning != 0; }
