#pragma once

#include <QScreen>

namespace ui {

/// The largest window that is on a screen with its frame.
inline QSize roomOn(const QScreen& screen) {
  constexpr QSize frame(16, 48);  // of the window system, and a rim
  return screen.availableSize() - frame;
}

}  // namespace ui
