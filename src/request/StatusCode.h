#pragma once

#include <cstdint>
#include <string>

/** The statuses that a response can end in. Operations return 200 or 0, or a negated status. */
namespace status {
inline constexpr int32_t kOk = 200;
inline constexpr int32_t kAccepted = 202;
inline constexpr int32_t kUnauthorized = 401;
inline constexpr int32_t kForbidden = 403;
inline constexpr int32_t kNotFound = 404;
inline constexpr int32_t kMethodNotAllowed = 405;
inline constexpr int32_t kPreconditionFailed = 412;
inline constexpr int32_t kEntityTooLarge = 413;
inline constexpr int32_t kUriTooLong = 414;
inline constexpr int32_t kNotUnderstood = 451;
inline constexpr int32_t kNotEnoughBandwidth = 453;
inline constexpr int32_t kNotValidForResource = 456;
inline constexpr int32_t kInvalidRange = 457;
inline constexpr int32_t kReadOnly = 458;
inline constexpr int32_t kCommandNotFound = 461;
inline constexpr int32_t kInternalError = 500;
inline constexpr int32_t kNotImplemented = 501;
}  // namespace status

/** The text of a status, such as "&200 OK"; that of 500 for an unknown code, which is logged. */
[[nodiscard]] const std::string& getStatusCode(int32_t code);
