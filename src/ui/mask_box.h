#pragma once

#include <QToolButton>
#include <functional>

#include "model/stored_outputs.h"
#include "ui/form.h"

namespace ui {

/// What a table stores, as a button with a list to tick.
class MaskBox final : public QToolButton {
  Q_OBJECT
 public:
  /// Offers the processings up to a code.
  explicit MaskBox(int last, QWidget* parent = nullptr);
  /// Tells of each processing, by its code, while the list is open.
  void explain(const std::function<std::string(std::size_t row, std::size_t code)>& help);
  void setMask(std::uint8_t mask);
  [[nodiscard]] std::uint8_t mask() const { return mask_; }

 Q_SIGNALS:
  void edited();

 private:
  void tick(std::size_t code, bool on);
  int last_;
  std::uint8_t mask_ = 0;
};

/// What each table that is on stores of something, processings up to a code.
void addMasks(Form& form, const model::Project& project, int last, std::string_view what,
              const std::function<model::TableMasks&()>& masks);

/// Data type, Public and what each table that is on stores of a reference temperature.
void addReferenceFields(Form& form, const model::Project& project, model::StoredSource source,
                        const std::function<model::ReferenceTemperature&()>& reference);

}  // namespace ui
