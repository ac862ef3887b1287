#pragma once

#include <QAbstractButton>
#include <QComboBox>
#include <QTabBar>

#include "ui/mask_box.h"
#include "ui/sheet.h"

/// What a person does with keys and mouse.
namespace support {

/// Types a text in place of what stands in a box. A text that is refused is taken back by Escape.
void typeText(QWidget& box, const QString& text);
/// Opens the list and goes to the entry by arrows; a list without it stays as it is.
void chooseEntry(QComboBox& box, const QString& entry);
/// Space, on a button, a box to tick or a choice.
void press(QAbstractButton& button);
void chooseTab(QTabBar& tabs, int index);
/// Opens the list and clicks each entry whose tick is another one.
void tickMask(ui::MaskBox& box, const QString& text);
void clickCell(ui::SheetView& sheet, int row, int column);
/// Edits a cell in its place.
void enterCell(ui::SheetView& sheet, int row, int column, const QString& text);
/// Pastes tab-separated text from a cell on.
void pasteAtCell(ui::SheetView& sheet, int row, int column, const QString& text);

}  // namespace support
