#pragma once

#include <QString>

namespace pictures {

/// A number as people read it: "1,234,567", "12.5", "1.2e+20".
QString numberText(double number);
/// The number as far as pictures go: at most 1e300, so that differences still are numbers; 0 for
/// what is none (not a number, infinite).
double bounded(double number);

}  // namespace pictures
