#include "ui/texts.h"

#include "text/numbers.h"

namespace ui {

QString withoutMnemonic(QString caption) { return caption.remove('&'); }

std::string microsText(double micros) { return text::formatted(micros, "#,##0.###"); }

}  // namespace ui
