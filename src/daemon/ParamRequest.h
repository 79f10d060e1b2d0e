#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

class CManBase;
class Parameter;
class Roots;

/**
 * The request path: reads one frame from a client, cuts it into items, hands each to the manager of its root and joins
 * the answers. Owns the tree. main owns the one object.
 */
class ParamRequest {
 public:
  /** Items of one request that are kept and run; a request with more runs none. */
  static constexpr size_t kMaxItems = 15;

  /** Builds the whole tree and replays the stored settings into the hardware and the neighbouring daemons. */
  ParamRequest();
  ~ParamRequest();
  ParamRequest(const ParamRequest&) = delete;
  ParamRequest& operator=(const ParamRequest&) = delete;

  /** The whole exchange for one connection; 0, or -1 on any refusal. The descriptor stays the caller's. */
  int32_t processRequest(int32_t descriptor);

  /** Has the network manager keep the ONVIF service running from now on. */
  void startNvtAplThread();

  /** The list mode: writes the list of all parameters. */
  static void writeList();

  /** The manager of a root by the first layer of a path, with or without its selector; none for another name. */
  static CManBase* findRoot(std::string_view layer);

 private:
  using PostActions = std::array<bool, 4>;  ///< which post-actions the items asked for, by PostAction

  int32_t recvRequest(int32_t descriptor);
  size_t divideRequest();
  int32_t checkRestrictions(std::string* response, size_t count) const;
  void processParameters(std::string* response, PostActions* actions);
  void processItem(Parameter& parameter, const std::string& item, PostActions* actions) const;
  static int32_t sendResponse(int32_t descriptor, const std::string& text);

  std::string m_request;
  int8_t m_userType;
  int8_t m_contentType;
  std::vector<std::string> m_params;
  std::unique_ptr<Roots> m_tree;

  /** The tree of the one object once it stands; static, so that internal requests need no object. */
  static const Roots* m_roots;
};
