#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace ports {

/// The machine refused a file operation. The text names the file, what failed and why.
class FileError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Whole files by path. Every function throws FileError when the machine refuses.
class FileStore {
 public:
  virtual ~FileStore() = default;
  [[nodiscard]] virtual bool exists(const std::string& path) const = 0;
  [[nodiscard]] virtual std::string read(const std::string& path) const = 0;
  /// Creates or replaces the file, writes every byte and, if asked, flushes it to the disk.
  virtual void write(const std::string& path, std::string_view content, bool flush) = 0;
  /// Puts a whole new file in the place of the old one, which stays untouched until then.
  virtual void replace(const std::string& path, std::string_view content, bool flush) = 0;
  /// Replaces `to` when it exists.
  virtual void rename(const std::string& from, const std::string& to) = 0;
  /// No error when the file does not exist.
  virtual void remove(const std::string& path) = 0;
  /// Makes a folder and those above it; no error when it is there.
  virtual void createFolder(const std::string& path) = 0;
};

}  // namespace ports
