#pragma once

#include <string>
#include <vector>

class Parameter;

/** The selectors of a path: [0] the root's, [k] that of the k-th layer under it; empty where the path had none. */
using Selectors = std::vector<std::string>;

/** What execRead and execWrite work on; built for one call. */
struct ExecArgs {
  Parameter* m_parameter;
  Selectors m_selectors;
};
