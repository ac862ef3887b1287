#include "ui/processing_buttons.h"

#include <QHBoxLayout>

#include "ui/frm_histogram.h"
#include "ui/frm_level_cross.h"
#include "ui/frm_rainflow.h"

namespace ui {

ProcessingButtons::ProcessingButtons(SetupWindow& owner, std::function<ProcessingTarget()> target)
    : QWidget(&owner), owner_(owner), target_(std::move(target)) {
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  add<frmHistogram>();
  add<frmRainflow>();
  add<frmLevelCross>();
  layout->addStretch();
  refresh();
}

template <class Window>
void ProcessingButtons::add() {
  const QString caption = qstring(Window::button.caption);
  auto* button = new QPushButton(caption, this);
  button->setAutoDefault(false);
  button->setObjectName(withoutMnemonic(caption));
  describe(*button, caption, qstring(Window::button.help));
  connect(button, &QPushButton::clicked, this,
          [this] { owner_.openInner(new Window(owner_, target_())); });
  layout()->addWidget(button);
  buttons_.push_back({button, Window::code});
}

void ProcessingButtons::refresh() {
  const ProcessingTarget target = target_();
  for (const Button& button : buttons_) {
    bool stored = false;
    for (std::size_t t = 0; t < model::maxTables; ++t)
      stored = stored || channelsStored(target, owner_.working(), t, button.code) > 0;
    button.widget->setVisible(stored);
  }
}

}  // namespace ui
