#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tmx {

/** One node of the daemon's own list of its tree. */
struct ApiNode {
  std::string path;        ///< without selectors
  std::string permission;  ///< six characters; empty for a branch
  std::string className;   ///< empty for a branch
  std::size_t depth = 0;   ///< 0 for a root

  [[nodiscard]] std::string_view name() const;
  [[nodiscard]] bool isLeaf() const { return !permission.empty(); }
};

/** A path with all its "(…)" taken out, as the list names it. */
[[nodiscard]] std::string withoutSelectors(std::string_view path);

/**
 * The list of the tree that the daemon writes in its list mode: every root with all below it, parents in front of
 * their children. Some roots stand in it twice, under a long and a short name.
 */
class ApiList {
 public:
  /** Reads the text of a list; a line that is none of a list's is passed over. */
  [[nodiscard]] static ApiList parse(std::string_view text);

  [[nodiscard]] const std::vector<ApiNode>& nodes() const { return m_nodes; }
  /** The node of the path, whatever selectors the path holds; a null pointer when there is none. */
  [[nodiscard]] const ApiNode* find(std::string_view path) const;
  /** The node of the path and all below it; the whole list for an empty path, without the short names if so wished. */
  [[nodiscard]] std::vector<ApiNode> below(std::string_view path, bool withShortNames = true) const;

 private:
  [[nodiscard]] std::size_t endOf(std::size_t root) const;
  [[nodiscard]] bool isRepeated(std::size_t root) const;
  [[nodiscard]] bool isSameTree(std::size_t one, std::size_t other) const;

  std::vector<ApiNode> m_nodes;
};

}  // namespace tmx
