#pragma once

#include <string>
#include <string_view>

#include "ports/file_store.h"

/// The real files, clock, settings and programs behind the ports, for POSIX systems.
namespace platform {

/// The files of this machine.
class DiskFiles final : public ports::FileStore {
 public:
  [[nodiscard]] bool exists(const std::string& path) const override;
  void write(const std::string& path, std::string_view content, bool flush) override;
  void rename(const std::string& from, const std::string& to) override;
  void remove(const std::string& path) override;
  [[nodiscard]] std::string read(const std::string& path) const override;
  void createFolder(const std::string& path) override;

  /// A path that leads to a device or pipe is written through; a link stays, and its target is
  /// replaced.
  void replace(const std::string& path, std::string_view content, bool flush) override;
};

/// Whole content of a file, "-" being standard input. Throws ports::FileError.
std::string readAll(const std::string& path);

/// Where a link leads, so that its target is replaced and not the link; any other path as it is.
std::string linkTarget(const std::string& path);

/// True when the path leads to something that is neither a file nor a folder: a device or a pipe.
bool isDevice(const std::string& path);

/// Writes every byte; false with errno set when the machine refuses.
bool writeAll(int descriptor, std::string_view content);

/// "FILE: what: why; what to do" for an errno value.
std::string refusal(std::string_view file, std::string_view what, int error);

}  // namespace platform
