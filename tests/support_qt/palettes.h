#pragma once

#include <QPalette>

namespace support {

inline QPalette darkPalette() {
  QPalette dark;
  dark.setColor(QPalette::Window, QColor(45, 45, 48));
  dark.setColor(QPalette::WindowText, QColor(230, 230, 230));
  dark.setColor(QPalette::Base, QColor(30, 30, 32));
  dark.setColor(QPalette::AlternateBase, QColor(40, 40, 43));
  dark.setColor(QPalette::Text, QColor(230, 230, 230));
  dark.setColor(QPalette::Button, QColor(60, 60, 64));
  dark.setColor(QPalette::ButtonText, QColor(230, 230, 230));
  dark.setColor(QPalette::Link, QColor(110, 170, 255));
  dark.setColor(QPalette::Highlight, QColor(50, 100, 170));
  dark.setColor(QPalette::HighlightedText, Qt::white);
  dark.setColor(QPalette::ToolTipBase, QColor(60, 60, 64));
  dark.setColor(QPalette::ToolTipText, QColor(230, 230, 230));
  dark.setColor(QPalette::PlaceholderText, QColor(150, 150, 150));
  dark.setColor(QPalette::Disabled, QPalette::Text, QColor(140, 140, 140));
  dark.setColor(QPalette::Disabled, QPalette::WindowText, QColor(140, 140, 140));
  dark.setColor(QPalette::Disabled, QPalette::ButtonText, QColor(140, 140, 140));
  return dark;
}

}  // namespace support
