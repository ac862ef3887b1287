#pragma once

#include "ui/setup_window.h"

namespace ui {

/// When the logger switches itself off to save its battery, and for how long.
class frmBatterySaver final : public SetupWindow {
  Q_OBJECT
 public:
  explicit frmBatterySaver(SetupWindow& owner);

 protected:
  [[nodiscard]] std::vector<std::string> previewNames() const override;

 private:
  [[nodiscard]] model::LoggerConfiguration& configuration() { return working_.configuration; }
  void addTrip(Form& form);
  void addRetry(Form& form);
  void addStayingOff(Form& form);
  [[nodiscard]] std::string interval() const;

  bool staysOff_;  // in place of a retry
};

/// An off duration and its unit: a number from 0 to 999 and what it counts.
struct DurationPlace {
  std::string_view caption, unitCaption;
  std::function<double&()> value;
  std::function<std::int16_t&()> unit;
  std::function<bool()> shown;
};
void addDuration(Form& form, const DurationPlace& place);

}  // namespace ui
