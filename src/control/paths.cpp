#include "control/paths.h"

#include "text/strings.h"

namespace control {
namespace {

std::size_t nameStart(std::string_view path) {
  return path.find_last_of("/\\") + 1;  // npos + 1 is 0: the whole path
}

}  // namespace

std::string projectPath(std::string_view path) {
  const std::string name = text::upper(path.substr(nameStart(path)));
  const bool known =
      name.find(".GN7") != std::string::npos || name.find(".GEN") != std::string::npos;
  return known ? std::string(path) : text::concat(basePath(path), projectExtension);
}

std::string basePath(std::string_view path) {
  return std::string(path.substr(0, path.find('.', nameStart(path))));
}

std::string fileName(std::string_view path) { return std::string(path.substr(nameStart(path))); }

std::string folderOf(std::string_view path) { return std::string(path.substr(0, nameStart(path))); }

}  // namespace control
