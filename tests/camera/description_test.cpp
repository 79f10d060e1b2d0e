// What the description says of the parameters, against what the camera does.

#include <algorithm>
#include <map>
#include <set>

#include "cli/Description.h"
#include "tests/camera/Answers.h"
#include "tests/camera/Camera.h"
#include "tests/camera/Description.h"

namespace test {
namespace {

using Json = nlohmann::ordered_json;

/** What a read shows; empty where it is refused. */
std::string value(Camera& camera, const std::string& path) {
  const std::string answer = camera.ask(path);
  const size_t end = answer.rfind("&200 OK");
  if (end == std::string::npos || end <= path.size()) return {};
  return answer.substr(path.size() + 1, end - path.size() - 1);
}

/** The first path of the parameter that this camera has; empty where it has none. */
std::string presentPath(Camera& camera, const Json& parameter) {
  constexpr int kNotFound = 461;
  for (const std::string& path : tmx::expandSelectors(parameter)) {
    if (statusOf(camera.ask(path)) != kNotFound) return path;
  }
  return {};
}

/** Parameters that take what they are said to take at other times only. */
const std::map<std::string, std::string> kDepend = {
    {"camera.focus", "in mode select"},
    {"camera.focus.finefocus", "in mode day"},
    {"camera.focus.nightfocus", "in mode night"},
    {"camera.focus.assist.status", "in mode select"},
    {"camera.focusassist.status", "in mode select"},
    {"camera.dspadjust.subadjust", "a step of the procedure that runs"},
    {"camera.adjust_service.alc.err_high", "above the lower limit"},
    {"camera.adjust_service.alc.err_low", "below the upper limit"},
    {"camera.adjust_service.atw.err_high", "above the lower limit"},
    {"camera.adjust_service.atw.err_low", "below the upper limit"},
    {"camera.adjust_service.iris.limit_high", "above the lower limit"},
    {"camera.adjust_service.iris.limit_low", "below the upper limit"},
    {"camera.scene.auto_exposure.priority", "with an automatic shutter"},
    {"encode.type", "the first channel cannot be off"},
};

bool isWritable(const Json& parameter) {
  const std::string rights = parameter["rights"]["administrator"];
  return parameter.contains("takes") && rights.ends_with('W') && !kDepend.contains(parameter["path"]);
}

void expectWalk(Camera& camera, const Json& parameter, const std::string& path) {
  for (const Drawn& drawn : draw(parameter)) {
    const std::string answer = camera.ask(path + "=" + drawn.value);
    const tmx::Verdict wrong = isTaken(answer) ? tmx::Verdict::kRefused : tmx::Verdict::kTaken;
    EXPECT_NE(tmx::judge(parameter, drawn.value), wrong) << path << "=" << drawn.value;
    EXPECT_TRUE(drawn.status == 0 ? isTaken(answer) : statusOf(answer) == drawn.status)
        << path << "=" << drawn.value.substr(0, 60) << ": " << answer.substr(0, 200) << ", not " << drawn.status;
  }
}

TEST(Description, WhatItSaysIsTakenIsTakenAndWhatItSaysIsRefusedIsRefused) {
  std::set<std::string> open;
  for (const Json& parameter : description()["parameters"])
    if (isWritable(parameter)) open.insert(parameter["path"]);
  for (const CameraOptions& options : {CameraOptions{}, CameraOptions{.without = {"DAY_NIGHT"}}}) {
    Camera camera(options);
    ASSERT_TRUE(camera.up());
    for (const Json& parameter : description()["parameters"]) {
      if (!open.contains(parameter["path"])) continue;
      const std::string path = presentPath(camera, parameter);
      if (path.empty()) continue;
      open.erase(parameter["path"]);
      expectWalk(camera, parameter, path);
    }
  }
  EXPECT_EQ(open, std::set<std::string>()) << "on no camera";
}

/** A value that is taken and is not the present one; empty where there is none. */
std::string another(const Json& parameter, const std::string& present) {
  for (const Drawn& drawn : draw(parameter)) {
    const bool isStep = drawn.value == "+" || drawn.value == "-";
    if (drawn.status == 0 && !isStep && drawn.value != present) return drawn.value;
  }
  return {};
}

/** The second names of values. */
bool isSecondName(std::string_view path) {
  static const std::set<std::string_view> kNames = {"camera.comment", "camera.scene.image.brightness.highgain",
                                                    "camera.scene.image.brightness.easy_daynight",
                                                    "application.ftp.port", "camera.scene.auto_exposure.reference_ext"};
  return kNames.contains(path) || path.ends_with("_keep") || path.starts_with("camera.adjust_service.atw.range.");
}

TEST(Description, EveryRowIsShownByOneParameterOrKnownToBeHidden) {
  const std::map<std::string, std::vector<std::string>> files = {
      // rows of earlier software, and of what this hardware lacks
      {"sysconfig/camera.conf",
       {"OSD", "OSD_POSITION", "FPN", "DYNAMIC_DEFECT_DETECT", "DIGITAL_ZOOM_LIMIT", "FOCUS_STEP", "DETECT_TEMPO",
        "MONITOR_TYPE", "IRIS", "AUTO_BLACK", "ENHANCE_BAND", "ATW_CONVERGENCE",
        // the number and the name of the scene in force, and four numbers of one area
        "SCENE_FILE_NAME", "COMMENT2", "WBAREAH1", "WBAREAV1", "WBAREAH2", "WBAREAV2"}},
      {"scene/%ld.conf", {"MONITOR_TYPE", "IRIS", "AUTO_BLACK", "ENHANCE_BAND", "ATW_CONVERGENCE"}},
      {"sysinfo/kq40_camdsp.conf", {"ADJUSTIRIS"}},
      // written beside the row that is shown, and read by others
      {"sysconfig/network.conf",
       {"IF1_DSCP_VIDEO", "IF1_DSCP_VIDEOMPEG", "IF1_DSCP_AUDIO", "IF1_DSCP_VIDEOH264", "IF1_BROADCAST",
        "FTP_SERVER_STATUS", "PSIA_CONFIG_PORT", "ONVIF_CONFIG_PORT"}},
      {"application/application%ld.conf", {"APPLICATION_FTP_PORT"}},
      {"sysconfig/input_pin.conf", {"INPUTPIN_PIN1_STATUS", "INPUTPIN_PIN2_STATUS"}},
      {"sysconfig/output_pin.conf", {"OUTPUTPIN_PIN1_STATUS", "OUTPUTPIN_PIN2_STATUS"}},
      {"sysconfig/audio.conf", {"AUDIO_HALFDUPLEX_GAIN"}},
      // of the other lens and the other kind of filter
      {"sysconfig/scpservice.conf",
       {"DN_HYSTERESIS_TRUEDN", "AF_FOR_IR", "SUB_IRIS_START", "SUB_IRIS_INTGAIN", "SUB_IRIS_PROGAIN",
        "SUB_IRIS_LIMIT_H", "SUB_IRIS_LIMIT_L"}},
      // where the focus motor was left
      {"sysinfo/kq40_autofocus.conf",
       {"FOCUS_FACTORY_POS", "FOCUS_POS", "FOCUS_DIR", "FOCUS_IR", "NIGHTFOCUS_OFFSET", "AF_ICR_FLG", "OP_AF_FLG",
        "MANUAL_AF_FLG", "NIGHTOFFSET_FLG", "BAF_POS_INIT_FLG"}},
  };
  std::set<std::string> hidden;
  for (const auto& [file, keys] : files)
    for (const std::string& key : keys)
      hidden.insert(std::string(file).append(":").append(key));
  EXPECT_EQ(description()["hiddenRows"].get<std::set<std::string>>(), hidden);

  std::map<std::string, std::string> shownBy;
  for (const Json& parameter : description()["parameters"]) {
    if (isSecondName(parameter["path"].get_ref<const std::string&>())) continue;
    for (const std::string row : parameter.value("rows", Json::array()))
      EXPECT_TRUE(shownBy.emplace(row, parameter["path"]).second)
          << row << " " << shownBy[row] << " " << parameter["path"];
  }
}

/** Left as they are: they close the way in, have others show what is leased, or take away a file that is not there. */
const std::set<std::string> kLeft = {
    "network.http.status",           "network.https.status",       "network.dns.status",
    "network.interface.dhcp.ntp",    "network.interface.dhcp.dns", "network.interface.dhcp.hostname",
    "network.interface.dhcp.status",
};

/** The request between the brackets of a 202; empty in another answer. */
std::string hint(const std::string& answer) {
  const size_t begin = answer.find("202 Accepted(");
  return begin == std::string::npos ? "" : answer.substr(begin + 13, answer.size() - begin - 14);
}

/** The settings of this camera that can be changed one beside the other, each by its path. */
std::map<std::string, const Json*> settings(Camera& camera) {
  std::map<std::string, const Json*> found;
  for (const Json& parameter : description()["parameters"]) {
    if (!isWritable(parameter) || !parameter.value("setting", false) || kLeft.contains(parameter["path"])) continue;
    const std::string path = presentPath(camera, parameter);
    if (!path.empty()) found[path] = &parameter;
  }
  return found;
}

/** Writes the values, commits them, restarts the camera: every read is then what it was before. */
void expectToStand(Camera& camera, const std::map<std::string, std::string>& values) {
  const std::string restart = "network.interface(1).status=restart";  // commits, and restarts the camera
  const std::map<std::string, const Json*> known = settings(camera);
  bool isRestartedBehind = false;
  std::set<std::string> commits;
  std::map<std::string, std::string> shown;
  for (const auto& [path, value] : values) {
    const std::string answer = camera.ask(path + "=" + value);
    EXPECT_TRUE(isTaken(answer)) << path << "=" << value << ": " << answer;
    isRestartedBehind = isRestartedBehind || hint(answer) == restart;
    if (hint(answer) == restart && known.at(path)->at("takes").value("grid", false))
      continue;  // another number is kept
    shown[path] = hint(answer) == restart ? value : "";
    if (!hint(answer).empty() && hint(answer) != restart) commits.insert(hint(answer));
  }
  for (const std::string& commit : commits)
    EXPECT_EQ(statusOf(camera.ask(commit)), 200) << commit;
  for (auto& [path, text] : shown)
    if (text.empty()) text = value(camera, path);
  ASSERT_TRUE(camera.restartsBehind(isRestartedBehind ? restart : "system.status=restart"));
  for (const auto& [path, text] : shown)
    EXPECT_EQ(value(camera, path), text) << path;
}

TEST(Description, WhatItSaysIsKeptStandsBehindARestart) {
  Camera camera;
  ASSERT_TRUE(camera.up());
  std::map<std::string, std::string> values;
  for (const auto& [path, parameter] : settings(camera)) {
    const std::string drawn = another(*parameter, value(camera, path));
    if (!drawn.empty()) values[path] = drawn;
  }
  EXPECT_GT(values.size(), 150U);
  expectToStand(camera, values);
}

/** Values that are to break a line, a file, a number or an answer. */
std::vector<std::string> hostileValues(const Json& parameter) {
  std::vector<std::string> values = {
      "a\nb=c",
      "a\rb",
      "%0a",
      "%0d%0ab=c",
      "%00b",
      "a%00b",
      "2147483648",
      "4294967297",
      "-2147483649",
      "%22%25%26%3d%2b%zz%",
      "=a=\"b\"\\",
      "\x01\x02\x07\x08\x09\x0b\x0c\x1b\x1f\x7f",
      "\xc3\xbc\xe2\x82\xac\xff\xc0",
  };
  const std::vector<Drawn> drawn = draw(parameter);
  const auto good = std::ranges::find(drawn, 0, &Drawn::status);
  if (good == drawn.end()) return values;
  values.push_back(std::string(8, '0') + good->value);
  values.push_back(std::string(900, '0') + good->value);
  return values;
}

TEST(Description, WhateverIsTakenCanBeWrittenAndReadBack) {
  constexpr size_t kRounds = 5;
  Camera camera;
  ASSERT_TRUE(camera.up());
  camera.ask("network.dns.ip=192.168.0.1");  // else its commit has a file to take away that is not there
  std::vector<std::map<std::string, std::string>> rounds(kRounds);
  size_t sent = 0;
  for (const auto& [path, parameter] : settings(camera)) {
    size_t round = 0;
    for (const std::string& hostile : hostileValues(*parameter)) {
      const std::string answer = camera.ask(path + "=" + hostile);
      ++sent;
      EXPECT_EQ(answer.find_first_of("\r\n"), std::string::npos) << path << ": " << answer;
      EXPECT_EQ(value(camera, path).find_first_of("\r\n"), std::string::npos) << path;
      if (isTaken(answer) && round < kRounds) rounds[round++][path] = hostile;
    }
  }
  RecordProperty("sent", std::to_string(sent));
  for (const auto& values : rounds) {
    expectToStand(camera, values);
    EXPECT_EQ(camera.log().find(" current("), std::string::npos) << "a file came back from the factory";
  }
}

}  // namespace
}  // namespace test
