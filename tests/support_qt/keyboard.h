#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QTabBar>
#include <QTest>
#include <map>
#include <set>

/// What a window does for people who use the keyboard alone.
namespace support {

inline QString nameOf(const QWidget& widget) {
  return QString("%1 '%2'").arg(widget.metaObject()->className(), widget.accessibleName());
}

/// Controls that Tab has to reach. Of radio buttons it reaches the one that is chosen.
inline bool isTabStop(const QWidget& widget) {
  const auto* button = qobject_cast<const QAbstractButton*>(&widget);
  const bool otherChoice = button != nullptr && button->autoExclusive() && !button->isChecked();
  return widget.isVisible() && widget.isEnabled() && (widget.focusPolicy() & Qt::TabFocus) != 0 &&
         widget.focusProxy() == nullptr && !otherChoice && !widget.objectName().startsWith("qt_");
}

/// Controls that Tab does not come to, on its way around the window.
inline std::set<QString> unreachedByTab(QWidget& window) {
  std::set<QWidget*> reached;
  while (QWidget* focused = QApplication::focusWidget()) {
    if (!reached.insert(focused).second) break;
    QTest::keyClick(focused, Qt::Key_Tab);
  }
  std::set<QString> missed;
  for (QWidget* each : window.findChildren<QWidget*>())
    if (each->window() == &window && isTabStop(*each) && !reached.contains(each))
      missed.insert(nameOf(*each));
  return missed;
}

/// Controls that are closed, and no label beside them says why.
inline std::set<QString> closedWithoutReason(QWidget& window) {
  QStringList shown;
  for (const QLabel* label : window.findChildren<QLabel*>())
    if (label->isVisible() && !label->text().isEmpty()) shown += label->text();
  std::set<QString> silent;
  for (QWidget* each : window.findChildren<QWidget*>()) {
    if (!each->isVisible() || each->isEnabledTo(each->parentWidget())) continue;
    const QString reason = each->toolTip().section('\n', -1);
    if (reason.isEmpty() || !shown.contains(reason)) silent.insert(nameOf(*each));
  }
  return silent;
}

/// Letters that press a button, and lead somewhere else as well: then they press nothing.
inline std::set<QString> sharedMnemonics(QWidget& window) {
  struct Use {
    QStringList captions;
    bool presses = false;
  };
  std::map<QString, Use> uses;
  const auto note = [&](const QString& caption, bool presses) {
    const QString key = QKeySequence::mnemonic(caption).toString();
    if (key.isEmpty()) return;
    uses[key].captions += caption;
    uses[key].presses = uses[key].presses || presses;
  };
  for (const QWidget* each : window.findChildren<QWidget*>()) {
    if (!each->isVisible() || each->window() != &window) continue;
    if (const auto* button = qobject_cast<const QAbstractButton*>(each))
      note(button->text(), !button->isCheckable());
    if (const auto* tabs = qobject_cast<const QTabBar*>(each))
      for (int i = 0; i < tabs->count(); ++i) note(tabs->tabText(i), false);
    const auto* label = qobject_cast<const QLabel*>(each);
    if (label != nullptr && label->buddy() != nullptr) note(label->text(), false);
  }
  std::set<QString> shared;
  for (const auto& [key, use] : uses)
    if (use.presses && use.captions.size() > 1) shared.insert(use.captions.join(" / "));
  return shared;
}

}  // namespace support
