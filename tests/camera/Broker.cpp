#include "tests/camera/Broker.h"

#include <mosquitto.h>
#include <netinet/in.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>

namespace test {
namespace {

/** Longer than anything takes, but for a pause in front of a new connection. */
constexpr std::chrono::seconds kPatience{40};

}  // namespace

int freePort() {
  const int probe = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  auto* generic = reinterpret_cast<sockaddr*>(&address);
  const bool isBound = bind(probe, generic, size) == 0 && getsockname(probe, generic, &size) == 0;
  close(probe);
  return isBound ? ntohs(address.sin_port) : 0;
}

Broker::Broker() : m_port(freePort()) {
  std::string pattern = (std::filesystem::temp_directory_path() / "tmx-broker-XXXXXX").string();
  m_folder = mkdtemp(pattern.data());
}

Broker::~Broker() {
  kill();
  std::filesystem::remove_all(m_folder);
}

void Broker::start() {
  m_pid = fork();
  if (m_pid == 0) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const std::string log = m_folder / "log";
    if (std::freopen(log.c_str(), "w", stderr) == nullptr) _exit(1);
    execl(TMX_FLEET "/broker", "broker", m_folder.c_str(), std::to_string(m_port).c_str(), nullptr);
    _exit(1);
  }
  ASSERT_TRUE(eventually([this] {
    const int probe = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<std::uint16_t>(m_port));
    const bool isThere = connect(probe, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    close(probe);
    return isThere;
  })) << "the broker did not start";
}

void Broker::signal(int number) {
  if (m_pid > 0) ::kill(m_pid, number);
}

void Broker::kill() {
  if (m_pid <= 0) return;
  ::kill(m_pid, SIGKILL);
  waitpid(std::exchange(m_pid, -1), nullptr, 0);
}

std::string Broker::certificate(const std::string& name) const {
  const std::string script = std::string(TMX_FLEET "/certificates ") + m_folder.string();
  const std::string kind = name == "operator" ? name : "camera " + name;
  EXPECT_EQ(std::system((script + " ca && " + script + " " + kind).c_str()), 0);
  return m_folder / name;
}

void Broker::equip(const Camera& camera, const std::string& name) const {
  const std::filesystem::path folder = camera.path("flash/mqtt");
  std::filesystem::create_directory(folder);
  const std::string own = certificate(name);
  const auto put = [&](const std::string& from, const char* to) {
    std::filesystem::copy_file(from, folder / to, std::filesystem::copy_options::overwrite_existing);
    std::filesystem::permissions(folder / to, std::filesystem::perms(0644));
  };
  put(authority(), "ca.pem");
  put(own + ".pem", "certificate.pem");
  put(own + ".key", "key.pem");
}

struct Client::Callbacks {
  static void connected(mosquitto* client, void* /*object*/, int refusal) {
    EXPECT_EQ(refusal, 0);
    mosquitto_subscribe(client, nullptr, "#", 1);
  }
  static void subscribed(mosquitto* /*client*/, void* object, int /*id*/, int /*count*/, const int* /*granted*/) {
    static_cast<Client*>(object)->m_isSubscribed = true;
  }
  static void came(mosquitto* /*client*/, void* object, const mosquitto_message* message) {
    Client& self = *static_cast<Client*>(object);
    const std::string topic = message->topic;
    const std::string payload(static_cast<const char*>(message->payload),
                              static_cast<std::size_t>(message->payloadlen));
    if (topic.starts_with("tmx/1/answer/")) {
      self.answers.push_back(Json::parse(payload, nullptr, false));
    } else if (payload.empty()) {
      self.m_topics.erase(topic);
    } else {
      self.m_topics[topic] = payload;
    }
  }
};

void Client::Destroy::operator()(mosquitto* client) const { mosquitto_destroy(client); }

Client::Client(const Broker& broker, const std::string& name) {
  mosquitto_lib_init();
  const std::string own = broker.certificate(name);
  m_client.reset(mosquitto_new(nullptr, true, this));
  mosquitto_connect_callback_set(m_client.get(), Callbacks::connected);
  mosquitto_subscribe_callback_set(m_client.get(), Callbacks::subscribed);
  mosquitto_message_callback_set(m_client.get(), Callbacks::came);
  mosquitto_tls_set(m_client.get(), broker.authority().c_str(), nullptr, (own + ".pem").c_str(), (own + ".key").c_str(),
                    nullptr);
  EXPECT_EQ(mosquitto_connect(m_client.get(), "127.0.0.1", broker.port(), 60), MOSQ_ERR_SUCCESS);
  EXPECT_TRUE(await([this] { return m_isSubscribed; }));
}

bool Client::await(const std::function<bool()>& isIt) {
  const auto end = std::chrono::steady_clock::now() + kPatience;
  while (!isIt()) {
    if (std::chrono::steady_clock::now() >= end) return false;
    hear();
  }
  return true;
}

void Client::hear() {
  if (mosquitto_loop(m_client.get(), 20, 1) == MOSQ_ERR_SUCCESS) return;
  usleep(20000);
  mosquitto_reconnect(m_client.get());
}

bool Client::await(const std::string& topic, const std::string& payload) {
  const bool is = await([&] { return at(topic) == payload; });
  EXPECT_TRUE(is) << topic << ": " << at(topic) << ", not " << payload;
  return is;
}

void Client::publish(const std::string& topic, const std::string& payload, bool isRetained) {
  EXPECT_EQ(mosquitto_publish(m_client.get(), nullptr, topic.c_str(), static_cast<int>(payload.size()), payload.data(),
                              1, isRetained),
            MOSQ_ERR_SUCCESS);
}

std::string Client::at(const std::string& topic) const {
  const auto found = m_topics.find(topic);
  return found == m_topics.end() ? std::string() : found->second;
}

Json Client::ask(const std::string& guid, const std::string& id, const Json& items) {
  answers.clear();
  publish("tmx/1/" + guid + "/request", Json({{"id", id}, {"answer", "tmx/1/answer/test"}, {"items", items}}).dump());
  EXPECT_TRUE(await([&] { return !answers.empty() && answers.back().value("id", "") == id; })) << id << items;
  return answers.empty() ? Json() : answers.back();
}

}  // namespace test
