#include <QAccessible>
#include <QApplication>
#include <QTextStream>
#include <QTimer>
#include <functional>

#include "desktop/command_line.h"
#include "desktop/frame_icons.h"
#include "desktop/main_window.h"
#include "platform/large_pages.h"

namespace {

constexpr int wrongUsage = 2;

QStringList wordsOf(int argc, char** argv) {
  QStringList words;
  for (int i = 1; i < argc; ++i) words += QString::fromLocal8Bit(argv[i]);
  return words;
}

int complained(const QString& option) {
  QTextStream(stderr) << "kgen-desktop: there is no option " << option
                      << "; see kgen-desktop --help\n";
  return wrongUsage;
}

/// Where no session bus runs, asking for who reads the screen starts another process, and a large
/// page that is in use then falls apart: so it is asked first.
void useLargePages() {
  QAccessible::isActive();
  platform::useLargePages(platform::heapOfWindow);
}

/// Does something once, when a window has shown its first picture, or soon when it shows none: it
/// may start as an icon.
class AfterFirstPicture final : public QObject {
 public:
  AfterFirstPicture(QWidget& window, std::function<void()> act) {
    soon_.setSingleShot(true);
    connect(&soon_, &QTimer::timeout, this, [this, &window, act = std::move(act)] {
      window.removeEventFilter(this);
      act();
    });
    window.installEventFilter(this);
    soon_.start(longestMs);
  }

  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint) soon_.start(0);
    return false;
  }

 private:
  static constexpr int longestMs = 500;
  QTimer soon_;
};

}  // namespace

int main(int argc, char** argv) {
  const desktop::CommandLine early = desktop::commandLineFrom(wordsOf(argc, argv));
  if (early.help) QTextStream(stdout) << desktop::helpText();
  if (early.version) QTextStream(stdout) << desktop::versionText();
  if (early.help || early.version) return 0;
  // Those with one dash may be Qt's, which the application takes out of argv.
  if (early.unknown.startsWith("--")) return complained(early.unknown);
  QApplication application(argc, argv);
  useLargePages();
  if (QApplication::style()->name() == "fusion") QApplication::setStyle(new desktop::FrameIcons);
  QApplication::setApplicationName("kgen-desktop");
  QApplication::setApplicationDisplayName("KGen");
  QApplication::setDesktopFileName("kgen-desktop");
  const desktop::CommandLine line = desktop::commandLineFrom(wordsOf(argc, argv));
  if (!line.unknown.isEmpty()) return complained(line.unknown);
  desktop::DesktopSettings settings;
  desktop::MainWindow window(settings);
  const AfterFirstPicture beginning(window, [&] { window.begin(line.files); });
  window.show();
  return QApplication::exec();
}
