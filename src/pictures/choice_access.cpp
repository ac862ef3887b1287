#include "pictures/choice_access.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <map>

#include "pictures/choice_picture.h"

namespace pictures {
namespace {

/// One part as an entry of the list.
class PartAccess final : public QAccessibleInterface, public QAccessibleActionInterface {
 public:
  PartAccess(ChoicePicture* picture, int part) : picture_(picture), part_(part) {}

  bool isValid() const override { return picture_ != nullptr && part_ < picture_->parts().size(); }
  QObject* object() const override { return nullptr; }
  QAccessibleInterface* parent() const override {
    return QAccessible::queryAccessibleInterface(picture_);
  }
  QAccessibleInterface* child(int) const override { return nullptr; }
  QAccessibleInterface* childAt(int, int) const override { return nullptr; }
  int childCount() const override { return 0; }
  int indexOfChild(const QAccessibleInterface*) const override { return -1; }
  QAccessible::Role role() const override { return QAccessible::ListItem; }
  void setText(QAccessible::Text, const QString&) override {}

  QString text(QAccessible::Text kind) const override {
    return kind == QAccessible::Name && isValid() ? picture_->parts()[part_].help : QString();
  }

  QRect rect() const override {
    if (!isValid()) return {};
    const QRect area = picture_->parts()[part_].area.toAlignedRect();
    return {picture_->mapToGlobal(area.topLeft()), area.size()};
  }

  QAccessible::State state() const override {
    QAccessible::State state;
    state.focusable = state.selectable = true;
    state.invalid = !isValid();
    state.focused = isValid() && picture_->hasFocus() && picture_->currentPart() == part_;
    return state;
  }

  void* interface_cast(QAccessible::InterfaceType type) override {
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                : nullptr;
  }
  QStringList actionNames() const override { return {pressAction(), setFocusAction()}; }
  QStringList keyBindingsForAction(const QString&) const override { return {}; }
  void doAction(const QString& action) override {
    if (!isValid()) return;
    picture_->setCurrentPart(part_);
    if (action == pressAction()) picture_->choose(part_);
    if (action == setFocusAction()) picture_->setFocus();
  }

 private:
  ChoicePicture* picture_;  // outlives its interfaces, which its ListAccess removes
  int part_;
};

/// The picture as a list of its parts.
class ListAccess final : public QAccessibleWidget {
 public:
  explicit ListAccess(ChoicePicture* picture)
      : QAccessibleWidget(picture, QAccessible::List), picture_(picture) {}
  ListAccess(const ListAccess&) = delete;
  ListAccess& operator=(const ListAccess&) = delete;
  ~ListAccess() override {
    for (const auto& [part, entry] : entries_) QAccessible::deleteAccessibleInterface(entry.id);
  }

  int childCount() const override { return static_cast<int>(picture_->parts().size()); }

  QAccessibleInterface* child(int part) const override {
    if (part < 0 || part >= childCount()) return nullptr;
    if (const auto known = entries_.find(part); known != entries_.end())
      return known->second.access;
    auto* access = new PartAccess(picture_, part);
    // Registering gives it away to Qt.
    entries_[part] = {access, QAccessible::registerAccessibleInterface(access)};
    return access;
  }

  int indexOfChild(const QAccessibleInterface* access) const override {
    for (const auto& [part, entry] : entries_)
      if (entry.access == access) return part;
    return -1;
  }

  QAccessibleInterface* childAt(int x, int y) const override {
    for (int part = childCount() - 1; part >= 0; --part)
      if (child(part)->rect().contains(x, y)) return child(part);
    return nullptr;
  }

  QAccessibleInterface* focusChild() const override {
    return picture_->hasFocus() ? child(picture_->currentPart()) : nullptr;
  }

 private:
  struct Entry {
    PartAccess* access;
    QAccessible::Id id;
  };
  ChoicePicture* picture_;
  mutable std::map<int, Entry> entries_;  // by part, as far as asked for
};

QAccessibleInterface* accessOf(const QString& className, QObject* object) {
  auto* picture = qobject_cast<ChoicePicture*>(object);
  return picture != nullptr && className == "pictures::ChoicePicture" ? new ListAccess(picture)
                                                                      : nullptr;
}

}  // namespace

void installChoiceAccess() { QAccessible::installFactory(accessOf); }

}  // namespace pictures
