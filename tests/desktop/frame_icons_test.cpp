#include "desktop/frame_icons.h"

#include <gtest/gtest.h>

#include <QImage>

namespace {

int drawnPixels(const QIcon& icon) {
  const QImage image = icon.pixmap(16, 16).toImage();
  int drawn = 0;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x) drawn += qAlpha(image.pixel(x, y)) > 127 ? 1 : 0;
  return drawn;
}

TEST(FrameIcons, AreThereAndTheSystemHasTheOthers) {
  const desktop::FrameIcons style;
  for (const QStyle::StandardPixmap kind :
       {QStyle::SP_TitleBarCloseButton, QStyle::SP_TitleBarNormalButton,
        QStyle::SP_ToolBarHorizontalExtensionButton, QStyle::SP_MessageBoxWarning})
    EXPECT_GT(drawnPixels(style.standardIcon(kind, nullptr, nullptr)), 10) << kind;
}

}  // namespace
