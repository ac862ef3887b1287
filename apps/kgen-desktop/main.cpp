#include <QApplication>
#include <QTextStream>
#include <QTimer>

#include "desktop/command_line.h"
#include "desktop/main_window.h"

namespace {

constexpr int wrongUsage = 2;

QStringList wordsOf(int argc, char** argv) {
  QStringList words;
  for (int i = 1; i < argc; ++i) words += QString::fromLocal8Bit(argv[i]);
  return words;
}

/// Answers that need no window, and so no screen.
bool answered(const desktop::CommandLine& line) {
  if (line.help) QTextStream(stdout) << desktop::helpText();
  if (line.version) QTextStream(stdout) << desktop::versionText();
  return line.help || line.version;
}

}  // namespace

int main(int argc, char** argv) {
  if (answered(desktop::commandLineFrom(wordsOf(argc, argv)))) return 0;
  QApplication application(argc, argv);  // takes the options of Qt out of argv
  QApplication::setApplicationName("kgen-desktop");
  QApplication::setApplicationDisplayName("KGen");
  QApplication::setDesktopFileName("kgen-desktop");
  const desktop::CommandLine line = desktop::commandLineFrom(wordsOf(argc, argv));
  if (!line.complaint.isEmpty()) {
    QTextStream(stderr) << "kgen-desktop: " << line.complaint << '\n';
    return wrongUsage;
  }
  desktop::DesktopSettings settings;
  desktop::MainWindow window(settings);
  window.show();
  QTimer::singleShot(0, &window, [&] { window.begin(line.files); });
  return QApplication::exec();
}
