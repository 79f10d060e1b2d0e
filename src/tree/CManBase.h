#pragma once

#include <cstdint>
#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tree/CApiBase.h"
#include "tree/ExecArgs.h"

class Parameter;

/** The permission string of a node that is only a branch. */
inline constexpr const char* kBranch = "";

/**
 * A root of the parameter tree: owns the nodes under it, resolves a path to one of them, checks the caller's rights and
 * has the node read or write. ParamRequest owns the eleven managers.
 */
class CManBase {
 public:
  CManBase();
  virtual ~CManBase();
  CManBase(const CManBase&) = delete;
  CManBase& operator=(const CManBase&) = delete;

  /** Runs one item whose root layer has been taken; 0, or -1. The parameter's response says everything. */
  virtual int32_t APIsetup(Parameter& parameter, const std::string& layer);
  /** Builds the tree of this root and replays the stored settings. */
  virtual int32_t init();
  virtual int32_t m_execReadCommand(CApiBase* node, ExecArgs* args);
  virtual int32_t m_execWriteCommand(CApiBase* node, ExecArgs* args);
  /** Whether the root takes the selector; 0 or a negated status. */
  virtual int32_t checkRootAttribute(const std::string& selector);

  /** Decides from the node's permission string; 0, or -1 with the refusal in the response. */
  static int32_t m_checkPermission(Parameter& parameter, const CApiBase* node, int32_t* write);

  /** Appends this root under the name to the list of all parameters (list mode). */
  void writeList(const std::string& rootName) const;
  /** Makes the list file empty. */
  static void clearList();

 protected:
  /** Adds a node to the tree; `path` is its path under the root, the layers in front of it exist already. */
  template <class Node, class... Arguments>
  void add(std::string_view path, const char* permission, Arguments&&... arguments) {
    const size_t dot = path.rfind('.');
    const std::string name(dot == std::string_view::npos ? path : path.substr(dot + 1));
    auto node = std::make_unique<Node>(name, permission, std::forward<Arguments>(arguments)...);
    link(dot == std::string_view::npos ? std::string_view() : path.substr(0, dot), node.get());
    m_nodes.push_back(std::move(node));
  }

  /** One internal request at start-up, "path=value", as the administrator; 0 or -1. */
  int32_t m_replay(const std::string& query);
  /** The same for a stored text: an empty one is written as "%00". */
  int32_t m_replay(const std::string& path, const std::string& value);

 private:
  void link(std::string_view parentPath, CApiBase* node);

  std::list<CApiBase*> m_nextLayers;
  std::vector<std::unique_ptr<CApiBase>> m_nodes;
};
