#pragma once

#include <QLabel>
#include <QWidget>
#include <array>

#include "can/can_config.h"
#include "ui/number_box.h"

namespace ui {

/// The fields of a 29-bit identifier by the J1939 convention, each to be read and written, and its
/// parameter group.
class IdentifierFields final : public QWidget {
  Q_OBJECT
 public:
  explicit IdentifierFields(QWidget* parent);
  ~IdentifierFields() override;
  /// Shows the fields of an identifier, as a setting of `dataIdType` has it.
  void show(const std::string& identifier, int dataIdType);

 Q_SIGNALS:
  /// A field was written: the whole identifier as text.
  void edited(const QString& identifier);

 private:
  static constexpr std::size_t count = 6;
  void store(int field);
  void showFields();

  can::cCanConfig config_;
  std::array<NumberBox*, count> boxes_ = {};
  QLabel* words_;
};

}  // namespace ui
