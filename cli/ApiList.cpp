#include "cli/ApiList.h"

#include <algorithm>

namespace tmx {
namespace {

/** Takes the next "<text>" off the line, with what stands in front of it; empty when there is none. */
std::string_view takeField(std::string_view& line) {
  const std::size_t open = line.find('<');
  if (open == std::string_view::npos) return {};
  // A class name may hold brackets of its own, so a field ends at a ">" with the next field or nothing behind it.
  std::size_t close = line.find('>', open);
  while (close != std::string_view::npos && close + 1 < line.size() && line[close + 1] != '\t' &&
         line[close + 1] != '<')
    close = line.find('>', close + 1);
  if (close == std::string_view::npos) return {};
  const std::string_view field = line.substr(open + 1, close - open - 1);
  line.remove_prefix(close + 1);
  return field;
}

}  // namespace

std::string_view ApiNode::name() const {
  const std::size_t dot = path.rfind('.');
  return dot == std::string::npos ? std::string_view(path) : std::string_view(path).substr(dot + 1);
}

std::string withoutSelectors(std::string_view path) {
  std::string bare;
  bool inside = false;
  for (const char c : path) {
    if (c == '(') inside = true;
    if (!inside) bare += c;
    if (c == ')') inside = false;
  }
  return bare;
}

ApiList ApiList::parse(std::string_view text) {
  ApiList list;
  std::vector<std::string> parents;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);

    const std::size_t depth = std::min(line.find_first_not_of('\t'), line.size());
    const std::string_view name = takeField(line);
    if (name.empty() || depth > parents.size()) continue;
    parents.resize(depth);
    std::string path = (depth == 0 ? std::string() : parents.back() + ".") + std::string(name);
    parents.push_back(path);
    const std::string_view permission = takeField(line);
    const std::string_view className = takeField(line);
    list.m_nodes.push_back({std::move(path), std::string(permission), std::string(className), depth});
  }
  return list;
}

const ApiNode* ApiList::find(std::string_view path) const {
  const std::string bare = withoutSelectors(path);
  const auto it = std::find_if(m_nodes.begin(), m_nodes.end(), [&](const ApiNode& node) { return node.path == bare; });
  return it == m_nodes.end() ? nullptr : &*it;
}

std::vector<ApiNode> ApiList::below(std::string_view path, bool withShortNames) const {
  const std::string bare = withoutSelectors(path);
  std::vector<ApiNode> nodes;
  bool isSkipped = false;
  for (std::size_t i = 0; i < m_nodes.size(); ++i) {
    const ApiNode& node = m_nodes[i];
    if (node.depth == 0) isSkipped = bare.empty() && !withShortNames && isRepeated(i);
    if (isSkipped) continue;
    if (bare.empty() || node.path == bare || node.path.starts_with(bare + ".")) nodes.push_back(node);
  }
  return nodes;
}

std::size_t ApiList::endOf(std::size_t root) const {
  std::size_t end = root + 1;
  while (end < m_nodes.size() && m_nodes[end].depth > 0)
    ++end;
  return end;
}

bool ApiList::isRepeated(std::size_t root) const {
  for (std::size_t other = 0; other < root; other = endOf(other)) {
    if (isSameTree(other, root)) return true;
  }
  return false;
}

bool ApiList::isSameTree(std::size_t one, std::size_t other) const {
  const std::size_t size = endOf(one) - one;
  // A root without anything below it tells nothing about which manager serves it.
  if (size == 1 || endOf(other) - other != size) return false;
  for (std::size_t i = 1; i < size; ++i) {
    const ApiNode& a = m_nodes[one + i];
    const ApiNode& b = m_nodes[other + i];
    if (a.depth != b.depth || a.name() != b.name() || a.className != b.className) return false;
  }
  return true;
}

}  // namespace tmx
