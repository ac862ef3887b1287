#pragma once

#include <QAction>
#include <QSignalSpy>

#include "desktop/main_window.h"
#include "ui/control_bench.h"

namespace support {

/// The program on a screen that nobody sees, with files, settings and work folder of its own.
class DesktopBench {
 public:
  explicit DesktopBench(RecordedMessages::Rule rule = {}) : messages(std::move(rule)) {
    std::string name = std::filesystem::temp_directory_path() / "kgen_desktop.XXXXXX";
    if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
    folder = machine.folder = name;
    settings = std::make_unique<desktop::DesktopSettings>(at("desktop.ini"));
    start();
  }
  ~DesktopBench() {
    window.reset();
    std::filesystem::remove_all(folder);
  }
  DesktopBench(const DesktopBench&) = delete;
  DesktopBench& operator=(const DesktopBench&) = delete;

  [[nodiscard]] QString at(const char* name) const {
    return QString::fromStdString(folder) + "/" + name;
  }
  /// Ends the program, as a crash does, and starts it again.
  void start() {
    window.reset();
    window = std::make_unique<desktop::MainWindow>(*settings, &sessionPorts);
    window->show();
    window->activateWindow();
    if (!QTest::qWaitForWindowActive(window.get())) throw std::runtime_error("not active");
  }
  QString copyExample(const char* name) {
    const std::string file = std::string("/") + name + ".GN7";
    std::filesystem::copy_file(KGEN_EXAMPLES_DIR + file, folder + file);
    return at((name + std::string(".GN7")).c_str());
  }
  void open(const char* name) {
    window->open(copyExample(name));
    waitForReview();
  }
  void waitForReview() {
    QSignalSpy reviewed(window.get(), &desktop::MainWindow::reviewed);
    if (!reviewed.wait()) throw std::runtime_error("no review");
  }
  [[nodiscard]] control::Session& session() { return window->control().session(); }
  /// An action by its text without mnemonic: "Save As..."
  QAction& action(const QString& text) {
    for (QAction* each : window->findChildren<QAction*>())
      if (each->text().remove('&') == text) return *each;
    throw std::runtime_error("no action " + text.toStdString());
  }
  /// The text of the last message with a title; "" when there was none.
  [[nodiscard]] QString told(const std::string& title) const {
    QString text;
    for (const ports::Message& message : messages.shown)
      if (message.title == title) text = QString::fromStdString(message.text);
    return text;
  }
  void setOperator(const std::string& name) {
    model::Project next = session().project();
    next.configuration.Operator = name;
    session().edit(std::move(next), "operator and ID");
  }

  RecordedMessages messages;
  platform::DiskFiles files;
  FixedClock clock;
  MemorySettings options;
  FakeMachine machine;
  FakeProcesses processes;
  RecordedHost host;
  control::SessionPorts sessionPorts{messages, files, clock, options, machine, processes, host};
  std::string folder;
  std::unique_ptr<desktop::DesktopSettings> settings;
  std::unique_ptr<desktop::MainWindow> window;
};

}  // namespace support
