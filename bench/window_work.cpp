#include <QApplication>
#include <QFontDialog>
#include <QObject>
#include <QScrollBar>
#include <QTableView>
#include <QThread>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "control/panel_texts.h"
#include "control/session.h"
#include "desktop/main_window.h"
#include "platform/large_pages.h"
#include "processes.h"
#include "ui/setup_window.h"

/// window_work PROJECT NAME MILLISECONDS: how long each window takes to open, how long an edit
/// holds the main window up, and how long after it summary, program, budget and findings are those
/// of the edit; and how long a page of the longest sheet takes. A dialog of Qt is the peer.
namespace {

constexpr int rounds = 9;
constexpr std::size_t windows = control::panel::saveAndSendButton;  // the buttons before it

/// All that a window does before it waits for the user, its picture among it.
void drawAll() {
  for (int i = 0; i < 3; ++i) {
    QApplication::sendPostedEvents();
    QApplication::processEvents();
  }
}

template <class Work>
double microsOf(Work work) {
  const double start = bench::nowMicros();
  work();
  return bench::nowMicros() - start;
}

/// Waits for the review of what is done while it is there.
class Reviewed {
 public:
  explicit Reviewed(desktop::MainWindow& window) {
    QObject::connect(&window, &desktop::MainWindow::reviewed, &context_, [this] { done_ = true; });
  }
  void wait() {
    while (!done_) QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    drawAll();
  }

 private:
  QObject context_;
  bool done_ = false;
};

class Table {
 public:
  explicit Table(int atMostMs) : atMostMs_(atMostMs) {}
  /// Without a limit: tells how fast the machine is now.
  static void addPeer(const char* project, const std::string& work,
                      const std::vector<double>& micros) {
    std::printf("%-8s %-44s %8.1f ms %9s\n", project, work.c_str(), bench::median(micros) / 1000,
                "-");
  }
  void add(const char* project, const std::string& work, const std::vector<double>& micros) {
    const double ms = bench::median(micros) / 1000;
    std::printf("%-8s %-44s %8.1f ms %6d ms%s\n", project, work.c_str(), ms, atMostMs_,
                ms > atMostMs_ ? "  MISSED" : "");
    met = met && ms <= atMostMs_;
  }
  bool met = true;

 private:
  int atMostMs_;
};

std::vector<double> opened(desktop::MainWindow& window, int button) {
  std::vector<double> micros;
  for (int i = 0; i < rounds; ++i) {
    ui::SetupWindow* shown = nullptr;
    micros.push_back(microsOf([&] {
      shown = window.control().openWindow(button);
      drawAll();
    }));
    if (shown == nullptr) throw std::runtime_error("a window does not open");
    shown->reject();
    drawAll();
  }
  return micros;
}

std::vector<double> openedByQt() {
  std::vector<double> micros;
  for (int i = 0; i < rounds; ++i) {
    std::optional<QFontDialog> dialog;
    micros.push_back(microsOf([&] {
      dialog.emplace().setOption(QFontDialog::DontUseNativeDialog);
      dialog->show();
      drawAll();
    }));
  }
  return micros;
}

QTableView* longestSheet(const ui::SetupWindow& window) {
  QTableView* longest = nullptr;
  for (QTableView* each : window.findChildren<QTableView*>())
    if (longest == nullptr || each->model()->rowCount() > longest->model()->rowCount())
      longest = each;
  return longest;
}

/// Page by page through the longest sheet of all windows.
void measureScrolling(desktop::MainWindow& window, const char* project, Table& table) {
  int rows = 0;
  std::vector<double> micros;
  for (std::size_t button = 0; button < windows; ++button) {
    ui::SetupWindow* shown = window.control().openWindow(static_cast<int>(button));
    drawAll();
    QTableView* sheet = longestSheet(*shown);
    if (sheet != nullptr && sheet->model()->rowCount() > rows) {
      rows = sheet->model()->rowCount();
      micros.clear();
      QScrollBar* bar = sheet->verticalScrollBar();
      for (int place = 0; place <= bar->maximum(); place += std::max(bar->pageStep(), 1))
        micros.push_back(microsOf([&] {
          bar->setValue(place);
          drawAll();
        }));
    }
    shown->reject();
    drawAll();
  }
  table.add(project, "scrolling a page of " + std::to_string(rows) + " rows", micros);
}

void measureEdits(desktop::MainWindow& window, const char* project, Table& table) {
  std::vector<double> held, followed;
  for (int i = 0; i < rounds; ++i) {
    QThread::msleep(200);  // nobody edits faster
    model::Project next = window.control().session().project();
    next.configuration.Operator = "Operator " + std::to_string(i);
    Reviewed reviewed(window);
    const double start = bench::nowMicros();
    window.control().session().edit(std::move(next), "operator and ID");
    drawAll();
    held.push_back(bench::nowMicros() - start);
    reviewed.wait();
    followed.push_back(bench::nowMicros() - start);
  }
  table.add(project, "the window is held up by Done", held);
  table.add(project, "summary, program, budget follow Done", followed);
}

bool measure(const QString& file, const char* project, int atMostMs) {
  desktop::DesktopSettings settings(file + ".ini");
  desktop::MainWindow window(settings);
  window.show();
  window.begin({});
  Reviewed reviewed(window);
  window.open(file);
  reviewed.wait();
  Table table(atMostMs);
  Table::addPeer(project, "opening Qt's own choice of a font", openedByQt());
  for (std::size_t button = 0; button < windows; ++button) {
    std::string caption(control::panel::buttons[button].caption);
    std::erase(caption, '&');
    table.add(project, "opening " + caption, opened(window, static_cast<int>(button)));
  }
  measureScrolling(window, project, table);
  measureEdits(window, project, table);
  return table.met;
}

}  // namespace

int main(int argc, char** argv) {
  platform::useLargePages(platform::heapOfWindow);  // as the program does
  QApplication application(argc, argv);
  if (argc != 4) return 2;
  try {
    return measure(QString::fromLocal8Bit(argv[1]), argv[2], std::atoi(argv[3])) ? 0 : 1;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 2;
  }
}
