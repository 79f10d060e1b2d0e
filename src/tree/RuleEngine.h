#pragma once

#include <cstdint>
#include <string>

#include "tree/ExecArgs.h"
#include "tree/Rule.h"

/** Executes rules: the only read path and the only write path of all leaves that state one. */
namespace RuleEngine {

/**
 * Read: guard, then the fixed text, what the rule's function, its peer or its place gives, and the answer; 0, or -1
 * with the status in the response.
 */
int32_t read(const Rule& rule, ExecArgs& args);
/**
 * Write: guard, command or compare, test, tell, act, keep, answer; 0, or -1 with the status in the response. Before
 * anything happens the value is also refused when it could not stand in the line of its row.
 */
int32_t write(const Rule& rule, ExecArgs& args);

/** Sets the answer "=text" with 200. */
int32_t answerValue(Parameter& parameter, const std::string& text);
/** Sets the answer for a status; 0 for 200 and 202, else -1. */
int32_t answerStatus(Parameter& parameter, int32_t code);
/** The hint's text for this path. */
[[nodiscard]] std::string hintText(const Hint& hint, const Selectors& selectors);

}  // namespace RuleEngine
