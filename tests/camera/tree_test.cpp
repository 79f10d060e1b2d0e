// The whole tree: every parameter with its permission string and class, and every selector rule.

#include <algorithm>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <sstream>
#include <vector>

#include "tests/camera/Camera.h"

namespace test {
namespace {

/** One line of tests/data/catalogue.txt: path, permission string and class, "-" for a branch. */
struct Entry {
  std::string path;
  std::string permission;
  std::string className;

  bool operator==(const Entry&) const = default;
  friend void PrintTo(const Entry& entry, std::ostream* out) {
    *out << entry.path << " " << entry.permission << " " << entry.className;
  }
};

std::vector<Entry> catalogue() {
  std::ifstream file(TMX_TEST_DATA "/catalogue.txt");
  std::vector<Entry> entries;
  for (Entry entry; file >> entry.path >> entry.permission >> entry.className;) {
    entries.push_back(entry);
  }
  return entries;
}

/** The text between the n-th pair of angle brackets of a list line, "-" without it. */
std::string bracket(const std::string& line, size_t n) {
  size_t start = 0;
  for (size_t i = 0; i <= n; ++i) {
    start = line.find('<', start);
    if (start == std::string::npos) return "-";
    ++start;
  }
  return line.substr(start, line.find('>', start) - start);
}

std::vector<Entry> parseList(const std::string& text) {
  std::vector<Entry> entries;
  std::vector<std::string> layers;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    const size_t depth = line.find('<');
    layers.resize(depth);
    layers.push_back(bracket(line, 0));
    if (depth == 0) continue;
    std::string path = layers.front();
    for (size_t i = 1; i < layers.size(); ++i) {
      path += "." + layers[i];
    }
    const bool isAlias = layers.front() == "periph" || layers.front() == "app" || layers.front() == "ui";
    if (!isAlias) entries.push_back({path, bracket(line, 1), bracket(line, 2)});
  }
  return entries;
}

TEST(Tree, TheListIsTheCatalogueInItsOrder) {
  Camera camera({.daemonArguments = {"all_api"}});
  EXPECT_FALSE(camera.up());  // the list mode serves nobody
  const std::vector<Entry> expected = catalogue();
  ASSERT_EQ(expected.size(), 50U + 71U + 17U + 3U + 12U + 26U + 9U + 42U + 2U + 5U + 210U);
  const std::vector<Entry> listed = parseList(camera.read("tmp/api_list.txt"));
  for (size_t i = 0; i < std::min(listed.size(), expected.size()); ++i)
    ASSERT_EQ(listed[i], expected[i]);
  EXPECT_EQ(listed.size(), expected.size());
}

class TreeTest : public CameraTest {
 protected:
  /** The status behind a path. */
  static std::string status(const std::string& request, UserClass user = UserClass::kAdmin) {
    const std::string answer = camera().ask(request, user);
    return answer.substr(answer.rfind('&') + 1, 3);
  }
};

/** Selectors that a path cannot do without. */
std::string withSelectors(const std::string& path) {
  static const std::map<std::string, std::string> needed = {
      {"network.onvif.quality.priority", "(jpeg)"},
      {"network.onvif.metadata", "(MotionDetectionEvent)"},
      {"application.event.filter", "(monday)"},
      {"application.audioplay", "(1)"},
      {"storage.disk", "(1)"},
      {"audio.input.detection", "(1)"},
      {"encode.range", "(jpeg,1280x720)"},
      {"userinterface.encode.cbr_mode", "(jpeg)"},
  };
  std::string result;
  std::string walked;
  std::istringstream layers(path);
  for (std::string layer; std::getline(layers, layer, '.');) {
    walked += (walked.empty() ? "" : ".") + layer;
    const auto selector = needed.find(walked);
    result += (result.empty() ? "" : ".") + layer + (selector == needed.end() ? "" : selector->second);
  }
  return result;
}

/** What the permission string says to a class, "" where it grants the right. */
std::string refusal(const std::string& permission, size_t user, bool write) {
  const bool readable = permission.find('R') != std::string::npos;
  const bool writable = permission.find('W') != std::string::npos;
  if (!readable && !writable) return "401";
  if (write && !writable) return "458";
  if (!write && !readable) return "405";
  return permission[2 * user + (write ? 1 : 0)] == '-' ? "401" : "";
}

TEST_F(TreeTest, EveryNodeRefusesByItsPermissionString) {
  // Layers that a model with everything does not have.
  const std::set<std::string> absent = {"camera.scene.image.easy_daynight",
                                        "camera.scene.image.brightness.easy_daynight",
                                        "camera.scene.image.brightness.highgain"};
  // Not read here: what runs a card test for as long as it takes, and what only one of the layer's selectors has.
  const std::set<std::string> unread = {"storage.disk.check", "camera.detection.temporal", "network.http.priority"};
  for (const Entry& entry : catalogue()) {
    const std::string path = withSelectors(entry.path);
    for (size_t user = 0; user < 3; ++user) {
      const auto userClass = static_cast<UserClass>(user);
      if (entry.permission == "-" || absent.contains(entry.path)) {
        EXPECT_EQ(status(path, userClass), "461") << path;
        continue;
      }
      const std::string read = refusal(entry.permission, user, false);
      if (!read.empty()) {
        EXPECT_EQ(status(path, userClass), read) << path << " by " << user;
      } else if (!unread.contains(entry.path) && user == 0) {
        EXPECT_FALSE((std::set<std::string>{"401", "405", "458", "461", "501"}.contains(status(path)))) << path;
      }
      const std::string write = refusal(entry.permission, user, true);
      if (!write.empty()) {
        EXPECT_EQ(status(path + "=~", userClass), write) << path << " by " << user;
      }
    }
    // The ONVIF and the debug user pass whatever the string says.
    if (entry.permission == "-" || unread.contains(entry.path) || absent.contains(entry.path)) continue;
    for (const UserClass user : {UserClass::kOnvif, UserClass::kDebug}) {
      EXPECT_FALSE((std::set<std::string>{"401", "405", "458", "461"}.contains(status(path, user)))) << path;
    }
  }
}

/** What stands in the empty brackets of each path. */
struct Selectors {
  const char* none;     // status without brackets; "ok" for whatever the node answers
  const char* good;     // selectors that pass, with blanks between
  const char* outside;  // selectors out of the range: 456
  const char* garbled;  // selectors that are not understood: 451
  const char* paths;
};

TEST_F(TreeTest, EverySelectorRule) {
  const Selectors rules[] = {
      {"ok", "1", "0 2", "x eth0",
       "system.session.receiving().bitrate network.interface().status peripheral.output_pin().type "
       "peripheral.input_pin().type peripheral.switch().status peripheral.serial().baud"},
      {"ok", "1 2", "0 3", "x", "peripheral.output_pin.pin().duration peripheral.input_pin.pin().chatter"},
      {"ok", "1 2 3", "0 4 -1 4294967297", "x 1x 1,2", "encode().type ui.encode().cbr_mode(jpeg)"},
      {"ok", "1 5", "0 6 -1 4294967297", "x +1 0x1", "network.destination().host"},
      {"ok", "1 8", "0 9", "x", "network.interface.ipv6.link_local() network.interface.ipv6.global()"},
      {"ok", "1 10", "0 11", "x",
       "network.access_control.host() application.event().status application.object().source"},
      {"ok", "1 22", "0 23", "x", "system.session.sending().bitrate"},
      {"ok", "0 1 2 3", "4 -1", "x",
       "system.password.admin().status system.password.operator().status system.password.user().status "
       "network.gateway(ipv4).ip() network.domainname()"},
      {"ok", "0", "1", "x -1", "camera.motion.auto_patrol().status"},
      {"ok", "0 7", "8", "x -1", "camera.scene().name"},
      {"ok", "0 19", "20 4294967296", "x -1 1x", "camera.position().comment camera.motion.auto_patrol(0).position()"},
      {"456", "1 5", "0 6", "x", "application.audioplay().name"},
      {"461", "1", "0 2", "x", "storage.disk().erecmode"},
      {"461", "1 2", "0 3", "x", "audio.input.detection().level"},
      {"ok", "streaming configuration", "", "x 1 0 Streaming", "network.http().status network.https().status"},
      {"ok", "configuration", "", "streaming", "network.rtsp().status"},
      {"ok", "stream_out", "", "stream_in", "network.access_control().logic"},
      {"ok", "ipv4", "", "ipv6", "network.gateway()"},
      {"ok", "motion tampering", "", "foo", "camera.detection().status"},
      {"451", "jpeg h264", "", "mpeg4", "network.onvif.quality.priority()"},
      {"451", "MotionDetectionEvent", "", "motiondetectionevent", "network.onvif.metadata()"},
      {"451", "sunday Monday SATURDAY", "", "funday 1", "application.event.filter().status"},
      {"451", "jpeg h264high h264baseline jpeg,1280x720", "", "mpeg4 ,jpeg", "encode.range().framesize"},
      {"451", "jpeg mpeg4 h264high h264baseline", "", "h265 jpeg,", "ui.encode.cbr_mode()"},
  };
  const auto words = [](const char* text) {
    std::istringstream stream(text);
    return Texts{std::istream_iterator<std::string>(stream), {}};
  };
  for (const Selectors& rule : rules) {
    for (const std::string& path : words(rule.paths)) {
      const auto check = [&](const std::string& brackets, const std::string& expected) {
        const std::string request = std::string(path).replace(path.find("()"), 2, brackets);
        const std::string got = status(request);
        EXPECT_TRUE(expected == "ok" ? got != "456" && got != "461" : got == expected) << request << " " << got;
      };
      check("", rule.none);
      for (const auto& [selectors, expected] :
           {std::pair{rule.good, "ok"}, {rule.outside, "456"}, {rule.garbled, "451"}})
        for (const std::string& selector : words(selectors))
          check("(" + selector + ")", expected);
    }
  }
}

TEST(TreeOfALesserModel, LacksWhatItsFeaturesLack) {
  Camera camera({.without = {"AUDIO", "DAY_NIGHT", "FOCUS_CTRL", "BACK_FOCUS_MODEL", "ONVIF", "PSIA", "AMX_PROTOCOL",
                             "SDCARD", "SERIAL_PASS"}});
  ASSERT_TRUE(camera.up());
  expectEach(camera, "",
             {"audio.output.volume", "audio(9).output.volume", "application.audioplay(1).name",
              "application.audioplay.name", "camera.focus", "camera.focus.status", "camera.focus.abf_pos",
              "camera.dspadjust.focus", "network.onvif.status", "network.psia.status", "network.amx_beacon.status",
              "storage.disk(1).size", "peripheral.serial(1).baud", "camera.scene(0).image.true_daynight"},
             "&461 Command Not Found");
  EXPECT_EQ(camera.ask("camera.scene(0).image.easy_daynight").find("&461"), std::string::npos);
}

}  // namespace
}  // namespace test
