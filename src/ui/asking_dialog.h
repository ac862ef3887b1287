#pragma once

#include <QDialog>
#include <optional>

#include "ui/window_ports.h"

namespace ui {

/// A window that forgets nothing silently: Escape and the frame's button ask when there are edits.
/// F1 opens its page of the help.
class AskingDialog : public QDialog {
  Q_OBJECT
 public:
  AskingDialog(const WindowPorts& ports, QWidget* parent);

 protected:
  /// What would be lost.
  [[nodiscard]] virtual bool edited() const = 0;
  /// Asked before edits are forgotten. Yes is accept(), No forgets them, Cancel stays; without a
  /// question they are forgotten.
  [[nodiscard]] virtual std::optional<ports::Message> questionAboutEdits() const;
  [[nodiscard]] virtual QString helpPage() const { return objectName(); }
  [[nodiscard]] ports::Answer answerAboutEdits();

  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

  WindowPorts ports_;
};

}  // namespace ui
