#include "desktop/sender.h"

#include <QFileInfo>

#include "platform/disk_files.h"
#include "ui/texts.h"

namespace desktop {
namespace {

const QString fileSign = "%f";

/// The last words of a command, which tell most.
QString lastLines(const QByteArray& output) {
  constexpr int most = 12;
  const QStringList lines = QString::fromLocal8Bit(output).trimmed().split('\n');
  return lines.mid(std::max<qsizetype>(lines.size() - most, 0)).join("\r\n");
}

}  // namespace

QStringList sendCommand(const QString& command, const QString& program) {
  QStringList parts = QProcess::splitCommand(command);
  bool named = false;
  for (QString& part : parts) {
    named = named || part.contains(fileSign);
    part.replace(fileSign, program);
  }
  if (!named) parts += program;
  return parts;
}

Sender::Sender(QObject* parent) : QObject(parent) {
  process_.setProcessChannelMode(QProcess::MergedChannels);
  connect(&process_, &QProcess::finished, this, &Sender::finish);
  connect(&process_, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
    if (error == QProcess::FailedToStart)
      Q_EMIT failed("The command \"" + command_ + "\" could not be started: " +
                    process_.errorString() + ".\r\nCorrect it in the send settings.");
  });
}

void Sender::send(const QString& program, const SendTarget& target) {
  if (target.kind == SendTarget::Kind::folder)
    copy(program, target.folder);
  else if (target.kind == SendTarget::Kind::command)
    run(program, target.command);
}

void Sender::copy(const QString& program, const QString& folder) {
  const QString target = folder + "/" + QFileInfo(program).fileName();
  try {
    platform::DiskFiles files;
    files.replace(ui::utf8(target), files.read(ui::utf8(program)), true);
    Q_EMIT told("The program was copied to " + target + ".");
  } catch (const ports::FileError& error) {
    Q_EMIT failed("The program was not sent.\r\n" + QString(error.what()));
  }
}

void Sender::run(const QString& program, const QString& command) {
  if (isBusy())
    return Q_EMIT failed("The program before is still being sent; wait until it is done.");
  QStringList parts = sendCommand(command, program);
  command_ = command;
  const QString file = parts.takeFirst();
  process_.start(file, parts, QIODevice::ReadOnly);
  if (isBusy()) Q_EMIT told("Sending " + QFileInfo(program).fileName() + "...");
}

void Sender::finish(int code, QProcess::ExitStatus status) {
  const QString output = lastLines(process_.readAll());
  if (status == QProcess::NormalExit && code == 0)
    return Q_EMIT told("The program was sent. " + output.section("\r\n", -1));
  const QString how = status == QProcess::CrashExit ? QString("was stopped or crashed")
                                                    : QString("ended with code %1").arg(code);
  Q_EMIT failed("The program was not sent: the command \"" + command_ + "\" " + how + ".\r\n\r\n" +
                output);
}

void Sender::stop() {
  process_.disconnect(this);
  process_.kill();
  process_.waitForFinished();
}

}  // namespace desktop
