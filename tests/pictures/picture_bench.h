#pragma once

#include <QApplication>
#include <QHelpEvent>
#include <QImage>
#include <QSet>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>

#include "pictures/picture.h"

namespace pictures_test {

inline QPalette palette(bool dark) {
  if (!dark) return QPalette(QColor(0xef, 0xef, 0xef));
  QPalette colours(QColor(0x35, 0x35, 0x35), QColor(0x35, 0x35, 0x35));
  colours.setColor(QPalette::WindowText, Qt::white);
  colours.setColor(QPalette::Base, QColor(0x2b, 0x2b, 0x2b));
  colours.setColor(QPalette::Text, Qt::white);
  return colours;
}

/// Gathers what Qt complains about while it lives.
class QtWarnings {
 public:
  QtWarnings() {
    texts.clear();
    before_ = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext&, const QString& text) { texts += text; });
  }
  QtWarnings(const QtWarnings&) = delete;
  QtWarnings& operator=(const QtWarnings&) = delete;
  ~QtWarnings() { qInstallMessageHandler(before_); }
  static inline QStringList texts;

 private:
  QtMessageHandler before_;
};

struct Shot {
  QSize size;
  bool dark = false;
  int scale = 1;
};

inline QImage imageOf(pictures::Picture& picture, const Shot& shot) {
  picture.setPalette(palette(shot.dark));
  picture.resize(shot.size);
  QImage image(shot.size * shot.scale, QImage::Format_RGB32);
  image.setDevicePixelRatio(shot.scale);
  image.fill(palette(shot.dark).color(QPalette::Window));
  picture.render(&image);
  return image;
}

inline QSet<QRgb> coloursIn(const QImage& image, const QRect& place) {
  QSet<QRgb> colours;
  for (int y = place.top(); y <= place.bottom(); ++y)
    for (int x = place.left(); x <= place.right(); ++x) colours.insert(image.pixel(x, y));
  return colours;
}

inline QSet<QRgb> coloursIn(const QImage& image) { return coloursIn(image, image.rect()); }

}  // namespace pictures_test
