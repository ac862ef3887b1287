#include "ui/texts.h"

namespace ui {

QString withoutMnemonic(QString caption) { return caption.remove('&'); }

}  // namespace ui
