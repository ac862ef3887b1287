#include "desktop/desktop_settings.h"

#include <algorithm>

namespace desktop {
namespace {

const QString recentKey = "recentFiles";

}  // namespace

QStringList DesktopSettings::recentFiles() const { return store_.value(recentKey).toStringList(); }

void DesktopSettings::addRecentFile(const QString& path) {
  QStringList files = recentFiles();
  files.removeAll(path);
  files.prepend(path);
  store_.setValue(recentKey, files.mid(0, mostRecentFiles));
}

void DesktopSettings::removeRecentFile(const QString& path) {
  QStringList files = recentFiles();
  files.removeAll(path);
  store_.setValue(recentKey, files);
}

SendTarget DesktopSettings::sendTarget() const {
  const int kind = std::clamp(store_.value("send/kind").toInt(), 0, 2);
  return {static_cast<SendTarget::Kind>(kind), store_.value("send/folder").toString(),
          store_.value("send/command").toString()};
}

void DesktopSettings::setSendTarget(const SendTarget& target) {
  store_.setValue("send/kind", static_cast<int>(target.kind));
  store_.setValue("send/folder", target.folder);
  store_.setValue("send/command", target.command);
}

QByteArray DesktopSettings::place(const QString& part) const {
  return store_.value("place/" + part).toByteArray();
}

void DesktopSettings::setPlace(const QString& part, const QByteArray& place) {
  store_.setValue("place/" + part, place);
}

}  // namespace desktop
