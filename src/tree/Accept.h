#pragma once

#include <cstdint>

#include "tree/Rule.h"

/** Whether the value of a request is accepted: 0 or a negated status; sets its number, its step and its kept form. */
[[nodiscard]] int32_t accept(const Accepts& accepts, Request& request);
