#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "tree/Rule.h"

/** Where the values of a parameter stand. */
namespace describe {

/** The selectors of the layers of one path, each with every text that its layer takes; one empty text for any. */
using Choices = std::vector<std::vector<std::string>>;

/** The texts that a layer takes between its brackets; one empty text for a layer that takes any. */
[[nodiscard]] std::vector<std::string> choices(const Selector* selector);

/** The rows of a place over all selectors, "network.conf:IF1_IP", "%ld" for the number of a table; none twice. */
[[nodiscard]] std::vector<std::string> rows(const Place& place, const Choices& choices);

/**
 * The row of each path, "/mnt/flash/sysconfig/camera.conf:GAMMA", in the order of the choices, those of the last layer
 * first; empty where one of the paths has none, or where it goes by the model.
 */
[[nodiscard]] std::vector<std::string> rowOfEach(const Place& place, const Choices& choices);

/** The built-in default as a read shows it, for the first of each layer's choices. */
[[nodiscard]] std::string shownDefault(const Rule& rule, const Choices& choices);

/** The longest value that the line of the place's row holds, at most `most` bytes. */
[[nodiscard]] std::size_t longestKept(const Place& place, const Choices& choices, std::size_t most);

/** Every row of every family, as `rows` names them. */
[[nodiscard]] std::vector<std::string> allRows();

}  // namespace describe
