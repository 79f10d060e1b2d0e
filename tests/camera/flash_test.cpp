// Every kind of save and of start, while the flash fails and while the power goes: at each file operation, in the
// middle of each write, and with all lost that was not synced. The usual run takes a spread of them, TMX_LONG=1 takes
// all.

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <thread>

#include "tests/camera/Answers.h"
#include "tests/camera/Camera.h"
#include "tests/camera/PowerCut.h"
#include "tests/camera/Saves.h"

namespace test {
namespace {

constexpr size_t kCameras = 6;  // a start is mostly waiting
constexpr size_t kUsual = 6;    // of a list, in the usual run

/** All of the first save's list, of others some. */
Texts spread(const Texts& all, const std::string& name) {
  return name == everySave().front().name ? all : test::spread(all, kUsual, name.size());
}

/** A camera that goes through saves and starts, undisturbed first, then with each of its disturbances. */
class Walker {
 public:
  Walker() {
    EXPECT_TRUE(m_camera.up()) << m_camera.log();
    m_camera.down();
    m_camera.setRow("sysinfo/kq40_autofocus.conf", "NIGHTFOCUS_OFFSET", "3");
    EXPECT_TRUE(m_camera.up()) << m_camera.log();
    m_base = filesOf(m_camera);
    for (const auto& entry : std::filesystem::recursive_directory_iterator(m_camera.path("factory"))) {
      const std::string path = std::filesystem::relative(entry.path(), m_camera.path("factory"));
      if (entry.is_regular_file()) m_run.factory["flash/" + path] = m_camera.read("factory/" + path);
    }
  }

  void take(const Save& save) {
    m_save = save;
    takeOnce();
    if (save.undo.empty() || isAtBase()) return;
    m_base = filesOf(m_camera);  // with the values that the undoing request gives
    takeOnce();
    EXPECT_TRUE(isAtBase()) << save.name << " is not undone";
  }

  void take(const Start& start) {
    m_start = start;
    damage();
    m_run.before = comparable(filesOf(m_camera));
    m_camera.flash("count");
    EXPECT_TRUE(m_camera.up()) << start.name << m_camera.log();
    noteRun();
  }

  [[nodiscard]] Texts cuts() const {
    Texts words;
    for (unsigned n = 1; n <= m_operations; ++n) {
      words.push_back("cut=" + std::to_string(n));
      words.push_back("cut=" + std::to_string(n) + ":lose");
      if (n <= m_writes) words.push_back("cut=" + std::to_string(n) + ":half");
    }
    words.push_back("cut=0:lose");  // behind it all
    return words;
  }

  [[nodiscard]] Texts failures() const {
    Texts words;
    for (unsigned n = 1; n <= m_operations; ++n) {
      for (const char* error : {":EINTR", ":EIO", ":ENOSPC", ":EROFS"})
        words.push_back("fail=" + std::to_string(n) + error);
    }
    return words;
  }

  /** A save with a failing operation: the answer says so, and the same request again saves. */
  void fail(const std::string& word) {
    SCOPED_TRACE(m_save.name + " " + word);
    arrange();
    m_camera.flash(word);
    const std::string answer = request();
    m_camera.flash("off");
    ++s_failures;
    const bool mustSucceed = word.ends_with("EINTR");
    const bool mustFail = !mustSucceed && (m_save.is & kHalfNoticed) == 0;
    const bool isGood = isTaken(answer);
    EXPECT_TRUE(isGood ? !mustFail : !mustSucceed && answer.find(k500) != std::string::npos) << answer;
    if (isGood && mustSucceed) expectAfter(answer);
    if (!isGood) expectNothingElse();
    if (isGood && m_save.undo.empty()) return;
    if (isGood) undo();
    expectAfter("again: " + repeat());
    undo();
  }

  /** A save with a power cut. */
  void cut(const std::string& word) {
    SCOPED_TRACE(m_save.name + " " + word);
    arrange();
    m_camera.flash(word);
    m_run.isOldAllowed = !isTaken(request());
    judge();
    if (m_save.undo.empty()) return expectNextSave();
    undo();
    repeat();
    undo();
  }

  void cutStart(const std::string& word) {
    SCOPED_TRACE(m_start.name + " " + word);
    damage();
    m_camera.flash(word);
    m_camera.start();
    EXPECT_TRUE(eventually([this] { return !m_camera.isOn() || m_camera.ask("system.model") != "<closed>"; }));
    m_run.isOldAllowed = false;
    judge();
    expectNextSave();
  }

  static std::string walked() {
    return std::to_string(s_cuts) + " power cuts, " + std::to_string(s_failures) + " failing operations";
  }

 private:
  void takeOnce() {
    arrange();
    m_run.before = comparable(filesOf(m_camera));
    m_camera.flash("count");
    const std::string answer = request();
    EXPECT_TRUE(isTaken(answer)) << m_save.name << ": " << answer;
    noteRun();
    undo();
  }

  /** The same request again, which saves. */
  std::string repeat() {
    prepareWorld();
    const std::string answer = request();
    EXPECT_TRUE(isTaken(answer)) << answer;
    return answer;
  }

  void prepareWorld() {
    if (!m_save.world.empty()) m_camera.shell(m_save.world);
  }

  [[nodiscard]] bool isAtBase() const { return comparable(m_base) == comparable(filesOf(m_camera)); }

  void damage() {
    m_camera.cut();
    putBack(m_camera, m_base);
    m_start.damage(m_camera);
  }

  /** The state in front of the save. */
  void arrange() {
    if (!isAtBase()) {
      m_camera.cut();
      putBack(m_camera, m_base);
      EXPECT_TRUE(m_camera.up()) << m_camera.log();
    }
    prepareWorld();
  }

  void noteRun() {
    m_operations = m_camera.flashOperations();
    m_writes = m_camera.flashWrites();
    m_camera.flash("off");
    m_run.after = comparable(filesOf(m_camera));
    EXPECT_GT(m_writes, 0U) << m_save.name << m_start.name;
  }

  /** The answer, once all is done that the request brings with it, or the power has gone. */
  std::string request() {
    const int boots = m_camera.boots();
    const std::string answer = m_camera.ask(m_save.request, UserClass::kDebug);
    const auto isBack = [&] { return m_camera.boots() > boots && m_camera.ask("system.model") != "<closed>"; };
    if ((m_save.is & kRestarts) == 0) {
      m_camera.ask("system.model");
    } else if (isTaken(answer)) {
      EXPECT_TRUE(eventually([&] { return isBack() || !m_camera.isOn(); }));
    }
    return answer;
  }

  void undo() {
    if (m_save.undo.empty()) return;
    m_camera.ask(m_save.undo, UserClass::kDebug);
    m_camera.ask("system.model");
  }

  void expectAfter(const std::string& answer) {
    const Files files = comparable(filesOf(m_camera));
    for (const std::string& path : difference(m_run.after, files))
      ADD_FAILURE() << answer << ": " << path << " is " << (files.contains(path) ? files.at(path) : "-");
  }

  /** What failed left each file as it was, or new; one of the store perhaps cut short, until it is saved again. */
  void expectNothingElse() {
    const Files files = comparable(filesOf(m_camera));
    const Texts old = difference(m_run.before, files);
    for (const std::string& path : difference(m_run.after, files)) {
      const bool isOld = std::ranges::find(old, path) == old.end();
      const bool isCutShort = isOfStore(path) && files.contains(path) && m_run.after.contains(path) &&
                              m_run.after.at(path).starts_with(files.at(path));
      EXPECT_TRUE(isOld || isCutShort) << path << " is " << (files.contains(path) ? files.at(path) : "-");
    }
  }

  void expectNextSave() {
    for (const std::string word : {"vfs", "afs"}) {
      EXPECT_TRUE(isTaken(m_camera.ask("ui.encode(2).cbr_mode(jpeg)=" + word)));
      EXPECT_EQ(m_camera.row("flash/sysconfig/ui.conf", "UI_ENC2_CBRMODE_JPEG"), word);
    }
  }

  /** What the cut left, and what the next start makes of it. */
  void judge() {
    m_camera.cut();
    const bool isMounted = m_camera.read("mtd5") == "mounted\n";
    const Files left = comparable(filesOf(m_camera));
    EXPECT_TRUE(m_camera.up()) << m_camera.log();
    EXPECT_LE(m_camera.boots(), 2);
    m_camera.flash("off");
    const std::optional<Files> known = isMounted ? std::optional(left) : std::nullopt;
    for (const std::string& fault : unexplained(m_run, known, comparable(filesOf(m_camera))))
      ADD_FAILURE() << fault;
    ++s_cuts;
  }

  static inline std::atomic<unsigned> s_cuts = 0;
  static inline std::atomic<unsigned> s_failures = 0;

  Camera m_camera;
  Files m_base;
  Save m_save;
  Start m_start;
  PowerCut m_run;
  unsigned m_operations = 0;
  unsigned m_writes = 0;
};

/** All cameras, side by side. */
class Walk : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    s_walkers.resize(kCameras);
    onEach([](std::unique_ptr<Walker>& walker) { walker = std::make_unique<Walker>(); });
  }
  static void TearDownTestSuite() {
    onEach([](std::unique_ptr<Walker>& walker) { walker.reset(); });
    std::printf("%s\n", Walker::walked().c_str());
  }

  /** Goes undisturbed first; then each camera takes the next disturbance of the list. */
  template <class Kind>
  static void walk(const Kind& kind, Texts (Walker::*list)() const, void (Walker::*disturb)(const std::string&)) {
    std::atomic<size_t> next = 0;
    onEach([&](std::unique_ptr<Walker>& walker) {
      walker->take(kind);
      const Texts words = spread((*walker.*list)(), kind.name);
      for (size_t i = 0; (i = next++) < words.size() && !HasFatalFailure();)
        (*walker.*disturb)(words[i]);
    });
  }

 private:
  static void onEach(const std::function<void(std::unique_ptr<Walker>&)>& work) {
    std::vector<std::thread> threads;
    for (std::unique_ptr<Walker>& walker : s_walkers)
      threads.emplace_back(work, std::ref(walker));
    for (std::thread& thread : threads)
      thread.join();
  }

  static inline std::vector<std::unique_ptr<Walker>> s_walkers;
};

class Saves : public Walk, public testing::WithParamInterface<Save> {};
class Starts : public Walk, public testing::WithParamInterface<Start> {};

TEST_P(Saves, Fail) { walk(GetParam(), &Walker::failures, &Walker::fail); }
TEST_P(Saves, PowerCut) { walk(GetParam(), &Walker::cuts, &Walker::cut); }
TEST_P(Starts, PowerCut) { walk(GetParam(), &Walker::cuts, &Walker::cutStart); }

constexpr auto kName = [](const auto& test) { return test.param.name; };
INSTANTIATE_TEST_SUITE_P(Every, Saves, testing::ValuesIn(everySave()), kName);
INSTANTIATE_TEST_SUITE_P(Every, Starts, testing::ValuesIn(everyStart()), kName);

}  // namespace
}  // namespace test
