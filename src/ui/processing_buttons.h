#pragma once

#include <QPushButton>
#include <QWidget>
#include <functional>
#include <vector>

#include "ui/processing_target.h"
#include "ui/setup_window.h"

namespace ui {

/// A row of buttons that open the parameters of histogram, rainflow and level crossing; each is
/// there while a table stores something that way.
class ProcessingButtons final : public QWidget {
  Q_OBJECT
 public:
  ProcessingButtons(SetupWindow& owner, std::function<ProcessingTarget()> target);
  void refresh();

 private:
  template <class Window>
  void add();
  struct Button {
    QPushButton* widget;
    int code;
  };
  SetupWindow& owner_;
  std::function<ProcessingTarget()> target_;
  std::vector<Button> buttons_;
};

}  // namespace ui
