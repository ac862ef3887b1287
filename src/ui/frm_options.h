#pragma once

#include <QDialog>
#include <QLabel>
#include <QTabWidget>
#include <array>

#include "ui/form.h"
#include "ui/window_ports.h"

namespace ui {

/// The user's options: folders, colours, defaults of new projects, warnings, variables in lists.
/// It edits a copy of the settings, which only Done gives back.
class frmOptions final : public QDialog {
  Q_OBJECT
 public:
  frmOptions(const WindowPorts& ports, QWidget* parent);
  ~frmOptions() override;

  [[nodiscard]] const control::Settings& working() const { return working_; }
  [[nodiscard]] QString hint() const { return hint_->text(); }
  void accept() override;
  void done(int result) override;

 private:
  static constexpr std::size_t warnings = 6, variableTypes = 7;

  Form& addPage(const QString& caption, std::string_view words);
  void addFolders();
  void addColours();
  void addColour(Form& form, const FieldText& text, std::string control::SelectedColors::*place);
  void addDefaults();
  void addWarnings();
  void addVariables();
  QWidget* bottom();
  void refresh();
  void tell();
  void readBits();
  void storeBits();
  void restorePlace();
  void rememberPlace(control::Settings& settings) const;
  void chooseFolder();
  void choosePreCompiler();
  void keyPressEvent(QKeyEvent* event) override;

  WindowPorts ports_;
  control::Settings working_;
  // Bits of the settings as they are shown.
  std::array<bool, warnings> warns_ = {};
  std::array<bool, variableTypes> lists_ = {};
  QTabWidget* pages_;
  QLabel* hint_;
  std::vector<Form*> forms_;
};

}  // namespace ui
