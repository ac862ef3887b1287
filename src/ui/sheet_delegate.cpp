#include "ui/sheet_delegate.h"

#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QStatusTipEvent>
#include <algorithm>
#include <iterator>

#include "ui/sheet.h"

namespace ui {
namespace {

const SheetColumn& columnOf(const QModelIndex& index) {
  return static_cast<const SheetModel*>(index.model())->column(index.column());
}

/// A list to tick. Letters find an entry, which Enter or "+" then ticks, so that
/// "sample+average" can simply be typed.
class CheckList final : public QListWidget {
 public:
  using QListWidget::QListWidget;
  void tickFound() {
    if (found_ && currentItem() != nullptr) currentItem()->setCheckState(Qt::Checked);
    found_ = false;
  }

 protected:
  /// An arrow at the end of the list does not go on to the next cell, which would close the list.
  void keyPressEvent(QKeyEvent* event) override {
    QListWidget::keyPressEvent(event);
    constexpr int arrows[] = {Qt::Key_Up, Qt::Key_Down, Qt::Key_Home, Qt::Key_End};
    if (std::count(std::begin(arrows), std::end(arrows), event->key()) > 0) event->accept();
  }
  void keyboardSearch(const QString& letters) override {
    if (letters == "+") {
      tickFound();
      return QListWidget::keyboardSearch({});  // the next word begins
    }
    QListWidget::keyboardSearch(letters);
    found_ = letters != " ";
  }

 private:
  bool found_ = false;
};

QWidget* checkList(QWidget* parent, const SheetColumn& column, int row) {
  auto* list = new CheckList(parent);
  for (const std::string& offer : column.offers()) {
    auto* item = new QListWidgetItem(qstring(offer), list);
    item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
    item->setCheckState(Qt::Unchecked);
    if (!column.offerHelp) continue;
    const auto number = static_cast<std::size_t>(list->count() - 1);
    item->setToolTip(qstring(column.offerHelp(static_cast<std::size_t>(row), number)));
  }
  // The help line of the window tells of the offer, whether keys or the mouse chose it.
  QObject::connect(list, &QListWidget::currentItemChanged, list, [list](QListWidgetItem* chosen) {
    QStatusTipEvent tip(chosen != nullptr ? chosen->toolTip() : QString());
    QApplication::sendEvent(list, &tip);
  });
  return list;
}

QWidget* comboBox(QWidget* parent, const SheetColumn& column) {
  auto* box = new QComboBox(parent);
  box->setEditable(column.freeText);
  for (const std::string& offer : column.offers()) box->addItem(qstring(offer));
  return box;
}

void checkThose(QListWidget& list, const QStringList& chosen) {
  for (int i = 0; i < list.count(); ++i)
    list.item(i)->setCheckState(chosen.contains(list.item(i)->text()) ? Qt::Checked
                                                                      : Qt::Unchecked);
  list.setCurrentRow(0);
}

QString chosenOf(const QListWidget& list) {
  QStringList chosen;
  for (int i = 0; i < list.count(); ++i)
    if (list.item(i)->checkState() == Qt::Checked) chosen += list.item(i)->text();
  return chosen.join('+');
}

}  // namespace

QWidget* SheetDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                     const QModelIndex& index) const {
  const SheetColumn& column = columnOf(index);
  QWidget* editor = nullptr;
  if (!column.offers)
    editor = QStyledItemDelegate::createEditor(parent, option, index);
  else
    editor = column.combined ? checkList(parent, column, index.row()) : comboBox(parent, column);
  editor->setAccessibleName(column.title);
  editor->setAccessibleDescription(column.help);
  return editor;
}

void SheetDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
  const QString text = index.data(Qt::EditRole).toString();
  if (auto* list = qobject_cast<QListWidget*>(editor)) return checkThose(*list, text.split('+'));
  auto* box = qobject_cast<QComboBox*>(editor);
  if (box == nullptr) return QStyledItemDelegate::setEditorData(editor, index);
  if (box->findText(text) < 0 && !box->isEditable()) box->insertItem(0, text);
  box->setCurrentIndex(box->findText(text));
  if (box->isEditable()) box->setEditText(text);
}

void SheetDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                 const QModelIndex& index) const {
  if (auto* list = dynamic_cast<CheckList*>(editor)) {
    list->tickFound();
    model->setData(index, chosenOf(*list), Qt::EditRole);
  } else if (const auto* box = qobject_cast<QComboBox*>(editor)) {
    model->setData(index, box->currentText(), Qt::EditRole);
  } else {
    QStyledItemDelegate::setModelData(editor, model, index);
  }
}

void SheetDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                         const QModelIndex& index) const {
  QStyledItemDelegate::updateEditorGeometry(editor, option, index);
  auto* list = qobject_cast<QListWidget*>(editor);
  if (list == nullptr) return;
  const int height = list->sizeHintForRow(0) * list->count() + 6;
  const QRect room = list->parentWidget()->rect();
  QRect place(option.rect.topLeft(), QSize(std::max(option.rect.width(), 180), height));
  if (place.bottom() > room.bottom()) place.moveBottom(std::max(room.bottom(), height));
  if (place.right() > room.right()) place.moveRight(room.right());
  list->setGeometry(place);
}

}  // namespace ui
