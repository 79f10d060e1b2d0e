#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "cli/Client.h"

namespace test {

using tmx::LineEnd;
using tmx::UserClass;
using Texts = std::vector<std::string>;
using TextPairs = std::vector<std::pair<std::string, std::string>>;

/** What a simulated camera is made of and started with. */
struct CameraOptions {
  std::string model = {};
  std::vector<std::string> without = {};
  std::vector<std::string> daemonArguments = {};
  std::vector<std::string> guardArguments = {};  ///< of the console's guard
  bool isNative = false;  ///< with this machine's daemon, also where TMX_DAEMON names another's build
};

/** A simulated camera in a home of its own, spoken to as a client does; gone with the object. */
class Camera {
 public:
  explicit Camera(CameraOptions options = {});
  ~Camera();
  Camera(const Camera&) = delete;
  Camera& operator=(const Camera&) = delete;

  /** From the next up() on the camera's one way out leads to this port of the machine. */
  void leadUplinkTo(int port) { m_uplink = port; }

  // The power. Each waits until it has happened; false when the camera did not come up.
  [[nodiscard]] bool up();
  /** Boots without waiting for an answer, for a start that is expected to fail. */
  void start();
  void down();
  void cut();
  [[nodiscard]] bool isOn() const;
  [[nodiscard]] bool reboot();
  /** How often it has booted since it was switched on. */
  [[nodiscard]] int boots() const { return std::atoi(read("run/boots").c_str()); }
  /** Does something that restarts the camera; whether it came back. */
  [[nodiscard]] bool restartsBehind(const std::function<void()>& action);
  /** The same for a request, which restarts it behind its answer. */
  [[nodiscard]] bool restartsBehind(std::string_view request);

  /** The answer without its last line end; "<closed>" when the camera closes without one. */
  std::string ask(std::string_view text, UserClass user = UserClass::kAdmin, LineEnd lineEnd = LineEnd::kPlain);
  /** The same for bytes that are sent as they stand; the client then sends no more. */
  std::string askRaw(std::string_view frame);

  /** A file of the camera's home, such as "flash/sysconfig/ui.conf". */
  [[nodiscard]] std::filesystem::path path(std::string_view file) const { return m_home / file; }
  [[nodiscard]] std::string read(std::string_view file) const;
  void write(std::string_view file, std::string_view content) const;
  /** The value behind a key of a configuration file, "<none>" without the key. */
  [[nodiscard]] std::string row(std::string_view file, std::string_view key) const;
  /** Puts another value behind a key that the file has. */
  void setRow(std::string_view file, std::string_view key, std::string_view value) const;
  /** The same for each "key=value". */
  void setRows(std::string_view file, const Texts& rows) const;

  /** Changes a neighbour, or has it show its state; see `./camera tell`. The line that it answers. */
  std::string tell(std::string_view words) const;
  /** Counts or disturbs the file operations of flash; see `./camera tell flash`. */
  void flash(std::string_view word) const;
  /** The file operations since the last flash("count"), and those of them that write. */
  [[nodiscard]] unsigned flashOperations() const { return flashCount("operations="); }
  [[nodiscard]] unsigned flashWrites() const { return flashCount("writes="); }

  /** Journal lines of one part of the camera ("dsp", "gpio", …; empty for all) since the last clearJournal. */
  [[nodiscard]] Texts journal(std::string_view who = {}) const;
  void clearJournal();
  /** The text under a key of a journal line, without quotes. */
  [[nodiscard]] static std::string field(std::string_view line, std::string_view key);
  /** One key of each line of journal(who). */
  [[nodiscard]] Texts journalFields(std::string_view who, std::string_view key) const;
  /** "name text" of everything that the detection daemon got. */
  [[nodiscard]] Texts toldDetection() const;
  /**
   * "name value" of everything that was put into the recorder, "restart N" of a rule, "get name" of what was asked;
   * with `heads` only what begins with one of them.
   */
  [[nodiscard]] Texts toldRecorder(std::initializer_list<std::string_view> heads = {}) const;
  /** What became of a program: its command lines, and "rtspd ends" and the like. */
  [[nodiscard]] Texts lifeOf(std::string_view program) const;

  [[nodiscard]] std::string log() const { return read("syslog"); }
  /** Whether the log holds the text, or gets it within some seconds. */
  [[nodiscard]] bool isLogged(std::string_view text) const;
  /** Runs tmxctl from outside, in the camera's home, with a line of shell behind it; its exit status. */
  [[nodiscard]] int ctl(const std::string& line) const;
  /** Runs a command inside; its exit status. */
  int exec(const std::vector<std::string>& words) const;
  /** What a line of shell prints inside, without its last line end. */
  std::string shell(const std::string& line) const;
  /** The web server's status for a page, asked for with this login. */
  std::string pageStatus(const std::string& page, const std::string& account, const std::string& password) const;

 private:
  [[nodiscard]] Texts upWords() const;
  int sandbox(Texts words) const;
  [[nodiscard]] unsigned flashCount(const std::string& what) const;

  CameraOptions m_options;
  int m_uplink = 0;
  std::filesystem::path m_home;
  std::uintmax_t m_journalStart = 0;
};

/** A camera's web server at ports of this machine; before it is up, too. */
class Relay {
 public:
  explicit Relay(const Camera& camera);
  ~Relay();
  Relay(const Relay&) = delete;
  Relay& operator=(const Relay&) = delete;

  [[nodiscard]] int port() const { return m_port; }
  [[nodiscard]] int encryptedPort() const { return m_encryptedPort; }

 private:
  FILE* m_output;
  int m_pid = 0;
  int m_port = 0;
  int m_encryptedPort = 0;
};

/** All of the list with TMX_LONG set, else so many at equal distances. */
[[nodiscard]] Texts spread(const Texts& all, size_t usual, size_t offset);

/** Waits for something that another process does; whether it happened. */
[[nodiscard]] bool eventually(const std::function<bool()>& happened);

/** What stands before the value of a request. */
[[nodiscard]] std::string pathOf(std::string_view request);

/** A request and the answer that it must get; one that begins with "&" or "=" stands behind the path. */
struct Exchange {
  std::string request;
  std::string answer;
  UserClass user = UserClass::kAdmin;
};

/** Asks one after the other; `head` stands before each request, as before each answer that names a path. */
void expectAnswers(Camera& camera, std::initializer_list<Exchange> exchanges);
void expectAnswers(Camera& camera, const std::string& head, std::initializer_list<Exchange> exchanges);

/** Each request gets the same answer. */
void expectEach(Camera& camera, const std::string& head, const Texts& requests, const std::string& answer);
/** A read of each "path=value" shows the value. */
void expectShown(Camera& camera, const std::string& head, const Texts& values);

/** A request, the answer behind its path, and what somebody has heard of it. */
struct Step {
  std::string request;
  std::string answer;
  Texts heard = {};
};

/** Takes the steps one after the other, each with `head` before its request. */
void expectSteps(Camera& camera, const std::string& head, const std::vector<Step>& steps,
                 const std::function<Texts()>& heard, UserClass user = UserClass::kAdmin);

/** Under each fault of a neighbour, which is mended behind it, every request gets the fault's answer. */
void expectUnderFaults(Camera& camera, const std::string& neighbour, const TextPairs& faults, const std::string& head,
                       const Texts& requests);

/** Each "key=value" stands in the file. */
void expectRows(const Camera& camera, std::string_view file, const Texts& rows);

/** Writes and reads of one path in pairs of words: "=value" and the status, or "?" and what is shown or "&status". */
void expectSequence(Camera& camera, const std::string& path, const std::string& pairs);

/** A suite whose cases share one camera of the given options, booted once. */
class CameraTest : public testing::Test {
 protected:
  static void SetUpTestSuite();
  static void TearDownTestSuite();
  void SetUp() override;

  static Camera& camera();

 private:
  static std::unique_ptr<Camera> s_camera;
};

}  // namespace test
