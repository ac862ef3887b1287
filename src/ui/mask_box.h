#pragma once

#include <QToolButton>
#include <functional>

#include "ui/form.h"

namespace ui {

/// What a table stores, as a button with a list to tick.
class MaskBox final : public QToolButton {
  Q_OBJECT
 public:
  explicit MaskBox(QWidget* parent = nullptr);
  void setMask(std::uint8_t mask);
  [[nodiscard]] std::uint8_t mask() const { return mask_; }

 Q_SIGNALS:
  void edited();

 private:
  void tick(std::size_t code, bool on);
  std::uint8_t mask_ = 0;
};

/// Data type, Public and what each table that is on stores of a reference temperature.
void addReference(Form& form, const model::Project& project,
                  const std::function<model::ReferenceTemperature&()>& reference);

}  // namespace ui
