#pragma once

#include <QApplication>
#include <QTest>
#include <filesystem>
#include <memory>

#include "generator/program_writer.h"
#include "logscript/check.h"
#include "support/examples.h"
#include "support/fake_session_ports.h"
#include "text/strings.h"
#include "ui/kgen_ctl.h"
#include "ui/setup_window.h"
#include "ui/sheet.h"

namespace support {

/// A control on a screen that nobody sees, with files in a folder of its own and messages that
/// answer as told.
class ControlBench {
 public:
  explicit ControlBench(RecordedMessages::Rule rule = {}) : messages(std::move(rule)) {
    std::string name = std::filesystem::temp_directory_path() / "kgen_ui.XXXXXX";
    if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
    folder = machine.folder = name;
    control = std::make_unique<KGenCtl>(
        control::SessionPorts{messages, files, clock, settings, machine, processes, host}, nullptr);
    control->resize(1000, 720);
    control->show();
  }
  ~ControlBench() {
    control.reset();
    std::filesystem::remove_all(folder);
  }
  ControlBench(const ControlBench&) = delete;
  ControlBench& operator=(const ControlBench&) = delete;

  /// Opens a copy of an example: "bridge_monitoring".
  void openExample(const std::string& name) {
    const std::string path = folder + "/" + name + ".GN7";
    std::filesystem::copy_file(std::string(KGEN_EXAMPLES_DIR) + "/" + name + ".GN7", path,
                               std::filesystem::copy_options::overwrite_existing);
    control->OpenFile(QString::fromStdString(path));
  }
  [[nodiscard]] const model::Project& project() const { return control->session().project(); }

  /// The setup window of a button.
  template <class Window = ui::SetupWindow>
  Window& open(int button) {
    Window* window = dynamic_cast<Window*>(control->openWindow(button));
    if (window == nullptr) throw std::runtime_error("no such window");
    window->activateWindow();  // or boxes would never lose the focus
    if (!QTest::qWaitForWindowActive(window)) throw std::runtime_error("window stays inactive");
    return *window;
  }

  RecordedMessages messages;
  platform::DiskFiles files;
  FixedClock clock;
  MemorySettings settings;
  FakeMachine machine;
  FakeProcesses processes;
  RecordedHost host;
  std::string folder;
  std::unique_ptr<KGenCtl> control;
};

/// The control of a window by its caption: "Reps:".
template <class Widget>
Widget& controlOf(QWidget& window, const char* caption) {
  auto* found = window.findChild<Widget*>(caption);
  if (found == nullptr) throw std::runtime_error(std::string("no control ") + caption);
  return *found;
}

/// Types a text in place of what stands in a box, and leaves it by Enter.
inline void type(QWidget& box, const QString& text) {
  box.setFocus();
  QTest::keyClick(&box, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClicks(&box, text);
  QTest::keyClick(&box, Qt::Key_Tab);
}

/// Pastes tab-separated text into a sheet.
inline void pasteAt(QWidget& window, const char* sheet, int row, int column, const QString& text) {
  auto& view = controlOf<ui::SheetView>(window, sheet);
  view.setCurrentIndex(view.model()->index(row, column));
  view.pasteText(text);
}

/// What the compiler of the logger would say against the program of a project; "" for nothing.
inline std::string faultsOf(const model::Project& project) {
  std::string faults;
  for (const logscript::Finding& finding : logscript::check(SAVEDLD::generate(project, {}).text))
    if (infoOf(finding.code).severity == logscript::Severity::error)
      faults += text::concat(finding.line, ": ", finding.text, "\n");
  return faults;
}

/// A picture of a window in the folder of screenshots.
inline void keepPicture(QWidget& window, const QString& name) {
  std::filesystem::create_directories(KGEN_SCREENSHOTS_DIR);
  QApplication::processEvents();
  window.grab().save(QString(KGEN_SCREENSHOTS_DIR) + "/" + name + ".png");
}

}  // namespace support
