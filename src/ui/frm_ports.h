#pragma once

#include <map>

#include "model/channel_plan.h"
#include "ui/list_window.h"

namespace ui {

/// Digital ports of the 7131 and 7141/42 modules: groups of eight that are written or read.
class frmPorts final : public ListWindow {
  Q_OBJECT
 public:
  frmPorts(const WindowPorts& ports, QWidget* parent);

 protected:
  [[nodiscard]] std::vector<std::string> previewNames() const override;

 private:
  List groups();
  QWidget* detail();
  Form* groupForm();
  std::vector<SheetColumn> portColumns();
  SheetColumn onlyOf(bool read, SheetColumn column);
  QWidget* conditions();
  void plan();
  [[nodiscard]] model::PortGroup& group();
  [[nodiscard]] bool canRead() const;
  /// What else the terminal of a port of the chosen group is used for; "" for nothing.
  [[nodiscard]] std::string otherUse(std::size_t port) const;

  SheetModel portSheet_;
  std::size_t port_ = 0;
  std::vector<model::PortGroupPlace> places_;
  std::map<std::pair<int, std::string>, std::string> otherUses_;  // by slot and terminal
};

}  // namespace ui
