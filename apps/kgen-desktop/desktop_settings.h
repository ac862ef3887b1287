#pragma once

#include <QByteArray>
#include <QSettings>
#include <QStringList>

namespace desktop {

/// Where programs go that are saved and sent.
struct SendTarget {
  enum class Kind { none, folder, command };
  Kind kind = Kind::none;
  QString folder;
  QString command;  // "%f" stands for the program's file, which else comes last
  bool operator==(const SendTarget&) const = default;
};

/// What this program remembers for its user; options of the generator itself are the session's.
class DesktopSettings {
 public:
  static constexpr int mostRecentFiles = 10;

  /// In the user's folder for settings.
  DesktopSettings() : store_(QSettings::IniFormat, QSettings::UserScope, "kgen", "desktop") {}
  explicit DesktopSettings(const QString& file) : store_(file, QSettings::IniFormat) {}

  /// The one opened last comes first.
  [[nodiscard]] QStringList recentFiles() const;
  void addRecentFile(const QString& path);
  void removeRecentFile(const QString& path);

  [[nodiscard]] SendTarget sendTarget() const;
  void setSendTarget(const SendTarget& target);

  /// Places of the window and its parts.
  [[nodiscard]] QByteArray place(const QString& part) const;
  void setPlace(const QString& part, const QByteArray& place);

 private:
  QSettings store_;
};

}  // namespace desktop
