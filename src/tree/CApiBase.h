#pragma once

#include <cstdint>
#include <list>
#include <string>

#include "tree/ExecArgs.h"

class Parameter;

/**
 * A node of the parameter tree: one layer of a path. Its manager owns it; the list of children does not.
 */
class CApiBase {
 public:
  /** `attribute` is the permission string, empty for a node that is only a branch. */
  CApiBase(std::string layerName, std::string attribute);
  virtual ~CApiBase();
  CApiBase(const CApiBase&) = delete;
  CApiBase& operator=(const CApiBase&) = delete;

  /** Read and write: 0, or -1 with the status in the parameter's response. Not implemented (501) by default. */
  virtual int32_t execRead(ExecArgs* args);
  virtual int32_t execWrite(ExecArgs* args);
  /** Whether this layer takes the selector; 0 or a negated status. `depth` counts the layers under the root from 1. */
  virtual int32_t checkAttribute(const std::string& selector, int32_t depth);

  void addNextLayer(CApiBase* node);
  /** The node that serves the rest of the path, or none; depth counts the matched layers, selectors collects theirs. */
  CApiBase* getProcInstance(Parameter& parameter, const std::string& layer, int32_t* depth, Selectors* selectors);

  [[nodiscard]] const std::string& getLayerName() const { return m_layerName; }
  [[nodiscard]] const std::string& getPermission() const { return m_attribute; }
  [[nodiscard]] const std::list<CApiBase*>& getNextLayers() const { return m_nextLayers; }

 private:
  std::string m_layerName;
  std::string m_attribute;
  std::list<CApiBase*> m_nextLayers;
};

/** Asks the children for the rest of the path; the first whose name matches decides. */
CApiBase* findInLayers(const std::list<CApiBase*>& layers, Parameter& parameter, const std::string& layer,
                       int32_t* depth, Selectors* selectors);
