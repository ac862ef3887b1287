#pragma once

#include "ui/block_window.h"

namespace ui {

/// Filtered voltages and spectra on the 7125 modules: settings of each module, and its blocks.
class frmFiltSetup final : public BlockWindow {
  Q_OBJECT
 public:
  frmFiltSetup(const WindowPorts& ports, QWidget* parent);

 protected:
  void addFields(Form& form) override;
  void addSharedFields(Form& form) override;
  void addTotals(Form& form) override;
  [[nodiscard]] std::size_t listedBlocks() const override;
  void blockChosen() override;
  /// Modules count their blocks.
  void repsChanged() override { refuseSpectra(); }
  bool mayBeDone() override;

 private:
  void addModule(Form& form);
  void addVoltageFilter(Form& form);
  void addFft(Form& form);
  void addSpectrum(Form& form);
  void addBlock();
  void removeBlock();
  void chooseModule();
  void refuseSpectra();
  [[nodiscard]] model::FilterSlot& slot() { return working_.filterSlots[slot_]; }
  [[nodiscard]] std::vector<Choice> modules() const;

  std::size_t slot_ = 0;  // of the module that is shown, from 0
};

}  // namespace ui
