// The list of all parameters, one line each, for the list mode of the daemon (CManBase::writeList).

#include <cxxabi.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <memory>
#include <typeinfo>

#include "tree/CManBase.h"

namespace {

constexpr const char* kListFile = "/tmp/api_list.txt";
/** The column at which the permission string begins, in tab characters. */
constexpr size_t kPermissionColumn = 6;

void syncTwice() {
  sync();
  sync();
}

void appendLine(const std::string& line) {
  std::ofstream(kListFile, std::ios::app) << line << "\n";
  syncTwice();
}

std::string className(const CApiBase& node) {
  int result = 0;
  const std::unique_ptr<char, decltype(&std::free)> name(
      abi::__cxa_demangle(typeid(node).name(), nullptr, nullptr, &result), &std::free);
  return name == nullptr ? typeid(node).name() : name.get();
}

void writeLayer(const CApiBase& node, size_t depth) {
  std::string line = std::string(depth, '\t') + "<" + std::string(node.getLayerName()) + ">";
  if (!node.getPermission().empty()) {
    line += std::string(kPermissionColumn - depth, '\t') + "<" + std::string(node.getPermission()) + ">\t<" +
            className(node) + ">";
  }
  appendLine(line);
  for (const CApiBase* child : node.getNextLayers()) {
    writeLayer(*child, depth + 1);
  }
}

}  // namespace

void CManBase::clearList() {
  std::ofstream(kListFile, std::ios::trunc).flush();
  syncTwice();
}

void CManBase::writeList(const std::string& rootName) const {
  appendLine("<" + rootName + ">");
  for (const CApiBase* child : m_nextLayers) {
    writeLayer(*child, 1);
  }
}
