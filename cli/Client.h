#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tmx {

/** Who a request is made for; the daemon grants rights by this number. */
enum class UserClass : std::uint8_t { kAdmin = 0, kOperator = 1, kUser = 2, kOnvif = 3, kDebug = 4 };

/** How the lines of the answer end: "<BR>\r\n" or "\r\n". */
enum class LineEnd : std::uint8_t { kHtml = 0, kPlain = 1 };

/** The daemon executes at most this many items of one request. */
inline constexpr std::size_t kMaxItems = 15;
/** The longest text of one request in bytes: a frame announces at most 1026, of which 2 are the header. */
inline constexpr std::size_t kMaxText = 1024;
/** The bytes of the length in front of a request and of an answer. */
inline constexpr std::size_t kLengthSize = 4;

enum class Outcome {
  kAnswered,
  kNoConnection,  ///< nobody listens on the socket
  kNoAnswer,      ///< the connection ended before a whole answer came
  kTimedOut,
};

/** What became of a request: the text of the answer when answered, else the reason in words. */
struct [[nodiscard]] Reply {
  Outcome outcome = Outcome::kNoAnswer;
  std::string text;
};

/** The bytes of one request as they go over the socket. */
[[nodiscard]] std::string requestFrame(UserClass user, LineEnd lineEnd, std::string_view text);

/** The length that stands in the first kLengthSize bytes of a frame. */
[[nodiscard]] std::uint32_t frameLength(const char* bytes);

/** An answer longer than this is no answer of the daemon's; its largest is the system log. */
inline constexpr std::uint32_t kMaxAnswer = 64U << 20;

/** A connection to the daemon's socket, which waits where its backlog is full; below 0 with errno set. */
[[nodiscard]] int connectTo(const std::string& socket, std::chrono::milliseconds timeout);

/**
 * One request and its answer over a connection, which it makes one that does not wait and leaves open: step() whenever
 * poll() finds the events.
 */
class Exchange {
 public:
  Exchange(int descriptor, std::string frame, std::uint32_t maxAnswer = kMaxAnswer);

  [[nodiscard]] short events() const;
  /** Goes as far as it can; what became of it once that is known. */
  [[nodiscard]] std::optional<Reply> step();

 private:
  [[nodiscard]] std::optional<Reply> send();
  [[nodiscard]] std::optional<Reply> receive();

  int m_descriptor;
  std::string m_bytes;     ///< the frame, then the answer's length, then its text
  std::size_t m_done = 0;  ///< of these
  enum class Stage { kSending, kLength, kText } m_stage = Stage::kSending;
  std::uint32_t m_maxAnswer;
};

/** Carries an exchange over the connection out, from its begin to its end. */
[[nodiscard]] Reply exchangeOver(int descriptor, std::string_view frame, std::chrono::milliseconds timeout);

/**
 * A client of the parameter daemon. One exchange is one connection: the daemon answers one request and closes. An
 * object holds nothing but the address and the time-out, so it may be copied and used for any number of exchanges.
 */
class Client {
 public:
  /** @param timeout the longest time that one exchange may take, from the connection to the last byte. */
  Client(std::string socket, std::chrono::milliseconds timeout) : m_socket(std::move(socket)), m_timeout(timeout) {}

  Reply exchange(UserClass user, LineEnd lineEnd, std::string_view text) const;
  /** Sends the bytes as they stand and reads one answer. */
  Reply exchangeFrame(std::string_view frame) const;

  [[nodiscard]] const std::string& socket() const { return m_socket; }

 private:
  std::string m_socket;
  std::chrono::milliseconds m_timeout;
};

}  // namespace tmx
