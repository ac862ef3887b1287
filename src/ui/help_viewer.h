#pragma once

#include <QDialog>
#include <QTextBrowser>

namespace ui {

/// Shows the pages of the user guide, one a window. They are Markdown. It can be read beside the
/// window that asked for it, and stays when that one is closed.
class HelpViewer final : public QDialog {
  Q_OBJECT
 public:
  HelpViewer();
  /// "frmVoltSetup", "index"; a page that does not exist shows the index. `asking` is somewhere in
  /// the window that the help belongs to while none waits for an answer.
  void showPage(const QString& page, QWidget* asking);

 private:
  void joinWindow(QWidget* asking);
  void find(const QString& words, bool fromStart);
  QWidget* findRow();
  QWidget* buttonRow();
  QTextBrowser* browser_;
};

}  // namespace ui
