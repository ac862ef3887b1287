#pragma once

#include <QDialog>
#include <QTextBrowser>

namespace ui {

/// Shows the pages of the user guide, one a window. They are Markdown.
class HelpViewer final : public QDialog {
  Q_OBJECT
 public:
  explicit HelpViewer(QWidget* parent);
  /// "frmVoltSetup", "index"; a page that does not exist shows the index.
  void showPage(const QString& page);

 private:
  void find(const QString& words, bool fromStart);
  QWidget* findRow();
  QWidget* buttonRow();
  QTextBrowser* browser_;
};

}  // namespace ui
