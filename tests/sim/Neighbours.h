#pragma once

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "sim/common/Json.h"
#include "sim/common/UnixSocket.h"
#include "sim/neighbours/Control.h"
#include "sim/neighbours/Loop.h"
#include "sim/neighbours/Neighbourhood.h"

/** What the tests of the neighbours share: messages in bytes, and the neighbours at work. */
namespace test {

using Milliseconds = std::chrono::milliseconds;
using std::string_literals::operator""s;

/** Long enough for any answer on a busy machine. */
constexpr Milliseconds patience(5000);
/** How long silence is listened to. */
constexpr Milliseconds silence(100);

/** Numbers as words of four bytes, low byte first. */
inline std::string words(std::initializer_list<int> numbers) {
  std::string bytes;
  for (const int number : numbers) {
    for (int shift = 0; shift < 32; shift += 8) {
      bytes += static_cast<char>(static_cast<unsigned>(number) >> shift & 0xff);
    }
  }
  return bytes;
}

inline std::string padded(std::string bytes, std::size_t size) { return bytes.append(size - bytes.size(), '\0'); }

/** A packet of the recorder with a number or a text as its value. */
inline std::string packet(int command, int argument, int id, const std::string& value) {
  return padded(words({command, argument, id}) + value, 1012);
}

inline std::string detectionPacket(int kind, const std::string& text) { return padded(words({kind}) + text, 68); }

inline std::string sessionRequest(int command) { return words({4, command}); }
inline std::string sessionRequest(int command, int index) { return words({8, command, index, 0}); }
inline std::string sessionRequest(int command, const std::string& text) {
  return words({static_cast<int>(text.size()) + 4, command}) + text + std::string(4, '\0');
}
inline std::string sessionAnswer(const std::string& text) { return words({static_cast<int>(text.size())}) + text; }

inline std::string serialRequest(int port) {
  return padded(words({1, port, 19200, 7}) + padded("odd", 8) + words({2}), 112);
}

inline std::string cardRequest(int command) { return padded(words({command}), 10); }
inline std::string cardAnswer(int value, int message) { return std::string(8, '\0') + words({value | message << 16}); }

/** What came within a time, and whether the neighbour closed the connection. */
struct Received {
  std::string bytes;
  bool closed = false;
};

/** The neighbours at work in a folder of their own, on a thread of their own. */
class Neighbours : public testing::Test {
 protected:
  void SetUp() override {
    m_root = (std::filesystem::temp_directory_path() / "camera-XXXXXX").string();
    ASSERT_NE(::mkdtemp(m_root.data()), nullptr);
    std::filesystem::create_directories(m_root + "/tmp");
    std::filesystem::create_directories(m_root + "/run/camera");
    ::setenv("CAMERA_JOURNAL", journalPath().c_str(), 1);
    ASSERT_EQ(::pipe(m_end.data()), 0);
    m_neighbourhood = std::make_unique<sim::Neighbourhood>(m_loop, m_root);
    ASSERT_TRUE(m_neighbourhood->up());
    m_control = std::make_unique<sim::Control>(m_loop, *m_neighbourhood, m_root + "/run/camera/control");
    ASSERT_TRUE(m_control->isListening());
    m_loop.watch(m_end[0], [this] { m_loop.stop(); });
    m_thread = std::thread([this] { m_loop.run(); });
  }

  void TearDown() override {
    if (m_thread.joinable()) {
      EXPECT_EQ(::write(m_end[1], "", 1), 1);
      m_thread.join();
    }
    ::close(m_end[0]);
    ::close(m_end[1]);
    std::filesystem::remove_all(m_root);
  }

  [[nodiscard]] std::string journalPath() const { return m_root + "/run/camera/journal.jsonl"; }
  [[nodiscard]] sim::Descriptor connect(const std::string& name) const {
    return sim::connectTo(m_root + "/tmp/" + name);
  }

  static Received receive(const sim::Descriptor& socket, std::size_t size, Milliseconds limit = patience) {
    Received received;
    const auto end = std::chrono::steady_clock::now() + limit;
    while (received.bytes.size() < size) {
      const auto left = std::chrono::ceil<Milliseconds>(end - std::chrono::steady_clock::now()).count();
      pollfd entry{socket.number(), POLLIN, 0};
      if (left <= 0 || ::poll(&entry, 1, static_cast<int>(left)) <= 0) break;
      std::array<char, 2048> buffer{};
      const ssize_t count = ::recv(socket.number(), buffer.data(), buffer.size(), 0);
      received.closed = count <= 0;
      if (count <= 0) break;
      received.bytes.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return received;
  }

  /** One exchange on a connection of its own, for an answer of that size. */
  [[nodiscard]] Received exchange(const std::string& name, const std::string& request, std::size_t size,
                                  Milliseconds limit = patience) const {
    const sim::Descriptor socket = connect(name);
    if (!socket.isOpen()) return {"", true};
    if (::send(socket.number(), request.data(), request.size(), MSG_NOSIGNAL) < 0) return {"", true};
    return receive(socket, size, limit);
  }

  [[nodiscard]] sim::Descriptor connectControl() const { return sim::connectTo(m_root + "/run/camera/control"); }

  static std::string tell(const sim::Descriptor& control, const std::string& line) {
    const std::string bytes = line + "\n";
    if (::send(control.number(), bytes.data(), bytes.size(), MSG_NOSIGNAL) < 0) return "unreachable";
    std::string answer;
    while (!answer.ends_with('\n')) {
      const Received received = receive(control, 1);
      if (received.bytes.empty()) return "no answer";
      answer += received.bytes;
    }
    answer.pop_back();
    return answer;
  }

  [[nodiscard]] std::string tell(const std::string& line) const { return tell(connectControl(), line); }

  /** A member of each line of the journal that has this "what". */
  [[nodiscard]] std::vector<std::string> journal(const std::string& what, const std::string& key) const {
    std::vector<std::string> found;
    std::ifstream file(journalPath());
    for (std::string line; std::getline(file, line);) {
      if (line.find("\"what\":\"" + what + "\"") == std::string::npos) continue;
      for (const auto& [name, value] : sim::parseJsonObject(line).value_or(sim::JsonMembers{})) {
        if (name == key) found.push_back(value);
      }
    }
    return found;
  }

  /** A member of the last line of the journal. */
  [[nodiscard]] std::string lastInJournal(const std::string& key) const {
    std::ifstream file(journalPath());
    std::string last;
    for (std::string line; std::getline(file, line);)
      last = line;
    for (const auto& [name, value] : sim::parseJsonObject(last).value_or(sim::JsonMembers{})) {
      if (name == key) return value;
    }
    return "";
  }

  std::string m_root;

 private:
  std::array<int, 2> m_end{};
  sim::Loop m_loop;
  std::unique_ptr<sim::Neighbourhood> m_neighbourhood;
  std::unique_ptr<sim::Control> m_control;
  std::thread m_thread;
};

}  // namespace test
