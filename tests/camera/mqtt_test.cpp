// The agent as a broker and its clients see it, and as the camera does.

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <random>
#include <set>
#include <thread>

#include "cli/Description.h"
#include "cli/Item.h"
#include "tests/camera/Broker.h"
#include "tests/camera/Description.h"

namespace test {
namespace {

/** With the sanitizers the agent may take all the memory there is. */
#ifdef __SANITIZE_ADDRESS__
constexpr bool kIsBounded = false;
#else
constexpr bool kIsBounded = true;
#endif

bool isLong() { return std::getenv("TMX_LONG") != nullptr; }

/** An agent inside the camera, with a configuration of its own. */
class Agent {
 public:
  Agent(const Camera& camera, const std::string& config) : m_camera(camera) {
    camera.write("tmp/agent.conf", config);
    m_pid = camera.shell("tmx-mqtt --config /tmp/agent.conf >/dev/null 2>&1 & echo $!");
  }
  ~Agent() { stop(); }
  Agent(const Agent&) = delete;
  Agent& operator=(const Agent&) = delete;

  void stop() const {
    m_camera.exec({"sh", "-c", "kill " + m_pid + " && while kill -0 " + m_pid + "; do :; done 2>/dev/null"});
  }
  [[nodiscard]] bool runs() const { return m_camera.exec({"sh", "-c", "kill -0 " + m_pid}) == 0; }
  [[nodiscard]] std::string status(const std::string& file) const {
    return m_camera.shell("cat /proc/" + m_pid + "/" + file);
  }

 private:
  const Camera& m_camera;
  std::string m_pid;
};

/** One camera and one broker for all, whose agent begins anew with each. */
class Mqtt : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    s_broker = std::make_unique<Broker>();
    s_broker->start();
    s_camera = std::make_unique<Camera>();
    s_camera->leadUplinkTo(s_broker->port());
    ASSERT_TRUE(s_camera->up());
    s_guid = s_camera->ask("system.guid").substr(sizeof "system.guid=" - 1, 36);
    s_broker->equip(*s_camera, s_guid);
  }
  static void TearDownTestSuite() {
    s_camera.reset();
    s_broker.reset();
  }

  void SetUp() override { begin(); }
  void TearDown() override {
    m_agent.reset();
    s_broker->kill();  // with what it holds
  }

  /** Another agent, which has published all it has. */
  void begin(const std::string& more = "") {
    m_agent.reset();
    m_operator.reset();
    s_broker->kill();
    s_broker->start();
    m_agent = std::make_unique<Agent>(camera(), Broker::kTls + more);
    m_operator = std::make_unique<Client>(*s_broker, "operator");
    ASSERT_TRUE(client().await(topic("online"), "true"));
    ASSERT_TRUE(client().await([this] { return !client().at(topic("pending")).empty(); }));
  }

  static Camera& camera() { return *s_camera; }
  static Broker& broker() { return *s_broker; }
  static const std::string& guid() { return s_guid; }
  [[nodiscard]] Client& client() const { return *m_operator; }
  [[nodiscard]] Agent& agent() const { return *m_agent; }

  static std::string topic(const std::string& end) { return "tmx/1/" + s_guid + "/" + end; }
  static std::string valueTopic(std::string path) {
    std::ranges::replace(path, '.', '/');
    return topic("value/" + path);
  }
  [[nodiscard]] std::map<std::string, std::string> values() const {
    std::map<std::string, std::string> found = client().topics();
    std::erase_if(found, [](const auto& entry) { return !entry.first.starts_with(topic("value/")); });
    return found;
  }
  [[nodiscard]] Json request(const Json& items) {
    return client().ask(guid(), "r" + std::to_string(++m_requests), items);
  }

 private:
  static std::unique_ptr<Broker> s_broker;
  static std::unique_ptr<Camera> s_camera;
  static std::string s_guid;
  std::unique_ptr<Agent> m_agent;
  std::unique_ptr<Client> m_operator;
  int m_requests = 0;
};

std::unique_ptr<Broker> Mqtt::s_broker;
std::unique_ptr<Camera> Mqtt::s_camera;
std::string Mqtt::s_guid;

/** What the broker ought to hold: by path, what an operator reads. */
std::map<std::string, std::string> readAll(Camera& camera) {
  std::vector<tmx::Item> items;
  for (const auto& parameter : description()["parameters"]) {
    for (const std::string& path : tmx::expandSelectors(parameter)) {
      // The one is a test of the card with each read; the others choose a scene.
      const bool isLeftOut = path.starts_with("storage.disk(1).check") || path.starts_with("camera.scene(");
      if (!isLeftOut && tmx::mayRead(parameter, UserClass::kOperator)) items.push_back(tmx::Item::read(path));
    }
  }
  std::map<std::string, std::string> values;
  for (const std::vector<tmx::Item>& part : tmx::splitRequests(items)) {
    for (const tmx::Answer& answer :
         tmx::parseAnswers(part, camera.ask(tmx::requestText(part), UserClass::kOperator))) {
      const bool isShort = answer.value.size() <= 4096;
      if (answer.hasValue && answer.accepted() && isShort) values[answer.path] = tmx::unescapeValue(answer.value);
    }
  }
  return values;
}

TEST_F(Mqtt, PublishesWhatAReadSays) {
  std::map<std::string, std::string> wanted = readAll(camera());
  ASSERT_TRUE(client().await([&] { return values().size() >= wanted.size(); }));
  const bool isEqual = client().await([&] {
    wanted.clear();
    for (const auto& [path, value] : readAll(camera())) {
      if (path != "system.date") wanted[valueTopic(path)] = Json(value).dump();
    }
    std::map<std::string, std::string> found = values();
    found.erase(valueTopic("system.date"));
    return found == wanted;
  });
  EXPECT_GT(wanted.size(), 500U);
  EXPECT_TRUE(isEqual);
  const auto found = values();
  for (const auto& [at, value] : wanted)
    EXPECT_EQ(client().at(at), value) << at;
  EXPECT_EQ(found.size(), wanted.size() + 1);
  const Json about = Json::parse(client().at(topic("about")));
  EXPECT_EQ(about, Json({{"model", "KT-A10"}, {"version", "1.00.003"}, {"address", "127.0.0.1:443"}}));
}

TEST_F(Mqtt, FollowsWhatChanges) {
  // Another client's change, the value that its commit takes over, and one that holds what JSON has to escape.
  camera().ask("camera.scene.image.color=31&encode(1).framerate=5&encode(1).status=save&camera.id=%22\\ \xc3\xa4&");
  EXPECT_TRUE(client().await(valueTopic("camera.scene.image.color"), "\"31\""));
  EXPECT_TRUE(client().await(valueTopic("encode(1).framerate"), "\"5\""));
  EXPECT_TRUE(client().await(valueTopic("camera.id"), R"("\"\\ )"
                                                      "\xc3\xa4\""));
  camera().ask("encode(1).framerate=10&encode(1).status=save");
  EXPECT_TRUE(client().await(valueTopic("encode(1).framerate"), "\"10\""));
  // What cannot be read is taken away until it can.
  const std::string pan = valueTopic("camera.motion.pan");
  ASSERT_TRUE(client().await([&] { return !client().at(pan).empty(); }));
  camera().tell("ptzseq down");
  EXPECT_TRUE(client().await(pan, ""));
  camera().tell("ptzseq up");
  EXPECT_TRUE(client().await([&] { return !client().at(pan).empty(); }));
  camera().ask("camera.scene.status=save&camera.status=save");
}

TEST_F(Mqtt, TellsWhatWaits) {
  const auto paths = [this] {
    std::set<std::string> found;
    for (const Json& entry : Json::parse(client().at(topic("pending"))))
      found.insert(entry["path"].get<std::string>() + " by " + entry.value("by", "?"));
    return found;
  };
  EXPECT_TRUE(client().await([&] { return paths().empty(); }));
  camera().ask("camera.scene.image.color=41");
  EXPECT_TRUE(client().await([&] { return paths().contains("camera.scene.image.color by ?"); }));
  EXPECT_EQ(request({{{"path", "encode(1).framerate"}, {"value", "6"}}})["answers"][0]["hint"],
            "encode(1).status=save");
  EXPECT_TRUE(client().await([&] { return paths().contains("encode(1).framerate by mqtt"); }));
  camera().ask("camera.scene.status=save");
  EXPECT_EQ(request({{{"path", "encode(1).status"}, {"value", "save"}}})["answers"][0]["status"], 200);
  EXPECT_TRUE(client().await([&] { return paths().empty(); }));
}

TEST_F(Mqtt, AnswersRequests) {
  const Json answer = request({{{"path", "system.model"}},
                               {{"path", "camera.id"}, {"value", "50% & \"more\""}},
                               {{"path", "network.hostname"}, {"value", "x"}},
                               {{"path", "system.log"}},
                               {{"path", "none"}}});
  EXPECT_EQ(answer, Json({{"id", "r1"},
                          {"guid", guid()},
                          {"answers",
                           {{{"path", "system.model"}, {"status", 200}, {"text", "OK"}, {"value", "KT-A10"}},
                            {{"path", "camera.id"},
                             {"status", 202},
                             {"text", "Accepted"},
                             {"value", "50% & \"more\""},
                             {"hint", "camera.status=save"}},
                            {{"path", "network.hostname"}, {"status", 401}, {"text", "Unauthorized"}},
                            {{"path", "system.log"}, {"status", 401}, {"text", "Unauthorized"}},
                            {{"path", "none"}, {"status", 461}, {"text", "Command Not Found"}}}}}));
  EXPECT_EQ(request(Json(Json::array_t(200, {{"path", "system.guid"}})))["answers"].size(), 200U);
  camera().ask("camera.status=save");
}

TEST_F(Mqtt, RefusesWhatItDoesNotUnderstand) {
  const Json read{{{"path", "system.model"}}};
  const std::string place = "tmx/1/answer/test";
  const auto with = [&](const char* key, const Json& value) {
    Json body{{"id", "x"}, {"answer", place}, {"items", read}};
    body[key] = value;
    return body.dump();
  };
  const Texts errors{with("id", ""),
                     with("id", std::string(65, 'x')),
                     with("id", 1),
                     with("items", Json::array()),
                     with("items", {"system.model"}),
                     with("items", Json(Json::array_t(201, {{"path", "system.model"}}))),
                     with("items", {{{"path", "system.model&camera.id=1"}}}),
                     with("items", {{{"path", "camera.id"}, {"value", 1}}}),
                     with("items", {{{"path", "camera.id"}, {"value", std::string(1020, 'x')}}})};
  for (const std::string& body : errors) {
    client().answers.clear();
    client().publish(topic("request"), body);
    ASSERT_TRUE(client().await([this] { return !client().answers.empty(); })) << body;
    const Json answer = client().answers.back();
    EXPECT_TRUE(answer["guid"] == guid() && answer.contains("error") && !answer.contains("answers")) << body << answer;
  }
  // Nobody can be answered: the next answer is another one's.
  const Texts silent{"",
                     "[]",
                     "{\"id\"",
                     std::string(65537, ' '),
                     std::string(65536, '['),
                     with("answer", "tmx/1/answer/"),
                     with("answer", "tmx/1/answer/#"),
                     with("answer", "tmx/1/answer/a b"),
                     with("answer", topic("online")),
                     with("answer", "homeassistant/device/x/config"),
                     with("answer", "tmx/1/answer/" + std::string(120, 'x')),
                     with("answer", Json::array())};
  for (const std::string& body : silent)
    client().publish(topic("request"), body);
  client().publish("tmx/1/00000000-0000-0000-0000-000000000000/request", with("id", "another's"));
  client().answers.clear();
  EXPECT_EQ(request(read)["answers"][0]["status"], 200);
  EXPECT_EQ(client().answers.size(), 1U);
  EXPECT_EQ(client().at(topic("online")), "true");
}

TEST_F(Mqtt, ExecutesARequestOnce) {
  const auto writes = [] {
    return std::ranges::count_if(camera().journal("dsp"),
                                 [](const std::string& line) { return line.find("set") != std::string::npos; });
  };
  camera().clearJournal();
  const Json item{{{"path", "camera.scene.image.color"}, {"value", "77"}}};
  const Json first = client().ask(guid(), "once", item);
  const auto once = writes();
  EXPECT_GT(once, 0);
  EXPECT_EQ(client().ask(guid(), "once", item), first);
  // Nor another one that has its id, nor behind a new connection.
  EXPECT_EQ(client().ask(guid(), "once", {{{"path", "camera.scene.image.color"}, {"value", "78"}}}), first);
  broker().kill();
  broker().start();
  client().forget();
  ASSERT_TRUE(client().await(topic("online"), "true"));
  EXPECT_EQ(client().ask(guid(), "once", item), first);
  EXPECT_EQ(writes(), once);
  camera().ask("camera.scene.status=save");
}

TEST_F(Mqtt, LetsEightRequestsWait) {
  camera().exec({"sh", "-c", "kill -STOP $(pidof tmxd)"});
  client().answers.clear();
  for (int i = 1; i <= 9; ++i) {
    client().publish(topic("request"), Json({{"id", "w" + std::to_string(i)},
                                             {"answer", "tmx/1/answer/test"},
                                             {"items", {{{"path", "system.model"}}}}})
                                           .dump());
  }
  ASSERT_TRUE(client().await([this] { return !client().answers.empty(); }));
  EXPECT_TRUE(client().answers[0]["id"] == "w9" && client().answers[0].contains("error"));
  camera().exec({"sh", "-c", "kill -CONT $(pidof tmxd)"});
  ASSERT_TRUE(client().await([this] { return client().answers.size() == 9; }));
  EXPECT_EQ(client().answers.back()["answers"][0]["value"], "KT-A10");
}

TEST_F(Mqtt, ActsAsConfigured) {
  begin("class=administrator\naddress=camera.example:8443\nvalues=encode(1) system.log network.destination.host\n");
  EXPECT_EQ(request({{{"path", "system.log"}}})["answers"][0]["status"], 200);
  ASSERT_TRUE(client().await([this] { return values().size() >= 15; }));
  std::set<std::string> heads;
  for (const auto& [at, value] : values()) {
    const std::string path = at.substr(topic("value/").size());
    heads.insert(path.substr(0, path.find('/')));
  }
  EXPECT_EQ(heads, (std::set<std::string>{"encode(1)", "network", "system"}));
  EXPECT_EQ(Json::parse(client().at(topic("about")))["address"], "camera.example:8443");
  EXPECT_FALSE(client().at(valueTopic("network.destination(5).host")).empty());
  EXPECT_TRUE(client().at("homeassistant/device/" + guid() + "/config").empty());
}

TEST_F(Mqtt, OutlivesTheBroker) {
  const auto before = values();
  const auto isAsBefore = [&] {
    auto now = values();
    for (const std::string path : {"system.date", "camera.scene.image.color"})
      now[valueTopic(path)] = before.at(valueTopic(path));
    return now == before;
  };
  broker().signal(SIGSTOP);
  camera().ask("camera.scene.image.color=21");
  if (isLong()) std::this_thread::sleep_for(std::chrono::seconds(70));
  broker().signal(SIGCONT);
  EXPECT_TRUE(client().await(valueTopic("camera.scene.image.color"), "\"21\""));
  EXPECT_TRUE(client().await(isAsBefore));
  // Without its data.
  broker().kill();
  camera().ask("camera.scene.image.color=22");
  broker().start();
  client().forget();
  EXPECT_TRUE(client().await(valueTopic("camera.scene.image.color"), "\"22\""));
  EXPECT_TRUE(client().await(isAsBefore));
  EXPECT_TRUE(client().await(topic("online"), "true"));
  camera().ask("camera.scene.status=save");
}

TEST_F(Mqtt, StartsWithTheCamera) {
  // With the broker away; a retained request is there when it comes.
  agent().stop();
  EXPECT_TRUE(client().await(topic("online"), "false"));
  camera().down();
  broker().kill();
  camera().write("flash/mqtt/agent.conf", Broker::kTls);
  ASSERT_TRUE(camera().up());
  EXPECT_TRUE(camera().isLogged("tmx-mqtt"));
  broker().start();
  client().forget();
  ASSERT_TRUE(client().await(topic("online"), "true"));
  camera().down();
  EXPECT_TRUE(client().await(topic("online"), "false"));

  const Json write{{{"path", "camera.id"}, {"value", "retained"}}};
  client().answers.clear();
  client().publish(topic("request"), Json({{"id", "kept"}, {"answer", "tmx/1/answer/test"}, {"items", write}}).dump(),
                   true);
  ASSERT_TRUE(camera().up());
  ASSERT_TRUE(client().await(topic("online"), "true"));
  EXPECT_EQ(request({{{"path", "system.model"}}})["answers"][0]["status"], 200);
  EXPECT_EQ(client().answers.size(), 1U);
  EXPECT_NE(camera().ask("camera.id"), "camera.id=retained&200 OK");
  // The last will, where nobody is left to say a word.
  camera().cut();
  EXPECT_TRUE(client().await(topic("online"), "false"));
  std::filesystem::remove(camera().path("flash/mqtt/agent.conf"));
  ASSERT_TRUE(camera().up());
}

TEST_F(Mqtt, NobodyIsAnotherCamera) {
  const std::string other = "00000000-1111-2222-3333-444444444444";
  Client stranger(broker(), other);
  for (const std::string end : {"online", "value/system/model", "request", "pending"})
    stranger.publish(topic(end), R"({"id": "x", "answer": "tmx/1/answer/x", "items": [{"path": "system.model"}]})",
                     true);
  stranger.publish("homeassistant/device/" + guid() + "/config", "{}", true);
  // The broker ends its connection for each. Behind them what it may publish.
  stranger.publish("tmx/1/" + other + "/online", "true", true);
  client().answers.clear();
  ASSERT_TRUE(client().await([&] {
    stranger.hear();
    return client().at("tmx/1/" + other + "/online") == "true";
  }));
  EXPECT_EQ(client().at(topic("online")), "true");
  EXPECT_EQ(client().at(valueTopic("system.model")), "\"KT-A10\"");
  EXPECT_TRUE(client().at("homeassistant/device/" + guid() + "/config").empty());
  EXPECT_TRUE(client().answers.empty());
  EXPECT_TRUE(stranger.topics().empty()) << stranger.topics().begin()->first;
}

TEST_F(Mqtt, IntroducesTheCameraToHomeAssistant) {
  begin("discovery=homeassistant\n");
  const std::string place = "homeassistant/device/" + guid() + "/config";
  ASSERT_TRUE(client().await([&] { return !client().at(place).empty(); }));
  const Json document = Json::parse(client().at(place));
  EXPECT_EQ(document["avty_t"], topic("online"));
  EXPECT_EQ(document["cmd_t"], topic("request"));
  std::set<std::string> topics;
  std::size_t everyDay = 0;
  std::map<std::string, Json> filled;  // a request by the entity's platform
  for (const auto& [id, entity] : document["cmps"].items()) {
    const std::string platform = entity["p"];
    const std::string state = entity.value("stat_t", "");
    if (!state.empty()) topics.insert(state);
    everyDay += entity.contains("en") ? 0 : 1;
    EXPECT_EQ(entity["uniq_id"], guid() + "_" + id);
    EXPECT_EQ(platform == "button", state.empty()) << id;
    EXPECT_EQ(platform == "sensor", !entity.contains("cmd_tpl")) << id;
    const std::string value = client().at(state);
    if (entity.contains("unit_of_meas")) {
      EXPECT_EQ(value.find_first_not_of("\"-.0123456789k"), std::string::npos) << id << value;
      EXPECT_NE(entity["val_tpl"].get<std::string>().find("replace('k','')"), std::string::npos) << id;
    }
    if (platform == "select" && !value.empty() && !entity.contains("en")) {
      EXPECT_TRUE(std::ranges::count(entity["ops"], Json::parse(value)) == 1) << id << value;
    }
    // As Home Assistant fills it in, with the value that is there.
    std::string body = entity.value("cmd_tpl", "");
    if (entity.contains("en") || body.empty() || (value.empty() && platform != "button")) continue;
    for (const auto& [from, to] :
         {std::pair<std::string, std::string>{"{{now().timestamp()}}", id}, {"{{value|string|tojson}}", value}}) {
      if (const std::size_t at = body.find(from); at != std::string::npos) body.replace(at, from.size(), to);
    }
    filled[platform] = Json::parse(body, nullptr, false);
  }
  // All that is published is there, and nothing else but what cannot be read now.
  for (const auto& [at, value] : values())
    EXPECT_TRUE(topics.contains(at)) << at;
  EXPECT_GT(everyDay, 20U);
  EXPECT_LT(everyDay, topics.size() / 10);
  EXPECT_EQ(filled.size(), 5U);
  for (const auto& [platform, body] : filled) {
    const Json answer = client().ask(guid(), platform, body["items"]);
    EXPECT_LT(answer["answers"][0].value("status", 999), 300) << body << answer;
    EXPECT_EQ(body["answer"], "tmx/1/answer/homeassistant");
  }
}

TEST_F(Mqtt, KeepsNoRootAndLittleMemory) {
  const std::string status = agent().status("status");
  for (const std::string line :
       {"CapPrm:\t0000000000000000", "CapEff:\t0000000000000000", "CapBnd:\t0000000000000000", "NoNewPrivs:\t1"})
    EXPECT_NE(status.find(line), std::string::npos) << line;
  // A camera that was started without root has one user.
  EXPECT_TRUE(geteuid() != 0 || status.find("Uid:\t201\t201\t201\t201") != std::string::npos);
  const std::string opener = camera().shell("cat /proc/$(pgrep -x mqtt-opener)/status");
  EXPECT_NE(opener.find("CapEff:\t0000000000000000"), std::string::npos) << opener;
  if (!kIsBounded) return;
  begin("discovery=homeassistant\n");
  static_cast<void>(request(Json(Json::array_t(200, {{"path", "system.guid"}}))));
  long memory = 0;
  std::istringstream lines(agent().status("smaps_rollup"));
  for (std::string line; std::getline(lines, line);)
    if (line.starts_with("Private")) memory += std::atol(line.substr(line.find(':') + 1).c_str());
  std::printf("the agent has %ld kB of its own\n", memory);
  EXPECT_LE(memory, 1536);
}

TEST_F(Mqtt, TakesNoConfigurationThatIsWrong) {
  const TextPairs wrong{{"", "there is no \"broker\""},
                        {"broker=x", "line 1: no HOST:PORT"},
                        {"# a camera\n\n broker = x:0", "line 3: a port is a number from 1 to 65535"},
                        {"broker=x:65536", "a port"},
                        {"broker=x:1x", "a port"},
                        {"broker=:1", "no HOST:PORT"},
                        {"broker=::1:1883", "no HOST:PORT"},
                        {"broker=x:1\nbroker=y:1", "line 2: this key stands twice"},
                        {"broker=x:1\nuser=me", "line 2: no such key"},
                        {"broker=x:1\nvalues", "line 2: no KEY=VALUE"},
                        {"broker=x:1\nvalues=", "no value"},
                        {"broker=x:1\nvalues=a/b", "paths are needed"},
                        {"broker=x:1\nca=/a", "\"ca\", \"certificate\" and \"key\" need each other"},
                        {"broker=x:1\ncertificate=/a\nkey=/b", "need each other"},
                        {"broker=x:1\nca=a", "a file's path"},
                        {"broker=x:1\nclass=debug", "a class is"},
                        {"broker=x:1\ndiscovery=a/#", "without wildcards"},
                        {"broker=x:1\naddress=x", "no HOST:PORT"},
                        {std::string("broker=x:1\naddress=x\1:1"), "a control character"}};
  for (const auto& [config, words] : wrong) {
    camera().write("tmp/wrong.conf", config);
    const std::string said = camera().shell("tmx-mqtt --config /tmp/wrong.conf 2>&1; echo $?");
    EXPECT_TRUE(said.starts_with("tmx-mqtt: /tmp/wrong.conf: ") && said.ends_with("\n1")) << config << said;
    EXPECT_NE(said.find(words), std::string::npos) << config << "\n" << said;
  }
  EXPECT_EQ(camera().shell("tmx-mqtt --config /none 2>&1; echo $?"), "tmx-mqtt: /none: No such file or directory\n1");
}

// ---- What is no broker ---------------------------------------------------------------------------------------------

/** Something that listens where the broker was, and says to each that connects what the test wants. */
class Impostor {
 public:
  explicit Impostor(int port) {
    m_server = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const int on = 1;
    setsockopt(m_server, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    EXPECT_EQ(bind(m_server, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(listen(m_server, 8), 0);
    const timeval limit{20, 0};
    setsockopt(m_server, SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
  }
  ~Impostor() { close(m_server); }
  Impostor(const Impostor&) = delete;
  Impostor& operator=(const Impostor&) = delete;

  /** Waits for a client, reads its first packet, and sends the bytes; then waits until it is left, or leaves. */
  [[nodiscard]] bool meet(const std::string& bytes, bool waits) const {
    const int client = accept4(m_server, nullptr, nullptr, SOCK_CLOEXEC);
    if (client < 0) return false;
    std::array<char, 4096> buffer{};
    static_cast<void>(recv(client, buffer.data(), buffer.size(), 0));
    static_cast<void>(send(client, bytes.data(), bytes.size(), MSG_NOSIGNAL));
    while (waits && recv(client, buffer.data(), buffer.size(), 0) > 0) {
    }
    close(client);
    return true;
  }

 private:
  int m_server;
};

const std::string kAccepted("\x20\x02\0\0", 4);

/** A message as a broker sends it, with no more than it takes to send. */
std::string message(const std::string& topic, const std::string& payload) {
  const std::size_t size = 2 + topic.size() + payload.size();
  std::string bytes = "\x30";
  for (std::size_t rest = size; bytes.size() == 1 || rest > 0; rest >>= 7)
    bytes += static_cast<char>((rest & 0x7f) | (rest > 0x7f ? 0x80 : 0));
  return bytes + static_cast<char>(topic.size() >> 8) + static_cast<char>(topic.size() & 0xff) + topic + payload;
}

TEST_F(Mqtt, OutlivesWhatIsNoBroker) {
  agent().stop();
  broker().kill();
  const Impostor impostor(broker().port());
  std::mt19937 random(1);
  std::string requests = kAccepted;
  const std::string right = R"({"id": "x", "answer": "tmx/1/answer/x", "items": [{"path": "system.model"}]})";
  for (int i = 0; i < (isLong() ? 50000 : 2000); ++i) {
    std::string body = right;
    body[random() % body.size()] = static_cast<char>(random());
    if (i % 3 == 0) body.resize(random() % body.size());
    requests += message(topic(i % 7 == 0 ? "pending" : "request"), body);
  }
  const std::vector<std::pair<std::string, bool>> words{
      {"HTTP/1.1 400 Bad Request\r\n\r\n", true},
      {std::string("\x20\x02\0\5", 4), true},                                        // not authorised
      {kAccepted + "\x90\x03" + std::string("\0\1\x80", 3), true},                   // a refused subscription
      {kAccepted + "\x40\x02\x12\x34" + message("", "") + "\x00", false},            // what nobody asked for
      {kAccepted + "\x30\xff\xff\xff\x7f" + std::string(1 << 20, 'x'), kIsBounded},  // 256 MB
      {kAccepted + message(topic("request"), std::string(1 << 20, '[')), false},
      {requests, false}};
  for (const auto& [bytes, waits] : words) {
    const Agent victim(camera(), "broker=127.0.0.1:8883\n");
    EXPECT_TRUE(impostor.meet(bytes, waits));
    EXPECT_TRUE(impostor.meet("", false)) << "does not come again behind " << bytes.substr(0, 20);
    EXPECT_TRUE(victim.runs()) << bytes.substr(0, 20);
  }
  if (!isLong()) return;
  const Agent victim(camera(), "broker=127.0.0.1:8883\n");
  EXPECT_TRUE(impostor.meet("", true)) << "waits for ever for an answer";
}

}  // namespace
}  // namespace test
