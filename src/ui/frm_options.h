#pragma once

#include <QLabel>
#include <QTabWidget>
#include <array>

#include "ui/asking_dialog.h"
#include "ui/form.h"

namespace ui {

/// The user's options: folders, colours, defaults of new projects, warnings, variables in lists.
/// It edits a copy of the settings, which only Done gives back.
class frmOptions final : public AskingDialog {
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
  [[nodiscard]] bool edited() const override;
  void tell();
  void readBits();
  void storeBits();
  void restorePlace();
  void rememberPlace(control::Settings& settings) const;
  void chooseFolder();
  void choosePreCompiler();

  control::Settings working_;
  control::Settings begun_;  // before the first edit
  // Bits of the settings as they are shown.
  std::array<bool, warnings> warns_ = {};
  std::array<bool, variableTypes> lists_ = {};
  QTabWidget* pages_;
  QLabel* hint_;
  std::vector<Form*> forms_;
};

}  // namespace ui
