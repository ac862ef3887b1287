#pragma once

#include <QPlainTextEdit>

namespace ui {

/// Puts another text into a box that shows `before`, by the lines in which they differ: what is
/// selected and where the box is scrolled to stays, and colours are made for new lines only.
void showText(QPlainTextEdit& box, const QString& before, const QString& after);

}  // namespace ui
