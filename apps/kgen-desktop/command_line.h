#pragma once

#include <QString>
#include <QStringList>

namespace desktop {

/// What the program was started with.
struct CommandLine {
  QStringList files;
  bool help = false;
  bool version = false;
  QString unknown;  // the first option that there is not; "" without one
};

/// `words` without the name of the program. "--" ends the options.
CommandLine commandLineFrom(const QStringList& words);

QString helpText();
QString versionText();

}  // namespace desktop
