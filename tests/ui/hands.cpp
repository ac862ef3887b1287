#include "hands.h"

#include <QApplication>
#include <QClipboard>
#include <QListWidget>
#include <QMenu>
#include <QTest>
#include <QTimer>
#include <stdexcept>

namespace support {
namespace {

/// In a window that is not active nothing has the focus.
void focus(QWidget& widget) {
  QWidget* window = widget.window();
  if (QApplication::activeWindow() != window) {
    window->activateWindow();
    if (!QTest::qWaitFor([window] { return QApplication::activeWindow() == window; }))
      throw std::runtime_error("a window stays inactive");
  }
  widget.setFocus();
}

void replaceText(QWidget& box, const QString& text) {
  QTest::keyClick(&box, Qt::Key_A, Qt::ControlModifier);
  if (text.isEmpty()) QTest::keyClick(&box, Qt::Key_Delete);
  QTest::keyClicks(&box, text);
}

/// The list of a cell whose offers can be combined.
void tickList(QListWidget& list, const QStringList& wanted) {
  QTest::keyClick(&list, Qt::Key_Home);
  for (int row = 0; row < list.count(); ++row) {
    const QListWidgetItem& item = *list.item(row);
    const bool ticked = item.checkState() == Qt::Checked;
    if (ticked != wanted.contains(item.text())) QTest::keyClick(&list, Qt::Key_Space);
    QTest::keyClick(&list, Qt::Key_Down);
  }
}

void edit(QWidget& editor, const QString& text) {
  auto* box = qobject_cast<QComboBox*>(&editor);
  if (auto* list = qobject_cast<QListWidget*>(&editor))
    tickList(*list, text.split('+'));
  else if (box != nullptr && !box->isEditable())
    chooseEntry(*box, text);
  else
    replaceText(editor, text);
  QTest::keyClick(&editor, Qt::Key_Return);
  QApplication::processEvents();  // the cell is stored then
}

}  // namespace

void typeText(QWidget& box, const QString& text) {
  focus(box);
  replaceText(box, text);
  if (box.property("refused").toBool()) QTest::keyClick(&box, Qt::Key_Escape);
  QTest::keyClick(&box, Qt::Key_Tab);
}

void chooseEntry(QComboBox& box, const QString& entry) {
  const int wanted = box.findText(entry, Qt::MatchExactly);
  if (wanted < 0) return;
  focus(box);
  QTest::keyClick(&box, Qt::Key_F4);
  QWidget* list = box.view();
  QTest::keyClick(list, Qt::Key_Home);
  for (int row = 0; row < wanted; ++row) QTest::keyClick(list, Qt::Key_Down);
  QTest::keyClick(list, Qt::Key_Return);
}

void press(QAbstractButton& button) {
  focus(button);
  QTest::keyClick(&button, Qt::Key_Space);
}

void chooseTab(QTabBar& tabs, int index) {
  QTest::mouseClick(&tabs, Qt::LeftButton, {}, tabs.tabRect(index).center());
}

void tickMask(ui::MaskBox& box, const QString& text) {
  QMenu* menu = box.menu();
  const QStringList wanted = text.split('+');
  for (QAction* action : menu->actions()) {
    if (action->isChecked() == wanted.contains(action->text())) continue;
    focus(box);  // first: while the window is waited for, the click would come too early
    QTimer::singleShot(0, menu, [menu, action] {
      QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
      menu->close();
    });
    press(box);
  }
}

void clickCell(ui::SheetView& sheet, int row, int column) {
  focus(sheet);
  const QModelIndex cell = sheet.model()->index(row, column);
  sheet.scrollTo(cell);
  QTest::mouseClick(sheet.viewport(), Qt::LeftButton, {}, sheet.visualRect(cell).center());
}

void enterCell(ui::SheetView& sheet, int row, int column, const QString& text) {
  clickCell(sheet, row, column);
  if (text.isEmpty()) return QTest::keyClick(&sheet, Qt::Key_Delete);
  QTest::keyClick(&sheet, Qt::Key_F2);
  QWidget* editor = QApplication::focusWidget();
  if (!sheet.viewport()->isAncestorOf(editor)) throw std::runtime_error("a cell does not open");
  edit(*editor, text);
}

void pasteAtCell(ui::SheetView& sheet, int row, int column, const QString& text) {
  QApplication::clipboard()->setText(text);
  clickCell(sheet, row, column);
  QTest::keyClick(&sheet, Qt::Key_V, Qt::ControlModifier);
}

}  // namespace support
