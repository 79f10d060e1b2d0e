// The commit of the encoder settings: what it brings to whom, what it refuses, and what outlives a failure.

#include "tests/camera/Answers.h"
#include "tests/camera/Camera.h"

namespace test {
namespace {

constexpr const char* kCommit = "encode.status=save";

std::string encodeFile(int channel) { return "flash/sysconfig/encode/encode" + std::to_string(channel - 1) + ".conf"; }

class CommitTest : public CameraTest {
 protected:
  /** One channel at full size and five frames per second, the two others off, nothing staged. */
  void SetUp() override {
    camera().tell("dsp clear");
    camera().tell("detection up");
    camera().flash("off");
    for (const auto& [channel, rest] : TextPairs{{"encode(1).", "framesize=1920x1080 quality=320 bitrate=2000000"},
                                                 {"encode(2).", "framesize=1280x720 quality=180 type=off"},
                                                 {"encode(3).", "framesize=640x360 quality=80 type=off"}}) {
      std::istringstream items("type=jpeg framerate=5 cbr_mode=vfs iframeinterval=5 " + rest);
      for (std::string item; items >> item;)
        camera().ask(channel + item);
    }
    camera().ask(kCommit);
    CameraTest::SetUp();
  }

  static void stage(const std::string& requests) {
    const std::string answer = camera().ask(requests);
    EXPECT_EQ(answer.find("&4"), std::string::npos) << answer;
  }

  /** Commits what is staged and these requests; the journal then holds the commit alone. */
  static void commit(const std::string& requests = {}, const std::string& answer = kOk,
                     UserClass user = UserClass::kAdmin) {
    SCOPED_TRACE(requests);
    if (!requests.empty()) stage(requests);
    camera().clearJournal();
    expectAnswers(camera(), {{kCommit, answer, user}});
  }

  /** What reached the encoders, the DSP, the analog output and the neighbours, in its order. */
  static std::string calls() {
    std::string text;
    for (const std::string& line : camera().journal()) {
      text += (text.empty() ? "" : ", ") + describe(line);
    }
    return text;
  }

  /** The values under a key in the DSP frames of an address. */
  static Texts frames(const std::string& address, const std::string& key) {
    Texts values;
    for (const std::string& line : camera().journal("dsp")) {
      if (Camera::field(line, "addr") == address) values.push_back(Camera::field(line, key));
    }
    return values;
  }

 private:
  static std::string describe(const std::string& line) {
    const std::string who = Camera::field(line, "who");
    const std::string what = Camera::field(line, "what");
    if (who == "encoder") {
      const std::string value = what == "resolution" ? Camera::field(line, "width") : Camera::field(line, "value");
      return what + " " + Camera::field(line, "channel") + ":" + value;
    }
    if (who == "dsp") return "dsp " + Camera::field(line, "addr");
    if (who == "library") return what + " " + Camera::field(line, "value");
    const std::string text = Camera::field(line, "text");
    if (who == "recorder") return what + (text.empty() ? "" : " " + Camera::field(line, "id") + " " + text);
    return what + " " + text;
  }
};

TEST_F(CommitTest, EverythingInItsOrder) {
  stage(
      "encode(1).framerate=15&encode(2).type=h264high&encode(2).framerate=30&encode(2).cbr_mode=cbr&"
      "encode(2).bitrate=1500999&encode(2).iframeinterval=60");
  EXPECT_TRUE(camera().journal("encoder").empty());
  EXPECT_EQ(camera().row(encodeFile(2), "ENC_STATUS"), "off");
  commit();
  // Noise reduction off above 15 frames, the output off beside a second encoder, the channels, the shape of the
  // picture, the encoders' start, the recorder, the pass mode, the sequencer.
  EXPECT_EQ(calls(),
            "dsp 0x60, analog_out 0, "
            "format 0:2, resolution 0:1920, framerate 0:15, cbr_mode 0:0, filesize 0:320, "
            "format 1:52, resolution 1:1280, framerate 1:30, cbr_mode 1:1, bitrate 1:1500, i_interval 1:60, "
            "format 2:0, dsp 0xf2, tamper.aspect 16:9, ctl 0:2, ctl 1:2, ctl 2:0, "
            "put 0x501000 1920x1080, put 0x511000 15, put 0x521000 5, put 0x541000 2000000, put 0x531000 jpeg, "
            "put 0x502000 1280x720, put 0x512000 30, put 0x522000 60, put 0x542000 1500999, put 0x532000 h264high, "
            "put 0x503000 640x360, put 0x513000 5, put 0x523000 5, put 0x543000 2000000, put 0x533000 off, "
            "encoder_change, dsp 0xf1, enc_reset enc_reset");
  EXPECT_EQ(frames("0x60", "dnr"), Texts{"0"});
  EXPECT_EQ(frames("0xf1", "mode"), Texts{"0"});
  EXPECT_EQ(frames("0xf2", "aspect"), Texts{"0"});
  EXPECT_EQ(camera().row(encodeFile(1), "FRAME_RATE"), "15");
  expectRows(camera(), encodeFile(2), {"ENC_STATUS=on", "BITRATE=1500999"});

  // Nothing is left to commit, neither now nor behind a restart.
  camera().clearJournal();
  EXPECT_EQ(camera().ask("encode(3).status=save"), "encode(3).status&200 OK");
  EXPECT_TRUE(camera().journal().empty());
  ASSERT_TRUE(camera().reboot());
  commit();
  EXPECT_TRUE(camera().journal().empty());
  expectAnswers(camera(), {{"encode(2).type", "=h264high&200 OK"}});

  // A stage that is taken back is none.
  commit("encode(2).framerate=15&encode(2).framerate=30");
  EXPECT_TRUE(camera().journal().empty());
}

TEST_F(CommitTest, RefusedSetsAreDropped) {
  const TextPairs cases = {
      // what is staged, and the line of the log
      {"encode(3).type=mpeg4&encode(3).cbr_mode=vbr&encode(3).iframeinterval=31&encode(3).type=off",
       "mpeg4 range out ::channel(3) iframeinterval(31)"},
      {"encode(2).type=jpeg&encode(2).framesize=1280x960", "[framesize condition error] "},
      {"encode(1).type=mpeg4&encode(1).cbr_mode=vbr", "framesize ConditionCheck failed"},
      {"encode(1).cbr_mode=vbr", "status(on),etype(jpeg) ch(0) cbr(vbr)"},
      {"encode(2).type=h264baseline&encode(2).cbr_mode=afs", "status(on),etype(h264baseline) ch(1) cbr(afs)"},
      {"encode(1).cbr_mode=cbr&encode(2).type=h264high", "[cbrmode error(2)] "},
  };
  const std::string file = camera().read(encodeFile(1)) + camera().read(encodeFile(2)) + camera().read(encodeFile(3));
  for (const auto& [staged, line] : cases) {
    commit(staged + "&encode(1).bitrate=123456", k412);
    EXPECT_TRUE(camera().journal().empty()) << staged;
    EXPECT_TRUE(camera().isLogged(line)) << line;
    expectShown(camera(), "",
                {"encode(1).bitrate=2000000", "encode(1).cbr_mode=vfs", "encode(2).type=off", "encode(3).type=off"});
    commit();
  }
  EXPECT_EQ(camera().read(encodeFile(1)) + camera().read(encodeFile(2)) + camera().read(encodeFile(3)), file);
}

TEST_F(CommitTest, SetsThatGoTogether) {
  const struct {
    std::string staged;
    std::string size;  ///< of channel 1 then, as its quality
    std::string quality;
  } cases[] = {
      {"encode(1).type=mpeg4&encode(1).cbr_mode=vbr&encode(1).framesize=vga&encode(1).iframeinterval=30", "vga", "320"},
      {"encode(1).type=jpeg&encode(1).cbr_mode=afs&encode(1).framesize=320x240", "320x240", "27"},
      {"encode(1).framesize=1280x960&encode(2).type=jpeg&encode(2).framesize=qvga", "1280x960", "60"},
      {"encode(1).framesize=1280x720&encode(2).framesize=640x360&encode(1).quality=100", "1280x720", "100"},
      // A channel that is off may hold what it likes.
      {"encode(1).framesize=1920x1080&encode(2).framesize=quadvga&encode(2).cbr_mode=cbr&encode(2).type=off",
       "1920x1080", "100"},
  };
  for (const auto& item : cases) {
    commit(item.staged);
    expectAnswers(camera(),
                  {{"encode.framesize", "=" + item.size + kOk}, {"encode.quality", "=" + item.quality + "k&200 OK"}});
    EXPECT_EQ(camera().row(encodeFile(1), "QUALITY"), item.quality);
  }
}

TEST_F(CommitTest, NoiseReductionFollowsTheRates) {
  const struct {
    std::string staged;
    std::string level;
    std::string passMode;
  } cases[] = {
      {"encode(2).framerate=30", "2", "1"},  // off, so it does not count
      {"encode(2).type=jpeg", "0", "0"},
      {"encode(1).framerate=15", "0", "0"},
      {"encode(2).framerate=15", "2", "1"},  // back to the stored level, "mid"
  };
  for (const auto& item : cases) {
    commit(item.staged);
    EXPECT_EQ(frames("0x60", "dnr"), Texts{item.level}) << item.staged;
    EXPECT_EQ(frames("0xf1", "mode"), Texts{item.passMode}) << item.staged;
  }
}

TEST_F(CommitTest, TheAnalogOutputNeedsTheFirstEncoderAlone) {
  constexpr const char* kVideo = "flash/sysconfig/video.conf";
  expectAnswers(camera(), {{"video.output.status=on", kOk}});
  commit("encode(1).framerate=10");
  expectAnswers(camera(), {{"video.output.status", "=on&200 OK"}});
  EXPECT_EQ(camera().row(kVideo, "VIDEO_OUTPUT"), "on");

  commit("encode(2).type=jpeg");
  EXPECT_EQ(camera().journalFields("library", "value"), Texts{"0"});
  EXPECT_EQ(camera().row(kVideo, "VIDEO_OUTPUT"), "off");
  commit("encode(2).type=off");
  expectAnswers(camera(), {{"video.output.status", "=off&200 OK"}});
}

TEST_F(CommitTest, WhatOutlivesAFailure) {
  const struct {
    std::string fault;
    std::string answer;
    std::string log;
    std::string last;  ///< the last call; the neighbour that is down has none
  } cases[] = {
      {"dsp fail=0x60", kOk, "", "enc_reset enc_reset"},
      {"dsp fail=zr_set_video_analog_out", kOk, "videooutput[zr_set_video_analog_out() error] ", "enc_reset enc_reset"},
      {"dsp fail=zr_set_video_framerate:0", k500, "sdkdata set failed", "framerate 0:5"},
      {"dsp fail=zr_set_video_filesize:0", k500, "sdkdata set failed", "filesize 0:320"},
      {"dsp fail=0xf2", k500, "aspectratio setting error(current 0) ", "dsp 0xf2"},
      {"detection down", k500, " failed Aspectratio to detectd ", "dsp 0xf2"},
      {"dsp fail=zr_set_video_encoder_ctl", kOk, " encode start status[1:-1,2:-1,3:-1](-1:err,0:off,1:on)",
       "enc_reset enc_reset"},
      {"recorder down", kOk, "", "enc_reset enc_reset"},
      {"recorder refuse 5", kOk, "", "enc_reset enc_reset"},
      {"dsp fail=0xf1", k500, "isp pass setting(changed encode setting) error ", "dsp 0xf1"},
      {"ptz down", kOk, "", "dsp 0xf1"},
  };
  int bitrate = 300'000;
  for (const auto& item : cases) {
    const std::string text = std::to_string(++bitrate);
    stage("encode(1).bitrate=" + text);
    camera().tell(item.fault);
    commit("", item.answer);
    EXPECT_TRUE(calls().ends_with(", " + item.last)) << item.fault << ": " << calls();
    for (const char* words : {"dsp clear", "detection up", "recorder up", "ptz up"})
      camera().tell(words);
    EXPECT_TRUE(camera().isLogged(item.log)) << item.log;
    EXPECT_EQ(camera().row(encodeFile(1), "BITRATE"), text) << item.fault;
    expectAnswers(camera(), {{"encode(1).bitrate", "=" + text + kOk}});
  }
}

TEST_F(CommitTest, AFileThatCannotBeWrittenKeepsTheStage) {
  stage("encode(1).bitrate=400000");
  camera().flash("fail=1:EIO");
  commit("", k500);
  camera().flash("off");
  EXPECT_TRUE(camera().isLogged("Encode: Cannot be write userdata"));
  EXPECT_TRUE(camera().journal("encoder").empty());
  EXPECT_EQ(camera().row(encodeFile(1), "BITRATE"), "2000000");
  expectAnswers(camera(), {{"encode(1).bitrate", "=400000&200 OK"}});
  commit();
  EXPECT_EQ(camera().row(encodeFile(1), "BITRATE"), "400000");
  EXPECT_FALSE(camera().journal("encoder").empty());
}

TEST_F(CommitTest, TheOnvifUserAppliesAndWritesNothing) {
  const std::string file = camera().read(encodeFile(1));
  commit("encode(1).framerate=10", kOk, UserClass::kOnvif);
  EXPECT_FALSE(camera().journal("encoder").empty());
  EXPECT_EQ(camera().read(encodeFile(1)), file);
  // For the next commit that is still new.
  commit("", kOk, UserClass::kOperator);
  EXPECT_FALSE(camera().journal("encoder").empty());
  EXPECT_EQ(camera().row(encodeFile(1), "FRAME_RATE"), "10");
  commit("", k401, UserClass::kUser);
}

TEST_F(CommitTest, TheStoredIntervalOfEveryChannelIsChecked) {
  camera().setRow(encodeFile(3), "IFRAME_INTERVAL", "0");
  ASSERT_TRUE(camera().reboot());
  commit("encode(1).framerate=10", k457);
  EXPECT_TRUE(camera().isLogged("range out : channel(3) iframeinterval(0)"));
  expectAnswers(camera(), {{"encode(1).framerate", "=5&200 OK"}});
  commit("encode(1).framerate=10&encode(3).iframeinterval=1");
}

TEST_F(CommitTest, AStoredSizeWithoutLimitsDropsItsChannelAlone) {
  camera().setRow(encodeFile(2), "FRAME_SIZE", "800x600");
  ASSERT_TRUE(camera().reboot());
  commit("encode(1).framerate=10&encode(2).framerate=10&encode(2).cbr_mode=vfs", k412);
  EXPECT_TRUE(camera().isLogged("[framesize conbination error(1)] "));
  expectAnswers(camera(), {{"encode(1).framerate", "=10&200 OK"}, {"encode(2).framerate", "=5&200 OK"}});
  commit("encode(2).cbr_mode=afs");  // where the size does not matter
}

TEST(CommitOfForeignFiles, AFileThatCannotBeReadBackIsAnError) {
  Camera camera;
  ASSERT_TRUE(camera.up());
  const struct {
    std::string staged;
    std::string log;     ///< the check that fails
    std::string absent;  ///< the next check's line, or that of a plain refusal
  } cases[] = {
      {"encode(2).type=mpeg4&encode(2).iframeinterval=31", "iframe ConditionCheck failed",
       "framesize ConditionCheck failed"},
      {"encode(2).type=jpeg&encode(2).framesize=1280x960", "framesize ConditionCheck failed",
       "[framesize condition error] "},
      {"encode(1).cbr_mode=vbr", "cbrmode ConditionCheck failed", "[cbrmode error"},
  };
  // A line that is too long is the one fault that a file does not heal from.
  const std::string tooLong = "FRAME_RATE=" + std::string(2000, '1') + "\n";
  const std::string good = camera.read(encodeFile(3));
  for (const auto& item : cases) {
    camera.ask(item.staged);
    camera.write(encodeFile(3), tooLong);
    expectAnswers(camera, {{kCommit, k500}});
    EXPECT_TRUE(camera.isLogged(item.log)) << item.log;
    EXPECT_EQ(camera.log().find(item.absent), std::string::npos) << item.absent;
    camera.write(encodeFile(3), good);
    camera.ask(kCommit);
    expectAnswers(camera, {{kCommit, kOk}});
  }
}

TEST_F(CommitTest, AnotherShapeOfThePictureResetsTheAreas) {
  constexpr const char* kWhole = "FFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF";
  constexpr const char* kDrawn = "0102030405060708090A0B0C0D0E0F1011";
  constexpr const char* kCameraFile = "flash/sysconfig/camera.conf";
  camera().setRow(kCameraFile, "BLC_AREA", kDrawn);
  camera().setRow("flash/sysconfig/scene/7.conf", "BLC_AREA", kDrawn);
  ASSERT_TRUE(camera().reboot());
  commit("encode(1).framerate=10");
  EXPECT_EQ(camera().row(kCameraFile, "BLC_AREA"), kDrawn);

  commit("encode(1).framesize=640x480");
  EXPECT_EQ(camera().toldDetection(), (Texts{std::string("tamper.blc_area ") + kWhole, "tamper.aspect 4:3"}));
  for (const std::string file : {"camera.conf", "scene/0.conf", "scene/7.conf"})
    EXPECT_EQ(camera().row("flash/sysconfig/" + file, "BLC_AREA"), kWhole) << file;

  // The shape is remembered.
  commit("encode(1).framesize=vga");
  EXPECT_EQ(camera().toldDetection(), Texts{"tamper.aspect 4:3"});
}

TEST(CommitAndTheOnvifService, IsStoppedByAllButItself) {
  Camera camera;
  ASSERT_TRUE(camera.up());
  camera.setRow("flash/sysconfig/network.conf", "ONVIF_SERVER_STATUS", "on");
  ASSERT_TRUE(camera.reboot());
  camera.shell("sleep 1000 >/dev/null 2>&1 & echo $! > /var/run/nvt_apld.pid");
  const auto isAlive = [&camera] {
    return camera.exec({"/bin/sh", "-c", "kill -0 $(cat /var/run/nvt_apld.pid)"}) == 0;
  };
  ASSERT_TRUE(isAlive());
  camera.ask("encode(1).framerate=10");
  expectAnswers(camera, {{kCommit, kOk, UserClass::kOnvif}});
  EXPECT_TRUE(isAlive());
  expectAnswers(camera, {{kCommit, kOk}});
  EXPECT_FALSE(isAlive());
}

}  // namespace
}  // namespace test
