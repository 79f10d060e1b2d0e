#pragma once

#include <cstdint>
#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tree/ExecArgs.h"
#include "tree/Node.h"

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
  /** Builds the tree of this root, then replays the stored settings. */
  void init();
  /** Adds the nodes, parents in front of what lies under them; touches nothing outside. */
  virtual void build() = 0;
  /** Brings the stored settings into force, as a start does. */
  virtual void replay();
  virtual int32_t m_execReadCommand(CApiBase* node, ExecArgs* args);
  virtual int32_t m_execWriteCommand(CApiBase* node, ExecArgs* args);
  /** What the root takes as its selector; none: any. */
  [[nodiscard]] virtual const Selector* getSelector() const;
  [[nodiscard]] const std::list<CApiBase*>& getNextLayers() const { return m_nextLayers; }

  /** Decides from the node's permission string; 0, or -1 with the refusal in the response. */
  static int32_t m_checkPermission(Parameter& parameter, const CApiBase* node, int32_t* write);

  /** Appends this root under the name to the list of all parameters (list mode). */
  void writeList(const std::string& rootName) const;
  /** Makes the list file empty. */
  static void clearList();

 protected:
  /** Adds a node to the tree; `path` is its path under the root, the layers in front of it exist already. */
  template <class Node>
  void add(const char* path, const char* permission = kBranch) {
    link(path, {.permission = permission, .selector = selectorOf<Node>(), .rule = ruleOf<Node>()}, new Node);
  }

  /** One internal request at start-up, "path=value", as the administrator; 0 or -1. */
  int32_t m_replay(const std::string& query);
  /** The same for a stored text: an empty one is written as "%00". */
  int32_t m_replay(const std::string& path, const std::string& value);
  /** The same for the text that stands in the place of the leaf's own rule, in the committed image. */
  int32_t m_replayStored(const std::string& path);

 private:
  /** Takes the node over. */
  void link(std::string_view path, NodeIdentity identity, CApiBase* node);

  std::list<CApiBase*> m_nextLayers;
  std::vector<std::unique_ptr<CApiBase>> m_nodes;
};
