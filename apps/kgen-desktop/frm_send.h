#pragma once

#include <QDialog>
#include <QLabel>

#include "desktop/desktop_settings.h"
#include "ui/form.h"

namespace desktop {

/// Asks where programs are sent.
class frmSend final : public QDialog {
  Q_OBJECT
 public:
  frmSend(SendTarget target, QWidget* parent);
  [[nodiscard]] const SendTarget& target() const { return target_; }
  void accept() override;

 private:
  QWidget* bottom();
  void addFields();
  void chooseFolder();
  [[nodiscard]] QString complaint() const;

  SendTarget target_;
  std::string folder_, command_;  // as the form edits them
  ui::Form* form_;
  QLabel* hint_;
};

}  // namespace desktop
