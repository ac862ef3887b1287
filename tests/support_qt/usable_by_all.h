#pragma once

#include <gtest/gtest.h>

#include "support_qt/keyboard.h"
#include "support_qt/silent_controls.h"

namespace support {

/// Nobody is left out of an active window: names and help for who can't see it, the keyboard for
/// who has no mouse.
inline void expectUsableByAll(QWidget& window) {
  using Names = std::set<QString>;
  EXPECT_EQ(silentControls(window), Names());
  EXPECT_EQ(closedWithoutReason(window), Names());
  EXPECT_EQ(sharedMnemonics(window), Names());
  EXPECT_EQ(unreachedByTab(window), Names());
}

}  // namespace support
