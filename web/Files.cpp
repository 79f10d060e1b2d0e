#include "web/Files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>
#include <utility>

#include "local/FileDescriptor.h"

namespace console {
namespace {

constexpr std::array<std::pair<std::string_view, std::string_view>, 7> kTypes{{{".html", "text/html; charset=utf-8"},
                                                                               {".js", "text/javascript"},
                                                                               {".css", "text/css"},
                                                                               {".json", "application/json"},
                                                                               {".svg", "image/svg+xml"},
                                                                               {".png", "image/png"},
                                                                               {".txt", "text/plain"}}};

/** The type of a file's name; empty for one that the page cannot have. */
std::string_view typeOf(std::string_view name) {
  const auto type = std::ranges::find_if(kTypes, [&](const auto& entry) { return name.ends_with(entry.first); });
  return type == kTypes.end() ? std::string_view() : type->second;
}

/** Letters, digits and "-_/" and dots, none of which begins a part of the path. */
bool isPlain(std::string_view name) {
  char last = '/';
  for (const char c : name) {
    if (std::isalnum(static_cast<unsigned char>(c)) == 0 && c != '-' && c != '_' && c != '.' && c != '/') return false;
    if (last == '/' && (c == '.' || c == '/')) return false;
    last = c;
  }
  return !name.empty();
}

std::string tagOf(const struct stat& file) {
  std::array<char, 48> tag{};
  std::snprintf(tag.data(), tag.size(), "\"%llx-%llx%08lx\"", static_cast<unsigned long long>(file.st_size),
                static_cast<unsigned long long>(file.st_mtim.tv_sec), static_cast<unsigned long>(file.st_mtim.tv_nsec));
  return tag.data();
}

}  // namespace

Response fileOf(const std::string& folder, std::string_view name, std::string_view knownTags) {
  const std::string_view type = typeOf(name);
  if (type.empty() || !isPlain(name)) return refusal(404, "there is no such file");
  const std::string path = folder + "/" + std::string(name) + ".gz";
  const FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
  struct stat status {};
  if (!file.isValid() || fstat(file.get(), &status) != 0) return refusal(404, "there is no such file");

  const std::string tag = tagOf(status);
  Response response{.type = std::string(type), .headers = "ETag: " + tag + "\r\nCache-Control: no-cache\r\n"};
  if (knownTags.find(tag) != std::string_view::npos) {
    response.status = 304;
    return response;
  }
  response.headers += "Content-Encoding: gzip\r\n";
  response.body.resize(static_cast<std::size_t>(status.st_size));
  std::size_t done = 0;
  while (done < response.body.size()) {
    const ssize_t got = read(file.get(), response.body.data() + done, response.body.size() - done);
    if (got <= 0) return refusal(503, "the file cannot be read");
    done += static_cast<std::size_t>(got);
  }
  return response;
}

}  // namespace console
