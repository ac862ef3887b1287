#pragma once

#include <QTimer>
#include <array>

#include "model/table_space.h"
#include "model/time_units.h"
#include "pictures/stacked_bars.h"
#include "ui/setup_window.h"

namespace ui {

/// What the tables take of the memory, and how long it lasts.
class frmTableTimes final : public SetupWindow {
  Q_OBJECT
 public:
  explicit frmTableTimes(SetupWindow& owner);

  [[nodiscard]] const model::SpacePlan& plan() const { return plan_; }
  [[nodiscard]] SheetView& tables() { return *view_; }

 private:
  enum class Part { days, hours, minutes, seconds };
  void CalcTableRecs();
  /// The time that a table (from 0) holds.
  [[nodiscard]] model::Duration GetTime(std::size_t table) const;
  Complaint storeTime(std::size_t table, Part part, std::string_view text);
  Complaint storeRecords(std::size_t table, std::string_view text);
  Complaint storeAutoSize(std::size_t table, std::string_view text);

  QWidget* mediaFigures();
  QWidget* tableSheet();
  std::vector<SheetColumn> columns();
  SheetColumn timeColumn(Part part);
  void showMedia();
  void showBars();
  void flash();

  struct Figures {
    QLabel *free = nullptr, *burst = nullptr, *total = nullptr;
  };
  model::SpacePlan plan_;
  std::array<Figures, model::allMedia.size()> figures_;
  pictures::StackedBars* bars_;
  SheetModel sheet_;
  SheetView* view_ = nullptr;
  QTimer tmrFlash_;
  bool lit_ = false;
};

}  // namespace ui
