#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace test {

/** The description of the parameters that the build has made from the rules. */
[[nodiscard]] const nlohmann::ordered_json& description();

/** A value and the status that the description promises for it; 0 where it is taken: 200 or 202. */
struct Drawn {
  std::string value;
  int status = 0;
};

/** Values at and around every border of what a write of the parameter takes. */
[[nodiscard]] std::vector<Drawn> draw(const nlohmann::ordered_json& parameter);

}  // namespace test
