#include "projectfile/file_input.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <system_error>

#include "text/strings.h"

namespace projectfile {
namespace {

namespace fs = std::filesystem;
using text::concat;

constexpr std::size_t pieceSize = 32UL * 1024;  // stays in the nearest caches
constexpr std::size_t restSize = 68UL * 1024;   // more than the longest line that the reader takes

struct CloseFile {
  void operator()(std::FILE* file) const {
    if (file != stdin) std::fclose(file);
  }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

/// A project that is opened is to be saved again. Failing to clear the attribute is no reason not
/// to read.
void clearReadOnly(const std::string& path, const fs::file_status& status) {
  if (!fs::is_regular_file(status)) return;
  if ((status.permissions() & fs::perms::owner_write) != fs::perms::none) return;
  std::error_code ignored;
  fs::permissions(path, fs::perms::owner_write, fs::perm_options::add, ignored);
}

std::string whyUnusable(const std::string& path) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (status.type() == fs::file_type::not_found)
    return concat(path, ": there is no such file; check its name and folder");
  if (fs::is_directory(status)) return concat(path, ": is a folder; name a project file in it");
  clearReadOnly(path, status);
  return {};
}

std::string systemRefusal(const std::string& path, std::string_view what, int error) {
  return concat(path, ": can't be ", what, " (", std::generic_category().message(error),
                "); check the file and its access rights");
}

/// Reads to the end; true when there was any content.
bool readPieces(std::FILE* file, ProjectReader& reader) {
  // Not zeroed: a small file touches only its first pages.
  const auto buffer = std::make_unique_for_overwrite<char[]>(restSize + pieceSize);
  std::size_t kept = 0;
  bool anything = false;
  while (!reader.failure()) {
    const std::size_t count = std::fread(buffer.get() + kept, 1, pieceSize, file);
    const std::size_t size = kept + count;
    anything = anything || count > 0;
    const std::size_t taken = reader.take({buffer.get(), size}, count == 0);
    kept = size - taken;
    std::memmove(buffer.get(), buffer.get() + taken, kept);
    if (count == 0) break;
  }
  return anything;
}

}  // namespace

std::string readFile(const std::string& path, ProjectReader& reader) {
  const bool standardInput = path == "-";
  const std::string name = standardInput ? "standard input" : path;
  if (!standardInput)
    if (std::string reason = whyUnusable(path); !reason.empty()) return reason;
  const File file(standardInput ? stdin : std::fopen(path.c_str(), "rb"));
  if (!file) return systemRefusal(name, "opened", errno);
  if (!standardInput) std::setvbuf(file.get(), nullptr, _IONBF, 0);
  errno = 0;
  const bool anything = readPieces(file.get(), reader);
  if (std::ferror(file.get()) != 0) return systemRefusal(name, "read", errno);
  if (!anything)
    return concat(name, ": the file is empty; open its backup (\"._EN\") or another file");
  return {};
}

}  // namespace projectfile
