#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/Client.h"

namespace tmx {

/** The version of the description that is known here, docs/description.schema.json. */
inline constexpr int kDescriptionVersion = 1;

/** A path with all its "(…)" taken out, as the description names it. */
[[nodiscard]] std::string withoutSelectors(std::string_view path);

/** One parameter of the description, docs/description.schema.json. */
using Parameter = nlohmann::ordered_json;

/** One node of the tree: a parameter, or a layer above one. */
struct Node {
  std::string path;                      ///< without selectors
  std::size_t depth = 0;                 ///< 0 for a root
  const Parameter* parameter = nullptr;  ///< none for a layer that is none

  [[nodiscard]] std::string_view name() const;
};

/** What the rules of the daemon say of its parameters: the document that tmx-describe made of them. */
class Description {
 public:
  /** Reads $TMX_DESCRIPTION, else the installed file; none where there is no such file, or it is no description. */
  [[nodiscard]] static std::optional<Description> find();
  /** The same, and says on standard error what is missing. */
  [[nodiscard]] static std::optional<Description> load();
  /** Throws nlohmann::json::exception where the text is no description of a version that is known. */
  [[nodiscard]] static Description parse(std::string_view text);

  /** The parameter of a path with or without selectors and short names; a null pointer when there is none. */
  [[nodiscard]] const Parameter* find(std::string_view path) const;
  /** What a request "PATH=WORD" interrupts, in words; empty for nothing. */
  [[nodiscard]] std::string stops(std::string_view request) const;
  /** The node of the path and all below it, parents first; all roots for an empty path. */
  [[nodiscard]] std::vector<Node> below(std::string_view path) const;

 private:
  [[nodiscard]] std::string longPath(std::string_view path) const;

  nlohmann::ordered_json m_document;
};

/** One layer of a path that takes selectors: where it ends in the path without them, and all that it takes. */
struct Selectable {
  std::size_t end = 0;
  std::vector<std::string> values;  ///< one empty text stands for a layer that stays without
};

/** The path with every selector, the last layer's changing first. */
[[nodiscard]] std::vector<std::string> expandPath(const std::string& path, const std::vector<Selectable>& layers);

/**
 * The parameter's path with every selector that its layers take: "network.destination.host" becomes five paths. A layer
 * that means something of its own without brackets, the scene in force, stays without.
 */
[[nodiscard]] std::vector<std::string> expandSelectors(const Parameter& parameter);

/** Whether the class may read, or write; the two classes that are not tested may do whatever any class can. */
[[nodiscard]] bool mayRead(const Parameter& parameter, UserClass user);
[[nodiscard]] bool mayWrite(const Parameter& parameter, UserClass user);

/** "readable by all, writable by administrators only". */
[[nodiscard]] std::string rightsInWords(const Parameter& parameter);

/** What a write takes, with its unit, and the words that start something. */
[[nodiscard]] std::string takenInWords(const Parameter& parameter);

/** Why a status may have refused, in words; empty where the description does not tell. */
[[nodiscard]] std::string reason(const Parameter& parameter, int status);

/** What the description alone says of a value in its form on the wire. */
enum class Verdict { kTaken, kRefused, kOpen };
[[nodiscard]] Verdict judge(const Parameter& parameter, std::string_view value);

}  // namespace tmx
