#pragma once

#include <QWidget>

#include "ports/message_service.h"

namespace ui {

/// Message boxes over the active window.
class QtMessages final : public ports::MessageService {
 public:
  /// Boxes stand over the owner while no window is active.
  explicit QtMessages(QWidget* owner) : owner_(owner) {}
  ports::Answer show(const ports::Message& message) override;

 private:
  QWidget* owner_;
};

}  // namespace ui
