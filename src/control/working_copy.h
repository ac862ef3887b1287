#pragma once

#include <string>

#include "model/document_stamp.h"
#include "model/project.h"
#include "ports/file_store.h"

namespace control {

/// The project being edited as "EditTemp.GN7" in the work directory: written anew after each edit
/// and deleted when the project is closed, so that one that is left over tells of a crash.
class WorkingCopy {
 public:
  WorkingCopy(ports::FileStore& files, const std::string& workDirectory);

  /// Throws ports::FileError.
  void write(const model::Project& project, const std::string& projectPath,
             const model::DocumentStamp& stamp);
  void remove();

  [[nodiscard]] bool isLeftOver() const;
  [[nodiscard]] const std::string& path() const { return path_; }
  /// The path of the project that a copy was made of, as the copy says; empty when it does not.
  [[nodiscard]] std::string origin() const;

 private:
  ports::FileStore& files_;
  std::string folder_, path_;
};

}  // namespace control
