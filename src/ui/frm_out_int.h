#pragma once

#include <QTabBar>

#include "model/stored_outputs.h"
#include "ui/setup_window.h"
#include "ui/typing.h"

namespace ui {

/// The eight output tables: when they keep a record, where, and under what conditions.
class frmOutInt final : public SetupWindow {
  Q_OBJECT
 public:
  frmOutInt(const WindowPorts& ports, QWidget* parent);

  void chooseTable(std::size_t number);  // from 1
  [[nodiscard]] std::size_t chosenTable() const { return number_; }

 protected:
  bool mayBeDone() override;
  bool isRidOfStatistics();
  [[nodiscard]] std::vector<std::string> previewNames() const override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  [[nodiscard]] std::optional<ports::Message> questionAboutEdits() const override;

 private:
  [[nodiscard]] model::OutputTable& table() { return working_.tables[number_ - 1]; }
  [[nodiscard]] const model::OutputTable& table() const { return working_.tables[number_ - 1]; }

  QTabBar* tabs();
  void addTable(Form& form);
  void addName(Form& form);
  EmptyKeeper* keepWhenEmpty(const Field& field, std::string model::OutputTable::*member);
  void addInterval(Form& form);
  void addIntervalBox(Form& form);
  void addStorage(Form& form);
  void addPlace(Form& form);
  void addFlags(Form& form);
  void addConditions(Form& form);
  void addAllTables(Form& form);
  QWidget* storedList();
  std::vector<SheetColumn> storedColumns();

  void showTabs();
  void findStored();
  void proposeName();
  void clampInterval();
  void tellOfFlag(int flag);
  void cmdTableTime_Click();
  [[nodiscard]] std::string intervalText() const;
  [[nodiscard]] std::string recordText() const;

  /// A line of the list of what the table stores.
  struct Stored {
    std::string source, what;
    std::size_t values = 0, bytes = 0;
  };
  std::size_t number_ = 1;
  std::vector<Stored> stored_;
  SheetModel list_;
  QTabBar* tabs_ = nullptr;
  QWidget* intervalBox_ = nullptr;
  EmptyKeeper* nameKeeper_ = nullptr;
  EmptyKeeper* intervalKeeper_ = nullptr;
};

}  // namespace ui
