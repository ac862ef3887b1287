#pragma once

#include <QLockFile>
#include <QString>
#include <memory>

namespace desktop {

/// The folder in which a window keeps its working copy, held until the window goes. Each window
/// that is open at the same time has its own: the first one the user's folder, others a folder in
/// it.
class WorkPlace {
 public:
  /// The first free place with a working copy that a crash left behind, or else the first free one.
  /// `folder` itself when none can be had.
  explicit WorkPlace(const QString& folder);
  [[nodiscard]] const QString& folder() const { return folder_; }
  /// No other window has it.
  [[nodiscard]] bool isOwn() const { return lock_ != nullptr; }

 private:
  QString folder_;
  std::unique_ptr<QLockFile> lock_;
};

}  // namespace desktop
