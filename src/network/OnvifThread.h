#pragma once

#include <atomic>
#include <future>
#include <memory>
#include <thread>

/**
 * The thread that keeps the ONVIF service running while it is on: it brings the profiles up to date, starts the service
 * and waits for its end, again and again. Whoever wants it to run with other settings publishes them and ends it.
 */
class OnvifThread {
 public:
  OnvifThread() = default;
  /** Ends the service, by force if it does not go, and the thread. */
  ~OnvifThread();
  OnvifThread(const OnvifThread&) = delete;
  OnvifThread& operator=(const OnvifThread&) = delete;

  /** Once; a second call changes nothing. */
  void start();

 private:
  /** What the thread shares; it may outlive this object where a neighbour keeps it waiting. */
  using Running = std::shared_ptr<std::atomic<bool>>;

  static void run(const std::atomic<bool>& isRunning);
  static void m_nvtAplReboot(const std::atomic<bool>& isRunning);

  Running m_threadRunning = std::make_shared<std::atomic<bool>>(false);
  std::future<void> m_ended;
  std::thread m_thread;
};
