#pragma once

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QToolButton>
#include <QWidget>
#include <array>

#include "control/panel_texts.h"
#include "control/session.h"

namespace ui {

class SummaryHeads;

/// The face of the control: buttons, operator and ID, summary.
class MainPanel final : public QWidget {
  Q_OBJECT
 public:
  explicit MainPanel(control::Session& session, QWidget* parent);
  /// Everything anew from the session.
  void refresh();

 Q_SIGNALS:
  void buttonPressed(int index);
  void printPressed();
  void helpPressed();
  void quitPressed();

 private:
  QWidget* buttonColumn();
  QToolButton* panelButton(std::size_t index);
  QLineEdit* identityBox(std::string_view name, std::string_view help,
                         std::string model::LoggerConfiguration::*place);
  QWidget* summaryColumn();
  QWidget* bottomRow();
  void enterIdentity(const QLineEdit& box, std::string model::LoggerConfiguration::*place);
  void showColours();

  control::Session& session_;
  std::array<QToolButton*, control::panel::buttons.size()> buttons_ = {};
  QLineEdit* operator_ = nullptr;
  QLineEdit* id_ = nullptr;
  QPlainTextEdit* summary_ = nullptr;
  QString shownSummary_;
  SummaryHeads* heads_ = nullptr;
  QWidget* quit_ = nullptr;
};

}  // namespace ui
