#pragma once

#include <cstdint>
#include <list>
#include <string>
#include <string_view>

#include "tree/ExecArgs.h"

class Parameter;
struct Rule;
struct Selector;

/** What a node is told about itself when it is added to its tree; texts and rules are literals or static. */
struct NodeIdentity {
  const char* name = "";
  const char* permission = "";  ///< empty for a node that is only a branch
  const Selector* selector = nullptr;
  const Rule* rule = nullptr;
};

/**
 * A node of the parameter tree: one layer of a path. Its manager owns it; the list of children does not.
 */
class CApiBase {
 public:
  CApiBase();
  virtual ~CApiBase();
  CApiBase(const CApiBase&) = delete;
  CApiBase& operator=(const CApiBase&) = delete;

  /** Read and write by the node's rule: 0, or -1 with the status in the parameter's response; 501 without a rule. */
  virtual int32_t execRead(ExecArgs* args);
  virtual int32_t execWrite(ExecArgs* args);
  /** Whether this layer takes the selector; 0 or a negated status. `depth` counts the layers under the root from 1. */
  virtual int32_t checkAttribute(const std::string& selector, int32_t depth);

  void addNextLayer(CApiBase* node);
  /** The node that serves the rest of the path, or none; depth counts the matched layers, selectors collects theirs. */
  CApiBase* getProcInstance(Parameter& parameter, const std::string& layer, int32_t* depth, Selectors* selectors);

  void setIdentity(const NodeIdentity& identity) { m_identity = identity; }
  [[nodiscard]] std::string_view getLayerName() const { return m_identity.name; }
  [[nodiscard]] std::string_view getPermission() const { return m_identity.permission; }
  /** None for a layer without a rule of its own. */
  [[nodiscard]] const Rule* getRule() const { return m_identity.rule; }
  [[nodiscard]] const Selector* getSelector() const { return m_identity.selector; }
  [[nodiscard]] const std::list<CApiBase*>& getNextLayers() const { return m_nextLayers; }

 private:
  NodeIdentity m_identity;
  std::list<CApiBase*> m_nextLayers;
};

/** Asks the children for the rest of the path; the first whose name matches decides. */
CApiBase* findInLayers(const std::list<CApiBase*>& layers, Parameter& parameter, const std::string& layer,
                       int32_t* depth, Selectors* selectors);
