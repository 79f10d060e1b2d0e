// Frames through the whole daemon: the real tree with its replay, the closed library's stand-in, and neighbours that
// answer, in a file system, a network and a host name of its own. The mutator makes requests of the tree's paths,
// selectors and words.

#include <sched.h>
#include <sys/mount.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cassert>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <thread>
#include <variant>
#include <vector>

#include "daemon/ParamRequest.h"
#include "describe/Rows.h"
#include "sim/neighbours/Loop.h"
#include "sim/neighbours/Neighbourhood.h"
#include "tree/CManBase.h"

extern "C" size_t LLVMFuzzerMutate(uint8_t* data, size_t size, size_t most);

namespace {

constexpr size_t kMostText = 1024;

// ---- The world -----------------------------------------------------------------------------------------------------

bool hideHost() {
  const uid_t user = getuid();
  const gid_t group = getgid();
  const int own = CLONE_NEWNS | CLONE_NEWNET | CLONE_NEWUTS | CLONE_NEWIPC;
  if (unshare(own | (user == 0 ? 0 : CLONE_NEWUSER)) != 0) return false;
  if (user != 0) {
    std::ofstream("/proc/self/setgroups") << "deny";
    std::ofstream("/proc/self/uid_map") << "0 " << user << " 1";
    std::ofstream("/proc/self/gid_map") << "0 " << group << " 1";
  }
  if (mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) return false;
  for (const char* folder : {"/mnt", "/tmp", "/etc", "/var"}) {
    if (mount("own", folder, "tmpfs", 0, nullptr) != 0) return false;
  }
  for (const char* folder :
       {"/mnt/sysinfo", "/mnt/flash/sysconfig/application", "/mnt/flash/sysconfig/event", "/mnt/flash/sysconfig/patrol",
        "/mnt/flash/sysconfig/position", "/mnt/flash/sysconfig/encode", "/mnt/flash/sysconfig/scene",
        "/mnt/flash/sysconfig/aud_detect", "/mnt/flash/audio", "/etc/lighttpd", "/etc/onvif", "/var/run",
        "/run/camera"})
    std::filesystem::create_directories(folder);
  std::ofstream("/mnt/flash/model") << "KT-A10\n";
  std::ofstream features("/mnt/flash/model.conf");
  for (size_t i = 1; i < ModelFeature::kCount; ++i)
    features << ModelFeature::name(static_cast<Feature>(i)) << "=TRUE\n";
  return true;
}

void runNeighbours() {
  std::thread([] {
    sim::Loop loop;
    sim::Neighbourhood neighbourhood(loop, "");
    if (!neighbourhood.up()) std::abort();
    loop.run();
  }).detach();
}

// ---- Requests ------------------------------------------------------------------------------------------------------

/** A leaf, with what stands in front of the brackets of each layer and what may stand between them. */
struct Leaf {
  std::vector<std::string> layers;
  describe::Choices choices;
  const Rule* rule;
};

std::vector<Leaf> leaves;

void collect(const std::list<CApiBase*>& nodes, const Leaf& above) {
  for (const CApiBase* node : nodes) {
    Leaf leaf = above;
    leaf.layers.emplace_back(node->getLayerName());
    leaf.choices.push_back(describe::choices(node->getSelector()));
    leaf.rule = node->getRule();
    if (!node->getPermission().empty()) leaves.push_back(leaf);
    collect(node->getNextLayers(), leaf);
  }
}

void collectLeaves() {
  for (const char* root : {"system", "network", "camera", "encode", "peripheral", "application", "audio", "video",
                           "storage", "userinterface", "onvif"}) {
    const CManBase* manager = ParamRequest::findRoot(root);
    collect(manager->getNextLayers(), {{root}, {describe::choices(manager->getSelector())}, nullptr});
  }
}

class Composer {
 public:
  explicit Composer(unsigned seed) : m_random(seed) {}

  std::string text() {
    std::string text = item();
    while (oneIn(4) && text.size() < kMostText / 2)
      text += "&" + item();
    return text;
  }

 private:
  bool oneIn(unsigned count) { return m_random() % count == 0; }
  template <class List>
  const auto& any(const List& list) {
    return *(std::begin(list) + static_cast<std::ptrdiff_t>(m_random() % std::size(list)));
  }

  std::string hostile() {
    static const std::array<std::string, 16> kTexts = {"",       "-1",      "2147483648", "4294967297",  "007", "1e9",
                                                       "%00",    "%0a",     "+",          "-",           "s1",  "x2",
                                                       "a\nb=c", "../../x", "$(x);`y`",   "\xc3\xbc\xff"};
    return oneIn(8) ? std::string(m_random() % 600, '0') + "1" : any(kTexts);
  }

  std::string value(const Rule& rule) {
    if (oneIn(4)) return hostile();
    if (!rule.commands.front().word.empty() && oneIn(3)) return std::string(any(rule.commands).word);
    if (const auto* words = std::get_if<Words>(&rule.accepts)) {
      const auto count = static_cast<size_t>(words->end() - words->begin());
      return std::string(words->begin()[m_random() % count].text);
    }
    if (const auto* number = std::get_if<Number>(&rule.accepts)) {
      const int64_t span = int64_t{number->high} - number->low + 1;
      return std::to_string(number->low + static_cast<int64_t>(m_random()) % span);
    }
    if (const auto* list = std::get_if<OneOf>(&rule.accepts))
      return std::to_string(list->numbers[m_random() % list->count]);
    if (const auto* text = std::get_if<Text>(&rule.accepts))
      return std::string(std::min(text->most, kMostText / 2), 'a');
    if (const auto* test = std::get_if<Test>(&rule.accepts)) return std::string(test->form.taken);
    return "0.5";
  }

  std::string item() {
    const Leaf& leaf = any(leaves);
    std::string text;
    for (size_t i = 0; i < leaf.layers.size(); ++i) {
      text += (i == 0 ? "" : ".") + leaf.layers[i];
      const std::string selector = oneIn(16) ? hostile() : any(leaf.choices[i]);
      if (!selector.empty()) text += "(" + selector + ")";
    }
    if (leaf.rule == nullptr || oneIn(3)) return text;
    return text + "=" + value(*leaf.rule);
  }

  std::minstd_rand m_random;
};

// ---- One exchange --------------------------------------------------------------------------------------------------

std::string answerTo(ParamRequest& requests, const std::string& body) {
  std::array<int, 2> ends{};
  if (socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()) != 0) std::abort();
  const int size = 1 << 20;
  setsockopt(ends[1], SOL_SOCKET, SO_SNDBUF, &size, sizeof(size));
  const auto length = static_cast<uint32_t>(body.size());
  std::string frame(sizeof(length), '\0');
  std::memcpy(frame.data(), &length, sizeof(length));
  frame += body;
  if (write(ends[0], frame.data(), frame.size()) != static_cast<ssize_t>(frame.size())) std::abort();
  shutdown(ends[0], SHUT_WR);
  requests.processRequest(ends[1]);
  close(ends[1]);
  std::string answer;
  std::array<char, 4096> part{};
  for (ssize_t got = 0; (got = read(ends[0], part.data(), part.size())) > 0;)
    answer.append(part.data(), static_cast<size_t>(got));
  close(ends[0]);
  return answer;
}

/** The announced length is the answer's, which ends in a line end; the log's lines stand as they are. */
void check(const std::string& request, const std::string& answer) {
  if (answer.empty()) return;
  uint32_t length = 0;
  assert(answer.size() > sizeof(length));
  std::memcpy(&length, answer.data(), sizeof(length));
  assert(length == answer.size() - sizeof(length));
  assert(answer.ends_with("\r\n") || request.find("log") != std::string::npos);
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
  if (!hideHost()) {
    std::perror("fuzz_request: a file system of its own");
    std::exit(1);
  }
  setenv("CAMERA_JOURNAL", "/dev/null", 1);
  runNeighbours();
  return 0;
}

extern "C" size_t LLVMFuzzerCustomMutator(uint8_t* data, size_t size, size_t most, unsigned seed) {
  if (seed % 4 == 0 || leaves.empty()) return LLVMFuzzerMutate(data, size, most);
  const std::string text = Composer(seed).text();
  if (text.size() + 2 > most) return LLVMFuzzerMutate(data, size, most);
  data[0] = static_cast<uint8_t>(seed % 8 < 6 ? 0 : seed % 5);
  data[1] = static_cast<uint8_t>(seed % 2);
  std::memcpy(data + 2, text.data(), text.size());
  return text.size() + 2;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static ParamRequest requests;
  if (leaves.empty()) collectLeaves();
  if (size > kMostText + 2) return 0;
  if (size > 2 && data[2] == 0) return 0;  // an empty text ends the daemon by assertion, as defined
  const std::string body(reinterpret_cast<const char*>(data), size);
  check(body, answerTo(requests, body));
  return 0;
}
