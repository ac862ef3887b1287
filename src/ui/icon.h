#pragma once

#include <QIcon>

namespace ui {

/// The program's own icon of that name ("undo"). It is read when it is first drawn, sharp at every
/// size; a name without a file gives an empty picture.
QIcon icon(const QString& name);

}  // namespace ui
