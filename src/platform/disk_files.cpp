#include "platform/disk_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "text/strings.h"

namespace platform {
namespace {

[[noreturn]] void refuse(const std::string& path, std::string_view what) {
  throw ports::FileError(refusal(path, what, errno));
}

std::string_view adviceFor(int error) {
  switch (error) {
    case ENOENT:
      return "check the name";
    case EACCES:
    case EPERM:
    case EROFS:
      return "ask for the right to it or choose another place";
    case EISDIR:
    case ENOTDIR:
      return "name a file";
    case ENOSPC:
    case EDQUOT:
      return "make room or choose another place";
    default:
      return "check the disk and try again";
  }
}

/// An open file. Its destructor closes without a word; close() tells what the machine says.
class OpenFile {
 public:
  OpenFile(const std::string& path, int flags) : OpenFile(path, flags, path) {}
  OpenFile(const std::string& path, int flags, const std::string& shown)
      : path_(shown), descriptor_(::open(path.c_str(), flags | O_CLOEXEC, 0666)) {
    if (descriptor_ < 0) refuse(path_, "cannot be opened");
  }
  ~OpenFile() {
    if (descriptor_ >= 0) ::close(descriptor_);
  }
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;

  void write(std::string_view content) {
    if (!writeAll(descriptor_, content)) refuse(path_, "cannot be written");
  }
  void flush() {
    if (::fsync(descriptor_) != 0 && errno != EINVAL)
      refuse(path_, "cannot be flushed to the disk");
  }
  void takeModeOf(const struct stat& other) { ::fchmod(descriptor_, other.st_mode & 07777U); }
  void close() {
    const int closed = ::close(descriptor_);
    descriptor_ = -1;
    if (closed != 0) refuse(path_, "cannot be closed");
  }

 private:
  std::string path_;
  int descriptor_;
};

std::string folderOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

/// A new name stands in its folder only when the folder itself is on the disk.
void flushFolder(const std::string& path) {
  OpenFile folder(folderOf(path), O_RDONLY | O_DIRECTORY);
  folder.flush();
  folder.close();
}

/// `shown` is the file that the user knows of.
void writeAside(const std::string& path, const std::string& shown, std::string_view content,
                const struct stat* old, bool flush) {
  OpenFile file(path, O_WRONLY | O_CREAT | O_EXCL, shown);
  if (old != nullptr) file.takeModeOf(*old);
  file.write(content);
  if (flush) file.flush();
  file.close();
}

/// Renaming over a file makes some file systems write to the disk at once, which takes far longer
/// than generating a program; exchanging the two names does not.
bool exchange(const std::string& one, const std::string& other) {
  return ::renameat2(AT_FDCWD, one.c_str(), AT_FDCWD, other.c_str(), RENAME_EXCHANGE) == 0;
}

}  // namespace

bool writeAll(int descriptor, std::string_view content) {
  while (!content.empty()) {
    const ssize_t written = ::write(descriptor, content.data(), content.size());
    if (written >= 0)
      content.remove_prefix(static_cast<std::size_t>(written));
    else if (errno != EINTR)
      return false;
  }
  return true;
}

std::string refusal(std::string_view file, std::string_view what, int error) {
  return text::concat(file, ": ", what, ": ", std::generic_category().message(error), "; ",
                      adviceFor(error));
}

bool isDevice(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode);
}

bool DiskFiles::exists(const std::string& path) const {
  struct stat status {};
  return ::lstat(path.c_str(), &status) == 0;
}

void DiskFiles::write(const std::string& path, std::string_view content, bool flush) {
  OpenFile file(path, O_WRONLY | O_CREAT | O_TRUNC);
  file.write(content);
  if (flush) file.flush();
  file.close();
  if (flush) flushFolder(path);
}

void DiskFiles::rename(const std::string& from, const std::string& to) {
  if (std::rename(from.c_str(), to.c_str()) != 0)
    refuse(from, text::concat("cannot be renamed to ", to));
}

void DiskFiles::remove(const std::string& path) {
  if (::unlink(path.c_str()) != 0 && errno != ENOENT) refuse(path, "cannot be removed");
}

void DiskFiles::replace(const std::string& path, std::string_view content, bool flush) {
  const std::string target = linkTarget(path);
  struct stat status {};
  const bool known = ::lstat(target.c_str(), &status) == 0;
  if (known && !S_ISREG(status.st_mode)) return write(target, content, flush);
  const std::string aside = text::concat(target, ".", ::getpid(), ".new");
  try {
    writeAside(aside, path, content, known ? &status : nullptr, flush);
    known&& exchange(aside, target) ? remove(aside) : rename(aside, target);
    if (flush) flushFolder(target);
  } catch (...) {
    ::unlink(aside.c_str());
    throw;
  }
}

std::string linkTarget(const std::string& path) {
  struct stat status {};
  if (::lstat(path.c_str(), &status) != 0 || !S_ISLNK(status.st_mode)) return path;
  char* resolved = ::realpath(path.c_str(), nullptr);
  if (resolved == nullptr) return path;
  std::string target = resolved;
  std::free(resolved);  // NOLINT(cppcoreguidelines-no-malloc): realpath allocates
  return target;
}

void DiskFiles::createFolder(const std::string& path) {
  std::error_code error;
  std::filesystem::create_directories(path, error);
  if (error) throw ports::FileError(refusal(path, "cannot be made", error.value()));
}

std::string DiskFiles::read(const std::string& path) const { return readAll(path); }

std::string readAll(const std::string& path) {
  const bool standardInput = path == "-";
  const int descriptor = standardInput ? STDIN_FILENO : ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  std::string content;
  ssize_t count = descriptor < 0 ? -1 : 1;
  while (count > 0) {
    char piece[1U << 16U];
    count = ::read(descriptor, piece, sizeof piece);
    if (count > 0) content.append(piece, static_cast<std::size_t>(count));
    if (count < 0 && errno == EINTR) count = 1;
  }
  const int error = errno;
  if (descriptor >= 0 && !standardInput) ::close(descriptor);
  const std::string_view name = standardInput ? "standard input" : std::string_view(path);
  if (count < 0) throw ports::FileError(refusal(name, "cannot be read", error));
  return content;
}

}  // namespace platform
