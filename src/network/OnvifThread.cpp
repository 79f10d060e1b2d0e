#include "network/OnvifThread.h"

#include <pthread.h>
#include <signal.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <utility>

#include "network/OnvifWorker.h"
#include "request/Log.h"
#include "service/OnvifSettings.h"

namespace {

constexpr std::chrono::milliseconds kPause{150};
constexpr int kSyncs = 3;
constexpr std::chrono::seconds kPatience{2};  // that the service, and then the thread, have to end

/** Keeps every signal from a thread that is made meanwhile: they are the main thread's. */
class BlockedSignals {
 public:
  BlockedSignals() {
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_BLOCK, &all, &m_before);
  }
  ~BlockedSignals() { pthread_sigmask(SIG_SETMASK, &m_before, nullptr); }
  BlockedSignals(const BlockedSignals&) = delete;
  BlockedSignals& operator=(const BlockedSignals&) = delete;

 private:
  sigset_t m_before{};
};

void killService(const char* command) {
  if (std::system(command) < 0) TMX_LOG(LOG_ERR, "system(%m)");
}

}  // namespace

void OnvifThread::start() {
  if (m_threadRunning->exchange(true)) {
    TMX_LOG(LOG_INFO, "thread already alive");
    return;
  }
  std::packaged_task<void()> task([isRunning = m_threadRunning] { run(*isRunning); });
  m_ended = task.get_future();
  const BlockedSignals blocked;
  m_thread = std::thread(std::move(task));
}

OnvifThread::~OnvifThread() {
  *m_threadRunning = false;
  if (!m_thread.joinable()) return;
  const auto hasEnded = [this] { return m_ended.wait_for(kPatience) == std::future_status::ready; };
  killService("killall nvt_apl");
  if (!hasEnded()) killService("killall -9 nvt_apl");
  if (hasEnded()) {
    m_thread.join();
  } else {
    m_thread.detach();
  }
}

void OnvifThread::run(const std::atomic<bool>& isRunning) {
  while (isRunning) {
    m_nvtAplReboot(isRunning);
    std::this_thread::sleep_for(kPause);
  }
}

void OnvifThread::m_nvtAplReboot(const std::atomic<bool>& isRunning) {
  const OnvifSettings settings = OnvifSettings::published();
  if (!settings.isOn) return;
  OnvifWorker::refreshProfiles(settings);
  if (!isRunning) return;
  const pid_t pid = OnvifWorker::start(settings);
  // Whoever published meanwhile may have looked for the service before its pid stood in the file.
  if (pid > 0 && OnvifSettings::published() != settings) kill(pid, SIGTERM);
  OnvifWorker::tellDetection();
  for (int i = 0; i < kSyncs; ++i)
    sync();
  if (pid > 0) OnvifWorker::waitForEnd(pid);
}
