#include "tree/Accept.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>

#include "request/Log.h"
#include "service/CTmxdUtility.h"
#include "service/Numbers.h"

namespace {

bool isStep(Request& request) {
  if (request.value != "+" && request.value != "-") return false;
  request.step = request.value == "+" ? 1 : -1;
  return true;
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
  const auto number = parseNumber(request.value);
  if (!number) return -range.noNumber;
  if (*number < range.low || *number > range.high) {
    if (range.logged != nullptr) TMX_LOG(LOG_ERR, "%s out of range", range.logged);
    return -range.outside;
  }
  request.number = *number;
  if (range.snap == nullptr) return 0;
  request.number = range.snap(*number);
  request.value = std::to_string(request.number);
  return 0;
}

int32_t test(const OneOf& list, Request& request) {
  if (list.steps && isStep(request)) return 0;
  const auto number = parseNumber(request.value);
  if (!number) return -status::kNotUnderstood;
  request.number = *number;
  const auto* end = list.numbers.data() + list.count;
  return std::find(list.numbers.data(), end, *number) == end ? -status::kInvalidRange : 0;
}

int32_t test(const Decimal& range, Request& request) {
  const auto number = parseFloat(request.value);
  if (!number) return -status::kNotUnderstood;
  return *number < range.low || *number > range.high ? -status::kInvalidRange : 0;
}

int32_t test(const Hex& hex, Request& request) {
  const std::string& value = request.value;
  const auto isDigit = [](unsigned char character) { return std::isxdigit(character) != 0; };
  if (value.empty() || !std::all_of(value.begin(), value.end(), isDigit)) return -status::kNotUnderstood;
  if (value.size() > hex.digits) return -status::kInvalidRange;
  request.number = static_cast<int32_t>(std::strtol(value.c_str(), nullptr, 16));
  return 0;
}

int32_t test(const Text& rule, Request& request) {
  if (rule.canBeEmpty && request.value == "%00") {
    request.value = rule.emptyAs;
    return 0;
  }
  if (rule.escapes != Escapes::AsSent) {
    const bool isEmpty = request.value == "%00";
    request.value = isEmpty ? "" : CTmxdUtility::decodeEscapes(request.value, rule.escapes == Escapes::DecodedPlus);
    if (request.value.find('\0') != std::string::npos) return -status::kNotUnderstood;
  }
  if (request.value.size() < rule.least || request.value.size() > rule.most) return -rule.wrongLength;
  if (rule.forbidden.empty()) return 0;
  return CTmxdUtility::findCharInStr(request.value, std::string(rule.forbidden)) == 0 ? 0 : -status::kNotUnderstood;
}

int32_t test(const Test& own, Request& request) { return own.run(request); }

}  // namespace

int32_t accept(const Accepts& accepts, Request& request) {
  return std::visit([&request](const auto& rule) { return test(rule, request); }, accepts);
}
