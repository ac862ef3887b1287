#include "pictures/colours.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace pictures {
namespace {

using Fills = std::array<QRgb, categories>;
// Neighbours in number lie far apart in hue and also differ in brightness.
constexpr Fills fillsOnLight = {0xff136fd0, 0xffb45d04, 0xff07843c, 0xff7e45b3, 0xff897306,
                                0xff027f85, 0xffb93434, 0xff496104, 0xffb9458e, 0xff055673};
constexpr Fills fillsOnDark = {0xff4d94ed, 0xfff08d40, 0xff57c274, 0xffa878dc, 0xffe2c23b,
                               0xff08cad2, 0xffdb645e, 0xff84a830, 0xffe97ebd, 0xff0d91be};

double linear(double channel) {
  return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& colour) {
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
         0.0722 * linear(colour.blueF());
}

QColor textShare(const QPalette& palette, double share) {
  return mixed(palette.color(QPalette::Window), palette.color(QPalette::WindowText), share);
}

}  // namespace

bool isDark(const QPalette& palette) {
  return luminance(palette.color(QPalette::Window)) <
         luminance(palette.color(QPalette::WindowText));
}

QColor categoryColour(int category, const QPalette& palette) {
  if (category < 0) return gridColour(palette);
  const Fills& fills = isDark(palette) ? fillsOnDark : fillsOnLight;
  return fills[static_cast<std::size_t>(category % categories)];
}

QColor inkOn(const QColor& fill) {
  return contrast(fill, Qt::black) > contrast(fill, Qt::white) ? Qt::black : Qt::white;
}

QColor alarmColour(const QPalette& palette) {
  return isDark(palette) ? QColor(0xff, 0x78, 0x78) : QColor(0xc0, 0x18, 0x18);
}

QColor softInk(const QPalette& palette) { return textShare(palette, 0.78); }
QColor frameColour(const QPalette& palette) { return textShare(palette, 0.55); }
QColor gridColour(const QPalette& palette) { return textShare(palette, 0.18); }

QColor mixed(const QColor& first, const QColor& second, double share) {
  const auto part = static_cast<float>(std::clamp(share, 0.0, 1.0));
  const auto mix = [part](float a, float b) { return a + (b - a) * part; };
  return QColor::fromRgbF(mix(first.redF(), second.redF()), mix(first.greenF(), second.greenF()),
                          mix(first.blueF(), second.blueF()));
}

double contrast(const QColor& first, const QColor& second) {
  const double one = luminance(first), other = luminance(second);
  return (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05);
}

}  // namespace pictures
