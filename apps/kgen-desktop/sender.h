#pragma once

#include <QObject>
#include <QProcess>

#include "desktop/desktop_settings.h"

namespace desktop {

/// Hands programs on: copies them to a folder, or runs a command of the user's, which the window
/// does not wait for.
class Sender final : public QObject {
  Q_OBJECT
 public:
  explicit Sender(QObject* parent = nullptr);
  void send(const QString& program, const SendTarget& target);
  [[nodiscard]] bool isBusy() const { return process_.state() != QProcess::NotRunning; }
  void stop();

 Q_SIGNALS:
  void told(const QString& words);    // how it goes
  void failed(const QString& words);  // and what to do

 private:
  void copy(const QString& program, const QString& folder);
  void run(const QString& program, const QString& command);
  void finish(int code, QProcess::ExitStatus status);
  QProcess process_;
  QString command_;
};

/// The command and its arguments, with the program's file in place of "%f" or at the end.
QStringList sendCommand(const QString& command, const QString& program);

}  // namespace desktop
