#pragma once

#include <cstdint>
#include <string>

#include "tree/ExecArgs.h"
#include "tree/Rule.h"

/** Executes rules: the only read path and the only write path of all leaves that state one. */
namespace RuleEngine {

/** What a leaf does besides; `self` is the leaf (Leaf.h). */
using Act = int32_t (*)(void* self, Request& request);
using Fetch = int32_t (*)(void* self, const Request& request, std::string& text);

/** Read: from `fetch`, the fixed text or the rule's row; 0, or -1 with the status in the response. */
int32_t read(const Rule& rule, ExecArgs& args, void* self, Fetch fetch);
/** Write: compare, test, act, keep, answer; 0, or -1 with the status in the response. */
int32_t write(const Rule& rule, ExecArgs& args, void* self, Act act);

/** Sets the answer "=text" with 200. */
int32_t answerValue(Parameter& parameter, const std::string& text);
/** Sets the answer for a status; 0 for 200 and 202, else -1. */
int32_t answerStatus(Parameter& parameter, int32_t code);
/** The hint's text for this path. */
[[nodiscard]] std::string hintText(const Hint& hint, const Selectors& selectors);

}  // namespace RuleEngine
