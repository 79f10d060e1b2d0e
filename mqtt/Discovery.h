#pragma once

#include <functional>
#include <string>

#include "cli/Client.h"

namespace mqtt {

/** What Home Assistant is told of the camera. */
struct Device {
  std::string guid;
  std::string model;
  std::string version;
  std::string address;  ///< HOST:PORT of the camera's console
  tmx::UserClass user;  ///< in whose name requests are carried out
};

/**
 * The message by which Home Assistant learns of the camera and of its entities: one for each published value, which can
 * be changed where the class may write it, and a button for each word that starts something. The description is never
 * held as a whole.
 *
 * @param isPublished asked with paths that have all selectors.
 * @return empty where the file is no description.
 */
[[nodiscard]] std::string discovery(const std::string& descriptionFile, const Device& device,
                                    const std::function<bool(const std::string& path)>& isPublished);

}  // namespace mqtt
