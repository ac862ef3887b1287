#pragma once

#include <QProxyStyle>

namespace desktop {

/// The style with the program's own pictures on the frames of its parts: they are seen on dark
/// ground too, and none of the system's readers of pictures has to be loaded before the window is
/// there.
class FrameIcons final : public QProxyStyle {
  Q_OBJECT
 public:
  [[nodiscard]] QIcon standardIcon(StandardPixmap kind, const QStyleOption* option,
                                   const QWidget* widget) const override;
};

}  // namespace desktop
