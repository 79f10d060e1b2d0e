// Every neighbour with every fault, for every node that talks to it: a defined answer, the daemon alive in its memory,
// nothing kept that failed, and the next request served.

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <future>
#include <map>
#include <set>
#include <sstream>

#include "tests/camera/Answers.h"
#include "tests/camera/Camera.h"

namespace test {
namespace {

const Texts kFaults{"down",  "silent", "short",   "garbage", "refuse", "slow",
                    "early", "leave",  "endless", "huge",    "drip"};

/** What else belongs to a way of speaking to a neighbour. */
struct Circumstances {
  std::string state = "none";  // the words that bring the neighbour into the state for it
  std::string before = {};     // asked in front of each request, while the neighbour behaves
  std::string failed = k500;   // what stands behind the path when the exchange fails
  std::string refused = k500;  // what stands there when the neighbour has refused
  bool keeps = false;          // what is read back is the store's, which a write that fails leaves
};

/** Requests that speak to a neighbour in one way; of "path=a|b" they bring one value and then the other. */
struct Speech {
  std::string neighbour;
  /**
   * A letter for each fault: the exchange fails (F), is understood as a refusal (R), is as ever (=), or either fails or
   * is as ever, by a later message or by chance (e). Where anything may be answered (.), it is one line with a status.
   */
  std::string conduct;
  std::string requests;
  Circumstances circumstances = {};
};

const std::string kRests = "camera.focus.gpiofrom.status=stop";
const std::string kSearch = "camera.dspadjust.adjustmode=1&camera.dspadjust.subadjust=0&camera.dspadjust.subadjust=1";

/** The lens rests in a mode. */
Circumstances adjusting(const std::string& mode, const char* failed = k500) {
  return {.state = "run=0", .before = kRests + "&camera.focus.adjust_mode=" + mode + "&" + kRests, .failed = failed};
}

/** The search for defects has ended. */
Circumstances searched(const char* failed) {
  return {.state = "run=0 static_count=7 fpn_count=300",
          .before = "camera.defect_detect.static.status=on",
          .failed = failed};
}

/** It is on its way. */
Circumstances searching(const std::string& before, const char* failed = k500) {
  return {.state = "run=60000000", .before = before, .failed = failed};
}

const Speech kSpeeches[] = {
    {"gpio",
     "FFFFF=Fe=FF",
     R"(
        camera.focus camera.focus.progress camera.focus.run_counter camera.image.true_daynight.ir_counter
        camera.image.true_daynight.led_counter camera.dspadjust.focus camera.dspadjust.focus=set
        peripheral.switch.status camera.focus.gpiofrom.status=stop)",
     {.state = "run=0"}},
    {"gpio", "FFFFF=F.=FF", "camera.focus.adjust_mode=day|night", adjusting("select")},
    {"gpio", "FFFFF=F.=FF", "camera.focus.adjust_mode=select|night", adjusting("day", k412)},
    {"gpio", "FFFFF=Fe=FF", "camera.focus.finefocus", adjusting("day")},
    // Orders, which are not answered.
    {"gpio", "F=====e====", R"(
        camera.focus.run_counter=1|2 camera.image.true_daynight.ir_counter=1|2
        camera.image.true_daynight.led_counter=1|2 audio.input.halfduplex=on|off
        audio.input.powersupply.status=on|off audio.input.gain=1|2 audio.input.loopback=on|off)"},
    {"gpio", "F=====e====", "camera.focus.gpiofrom.icr_status=day", {.before = kRests}},
    {"gpio", "F=====e====", "camera.focus.assist.status=on|off", adjusting("select")},
    {"gpio", "F=====e====", "camera.focus=op_auto|op_auto_full camera.focus=stop camera.focus.finefocus=10",
     adjusting("day")},
    {"gpio", "F=====e====", "camera.focus.nightfocus=5|6", adjusting("night")},
    {"gpio", "F=====e====", "camera.focus.abf_pos=initialize", adjusting("init_pos")},
    // What the sequencer says to an order is nobody's concern.
    {"ptz",
     "FF====F====",
     R"(
        camera.motion.position.speed=1|2 camera.motion.auto_patrol(0).position(1)=1|2
        camera.motion.auto_patrol(0).position(1).duration=10|20 camera.motion.auto_patrol(0).position(1).speed=1|2
        camera.motion.auto_return.status=off camera.motion.auto_return.status=start
        camera.motion.auto_return.mode=home camera.motion.auto_return.timeout=120|180
        camera.position(1).status=initialize)",
     {.keeps = true}},
    {"ptz",
     "FF...=Fe...",
     R"(
        camera.motion.pan camera.motion.pan=s200 camera.motion.pan.status camera.motion.pan.status=start|stop
        camera.motion.pan.mode camera.motion.pan.mode=left|right camera.motion.pan.speed
        camera.motion.pan.speed=10|20 camera.motion.tilt camera.motion.tilt=s200 camera.motion.tilt.status
        camera.motion.tilt.status=start|stop camera.motion.tilt.mode camera.motion.tilt.mode=down|up
        camera.motion.tilt.speed camera.motion.tilt.speed=10|20 camera.motion.zoom camera.motion.zoom=x2
        camera.motion.zoom.status camera.motion.zoom.status=start|stop camera.motion.zoom.mode
        camera.motion.zoom.mode=in|out camera.motion.zoom.speed camera.motion.zoom.speed=10|20
        camera.motion.abszoom=20 camera.motion.clickoncenter=s100-s100 camera.motion.auto_patrol.status
        camera.motion.auto_patrol.status=start|stop)",
     {.state = "pan=100 tilt=100 zoom=2"}},
    // An answer that is no number moves and keeps nothing.
    {"ptz",
     "FF..F=Fe.F.",
     R"(
        camera.motion.pan=+s1 camera.motion.tilt=+s1 camera.motion.zoom=+1 camera.motion.abszoom
        camera.position(1).status=save)",
     {.state = "pan=100 tilt=100 zoom=2", .keeps = true}},
    {"ptz", "===========", "camera.position(0).status=goto encode(1).framerate=10|5&encode(1).status=save"},
    {"recorder",
     "FFFFR=F==FF",
     R"(
        peripheral.output_pin.status=on|off peripheral.output_pin.pin(1).duration=120|0
        application.event(1).filter(monday).status=on|off application.event(1).filter(monday).type=mask|unmask
        application.event(1).status=on|off application.event(1).status=restart application.event(1).trigger=a|b
        application.event(1).action=a|b application.object(1).source=encode(1)|encode(2)
        application.object(1).framerate=1|2 application.object(1).prerec=1|2 application.object(1).postrec=1|2
        application.object(1).overwrite.status=on|off application.pop.host=a|b application.pop.port=1|2
        application.pop.user=a|b application.pop.password=a|b application.ftp.host=a|b application.ftp.user=a|b
        application.ftp.password=a|b application.ftp.mode=active|passive application.ftp.port=1|2
        application.ftp.path=a|b application.ftp.naming=type1|type2 application.ftp.naming_option=a|b
        application.smtp.type=simple|pbs application.smtp.host=a|b application.smtp.port=1|2
        storage.disk(1).status=on|off)",
     {.refused = k405, .keeps = true}},
    {"recorder",
     "FFFFR=Fe=FF",
     "application.event(1).filter(monday).time=100000-110000|100000-120000",
     {.refused = k405, .keeps = true}},
    {"recorder", "FFFFR=F==FF", "peripheral.output_pin.pin(1).status=make|break", {.refused = k405}},
    {"recorder", "FFFFF=F==FF", "peripheral.output_pin.pin(1).status peripheral.input_pin.pin(1).status"},
    // What it says to a lamp is nobody's concern, nor what becomes of a commit's messages.
    {"recorder", "FFF===F===F", "camera.stealth=on|off camera.identify=on|off", {.keeps = true}},
    {"recorder", "===========", "encode(1).framerate=10|5&encode(1).status=save"},
    // Of the answer the number in front counts.
    {"detection",
     "FF=FF=F==F=",
     R"(
        camera.detection.status=on|off camera.detection.level=1|2
        camera.detection.area=00000000000000000000000000000000f0|0000000000000000000000000000000ff0
        camera.detection(tampering).status=on|off camera.detection(tampering).level=1|2
        camera.detection(tampering).temporal=6|7 audio.input.detection(1).status=on|off
        audio.input.detection(1).level=1|2 audio.input.detection(1).temporal=1|2)",
     {.keeps = true}},
    {"detection",
     "FF=FF=F==F=",
     "camera.scene(1).status=goto",
     {.before = "camera.scene(1).status=goto", .keeps = true}},
    // These have changed the picture, or some of the settings, by then.
    {"detection", "FF=FF=Fe=F=", R"(
        camera.detection.status=restore camera.detection(tampering).status=restore camera.status=restore
        camera.scene.image.brightness=manual|autoH camera.scene.image.senseup_limit=2|4 camera.scene.image.blc=a|b
        camera.scene.auto_exposure.reference=1|2 camera.scene.auto_exposure.reference_ext=1|2)"},
    {"session",
     "FFF.F=Fe=F=",
     R"(
        system.session.total_bitrate system.session.sending_count system.session.sending(1).bitrate
        system.session.sending(1).to.ip system.session.sending(1).to.port system.session.sending(1).to.protocol
        system.session.sending(1).to.session system.session.sending(1).from.encode
        system.session.sending(1).from.framesize system.session.sending(1).from.framerate
        system.session.receiving_count system.session.receiving.bitrate system.session.receiving.from.ip
        system.session.receiving.from.port system.session.receiving.from.protocol
        system.session.receiving.from.session system.session.receiving.to.decode)",
     {.state = "add jpeg 4000 udp ip=10.0.0.1 port=5000 fps=15 session=rtp encode=1", .failed = "=&200 OK"}},
    // Without the daemon there are no sessions; what it answers to an order is nobody's concern.
    {"session", ".....=..=.=", "system.session", {.state = "clear"}},
    {"session", "===.=======", R"(
        network.onvif.status=on|off encode(1).bitrate=1000000|2000000
        network.http(streaming).priority=framerate|clientnumber)"},
    {"session", "===.=======", "network.destination(2).status=start", {.before = "network.destination(2).status=stop"}},
    {"defect", "FFF..=F==.=", "camera.fpn.adjust camera.defect_detect.static.adjust", searched("=&200 OK")},
    {"defect", "FFF..=F==.=", "camera.fpn.adjust_detail camera.defect_detect.static.adjust_detail",
     searched("=error&200 OK")},
    {"defect", "FFF..=F==.=", "camera.fpn.num camera.dspadjust.static_num camera.defect_detect.static.adjust=start",
     searched(k500)},
    {"defect", "FFF..=Fe=.=", "camera.fpn.adjust=stop", searching("camera.fpn.adjust=start")},
    {"defect", "FFF..=Fe=.=", "camera.fpn.adjust=start", searching("camera.fpn.adjust=stop")},
    {"defect", "FFF..=Fe=.=", "camera.defect_detect.static.adjust=stop",
     searching("camera.defect_detect.static.adjust=start")},
    {"defect", "FFF..=Fe=.=", "camera.dspadjust.subadjust=3", searching(kSearch)},
    {"defect", "FFF..=Fe=.=", "camera.dspadjust.subadjust=0", searching(kSearch + "&camera.dspadjust.subadjust=3")},
    {"defect", "FFF.F=F==F=", "camera.dspadjust.subadjust",
     searching(kSearch + "&camera.dspadjust.subadjust=3", "=255&200 OK")},
    {"serial",
     "FFFFR=F==FF",
     R"(
        peripheral.serial.baud=9600|19200 peripheral.serial.bit=7|8 peripheral.serial.parity=odd|even
        peripheral.serial.stopbit=1|2)",
     {.refused = k405, .keeps = true}},
    // A daemon that is away has no card.
    {"sdrec",
     "FFFRR=F==RF",
     "storage.disk(1).status",
     {.before = "storage.disk(1).status=on", .failed = "=empty&200 OK"}},
    {"sdrec", "FFFRR=F==RF", "storage.disk(1).initialize", {.state = "run=0", .failed = "=off&200 OK"}},
    {"sdrec",
     "FFFRR=F==RF",
     "storage.disk(1).initialize=start storage.disk(1).mount=on storage.disk(1).mount=off",
     {.failed = kOk}},
};

/** The request with one of its two values. */
std::string withValue(const std::string& text, bool second) {
  const size_t bar = text.find('|');
  if (bar == std::string::npos) return text;
  const size_t start = text.rfind('=', bar) + 1;
  const size_t end = std::min(text.find('&', bar), text.size());
  const std::string value = second ? text.substr(bar + 1, end - bar - 1) : text.substr(start, bar - start);
  return text.substr(0, start) + value + text.substr(end);
}

std::string pathOf(const std::string& item) { return item.substr(0, item.find('=')); }

Texts split(const std::string& text, const std::string& divider) {
  Texts parts;
  size_t from = 0;
  for (size_t at = 0; (at = text.find(divider, from)) != std::string::npos; from = at + divider.size())
    parts.push_back(text.substr(from, at - from));
  parts.push_back(text.substr(from));
  return parts;
}

/** Each line is that of an item and ends in a status, and none of them holds a line end of its own. */
bool isWellFormed(const std::string& request, const std::string& answer) {
  static const std::set<int> statuses{200, 202, 401, 403, 404, 405, 412, 413, 414,
                                      451, 453, 456, 457, 458, 461, 500, 501};
  const Texts items = split(request, "&");
  const Texts lines = split(answer, "\r\n");
  for (size_t i = 0; i < lines.size(); ++i) {
    const std::string path = pathOf(items[std::min(i, items.size() - 1)]);
    if (!lines[i].starts_with(path) || !statuses.contains(statusOf(lines[i]))) return false;
    if (lines[i].find_first_of("\r\n") != std::string::npos) return false;
  }
  return lines.size() == items.size() || request == "system.session";
}

class Neighbours : public CameraTest {
 protected:
  /** Asks with the value that the last accepted request did not have. */
  static std::string ask(const std::string& text) {
    bool& second = s_second[text];
    const std::string answer = camera().ask(withValue(text, second));
    if (isTaken(answer)) second = !second;
    return answer;
  }

  static bool isReached(const std::string& neighbour) {
    return !camera().journal(neighbour == "ptz" ? "ptzseq" : neighbour).empty();
  }

  /** A silent neighbour keeps the daemon waiting until it goes; only the sequencer has a limit, of 5 seconds. */
  static std::string askTheSilent(const std::string& neighbour, const std::string& text) {
    if (neighbour == "ptz" && std::getenv("TMX_LONG") != nullptr) return ask(text);
    auto answer = std::async(std::launch::async, [&] { return ask(text); });
    EXPECT_TRUE(eventually(
        [&] { return isReached(neighbour) || answer.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }));
    camera().tell(neighbour + " down");
    return answer.get();
  }

  static std::string askFaulty(const std::string& neighbour, const std::string& fault, const std::string& text) {
    // A dripped answer is awaited whole, so that its speed does not show, or its first byte is all that is read.
    const bool isAwaited = neighbour == "session" || neighbour == "defect";
    camera().tell(neighbour + " " + fault + (fault == "slow" || (fault == "drip" && isAwaited) ? " 1" : ""));
    camera().clearJournal();
    std::string answer = fault == "silent" ? askTheSilent(neighbour, text) : ask(text);
    camera().tell(neighbour + " up");
    return answer;
  }

  /** The answer while all is well, of a request that speaks to the neighbour. */
  static std::string askHealthy(const Speech& speech, const std::string& request) {
    if (!speech.circumstances.before.empty()) camera().ask(speech.circumstances.before);
    camera().clearJournal();
    const std::string answer = ask(request);
    EXPECT_TRUE(isTaken(answer) && isWellFormed(request, answer)) << answer;
    camera().tell(speech.neighbour + " show");  // it has written its journal then
    EXPECT_TRUE(isReached(speech.neighbour));
    return answer;
  }

  static void expectDefined(const Speech& speech, const std::string& request, size_t fault,
                            const std::string& healthy) {
    const Circumstances& its = speech.circumstances;
    const std::string path = pathOf(split(request, "&").back());
    if (!its.before.empty()) camera().ask(its.before);
    const std::string stored = its.keeps ? camera().ask(path) : "";
    const std::string answer = askFaulty(speech.neighbour, kFaults.at(fault), request);
    const std::string last = split(answer, "\r\n").back();
    const bool isAsEver = last == split(healthy, "\r\n").back();
    const bool isFailure = last == path + its.failed;
    const char conduct = speech.conduct.at(fault);
    EXPECT_TRUE(conduct == '.' || (conduct == 'F' && isFailure) || (conduct == 'R' && last == path + its.refused) ||
                (conduct == '=' && isAsEver) || (conduct == 'e' && (isFailure || isAsEver)))
        << conduct << ": " << last;
    EXPECT_TRUE(isWellFormed(request, answer)) << answer;
    if (its.keeps && !isTaken(answer)) {
      EXPECT_EQ(camera().ask(path), stored);
    }
    EXPECT_EQ(camera().ask("encode(1).framesize"), "encode(1).framesize=1920x1080&200 OK");
  }

 private:
  static inline std::map<std::string, bool> s_second;
};

TEST_F(Neighbours, EveryFaultForEveryNode) {
  const std::string pid = camera().shell("cat /var/run/tmxd.pid");
#ifndef __SANITIZE_ADDRESS__
  // 64 MiB more than it has: an emulator has memory of its own.
  ASSERT_EQ(camera().exec({"/bin/sh", "-c",
                           "has=$(awk '/^VmData/ {print $2}' /proc/" + pid + "/status) && prlimit --pid " + pid +
                               " --data=$(((has + 65536) * 1024))"}),
            0);
#endif
  for (const Speech& speech : kSpeeches) {
    camera().tell(speech.neighbour + " " + speech.circumstances.state);
    std::istringstream requests(speech.requests);
    for (std::string request; requests >> request;) {
      const std::string healthy = askHealthy(speech, request);
      for (size_t fault = 0; fault < kFaults.size(); ++fault) {
        SCOPED_TRACE(speech.neighbour + " " + kFaults[fault] + ": " + request);
        expectDefined(speech, request, fault, healthy);
      }
      EXPECT_EQ(askHealthy(speech, request), healthy) << request;
    }
  }
  EXPECT_EQ(camera().shell("cat /var/run/tmxd.pid; kill -0 " + pid), pid);
}

/** The one limit that there is. */
TEST_F(Neighbours, ASilentSequencerCostsFiveSeconds) {
  camera().tell("ptz silent for=write");
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(camera().ask("camera.motion.pan.mode=left"), std::string("camera.motion.pan.mode") + k500);
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(4900));
  camera().tell("ptz up");
}

TEST_F(Neighbours, TheCameraStartsWithoutThem) {
  for (const char* neighbour : {"gpio", "ptz", "recorder", "detection", "session", "defect", "serial", "sdrec"}) {
    camera().tell(std::string(neighbour) + " down");
  }
  EXPECT_EQ(
      camera().exec({"/bin/sh", "-c",
                     "pid=$(cat /var/run/tmxd.pid); kill $pid; while kill -0 $pid 2>/dev/null; do sleep 0.02; done; "
                     "tmxd"}),
      0);
  EXPECT_TRUE(eventually([] { return camera().ask("system.model") == "system.model=KT-A10&200 OK"; }));
  EXPECT_TRUE(camera().isLogged("putLedCommand: orange off error"));
}

}  // namespace
}  // namespace test
