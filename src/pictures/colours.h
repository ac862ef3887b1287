#pragma once

#include <QColor>
#include <QPalette>

/// The colours of all pictures, for light and dark palettes. Shapes keep a contrast of 3:1 to the
/// window behind them, texts one of 4.5:1.
namespace pictures {

constexpr int categories = 10;

/// Light text on a dark window.
bool isDark(const QPalette& palette);
/// Fill of a category, from 0; they repeat after `categories`. A negative one is that of empty
/// places.
QColor categoryColour(int category, const QPalette& palette);
/// Black or white, whatever reads better on the fill.
QColor inkOn(const QColor& fill);
/// What is wrong: beyond a limit, overlapping.
QColor alarmColour(const QPalette& palette);
/// Ink of axis texts and captions, a little softer than the text.
QColor softInk(const QPalette& palette);
/// Frames and axis lines.
QColor frameColour(const QPalette& palette);
/// Lines that only guide the eye.
QColor gridColour(const QPalette& palette);
/// `share` of the second colour in the first, 0 to 1.
QColor mixed(const QColor& first, const QColor& second, double share);
/// Contrast of two colours, 1 to 21.
double contrast(const QColor& first, const QColor& second);

}  // namespace pictures
