#include "desktop/work_place.h"

#include <QDir>
#include <QFile>

namespace desktop {
namespace {

constexpr int mostWindows = 20;

/// A lock that a crash left behind is taken over.
std::unique_ptr<QLockFile> lockOf(const QString& folder) {
  QDir().mkpath(folder);
  auto lock = std::make_unique<QLockFile>(folder + "/kgen-desktop.lock");
  lock->setStaleLockTime(0);
  return lock->tryLock(0) ? std::move(lock) : nullptr;
}

}  // namespace

WorkPlace::WorkPlace(const QString& folder) : folder_(folder) {
  for (int window = 1; window <= mostWindows; ++window) {
    const QString place = window == 1 ? folder : QString("%1/window%2").arg(folder).arg(window);
    if (lock_ && !QDir(place).exists()) continue;
    auto lock = lockOf(place);
    if (!lock) continue;
    const bool hasCopy = QFile::exists(place + "/EditTemp.GN7");
    if (!lock_ || hasCopy) {
      folder_ = place;
      lock_ = std::move(lock);
    }
    if (hasCopy) return;
  }
}

}  // namespace desktop
