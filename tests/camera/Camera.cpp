#include "tests/camera/Camera.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <sstream>
#include <thread>

namespace test {

namespace {

constexpr const char* kBuild = TMX_BUILD_DIR;
constexpr const char* kClosed = "<closed>";
/** Longer than any start or answer takes, on a loaded machine and under the sanitizers. */
constexpr std::chrono::seconds kPatience{60};

int run(const std::vector<std::string>& words, const char* output = nullptr) {
  std::vector<char*> argv;
  for (const std::string& word : words) {
    argv.push_back(const_cast<char*>(word.c_str()));
  }
  argv.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  if (output != nullptr)
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, output, O_WRONLY | O_CREAT | O_TRUNC, 0600);
  pid_t child = 0;
  int status = -1;
  if (posix_spawn(&child, argv[0], &actions, nullptr, argv.data(), environ) == 0) waitpid(child, &status, 0);
  posix_spawn_file_actions_destroy(&actions);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

std::filesystem::path newHome() {
  const char* where = std::getenv("TMX_TEST_HOMES");
  std::string pattern = std::string(where != nullptr ? where : "/dev/shm") + "/tmx-test-XXXXXX";
  return mkdtemp(pattern.data()) != nullptr ? pattern : std::string();
}

/** What a socket of the camera answers to the bytes: up to the end, or all that comes once it is told that no more
 * follow. */
std::string exchange(const std::filesystem::path& path, std::string_view sent, std::string_view end = {}) {
  const int client = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  path.string().copy(address.sun_path, sizeof address.sun_path - 1);
  std::string bytes;
  if (connect(client, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0) {
    static_cast<void>(send(client, sent.data(), sent.size(), MSG_NOSIGNAL));
    if (end.empty()) shutdown(client, SHUT_WR);
    std::array<char, 4096> buffer{};
    for (ssize_t count = 0; (count = recv(client, buffer.data(), buffer.size(), 0)) > 0;) {
      bytes.append(buffer.data(), static_cast<size_t>(count));
      if (!end.empty() && bytes.ends_with(end)) break;
    }
  }
  close(client);
  return bytes;
}

std::string withoutLineEnd(std::string text) {
  for (const std::string_view end : {"<BR>\r\n", "\r\n"}) {
    if (text.ends_with(end)) {
      text.resize(text.size() - end.size());
      break;
    }
  }
  return text;
}

}  // namespace

Camera::Camera(CameraOptions options) : m_options(std::move(options)), m_home(newHome()) {}

Camera::~Camera() {
  down();
  std::error_code error;
  // Under the sanitizers the daemon leaves its findings here, those of its exit too.
  for (const auto& file : std::filesystem::directory_iterator(path("run"), error)) {
    const std::string name = file.path().filename();
    EXPECT_FALSE(name.starts_with("sanitizer.")) << read("run/" + name);
  }
  std::filesystem::remove_all(m_home, error);
}

int Camera::sandbox(std::vector<std::string> words) const {
  const std::string output = path("sandbox-output");
  const std::string command = words.front();
  words.front() = std::string(kBuild) + "/bin/camera-sandbox";
  words.insert(words.begin() + 1, {command, "--home", m_home});
  return run(words, output.c_str());
}

std::vector<std::string> Camera::upWords() const {
  std::vector<std::string> words{"up", "--quiet"};
  const char* daemon = std::getenv("TMX_DAEMON");
  if (daemon != nullptr && !m_options.isNative) words.insert(words.end(), {"--daemon", daemon});
  if (m_uplink != 0) words.insert(words.end(), {"--uplink", std::to_string(m_uplink)});
  if (!m_options.model.empty()) words.insert(words.end(), {"--model", m_options.model});
  for (const std::string& feature : m_options.without) {
    words.insert(words.end(), {"--without", feature});
  }
  for (const std::string& argument : m_options.daemonArguments) {
    words.insert(words.end(), {"--tmxd-arg", argument});
  }
  for (const std::string& argument : m_options.guardArguments) {
    words.insert(words.end(), {"--guard-arg", argument});
  }
  return words;
}

bool Camera::up() { return sandbox(upWords()) == 0; }

void Camera::start() {
  std::vector<std::string> words = upWords();
  words.insert(words.end(), {"--timeout", "0"});
  sandbox(words);
}

void Camera::down() { sandbox({"down"}); }

void Camera::cut() { sandbox({"cut"}); }

bool Camera::isOn() const { return sandbox({"status"}) == 0; }

bool Camera::reboot() { return sandbox({"reboot"}) == 0; }

bool Camera::restartsBehind(std::string_view request) {
  return restartsBehind([&] { EXPECT_TRUE(ask(request).ends_with("&200 OK")) << request; });
}

bool Camera::restartsBehind(const std::function<void()>& action) {
  // The first line that the daemon logs.
  const auto starts = [this] {
    const std::string text = log();
    size_t count = 0;
    for (size_t at = text.find("setLogLevel="); at != std::string::npos; at = text.find("setLogLevel=", at + 1))
      ++count;
    return count;
  };
  const size_t before = starts();
  action();
  return eventually([&] { return starts() > before; }) && eventually([this] { return ask("system.model") != kClosed; });
}

std::string Camera::ask(std::string_view text, UserClass user, LineEnd lineEnd) {
  const tmx::Reply reply = tmx::Client(path("tmp/request"), kPatience).exchange(user, lineEnd, text);
  return reply.outcome == tmx::Outcome::kAnswered ? withoutLineEnd(reply.text) : kClosed;
}

std::string Camera::askRaw(std::string_view frame) {
  const std::string bytes = exchange(path("tmp/request"), frame);
  if (bytes.size() < tmx::kLengthSize) return kClosed;
  EXPECT_EQ(tmx::frameLength(bytes.data()), bytes.size() - tmx::kLengthSize);
  return withoutLineEnd(bytes.substr(tmx::kLengthSize));
}

std::string Camera::read(std::string_view file) const {
  std::ostringstream text;
  text << std::ifstream(path(file), std::ios::binary).rdbuf();
  return text.str();
}

void Camera::write(std::string_view file, std::string_view content) const {
  std::ofstream(path(file), std::ios::binary | std::ios::trunc) << content;
}

std::string Camera::row(std::string_view file, std::string_view key) const {
  std::istringstream lines(read(file));
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with(std::string(key) + "=")) return line.substr(key.size() + 1);
  }
  return "<none>";
}

void Camera::setRow(std::string_view file, std::string_view key, std::string_view value) const {
  std::string text = "\n" + read(file);
  const std::string head = "\n" + std::string(key) + "=";
  const size_t start = text.find(head);
  ASSERT_NE(start, std::string::npos) << file << " has no " << key;
  const size_t from = start + head.size();
  write(file, text.replace(from, text.find('\n', from) - from, value).substr(1));
}

void Camera::setRows(std::string_view file, const Texts& rows) const {
  for (const std::string& text : rows)
    setRow(file, text.substr(0, text.find('=')), text.substr(text.find('=') + 1));
}

std::string Camera::tell(std::string_view words) const {
  const std::string answer = exchange(path("run/control"), std::string(words) + "\n", "\n");
  EXPECT_TRUE(answer == "ok\n" || answer.starts_with("{")) << words << ": " << answer;
  return answer;
}

void Camera::flash(std::string_view word) const { EXPECT_EQ(sandbox({"flash", std::string(word)}), 0) << word; }

unsigned Camera::flashCount(const std::string& what) const {
  sandbox({"flash", "show"});
  const std::string counts = read("sandbox-output");
  return static_cast<unsigned>(std::atoi(counts.c_str() + counts.find(what) + what.size()));
}

Texts Camera::journal(std::string_view who) const {
  std::ifstream file(path("journal.jsonl"), std::ios::binary);
  file.seekg(static_cast<std::streamoff>(m_journalStart));
  std::vector<std::string> lines;
  for (std::string line; std::getline(file, line);) {
    if (who.empty() || field(line, "who") == who) lines.push_back(line);
  }
  return lines;
}

void Camera::clearJournal() {
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(path("journal.jsonl"), error);
  m_journalStart = error ? 0 : size;
}

std::string Camera::field(std::string_view line, std::string_view key) {
  const std::string name = "\"" + std::string(key) + "\":";
  size_t start = line.find(name);
  if (start == std::string_view::npos) return {};
  start += name.size();
  if (line[start] != '"') return std::string(line.substr(start, line.find_first_of(",}", start) - start));
  std::string text;
  for (size_t at = start + 1; at < line.size() && line[at] != '"'; ++at) {
    if (line[at] == '\\') ++at;
    text += line[at];
  }
  return text;
}

Texts Camera::journalFields(std::string_view who, std::string_view key) const {
  std::vector<std::string> values;
  for (const std::string& line : journal(who)) {
    values.push_back(field(line, key));
  }
  return values;
}

Texts Camera::toldDetection() const {
  Texts told;
  for (const std::string& line : journal("detection")) {
    told.push_back(field(line, "what") + " " + field(line, "text"));
  }
  return told;
}

namespace {

/** Of a packet's value only its owner knows whether it is a number or a text. */
bool isRecorderText(std::string_view name) {
  if (name.starts_with("channel(") || name == "disk.status") return true;
  const std::string_view item = name.substr(name.rfind('.') + 1);
  constexpr std::array<std::string_view, 8> kTexts{"trigger", "action",   "framerate", "host",
                                                   "user",    "password", "path",      "naming_option"};
  return std::find(kTexts.begin(), kTexts.end(), item) != kTexts.end();
}

}  // namespace

Texts Camera::toldRecorder(std::initializer_list<std::string_view> heads) const {
  Texts told;
  for (const std::string& line : journal("recorder")) {
    const std::string what = field(line, "what");
    const std::string name = field(line, "name");
    if (what == "put") told.push_back(name + " " + field(line, isRecorderText(name) ? "text" : "value"));
    if (what == "get") told.push_back("get " + name);
    if (what == "restart") told.push_back("restart " + field(line, "value"));
  }
  const auto startsOtherwise = [&heads](const std::string& text) {
    return std::ranges::none_of(heads, [&text](std::string_view head) { return text.starts_with(head); });
  };
  if (heads.size() != 0) std::erase_if(told, startsOtherwise);
  return told;
}

Texts Camera::lifeOf(std::string_view program) const {
  Texts life;
  for (const std::string& line : journal("child")) {
    const std::string what = field(line, "what");
    const std::string command = field(line, "command");
    if (what.starts_with(program)) life.push_back(command.empty() ? what : command);
  }
  return life;
}

int Camera::ctl(const std::string& line) const {
  const std::string tmxctl =
      std::string("env TMX_DESCRIPTION=") + kBuild + "/parameters.json " + kBuild + "/bin/tmxctl -s tmp/request ";
  return run({"/bin/sh", "-c", "cd \"$0\" && exec " + tmxctl + line, m_home});
}

int Camera::exec(const std::vector<std::string>& words) const {
  std::vector<std::string> command{"exec", "--"};
  command.insert(command.end(), words.begin(), words.end());
  return sandbox(command);
}

bool Camera::isLogged(std::string_view text) const {
  return eventually([&] { return log().find(text) != std::string::npos; });
}

std::string Camera::pageStatus(const std::string& page, const std::string& account, const std::string& password) const {
  const std::string script = "login=$(printf '%s' '" + account + ":" + password +
                             "' | openssl base64 -A); exec 3<>/dev/tcp/127.0.0.1/80; " + "printf 'GET " + page +
                             " HTTP/1.0\\r\\nAuthorization: Basic %s\\r\\n\\r\\n' \"$login\" >&3; " +
                             "read -r version status rest <&3; printf '%s' \"$status\" > /run/camera/page";
  exec({"/bin/bash", "-c", script});
  return read("run/page");
}

std::string Camera::shell(const std::string& line) const {
  exec({"/bin/sh", "-c", line});
  std::string text = read("sandbox-output");
  if (text.ends_with('\n')) text.pop_back();
  return text;
}

Relay::Relay(const Camera& camera)
    : m_output(popen(("echo $$; exec " + std::string(kBuild) + "/bin/camera-sandbox relay --home " +
                      camera.path("").string() + " 0 0")
                         .c_str(),
                     "r")) {
  EXPECT_EQ(std::fscanf(m_output, "%d %d %d", &m_pid, &m_port, &m_encryptedPort), 3);
}

Relay::~Relay() {
  kill(m_pid, SIGTERM);
  pclose(m_output);
}

Texts spread(const Texts& all, size_t usual, size_t offset) {
  if (std::getenv("TMX_LONG") != nullptr) return all;
  Texts some;
  const size_t stride = (all.size() + usual - 1) / usual;
  for (size_t i = stride == 0 ? 0 : offset % stride; i < all.size(); i += stride)
    some.push_back(all[i]);
  return some;
}

bool eventually(const std::function<bool()>& happened) {
  const auto end = std::chrono::steady_clock::now() + kPatience;
  while (!happened()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  }
  return true;
}

std::string pathOf(std::string_view request) { return std::string(request.substr(0, request.find('='))); }

void expectAnswers(Camera& camera, std::initializer_list<Exchange> exchanges) { expectAnswers(camera, "", exchanges); }

void expectAnswers(Camera& camera, const std::string& head, std::initializer_list<Exchange> exchanges) {
  for (const auto& [item, answer, user] : exchanges) {
    const bool isBehindPath = answer.starts_with('&') || answer.starts_with('=');
    const std::string request = head + item;
    EXPECT_EQ(camera.ask(request, user), (isBehindPath ? pathOf(request) : head) + answer) << request;
  }
}

void expectEach(Camera& camera, const std::string& head, const Texts& requests, const std::string& answer) {
  for (const std::string& request : requests)
    expectAnswers(camera, head, {{request, answer}});
}

void expectShown(Camera& camera, const std::string& head, const Texts& values) {
  for (const std::string& text : values)
    expectAnswers(camera, head, {{pathOf(text), text.substr(text.find('=')) + "&200 OK"}});
}

void expectSteps(Camera& camera, const std::string& head, const std::vector<Step>& steps,
                 const std::function<Texts()>& heard, UserClass user) {
  for (const Step& step : steps) {
    camera.clearJournal();
    expectAnswers(camera, head, {{step.request, step.answer, user}});
    EXPECT_EQ(heard(), step.heard) << step.request;
  }
}

void expectUnderFaults(Camera& camera, const std::string& neighbour, const TextPairs& faults, const std::string& head,
                       const Texts& requests) {
  for (const auto& [fault, answer] : faults) {
    SCOPED_TRACE(fault);
    camera.tell(neighbour + " " + fault);
    expectEach(camera, head, requests, answer);
    camera.tell(neighbour + " up");
  }
}

void expectRows(const Camera& camera, std::string_view file, const Texts& rows) {
  for (const std::string& text : rows)
    EXPECT_EQ(pathOf(text) + "=" + camera.row(file, pathOf(text)), text) << file;
}

void expectSequence(Camera& camera, const std::string& path, const std::string& pairs) {
  std::istringstream words(pairs);
  for (std::string item, expected; words >> item >> expected;) {
    const bool isShown = item == "?" && !expected.starts_with('&');
    const std::string answer = camera.ask(item == "?" ? path : path + item);
    const std::string status = path + (expected.starts_with('&') ? "" : "&") + expected + " ";
    EXPECT_EQ(isShown ? answer : answer.substr(0, status.size()), isShown ? path + "=" + expected + "&200 OK" : status)
        << path << item << " in " << pairs;
  }
}

std::unique_ptr<Camera> CameraTest::s_camera;

void CameraTest::SetUpTestSuite() {
  s_camera = std::make_unique<Camera>();
  ASSERT_TRUE(s_camera->up()) << s_camera->read("sandbox-output") << s_camera->log();
}

void CameraTest::TearDownTestSuite() { s_camera.reset(); }

void CameraTest::SetUp() { camera().clearJournal(); }

Camera& CameraTest::camera() { return *s_camera; }

}  // namespace test
