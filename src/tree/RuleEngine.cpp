#include "tree/RuleEngine.h"

#include <algorithm>

#include "config/Initialising.h"
#include "request/Parameter.h"
#include "request/StatusCode.h"
#include "service/CTmxdUtility.h"

namespace {

Config& image(Image which) { return which == Image::Config ? *Config::getInstance() : *CUserConfig::getInstance(); }

std::string stored(const Rule& rule, const Selectors& selectors, Image which) {
  const Cell cell = rule.place.cell(selectors);
  return image(which).get(rule.place.family, cell.table, cell.row);
}

bool isStep(Request& request) {
  if (request.value != "+" && request.value != "-") return false;
  request.step = request.value == "+" ? 1 : -1;
  return true;
}

int32_t parseNumber(Request& request) {
  int32_t error = 0;
  request.number = CTmxdUtility::toLong(request.value, 0, &error);
  return error == 0 ? 0 : -status::kNotUnderstood;
}

int32_t test(std::monostate /*nothing*/, Request& /*request*/) { return -status::kNotImplemented; }

int32_t test(const Words& words, Request& request) {
  const auto number = words.find(request.value);
  if (!number) return -status::kNotUnderstood;
  request.number = *number;
  return 0;
}

int32_t test(const Number& range, Request& request) {
  if (range.steps && isStep(request)) return 0;
  if (parseNumber(request) < 0) return -status::kNotUnderstood;
  return request.number < range.low || request.number > range.high ? -range.outside : 0;
}

int32_t test(const OneOf& list, Request& request) {
  if (list.steps && isStep(request)) return 0;
  if (parseNumber(request) < 0) return -status::kNotUnderstood;
  const auto* end = list.numbers.data() + list.count;
  return std::find(list.numbers.data(), end, request.number) == end ? -status::kInvalidRange : 0;
}

int32_t test(const Test& own, Request& request) { return own.run(request); }

/** The status for an action's negative result. */
int32_t refusalFor(const Rule& rule, int32_t result) {
  for (const Refusal& refusal : rule.refusals) {
    if (refusal.result == result) return refusal.code;
  }
  return result <= -status::kOk ? -result : status::kInternalError;
}

/** Keeps the value in the way of the rule; false when the file could not be written. */
bool keep(const Rule& rule, const Request& request) {
  if (rule.keeps == Keeps::Nothing) return true;
  const Cell cell = rule.place.cell(request.selectors);
  const Family family = rule.place.family;
  if (rule.keeps != Keeps::ConfigOnly) image(Image::User).set(family, cell.table, cell.row, request.value);
  if (rule.keeps != Keeps::Staged) image(Image::Config).set(family, cell.table, cell.row, request.value);
  if (rule.keeps != Keeps::WriteThrough && rule.keeps != Keeps::ConfigOnly) return true;
  return image(Image::Config).save(family, cell.table) == Config::kDone;
}

int32_t ask(int32_t (*guard)(const Selectors&), const Selectors& selectors) {
  return guard == nullptr ? 0 : guard(selectors);
}

/** The status of a write up to its answer: kOk, kAccepted, or the refusal. */
int32_t carryOut(const Rule& rule, Request& request, void* self, RuleEngine::Act act) {
  if (const int32_t result = ask(rule.guard.access, request.selectors); result < 0) return -result;
  if (const int32_t result = ask(rule.guard.write, request.selectors); result < 0) return -result;
  const auto isStored = [&] {
    return !isInitialising() && stored(rule, request.selectors, rule.compares) == request.value;
  };
  if (rule.unchanged == Unchanged::BeforeTest && isStored()) return status::kOk;
  const int32_t refused = std::visit([&request](const auto& accepts) { return test(accepts, request); }, rule.accepts);
  if (refused < 0) return -refused;
  if (rule.unchanged == Unchanged::AfterTest && isStored()) return status::kOk;

  const int32_t result = act == nullptr ? 0 : act(self, request);
  if (result < 0) return refusalFor(rule, result);
  if (result == kAlreadyInForce) return status::kOk;
  if (!keep(rule, request)) return status::kInternalError;

  if (rule.answers.layer.empty()) return status::kOk;
  const bool agree = rule.unchanged == Unchanged::AfterKeeping &&
                     stored(rule, request.selectors, Image::Config) == stored(rule, request.selectors, Image::User);
  return agree ? status::kOk : status::kAccepted;
}

}  // namespace

namespace RuleEngine {

int32_t answerValue(Parameter& parameter, const std::string& text) {
  return parameter.setResponse("=" + text + getStatusCode(status::kOk));
}

int32_t answerStatus(Parameter& parameter, int32_t code) {
  parameter.setResponse(getStatusCode(code));
  return code == status::kOk || code == status::kAccepted ? 0 : -1;
}

std::string hintText(const Hint& hint, const Selectors& selectors) {
  std::string text = "(" + std::string(hint.layer);
  if (hint.selector >= 0) {
    const std::string& selector = selectors.at(static_cast<size_t>(hint.selector));
    if (!selector.empty()) text += "(" + selector + ")";
  }
  return text + std::string(hint.command) + ")";
}

int32_t read(const Rule& rule, ExecArgs& args, void* self, Fetch fetch) {
  const int32_t refused = ask(rule.guard.access, args.m_selectors);
  if (refused < 0) return answerStatus(*args.m_parameter, -refused);
  std::string text;
  if (fetch != nullptr) {
    const int32_t result = fetch(self, Request{*args.m_parameter, args.m_selectors, {}}, text);
    if (result < 0) return answerStatus(*args.m_parameter, refusalFor(rule, result));
  } else if (!rule.shows.fixed.empty()) {
    text = rule.shows.fixed;
  } else if (rule.place.exists()) {
    text = stored(rule, args.m_selectors, rule.shows.image);
  } else {
    return answerStatus(*args.m_parameter, status::kNotImplemented);
  }
  if (rule.shows.escaped) text = CTmxdUtility::encodeValue(text);
  return answerValue(*args.m_parameter, std::string(rule.shows.prefix) + text + std::string(rule.shows.suffix));
}

int32_t write(const Rule& rule, ExecArgs& args, void* self, Act act) {
  Request request{*args.m_parameter, args.m_selectors, args.m_parameter->getValue()};
  const int32_t code = carryOut(rule, request, self, act);
  if (code != status::kAccepted) return answerStatus(*args.m_parameter, code);
  return args.m_parameter->setResponse(getStatusCode(code) + hintText(rule.answers, args.m_selectors));
}

}  // namespace RuleEngine
