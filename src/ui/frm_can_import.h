#pragma once

#include <QDialog>
#include <QLabel>
#include <set>

#include "dbc/proposals.h"
#include "ui/sheet.h"

namespace ui {

/// What a CAN database offers, to choose from. The project is handed back with the chosen items.
class frmCanImport final : public QDialog {
  Q_OBJECT
 public:
  frmCanImport(dbc::Database database, const model::Project& project, QWidget* parent);
  /// Chooses all signals that can be had as they are.
  void chooseReady();
  void accept() override;

 Q_SIGNALS:
  void chosen(const model::Project& project);

 private:
  std::vector<SheetColumn> columns();
  QWidget* faults();
  QWidget* buttons();
  Complaint choose(std::size_t row, std::string_view cell);
  void showCount();

  dbc::Database database_;
  model::Project project_;
  dbc::Proposals proposals_;
  std::set<std::size_t> chosen_;  // places in the list of proposals
  SheetModel sheet_;
  QLabel* count_;
};

}  // namespace ui
