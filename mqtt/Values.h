#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "access/Reader.h"
#include "mqtt/Link.h"

namespace mqtt {

/** The values that are published, each straight from the reader, since there are a thousand of them. */
class Values {
 public:
  explicit Values(std::string guid) : m_guid(std::move(guid)) {}

  void add(std::shared_ptr<const tmx::Reader::Value> value) { m_entries.push_back({std::move(value)}); }

  /** Some may have changed. */
  void changed() { m_at = 0; }
  /** All of them must be sent anew. */
  void forget();

  /** Publishes one that has changed; false when there is none, or no connection. */
  [[nodiscard]] bool sendNext(Link& link);

 private:
  struct Entry {
    std::shared_ptr<const tmx::Reader::Value> value;
    std::uint64_t sent = 0;  ///< the change that was published
  };

  std::string m_guid;
  std::vector<Entry> m_entries;
  std::size_t m_at = 0;  ///< none in front of it is to be sent
};

}  // namespace mqtt
