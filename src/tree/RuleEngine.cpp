#include "tree/RuleEngine.h"

#include <algorithm>
#include <set>

#include "config/Initialising.h"
#include "request/InternalRequest.h"
#include "service/CTmxdUtility.h"
#include "service/Numbers.h"
#include "tree/Accept.h"

namespace {

Config& image(Image which) { return which == Image::Config ? *Config::getInstance() : *CUserConfig::getInstance(); }

std::string stored(const Place& place, const Selectors& selectors, Image which) {
  if (place.variable != nullptr) return *place.variable;
  const Cell cell = place.cell(selectors);
  return image(cell.image.value_or(which)).get(cell.row, cell.table);
}

/** Whether the file of the value is not behind the committed image. */
bool isFileUpToDate(const Place& place, const Selectors& selectors) {
  if (place.variable != nullptr) return true;
  const Cell cell = place.cell(selectors);
  return image(Image::Config).isSaved(cell.row, cell.table);
}

/** All cells of a value, the first in front. */
std::vector<Cell> cellsOf(const Place& place, const Selectors& selectors) {
  std::vector<Cell> cells{place.cell(selectors)};
  if (place.also == nullptr) return cells;
  const std::vector<Cell> more = place.also(selectors);
  cells.insert(cells.end(), more.begin(), more.end());
  return cells;
}

/** Writes each file of the cells once; false when one could not be written. The others are written all the same. */
bool save(const std::vector<Cell>& cells) {
  bool isSaved = true;
  std::set<std::pair<Family, int32_t>> files;
  for (const Cell& cell : cells) {
    if (!files.emplace(cell.row.family, cell.table).second) continue;
    const int32_t file = cell.row.family == Family::Patrol ? 0 : cell.table;
    if (image(Image::Config).save(cell.row.family, file) != Config::kDone) isSaved = false;
  }
  return isSaved;
}

/** Keeps the value in the way of the rule; false when the file could not be written. */
bool keep(const Rule& rule, const Request& request) {
  if (rule.keeps == Keeps::Nothing || rule.keeps == Keeps::ByAct) return true;
  if (rule.place.variable != nullptr) {
    *rule.place.variable = request.value;
    return true;
  }
  const bool isStaging = rule.keeps != Keeps::ConfigOnly && rule.keeps != Keeps::ConfigInMemory;
  const std::vector<Cell> cells = cellsOf(rule.place, request.selectors);
  for (const Cell& cell : cells) {
    if (isStaging) image(Image::User).set(cell.row, request.value, cell.table);
    if (rule.keeps != Keeps::Staged) image(Image::Config).set(cell.row, request.value, cell.table);
  }
  return rule.keeps == Keeps::WriteThrough || rule.keeps == Keeps::ConfigOnly ? save(cells) : true;
}

/** The status for a negative result. */
int32_t refusalFor(const Rule& rule, int32_t result) {
  for (const Refusal& refusal : rule.refusals) {
    if (refusal.result == result || refusal.result == kAnyFailure) return refusal.code;
  }
  return result <= -status::kOk ? -result : status::kInternalError;
}

int32_t ask(const Condition& condition, const Selectors& selectors) {
  return condition.check == nullptr ? 0 : condition.check(selectors);
}

/** What a command does itself; one without a function tells the peer, or does nothing. */
int32_t performCommand(const Rule& rule, const Command& command, Request& request) {
  if (command.run != nullptr) return command.run(request);
  return rule.peer.tell != nullptr ? rule.peer.tell(rule.peer, request) : 0;
}

/** The status of a command; its restart follows only where it has done something. */
int32_t runCommand(const Rule& rule, const Command& command, Request& request) {
  const int32_t result = performCommand(rule, command, request);
  if (result < 0) return refusalFor(rule, result);
  if (result == status::kAccepted) return result;
  if (result != kNothingWaits && command.afterwards != PostAction::None) {
    request.parameter.setPostAction(command.afterwards);
  }
  return status::kOk;
}

const Command* findCommand(const Rule& rule, std::string_view word) {
  const auto found = std::ranges::find(rule.commands, word, &Command::word);
  return found == rule.commands.end() || word.empty() ? nullptr : &*found;
}

/** Whether the value is accepted and can be kept; 0 or a negated status. */
int32_t check(const Rule& rule, Request& request) {
  if (!rule_check::takesValues(rule) && rule_check::takesCommands(rule)) return -status::kNotUnderstood;
  const int32_t refused = accept(rule.accepts, request);
  if (refused < 0 || !rule.place.row.exists()) return refused;
  const Cell cell = rule.place.cell(request.selectors);
  return Config::checkValue(cell.row, request.value, cell.table);
}

/** Tells the peer, then does what the rule does besides; the first result that ends the write, else 0. */
int32_t perform(const Rule& rule, Request& request) {
  if (rule.peer.tell != nullptr) {
    const int32_t result = rule.peer.tell(rule.peer, request);
    if (result < 0) return result;
  }
  return rule.act == nullptr ? 0 : rule.act(request);
}

/** The status of a write up to its answer: kOk, kAccepted, or the refusal. */
int32_t carryOut(const Rule& rule, Request& request) {
  if (const int32_t result = ask(rule.guard.access, request.selectors); result < 0) return -result;
  for (const Condition& condition : rule.guard.write) {
    if (const int32_t result = ask(condition, request.selectors); result < 0) return -result;
  }
  if (const Command* command = findCommand(rule, request.value)) return runCommand(rule, *command, request);

  const auto endsAt = [&](Unchanged when) {
    return rule.unchanged == when && !isInitialising() &&
           stored(rule.place, request.selectors, rule.compares) == request.value &&
           isFileUpToDate(rule.place, request.selectors);
  };
  if (endsAt(Unchanged::BeforeTest)) return status::kOk;
  if (const int32_t refused = check(rule, request); refused < 0) return -refused;
  if (endsAt(Unchanged::AfterTest)) return status::kOk;

  const int32_t result = perform(rule, request);
  if (result < 0) return refusalFor(rule, result);
  if (result == kNothingWaits) return status::kOk;
  if (!keep(rule, request)) return status::kInternalError;
  if (rule.then != nullptr) {
    if (const int32_t refused = rule.then(request); refused < 0) return refusalFor(rule, refused);
  }

  if (result == status::kAccepted) return result;
  if (rule.answers.layer.empty() || !rule.answers.isTold) return status::kOk;
  const bool agree =
      rule.unchanged == Unchanged::AfterKeeping &&
      stored(rule.place, request.selectors, Image::Config) == stored(rule.place, request.selectors, Image::User) &&
      isFileUpToDate(rule.place, request.selectors);
  return agree ? status::kOk : status::kAccepted;
}

/** What a read shows, bare; 0, or a negative result. */
int32_t show(const Rule& rule, const Request& request, std::string& text) {
  if (!rule.shows.fixed.empty()) {
    text = rule.shows.fixed;
    return 0;
  }
  if (rule.fetch != nullptr || rule.peer.ask != nullptr) {
    const int32_t result = rule.fetch != nullptr ? rule.fetch(request, text) : rule.peer.ask(rule.peer, request, text);
    if (result != kShowStored) return result;
  }
  if (!rule.place.exists()) return -status::kNotImplemented;
  text = stored(rule.place, request.selectors, rule.shows.image);
  if (rule.shows.number != nullptr) text = std::to_string(rule.shows.number(parseNumber(text).value_or(0)));
  return 0;
}

/** The word of the number that was asked for; 0 or -500. */
int32_t toWord(const Words& words, std::string& text) {
  const auto number = parseNumber(text);
  text = number ? words.text(*number) : std::string_view();
  return text.empty() ? -status::kInternalError : 0;
}

/** The answer of another path, as the same caller gets it, becomes this one's. */
int32_t forward(const Rule& rule, Parameter& parameter) {
  std::string query(rule.forward);
  if (!parameter.getValue().empty()) query += "=" + parameter.getValue();
  std::string response;
  if (execApiCommandInternal(query, &response, static_cast<int8_t>(parameter.getUserType()),
                             static_cast<int8_t>(parameter.getContentType())) < 0) {
    return RuleEngine::answerStatus(parameter, status::kInternalError);
  }
  return parameter.setResponse(response);
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
    std::string selector = selectors.at(static_cast<size_t>(hint.selector));
    if (selector.empty()) selector = hint.byDefault;
    if (!selector.empty()) text += "(" + selector + ")";
  }
  return text + std::string(hint.command) + ")";
}

int32_t read(const Rule& rule, ExecArgs& args) {
  Parameter& parameter = *args.m_parameter;
  if (!rule.forward.empty()) return forward(rule, parameter);
  const int32_t refused = ask(rule.guard.access, args.m_selectors);
  if (refused < 0) return answerStatus(parameter, -refused);
  std::string text;
  int32_t result = show(rule, Request{parameter, args.m_selectors}, text);
  if (result >= 0 && rule.shows.words != nullptr) result = toWord(*rule.shows.words, text);
  if (result < 0) return answerStatus(parameter, refusalFor(rule, result));
  if (rule.shows.escaped) text = CTmxdUtility::encodeValue(text);
  if (!text.empty()) text += rule.shows.suffix;
  return answerValue(parameter, std::string(rule.shows.prefix) + text);
}

int32_t write(const Rule& rule, ExecArgs& args) {
  Parameter& parameter = *args.m_parameter;
  if (!rule.forward.empty()) return forward(rule, parameter);
  Request request{parameter, args.m_selectors, parameter.getValue()};
  const int32_t code = carryOut(rule, request);
  const bool hasHint = code == status::kAccepted && !rule.answers.layer.empty();
  if (hasHint) return parameter.setResponse(getStatusCode(code) + hintText(rule.answers, args.m_selectors));
  if (request.detail.empty()) return answerStatus(parameter, code);
  parameter.setResponse(getStatusCode(code) + request.detail);
  return -1;
}

}  // namespace RuleEngine
