#include "ui/typing.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <algorithm>

namespace ui {
namespace {

class EscapeFilter final : public QObject {
 public:
  EscapeFilter(QLineEdit& line, QWidget& box) : QObject(&box), line_(line) {
    box.installEventFilter(this);
  }

  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::FocusIn) before_ = line_.text();
    if (event->type() != QEvent::KeyPress) return false;
    const bool escape = static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape;
    if (!escape || line_.text() == before_) return false;
    line_.selectAll();
    line_.insert(before_);  // as if typed
    return true;
  }

 private:
  QLineEdit& line_;
  QString before_;
};

}  // namespace

QValidator::State TypingRule::validate(QString& text, int& cursor) const {
  const QString taken = rule_(text);
  if (taken == text) return Acceptable;
  const auto swallowed = static_cast<int>(text.size() - taken.size());
  cursor = std::clamp(cursor - swallowed, 0, static_cast<int>(taken.size()));
  text = taken;
  return Acceptable;
}

EmptyKeeper::EmptyKeeper(QWidget& box, std::function<std::string&()> place)
    : QObject(&box), place_(std::move(place)) {
  box.installEventFilter(this);
}

void EmptyKeeper::restore() {
  if (!place_().empty() || had_.empty()) return;
  place_() = had_;
  Q_EMIT restored();
}

bool EmptyKeeper::eventFilter(QObject*, QEvent* event) {
  if (event->type() == QEvent::FocusIn) remember();
  if (event->type() == QEvent::FocusOut) restore();
  return false;
}

void restoreByEscape(QWidget& box) {
  auto* line = qobject_cast<QLineEdit*>(&box);
  if (line == nullptr) line = box.findChild<QLineEdit*>();
  if (line != nullptr) new EscapeFilter(*line, box);
}

}  // namespace ui
