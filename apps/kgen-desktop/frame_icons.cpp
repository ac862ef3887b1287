#include "desktop/frame_icons.h"

#include "ui/icon.h"

namespace desktop {

QIcon FrameIcons::standardIcon(StandardPixmap kind, const QStyleOption* option,
                               const QWidget* widget) const {
  switch (kind) {
    case SP_TitleBarCloseButton:
      return ui::icon("close");
    case SP_TitleBarNormalButton:
      return ui::icon("detach");
    case SP_ToolBarHorizontalExtensionButton:
      return ui::icon("more");
    default:
      return QProxyStyle::standardIcon(kind, option, widget);
  }
}

}  // namespace desktop
