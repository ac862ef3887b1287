#include "ui/icon.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPixmapCache>
#include <QStyle>
#include <QStyleOption>
#include <QSvgRenderer>

namespace ui {
namespace {

/// Draws from the file. Qt's own engine reads each file once to know it and again to draw it, which
/// a window with many icons feels when it starts.
class Engine final : public QIconEngine {
 public:
  explicit Engine(QString name) : name_(std::move(name)) {}

  void paint(QPainter* painter, const QRect& place, QIcon::Mode mode, QIcon::State state) override {
    const qreal ratio = painter->device()->devicePixelRatioF();
    painter->drawPixmap(place, pixmap((QSizeF(place.size()) * ratio).toSize(), mode, state));
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override {
    const QString key = QString("kgen %1 %2 %3 %4 %5")
                            .arg(name_)
                            .arg(size.width())
                            .arg(size.height())
                            .arg(mode)
                            .arg(QApplication::palette().cacheKey());
    QPixmap picture;
    if (QPixmapCache::find(key, &picture)) return picture;
    picture = drawn(size);
    if (mode != QIcon::Normal) {
      QStyleOption option;
      option.palette = QApplication::palette();
      picture = QApplication::style()->generatedIconPixmap(mode, picture, &option);
    }
    QPixmapCache::insert(key, picture);
    return picture;
  }

  [[nodiscard]] QIconEngine* clone() const override { return new Engine(name_); }

 private:
  [[nodiscard]] QPixmap drawn(const QSize& size) const {
    QPixmap picture(size);
    picture.fill(Qt::transparent);
    QSvgRenderer file(QString(":/kgen/icons/%1.svg").arg(name_));
    file.setAspectRatioMode(Qt::KeepAspectRatio);
    QPainter painter(&picture);
    file.render(&painter);
    return picture;
  }

  QString name_;
};

}  // namespace

QIcon icon(const QString& name) { return QIcon(new Engine(name)); }

}  // namespace ui
