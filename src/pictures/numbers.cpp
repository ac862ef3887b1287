#include "pictures/numbers.h"

#include <QLocale>
#include <algorithm>
#include <cmath>

namespace pictures {
namespace {

QLocale grouping() {
  QLocale locale = QLocale::c();
  locale.setNumberOptions(QLocale::DefaultNumberOptions);
  return locale;
}

}  // namespace

QString numberText(double number) {
  if (std::isfinite(number) && std::abs(number) < 1e12 && number == std::floor(number))
    return grouping().toString(number + 0.0, 'f', 0);  // + 0.0: no "-0"
  return QString::number(number, 'g', 6);
}

double bounded(double number) {
  constexpr double most = 1e300;
  return std::isfinite(number) ? std::clamp(number, -most, most) : 0.0;
}

}  // namespace pictures
