#pragma once

#include <QLabel>
#include <QLineEdit>

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
  void addIdentifier(Form& form);
  QWidget* itemButtons();
  QWidget* frameRow();
  std::vector<SheetColumn> valueColumns();
  void fitValues();
  void showBits();
  [[nodiscard]] model::CanItem& item();
  [[nodiscard]] bool isTransmit() { return item().DataStyle != 0; }
  [[nodiscard]] std::string identifierFields();
  void saveListByItself();
  void takeItems(std::vector<model::CanItem> items, const QString& what);
  [[nodiscard]] std::string read(const QString& path, bool& ok);

  SheetModel values_;
  pictures::FrameBits* bits_ = nullptr;
  QLabel* frameValues_ = nullptr;
};

}  // namespace ui
