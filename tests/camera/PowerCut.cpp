#include "tests/camera/PowerCut.h"

#include <algorithm>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>
#include <utility>
#include <vector>

namespace test {

namespace {

namespace fs = std::filesystem;
using Content = std::optional<std::string>;
using Rows = std::vector<std::pair<std::string, std::string>>;

constexpr size_t kLongestLine = 1023;

Content contentOf(const Files& files, const std::string& path) {
  const auto found = files.find(path);
  return found == files.end() ? Content() : found->second;
}

/** The built-in rows of every file of the store, from the list that the unit tests hold against the tables. */
class BuiltIn {
 public:
  BuiltIn() {
    std::ifstream list(TMX_TEST_DATA "/settings.txt");
    for (std::string line; std::getline(list, line);) {
      const std::string path = line.substr(5, line.find(' ') - 5);  // behind "/mnt/"
      const std::string row = line.substr(line.find(' ') + 1);
      const size_t equals = row.find('=');
      const std::pair item(row.substr(0, equals), row.substr(equals + 1));
      const std::string& first = m_first.emplace(familyOf(path), path).first->second;
      if (first == path) {
        m_rows[path].push_back(item);
      } else {
        m_differing[path][item.first] = item.second;
      }
    }
  }

  /** None for a file of another kind. */
  [[nodiscard]] Rows rowsOf(const std::string& path) const {
    const auto first = m_first.find(familyOf(path));
    if (first == m_first.end()) return {};
    Rows rows = m_rows.at(first->second);
    const auto differing = m_differing.find(path);
    if (differing == m_differing.end()) return rows;
    for (const auto& [key, value] : differing->second)
      std::ranges::find(rows, key, &Rows::value_type::first)->second = value;
    return rows;
  }

 private:
  /** The files of a family differ in the number at the end of their name. */
  static std::string familyOf(const std::string& path) {
    return std::regex_replace(path, std::regex("[0-9]+\\.conf$"), "");
  }

  std::map<std::string, std::string> m_first;  ///< of a family
  std::map<std::string, Rows> m_rows;
  std::map<std::string, std::map<std::string, std::string>> m_differing;
};

const BuiltIn& builtIn() {
  static const BuiltIn rows;
  return rows;
}

struct Reading {
  std::string text;          ///< what stands in the file behind the start
  bool isUnderstood = true;  ///< else the start fails
};

/** What the reader of the store makes of a file. */
Reading readStore(Rows rows, const std::string& text) {
  const size_t count = rows.size();
  size_t matched = 0;
  bool isWhole = true;
  Reading reading;
  std::string_view rest = text;
  for (size_t end = 0; (end = rest.find('\n')) != std::string_view::npos; rest.remove_prefix(end + 1)) {
    const std::string line(rest.substr(0, end));
    const size_t equals = line.find('=');
    reading.isUnderstood = equals != std::string::npos && end <= kLongestLine;
    if (!reading.isUnderstood) break;
    const auto row = std::ranges::find(rows, line.substr(0, equals), &Rows::value_type::first);
    if (row == rows.end()) {
      isWhole = false;
    } else {
      row->second = line.substr(equals + 1);
      ++matched;
    }
  }
  if (reading.isUnderstood && isWhole && matched == count) return {text};
  for (const auto& [key, value] : rows)
    reading.text += key + "=" + value + "\n";
  return reading;
}

}  // namespace

Files filesOf(const Camera& camera) {
  Files files;
  for (const char* folder : {"flash", "sysinfo"}) {
    for (const auto& entry : fs::recursive_directory_iterator(camera.path(folder))) {
      const std::string path = fs::relative(entry.path(), camera.path(""));
      if (entry.is_regular_file()) files[path] = camera.read(path);
    }
  }
  return files;
}

void putBack(const Camera& camera, const Files& files) {
  for (const auto& [path, content] : filesOf(camera)) {
    if (!files.contains(path)) fs::remove(camera.path(path));
  }
  for (const auto& [path, content] : files) {
    fs::create_directories(camera.path(path).parent_path());
    if (camera.read(path) != content) camera.write(path, content);
  }
  camera.write("mtd5", "mounted\n");
}

Files comparable(Files files) {
  const std::pair<const char*, std::regex> kinds[] = {
      {"flash/lighttpd/.htpasswd", std::regex("\\$apr1\\$[./0-9A-Za-z]{8}\\$[./0-9A-Za-z]{22}\n")},
      {"sysinfo/uuid", std::regex("^[0-9a-f-]{36}\n$")},
      {"flash/usr/obtmp.dat", std::regex("^[0-9.]{10} [0-9:]{8}\n$")},
      {"sysinfo/obsave.dat", std::regex("^[0-9.]{10} [0-9:]{8}\n$")},
  };
  std::erase_if(files, [](const auto& file) { return file.first.ends_with(".new"); });
  for (const auto& [path, whole] : kinds) {
    if (files.contains(path)) files[path] = std::regex_replace(files[path], whole, "<whole>\n");
  }
  return files;
}

Texts difference(const Files& left, const Files& right) {
  Texts paths;
  for (const Files* files : {&left, &right}) {
    for (const auto& [path, content] : *files) {
      const bool isNew = files == &left || !left.contains(path);
      if (isNew && contentOf(left, path) != contentOf(right, path)) paths.push_back(path);
    }
  }
  return paths;
}

bool isOfStore(const std::string& path) { return !builtIn().rowsOf(path).empty(); }

Texts unexplained(const PowerCut& cut, const std::optional<Files>& left, const Files& started) {
  const auto readingOf = [&](const std::string& path, const Files& files) {
    const Content content = contentOf(files, path);
    const Content copy = contentOf(cut.factory, path);
    return readStore(builtIn().rowsOf(path), content ? *content : copy.value_or(""));
  };
  std::set<std::string> paths;
  bool isRestored = left && left->contains("sysinfo/restoring");
  for (const Files* files : {&cut.before, &cut.after, &started}) {
    for (const auto& [path, content] : *files) {
      paths.insert(path);
      const bool isOnPartition = path.starts_with("flash/") && isOfStore(path);
      if (left && isOnPartition && !readingOf(path, *left).isUnderstood) isRestored = true;
    }
  }

  Texts faults;
  const auto check = [&](const std::string& path) {
    const Content is = contentOf(started, path);
    const Content old = contentOf(cut.before, path);
    const Content fresh = contentOf(cut.after, path);
    if (left && isOfStore(path)) {
      const bool isReplaced = isRestored && path.starts_with("flash/");
      const Content was = contentOf(*left, path);
      const Content healed = isReplaced ? contentOf(cut.factory, path) : readingOf(path, *left).text;
      if (is != healed && is != fresh) {
        faults.push_back(path + ": the start made \"" + is.value_or("-") + "\" of \"" + was.value_or("-") + "\"");
      }
      const bool isCutShort =
          was && was != old && was != fresh &&
          (fresh.value_or("").starts_with(*was) || readingOf(path, cut.before).text.starts_with(*was));
      if (isReplaced || isCutShort) return;
    }
    if (is == fresh || (cut.isOldAllowed && is == old)) return;
    faults.push_back(path + ": \"" + is.value_or("-") + "\" is neither old nor new");
  };
  for (const std::string& path : paths)
    check(path);
  return faults;
}

}  // namespace test
