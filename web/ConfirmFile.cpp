#include "web/ConfirmFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <nlohmann/json.hpp>

#include "local/FileDescriptor.h"

namespace console {
namespace {

using Json = nlohmann::json;

constexpr const char* kWaiting = "confirm.json";
constexpr const char* kNew = "confirm.new";
constexpr const char* kClaimed = "put-back.json";

bool writeSynced(const std::string& path, const std::string& text) {
  const FileDescriptor file(open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
  return file.isValid() && ::write(file.get(), text.data(), text.size()) == static_cast<ssize_t>(text.size()) &&
         fsync(file.get()) == 0;
}

}  // namespace

bool ConfirmFile::exists() const { return access(path(kWaiting).c_str(), F_OK) == 0; }

std::optional<Applied> ConfirmFile::read() const { return parse(path(kWaiting)); }

bool ConfirmFile::write(const Applied& change) const {
  Json items = Json::array();
  for (const Applied::Item& item : change.items)
    items.push_back({{"path", item.path}, {"before", item.before}, {"after", item.after}});
  const Json json{{"account", change.account.name}, {"commit", change.commit}, {"items", items}};
  std::string text;
  try {
    text = json.dump();
  } catch (const Json::exception&) {
    return false;  // bytes that are no text would not come back as they were
  }
  if (!writeSynced(path(kNew), text) || std::rename(path(kNew).c_str(), path(kWaiting).c_str()) != 0) {
    unlink(path(kNew).c_str());
    return false;
  }
  syncFolder();
  return true;
}

bool ConfirmFile::remove() const {
  if (unlink(path(kWaiting).c_str()) != 0) return false;
  syncFolder();
  return true;
}

bool ConfirmFile::claim() const {
  if (std::rename(path(kWaiting).c_str(), path(kClaimed).c_str()) != 0) return false;
  syncFolder();
  return true;
}

std::optional<Applied> ConfirmFile::claimed() const { return parse(path(kClaimed)); }

void ConfirmFile::removeClaimed() const {
  unlink(path(kClaimed).c_str());
  syncFolder();
}

std::optional<Applied> ConfirmFile::parse(const std::string& file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) return std::nullopt;
  try {
    const Json json = Json::parse(stream);
    const auto account = tmx::accountOf(json.at("account").get<std::string>());
    if (!account) return std::nullopt;
    Applied change{.account = *account, .commit = json.at("commit"), .items = {}};
    for (const Json& item : json.at("items"))
      change.items.push_back({item.at("path"), item.at("before"), item.at("after")});
    return change;
  } catch (const Json::exception&) {
    return std::nullopt;
  }
}

void ConfirmFile::syncFolder() const {
  const FileDescriptor folder(open(m_folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  fsync(folder.get());
}

}  // namespace console
