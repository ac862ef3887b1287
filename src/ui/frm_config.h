#pragma once

#include <map>
#include <span>

#include "model/quantity_rules.h"
#include "pictures/slot_strip.h"
#include "ui/quantity_box.h"
#include "ui/setup_window.h"

namespace ui {

/// How the logger is built: its CPU, the modules in its slots, what hangs off it, and the options
/// with a panel each. Done removes what no longer fits.
class frmConfig final : public SetupWindow {
  Q_OBJECT
 public:
  frmConfig(const WindowPorts& ports, QWidget* parent);

  /// The panels behind the buttons: those of the power options, by PowerOption, and the card.
  static constexpr std::size_t panels = 7, cardPanel = 6;
  void openPanel(std::size_t number);

 protected:
  bool mayBeDone() override;
  [[nodiscard]] std::vector<std::string> previewNames() const override;

 private:
  [[nodiscard]] model::LoggerConfiguration& configuration() { return working_.configuration; }

  QWidget* moduleBoxes();
  QWidget* otherBoxes();
  QWidget* optionList();
  QWidget* slotStrip();
  void addModules(Form& form, int box);
  void addPeripheral(Form& form, model::Peripheral peripheral, std::string_view caption,
                     std::int16_t model::LoggerConfiguration::*place);
  Field& addBox(Form& form, const FieldText& text, int number, std::function<int()> count,
                std::function<bool(int)> takes);
  void addChannels(Form& form);
  void addOption(QWidget& parent, std::size_t number);
  void addRemarks(Form& form);
  void showSlots();

  [[nodiscard]] int countOf(int box) const;
  [[nodiscard]] bool isHidden(int count) const;
  bool takeModules(int box, int count);
  bool takePeripheral(model::Peripheral peripheral, int count);
  bool mayHaveCpu(int code);
  bool mayWakeBlocks(int code);
  [[nodiscard]] model::Project judged(int cpu) const;
  bool mayHaveModules(model::ModuleKindIndex kind, int count);
  bool isYes(const std::optional<ports::Message>& question);
  /// Shows a message if there is one.
  bool isTold(const std::optional<ports::Message>& message);

  int futureModules_ = 0;  // counted, but stored nowhere
  std::map<int, QuantityBox*> boxes_;
  pictures::SlotStrip* strip_ = nullptr;
};

}  // namespace ui
