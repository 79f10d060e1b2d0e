#include "describe/Rows.h"

#include <algorithm>
#include <variant>

#include "config/Config.h"
#include "config/Families.h"

namespace describe {
namespace {

Selectors firstOf(const Choices& choices) {
  Selectors selectors;
  for (const auto& texts : choices)
    selectors.push_back(texts.front());
  return selectors;
}

/** Calls `visit` with the selectors of every path. */
template <class Visit>
void forEachPath(const Choices& choices, const Visit& visit, Selectors selectors = {}) {
  if (selectors.size() == choices.size()) {
    visit(selectors);
    return;
  }
  selectors.emplace_back();
  for (const std::string& text : choices[selectors.size() - 1]) {
    selectors.back() = text;
    forEachPath(choices, visit, selectors);
  }
}

std::string nameOf(Row row, int32_t table) {
  const std::string path = familyInfo(row.family).path;
  return path.substr(path.rfind('/', path.rfind('/') - 1) + 1) + ":" + std::string(rowKey(row, table));
}

void addOnce(std::vector<std::string>& names, const std::string& name) {
  if (std::ranges::find(names, name) == names.end()) names.push_back(name);
}

}  // namespace

std::vector<std::string> choices(const Selector* selector) {
  std::vector<std::string> texts;
  if (selector != nullptr) {
    if (const auto* number = std::get_if<SelectorNumber>(&selector->takes)) {
      for (int32_t i = number->low; i <= number->high; ++i)
        texts.push_back(std::to_string(i));
    } else if (const auto* word = std::get_if<SelectorWord>(&selector->takes)) {
      for (const Word& each : word->words)
        texts.emplace_back(each.text);
    }
  }
  if (texts.empty()) texts.emplace_back();
  return texts;
}

std::vector<std::string> rows(const Place& place, const Choices& choices) {
  std::vector<std::string> names;
  if (!place.row.exists()) return names;
  forEachPath(choices, [&](const Selectors& selectors) {
    const Cell cell = place.cell(selectors);
    if (!rowKey(cell.row, cell.table).empty()) addOnce(names, nameOf(cell.row, cell.table));
  });
  return names;
}

std::vector<std::string> rowOfEach(const Place& place, const Choices& choices) {
  std::vector<std::string> names;
  if (!place.row.exists()) return names;
  bool isKnown = true;
  forEachPath(choices, [&](const Selectors& selectors) {
    const Cell cell = place.cell(selectors);
    names.push_back(familyPath(cell.row.family, cell.table) + ":" + std::string(rowKey(cell.row, cell.table)));
    isKnown = isKnown && !names.back().ends_with(':');
  });
  // One path that leads elsewhere than to the rule's row goes by the model.
  const bool isByModel = names.size() == 1 && place.cell(firstOf(choices)).row.number != place.row.number;
  return isKnown && !isByModel ? names : std::vector<std::string>();
}

std::string shownDefault(const Rule& rule, const Choices& choices) {
  if (!rule.place.row.exists()) return {};
  const Cell cell = rule.place.cell(firstOf(choices));
  std::string text = Config::getInstance()->get(cell.row, cell.table);
  if (rule.shows.number != nullptr) text = std::to_string(rule.shows.number(std::stoi(text)));
  if (!text.empty() && rule.fetch == nullptr) text += rule.shows.suffix;
  return std::string(rule.shows.prefix) + text;
}

std::size_t longestKept(const Place& place, const Choices& choices, std::size_t most) {
  if (!place.row.exists()) return most;
  const Cell cell = place.cell(firstOf(choices));
  while (Config::checkValue(cell.row, std::string(most, 'x'), cell.table) < 0)
    --most;
  return most;
}

std::vector<std::string> allRows() {
  std::vector<std::string> names;
  for (size_t i = 0; i < static_cast<size_t>(Family::kCount); ++i) {
    const auto family = static_cast<Family>(i);
    const FamilyInfo& info = familyInfo(family);
    for (int32_t table = 0; table < info.tables; ++table) {
      for (int32_t row = 0; row < countRows(family); ++row)
        addOnce(names, nameOf({family, row}, table));
    }
  }
  return names;
}

}  // namespace describe
