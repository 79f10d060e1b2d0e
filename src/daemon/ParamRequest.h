#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

class CManBase;
class CNetworkMan;
class Parameter;

/**
 * The request path: reads one frame from a client, cuts it into items, hands each to the manager of its root and joins
 * the answers. Owns the eleven managers, and with them the tree. main owns the one object.
 */
class ParamRequest {
 public:
  static constexpr size_t kMaxItems = 15;

  /** Builds the whole tree and replays the stored settings. */
  ParamRequest();
  ~ParamRequest();
  ParamRequest(const ParamRequest&) = delete;
  ParamRequest& operator=(const ParamRequest&) = delete;

  /** The whole exchange for one connection; -1 on any refusal. The descriptor stays the caller's. */
  int32_t processRequest(int32_t descriptor);

  /**
   * One item from inside the daemon, through the same tree; reentrant. `response`, where given, receives the answer
   * behind the path, without its line end. -1 only when the root does not exist; failures stand in the response.
   */
  static int32_t execApiCommandInternal(const std::string& query, std::string* response, int8_t userType,
                                        int8_t contentType);
};
