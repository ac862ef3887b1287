#pragma once

#include <QLabel>
#include <QLineEdit>

#include "model/can_values.h"
#include "pictures/frame_bits.h"
#include "ui/list_window.h"

namespace ui {

/// CAN bus items: messages to receive and send, the bits that they take, the values in them.
class frmCanBus final : public ListWindow {
  Q_OBJECT
 public:
  frmCanBus(const WindowPorts& ports, QWidget* parent);
  void addItem();
  void removeItem();
  /// Message lists and databases as files.
  void loadList(const QString& path);
  void saveList(const QString& path);
  void importDatabase(const QString& path);
  /// What the items make of a frame, as words.
  [[nodiscard]] QString valuesOf(const QString& frame) const;

 protected:
  bool mayBeDone() override;
  [[nodiscard]] std::vector<std::string> previewNames() const override;

 private:
  List items();
  Form* busForm();
  QWidget* detail();
  Form* itemForm();
  void addIdentifiers(Form& form);
  void addIdentifier(Form& form, const FieldText& text, const FieldText& fieldsText,
                     std::string model::CanItem::*place, const std::function<bool()>& shown);
  QWidget* itemButtons();
  QWidget* frameRow();
  SheetColumn scalingColumn(const QString& title, const QString& help, std::string_view name);
  std::vector<SheetColumn> valueColumns();
  void growValues();
  static void fitValues(model::CanItem& item);
  [[nodiscard]] std::string sharedBits(std::size_t row) const;
  [[nodiscard]] std::vector<std::size_t> itemsOfMessage();
  [[nodiscard]] bool hasInterface();
  void showBits();
  [[nodiscard]] model::CanItem& item();
  [[nodiscard]] bool isTransmit() { return item().DataStyle != 0; }
  void saveListByItself();
  void takeItems(std::vector<model::CanItem> items, const QString& what);
  [[nodiscard]] std::string read(const QString& path, bool& ok);

  SheetModel values_;
  std::vector<model::SharedBits> shared_;
  pictures::FrameBits* bits_ = nullptr;
  QLabel* frameValues_ = nullptr;
};

}  // namespace ui
