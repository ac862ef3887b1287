#pragma once

#include <QString>
#include <QWidget>

#include "control/session.h"
#include "ports/error_reporter.h"
#include "ports/message_service.h"

namespace ui {

/// What windows ask of the control that opened them.
class Desk {
 public:
  virtual ~Desk() = default;
  virtual void showHelp(const QString& page) = 0;
  virtual void printWindow(QWidget& window) = 0;
};

/// Everything that a window works with. The session is the only way to the project.
struct WindowPorts {
  control::Session& session;
  ports::MessageService& messages;
  ports::ErrorReporter& errors;
  Desk& desk;
};

}  // namespace ui
