#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "platform/zr_com.h"
#include "sim/common/Journal.h"
#include "sim/common/JournalText.h"
#include "sim/common/Json.h"

namespace {

using Frame = std::array<unsigned char, 12>;

/** The closed library's stand-in with orders and a journal of its own. */
class ClosedLibrary : public testing::Test {
 protected:
  void SetUp() override {
    m_folder = (std::filesystem::temp_directory_path() / "camera-XXXXXX").string();
    ASSERT_NE(::mkdtemp(m_folder.data()), nullptr);
    ::setenv("CAMERA_DSP", (m_folder + "/dsp").c_str(), 1);
    ::setenv("CAMERA_JOURNAL", (m_folder + "/journal").c_str(), 1);
  }
  void TearDown() override { std::filesystem::remove_all(m_folder); }

  void order(const std::string& text) const {
    std::ofstream(m_folder + "/dsp.new") << text;
    std::filesystem::rename(m_folder + "/dsp.new", m_folder + "/dsp");
  }

  static int set(Frame frame) { return zr_set_va_data(frame.data()); }
  static Frame get(unsigned char address) {
    Frame frame{address};
    EXPECT_EQ(zr_get_va_data(frame.data()), 0);
    return frame;
  }
  static int probe() {
    EXPECT_EQ(set({0x18, 1}), 0);
    EXPECT_EQ(set({0x19, 0x20}), 0);
    return get(0x1A)[3];
  }

  [[nodiscard]] std::string lastLine() const {
    std::ifstream file(m_folder + "/journal");
    std::string last;
    for (std::string line; std::getline(file, line);)
      last = line;
    return last;
  }

  /** The last line in words. */
  [[nodiscard]] std::string lastText() const {
    return sim::journalText(sim::parseJsonObject(lastLine()).value_or(sim::JsonMembers{}), false);
  }

  std::string m_folder;
};

TEST_F(ClosedLibrary, ReadsBackWhatWasSet) {
  for (const unsigned char address : std::to_array<unsigned char>({0x38, 0x39, 0x58, 0x59, 0x5A, 0x78, 0x82})) {
    const Frame frame{address, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};
    EXPECT_EQ(set(frame), 0);
    EXPECT_EQ(get(address), frame);
  }
}

TEST_F(ClosedLibrary, RegistersBelongToTheirDeviceAndAddress) {
  EXPECT_EQ(probe(), 20);
  order("probe=30\n");
  EXPECT_EQ(probe(), 30);
  EXPECT_EQ(set({0x1A, 0x34, 0x12}), 0);
  EXPECT_EQ(set({0x19, 0x21}), 0);
  EXPECT_EQ(get(0x1A), (Frame{0x1A}));
  EXPECT_EQ(set({0x19, 0x20}), 0);
  EXPECT_EQ(get(0x1A), (Frame{0x1A, 0x34, 0x12, 30}));
}

TEST_F(ClosedLibrary, AWhiteBalanceRunEndsAsOrdered) {
  struct Case {
    std::string order;
    unsigned char address;
    Frame end;
  };
  const std::vector<Case> cases{
      {"", 0x41, {0x41, 1, 75, 0, 75, 0}},
      {"opwb=ok:60:300\n", 0x41, {0x41, 1, 60, 0, 44, 1}},
      {"opwb=error\n", 0x41, {0x41, 2}},
      {"opwb=never\n", 0x41, {0x41, 0}},
      {"subadjust=ok:1000:710\n", 0x50, {0x50, 1, 0xE8, 3, 0xC6, 2}},
      {"subadjust=error\n", 0x50, {0x50, 2}},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.order);
    order(one.order + "run_reads=2\n");
    EXPECT_EQ(set({one.address, 1}), 0);
    EXPECT_EQ(get(one.address)[1], 0);
    EXPECT_EQ(get(one.address)[1], 0);
    EXPECT_EQ(get(one.address), one.end);
  }
}

TEST_F(ClosedLibrary, FailsOnOrder) {
  order("fail=zr_set_audio_play,zr_set_video_bitrate:1,zr_get_va_data:0x41\nfail_addr=0x21\nfail_once=0xF8\n");
  EXPECT_LT(zr_set_audio_play(1), 0);
  EXPECT_EQ(zr_set_audio_duplex(1), 0);
  EXPECT_EQ(zr_set_video_bitrate(0, 4000), 0);
  EXPECT_LT(zr_set_video_bitrate(1, 4000), 0);
  Frame run{0x41};
  EXPECT_LT(zr_get_va_data(run.data()), 0);
  EXPECT_EQ(set({0x41, 1}), 0);
  EXPECT_LT(set({0x21, 1}), 0);
  EXPECT_LT(set({0x21, 1}), 0);
  EXPECT_LT(set({0xF8, 1}), 0);
  EXPECT_EQ(set({0xF8, 1}), 0);
  order("");
  EXPECT_EQ(set({0x21, 1}), 0);
  EXPECT_LT(zr_set_video_bitrate(3, 4000), 0);
}

TEST_F(ClosedLibrary, RecordsEachCallWithItsFields) {
  EXPECT_EQ(set({0xF8, 0, 0xFE, 0xFF, 1, 2}), 0);
  EXPECT_NE(lastLine().find(R"("who":"dsp","what":"set","addr":"0xf8","name":"gain","automatic":0,"compensation":-2,)"
                            R"("gain":513,"raw":"f800feff0102000000000000"})"),
            std::string::npos)
      << lastLine();
  EXPECT_EQ(zr_set_video_resolution(1, 1280, 720), 0);
  EXPECT_TRUE(lastText().ends_with("channel 1: resolution 1280x720")) << lastText();
}

TEST_F(ClosedLibrary, AnEncoderStartsWithWhatItWasSetTo) {
  const auto started = [this](int channel) {
    EXPECT_EQ(zr_set_video_encoder_ctl(channel, 2), 0);
    return lastText().substr(lastText().find("channel"));
  };
  EXPECT_EQ(zr_set_video_enc_format(1, 2), 0);
  EXPECT_EQ(zr_set_video_resolution(1, 640, 480), 0);
  EXPECT_EQ(zr_set_video_framerate(1, 7), 0);
  EXPECT_EQ(zr_set_video_cbr_mode(1, 1), 0);
  EXPECT_EQ(zr_set_video_filesize(1, 80), 0);
  EXPECT_EQ(started(1), "channel 1: start jpeg 640x480, 7 fps, afs 80 kB");
  EXPECT_EQ(started(2), "channel 2: start");
  // The other format keeps the rest; a call that fails changes nothing.
  order("fail=zr_set_video_resolution\n");
  EXPECT_EQ(zr_set_video_enc_format(1, 52), 0);
  EXPECT_LT(zr_set_video_resolution(1, 1280, 720), 0);
  EXPECT_EQ(zr_set_video_bitrate(1, 1500), 0);
  EXPECT_EQ(zr_set_video_i_interval(1, 60), 0);
  EXPECT_EQ(started(1), "channel 1: start h264high 640x480, 7 fps, cbr 1500 kbit/s, interval 60");
  EXPECT_EQ(zr_set_video_encoder_ctl(1, 0), 0);
  EXPECT_TRUE(lastText().ends_with("channel 1: stop")) << lastText();
}

TEST(Json, GivesEveryTextBack) {
  const std::vector<std::string> texts{"",
                                       "plain",
                                       "\"\\/",
                                       "a\nb\tc\r\x01\x7f",
                                       std::string("a\0b", 3),
                                       "\xff\xfe",
                                       "gr\xc3\xbc\xc3\x9f",
                                       "\xc3",
                                       "\xe2\x82\xac \xe2\x82",
                                       "\xed\xa0\x80",
                                       "\xf0\x9f\x98\x80",
                                       "\xc0\xaf",
                                       "\\u0041"};
  for (const std::string& text : texts) {
    const std::string line = sim::JsonObject().text("key \"1\"", text).number("n", -5).toString();
    const auto members = sim::parseJsonObject(line);
    ASSERT_TRUE(members) << line;
    EXPECT_EQ(*members, (sim::JsonMembers{{"key \"1\"", text}, {"n", "-5"}})) << line;
    EXPECT_EQ(line.find('\n'), std::string::npos);
  }
}

TEST(Json, IsValidWhateverTheBytes) {
  const std::vector<std::pair<std::string, std::string>> cases{
      {"gr\xc3\xbc\xc3\x9f", "\"gr\xc3\xbc\xc3\x9f\""},
      {"\xf0\x9f\x98\x80", "\"\xf0\x9f\x98\x80\""},
      {"\xff", R"("\u00ff")"},
      {"\xe2\x82", R"("\u00e2\u0082")"},
      {"\xc0\xaf", R"("\u00c0\u00af")"},                      // overlong
      {"\xe0\x80\xaf", R"("\u00e0\u0080\u00af")"},            // overlong
      {"\xed\xa0\x80", R"("\u00ed\u00a0\u0080")"},            // half of a surrogate pair
      {"\xf4\x90\x80\x80", R"("\u00f4\u0090\u0080\u0080")"},  // beyond the last character
  };
  for (const auto& [text, json] : cases)
    EXPECT_EQ(sim::jsonString(text), json);
}

TEST(Json, TakesNoOtherLine) {
  const std::string whole = sim::JsonObject().text("a", "b\"").number("c", 1).list("d", {"e", "f g"}).toString();
  ASSERT_TRUE(sim::parseJsonObject(whole));
  for (std::size_t size = 0; size < whole.size(); ++size) {
    EXPECT_FALSE(sim::parseJsonObject(whole.substr(0, size))) << whole.substr(0, size);
  }
  for (const std::string line :
       {"[]", "{\"a\":}", "{\"a\" 1}", "{\"a\":\"\\u00\"}", "{\"a\":1}x", "{\"a\":1\"b\":2}"}) {
    EXPECT_FALSE(sim::parseJsonObject(line)) << line;
  }
}

}  // namespace
