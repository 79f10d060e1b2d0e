#pragma once

#include <cstdint>

/** The program that counts on the picture while focus assist is on. Results: 0, or -1 after three attempts. */
namespace count_program {

[[nodiscard]] int32_t start();
[[nodiscard]] int32_t stop();

}  // namespace count_program
