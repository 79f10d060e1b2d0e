#pragma once

#include "network/CNetworkApiBase.h"
#include "tree/Commit.h"
#include "tree/Node.h"

/**
 * On which ports, and for which of its two uses, the web server answers: configuration and streaming. Ports and states
 * wait for a restart, which is refused where a use would be closed on both protocols.
 */
namespace Network {

inline constexpr std::string_view kStreaming = "streaming";

/** Rule::accepts and Rule::fetch of a port: the server has one for both uses, under the configuration. */
int32_t isPort(Request& request);
int32_t portShown(const Request& request, std::string& text);

constexpr Rule webServerPort(network_row::Row row, std::string_view layer) {
  return {
      .accepts = Test{isPort, {"for configuration a port, 1 to 65535", "8080 65535", "x"}},
      .place = row,
      .fetch = portShown,
      .keeps = Keeps::Staged,
      .unchanged = Unchanged::AfterTest,
      .answers = {.layer = layer, .command = "(configuration).status=restart"},
  };
}

struct CHttp : CNetworkApiBase {
  static constexpr Selector selector{.takes = SelectorWord{.words = Words{"streaming", "configuration"}},
                                     .without = "configuration"};
  struct CStatus;
  struct CPriority;
  struct CPort;
  struct CType;
};

struct CHttp::CStatus : CNetworkApiBase {
  /** A change of a state alone restarts nothing. */
  static int32_t restart(Request& request);
  static constexpr Rule rule{
      .accepts = Words{"on", "off"},
      .commands = {{{"restart", restart, PostAction::RestartWebServer}}},
      .place = {network_row::HTTP_CONFIG_STATUS, rowOfWord<1, kStreaming, network_row::HTTP_CONFIG_STREAMING_STATUS>},
      .keeps = Keeps::Staged,
      .unchanged = Unchanged::AfterKeeping,
      .answers = {.layer = "network.http", .command = ".status=restart", .selector = 1, .byDefault = "configuration"},
  };
};

/** What the camera gives up first when its streams take too much: the number of clients, or the rate of pictures. */
struct CHttp::CPriority : CNetworkApiBase {
  static int32_t isStreaming(const Selectors& selectors);
  static int32_t isIdle(const Selectors& selectors);
  static int32_t tell(Request& request);
  static int32_t reload(Request& request);
  static constexpr Rule rule{
      .guard = {.access = {isStreaming, "for streaming"}, .write = {{{isIdle, "while nobody is served"}}}},
      .accepts = Words{Word{"framerate", 1}, Word{"clientnumber", 0}},
      .place = network_row::HTTP_CONFIG_STREAMING_PRIORITY,
      .act = tell,
      .keeps = Keeps::WriteThrough,
      .then = reload,
  };
};

struct CHttp::CPort : CNetworkApiBase {
  static constexpr Rule rule = webServerPort(network_row::HTTP_CONFIG_PORT, "network.http");
};

struct CHttp::CType : CNetworkApiBase {
  static constexpr Rule rule{.shows = {.fixed = "http"}};
};

struct CHttps : CNetworkApiBase {
  static constexpr Selector selector{.available = {hasOpenssl, "/bin/openssl"},
                                     .takes = SelectorWord{.words = Words{"streaming", "configuration"}},
                                     .without = "configuration"};
  struct CStatus;
  struct CPort;
};

/** Commit::check: 412 where a use would be closed on both protocols. */
int32_t httpsStaysReachable(Request& request);
inline constexpr Row kHttpsRows[] = {network_row::HTTPS_CONFIG_PORT, network_row::HTTPS_CONFIG_STATUS,
                                     network_row::HTTPS_CONFIG_STREAMING_STATUS};
inline constexpr Commit kHttpsCommit{.rows = kHttpsRows, .check = httpsStaysReachable};

struct CHttps::CStatus : CNetworkApiBase {
  static int32_t needsCertificate(Request& request);
  static constexpr Rule rule{
      .accepts = Words{"on", "off"},
      .commands = {{{"restart", takeOver<kHttpsCommit>, PostAction::RestartWebServer}}},
      .place = {network_row::HTTPS_CONFIG_STATUS, rowOfWord<1, kStreaming, network_row::HTTPS_CONFIG_STREAMING_STATUS>},
      .act = needsCertificate,
      .keeps = Keeps::Staged,
      .unchanged = Unchanged::AfterKeeping,
      .answers = {.layer = "network.https", .command = ".status=restart", .selector = 1, .byDefault = "configuration"},
  };
};

struct CHttps::CPort : CNetworkApiBase {
  static constexpr Rule rule = webServerPort(network_row::HTTPS_CONFIG_PORT, "network.https");
};

}  // namespace Network
