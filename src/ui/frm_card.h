#pragma once

#include "ui/setup_window.h"

namespace ui {

/// Type and size of memory card A.
class frmCard final : public SetupWindow {
  Q_OBJECT
 public:
  explicit frmCard(SetupWindow& owner);

 protected:
  bool mayBeDone() override;

 private:
  [[nodiscard]] model::LoggerConfiguration& configuration() { return working_.configuration; }
  [[nodiscard]] bool inGbytes() const;
  void addSize(Form& form);
  void addUnits(Form& form);
  void chooseUnit(bool gbytes);

  double sizeBefore_;     // Mbytes
  std::string sizeText_;  // as typed, in the unit
};

}  // namespace ui
