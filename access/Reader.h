#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "access/Reactor.h"
#include "access/Upstream.h"
#include "cli/Item.h"

namespace tmx {

/** Reads values again and again, each once for all who look at it as the same class; does nothing without a value. */
class Reader {
 public:
  /** A parameter as one class sees it. */
  struct Value {
    UserClass user;
    std::string_view path;  ///< the reader's
    bool isSlow;
    int status = 0;  ///< 0 before it was read
    std::string text = {};
    bool hasText = false;
    std::uint64_t changed = 0;    ///< counts the changes of all values; 0 before it was read
    Clock::time_point read = {};  ///< when it was asked for
  };
  struct Periods {
    std::chrono::milliseconds usual;
    std::chrono::milliseconds slow;  ///< of what takes the daemon time, or changes with each read
  };

  /** @param heard called when all values of a class have been read. */
  Reader(Reactor& reactor, Upstream& upstream, Periods periods, std::function<void()> heard)
      : m_reactor(reactor), m_upstream(upstream), m_periods(periods), m_heard(std::move(heard)) {}

  /** Why the path must not be asked for again and again; a null pointer for one that may be. */
  [[nodiscard]] static const char* faultOf(std::string_view path);

  /** The value, which is read as long as somebody holds it; readSoon() begins with a new one. */
  [[nodiscard]] std::shared_ptr<const Value> watch(UserClass user, const std::string& path);
  /** Of different values that somebody holds. */
  [[nodiscard]] std::size_t count();
  /** The change of a value that was the last. */
  [[nodiscard]] std::uint64_t changes() const { return m_changes; }

  /** Reads at once what is due. */
  void readSoon() { readIn(std::chrono::milliseconds(0)); }
  /** All that is not slow may be another by now: reads it at once, what is being read once more. */
  void refresh() {
    m_refreshed = Clock::now();
    readSoon();
  }

 private:
  void readIn(std::chrono::milliseconds time);
  void readAll();
  void readNext();
  [[nodiscard]] bool isDue(const Value& value) const;
  void take(Value& value, const Answer& answer, Clock::time_point asked);

  Reactor& m_reactor;
  Upstream& m_upstream;
  Periods m_periods;
  std::function<void()> m_heard;
  std::map<std::pair<UserClass, std::string>, std::weak_ptr<Value>> m_values;
  std::uint64_t m_changes = 0;
  Clock::time_point m_refreshed = {};
  bool m_isUnderWay = false;
  std::vector<std::shared_ptr<Value>> m_due;  ///< of the round that is under way, those to be read next at the end
  bool m_isReadAgain = false;
  Reactor::Timer m_nextRead = 0;
};

}  // namespace tmx
