#pragma once

#include <QComboBox>
#include <QTabBar>
#include <functional>
#include <set>
#include <string>
#include <utility>

#include "ui/setup_window.h"
#include "ui/sheet.h"

namespace support {

/// A person with a window of a project before the eyes and the same window of another project at
/// hand, who works on that one by keys and mouse until both show the same. Whatever a window does
/// not show, or does not take, stays different.
class Mirror {
 public:
  /// The controls of two windows that have neither pages nor a Done button.
  void copyControls(QWidget& mine, QWidget& shown);
  /// A setup window, with its rows and tabs and all windows behind its buttons; ends with Done.
  void copyWindow(ui::SetupWindow& mine, ui::SetupWindow& shown);

  /// What is different still, and why windows were not done with.
  [[nodiscard]] const std::set<std::string>& left() const { return left_; }
  void forgetLeft() { left_.clear(); }

 private:
  using Act = std::function<void()>;
  void settle(ui::SetupWindow& mine, ui::SetupWindow& shown);
  void forPages(ui::SetupWindow& mine, ui::SetupWindow& shown, const Act& act);
  void forRows(ui::SheetView& mine, ui::SheetView& shown, const Act& act);
  void copyPage(ui::SetupWindow& mine, ui::SetupWindow& shown);
  void copyControl(QWidget& mine, const QWidget& shown);
  void forEntries(QComboBox& mine, QComboBox& shown, const Act& act);
  void forTabs(QTabBar& mine, QTabBar& shown, const Act& act);
  void copySheet(ui::SheetView& mine, const ui::SheetView& shown);
  void typeRow(ui::SheetView& mine, const ui::SheetView& shown);
  void addRows(ui::SetupWindow& mine, ui::SetupWindow& shown);
  void copyInnerWindows(ui::SetupWindow& mine, ui::SetupWindow& shown);
  void finish(ui::SetupWindow& mine, ui::SetupWindow& shown, bool edited);
  void note(const QWidget& control, const QString& is, const QString& wanted);

  int edits_ = 0;
  std::set<std::string> left_;
  QString page_;        // rows that are chosen
  QStringList typed_;   // sheets of the window in which a row was typed
  QStringList opened_;  // windows behind buttons that are the same on every page
};

}  // namespace support
