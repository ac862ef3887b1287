#include "ui/mask_box.h"

#include <QMenu>

#include "channels/channel_cells.h"
#include "text/strings.h"

namespace ui {

MaskBox::MaskBox(QWidget* parent) : QToolButton(parent) {
  setPopupMode(InstantPopup);
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  auto* menu = new QMenu(this);
  const auto words = channels::processingWords();
  for (std::size_t code = 0; code < words.size(); ++code) {
    QAction* action = menu->addAction(qstring(words[code]));
    action->setCheckable(true);
    connect(action, &QAction::triggered, this, [this, code](bool on) { tick(code, on); });
  }
  setMenu(menu);
  setMask(0);
}

void MaskBox::setMask(std::uint8_t mask) {
  mask_ = mask;
  const QList<QAction*> actions = menu()->actions();
  for (qsizetype code = 0; code < actions.size(); ++code)
    actions[code]->setChecked((mask >> code & 1) != 0);
  const std::string text = channels::maskText(mask);
  setText(text.empty() ? "nothing" : qstring(text));
}

void MaskBox::tick(std::size_t code, bool on) {
  const unsigned bit = 1U << code;
  setMask(static_cast<std::uint8_t>(on ? mask_ | bit : mask_ & ~bit));
  Q_EMIT edited();
}

namespace {

void addMask(Form& form, const model::Project& project, std::size_t table,
             const std::function<model::ReferenceTemperature&()>& reference) {
  auto* box = new MaskBox(&form);
  const std::string caption = text::concat(project.tables[table].TableName, ":");
  Field& field = form.custom({caption, "What the table stores of the reference temperature."}, box);
  field.show = [box, reference, table] { box->setMask(reference().Table[table]); };
  QObject::connect(box, &MaskBox::edited, &form, [&form, box, reference, table] {
    reference().Table[table] = box->mask();
    form.noteEdit(box->objectName());
  });
}

}  // namespace

void addReference(Form& form, const model::Project& project,
                  const std::function<model::ReferenceTemperature&()>& reference) {
  Form& frame = form.group("Reference temperature");
  frame.pick(
      {"Data type:", "FP2 takes 2 bytes a value, IEEE4 takes 4."},
      [] {
        return std::vector<std::string>{"FP2", "IEEE4"};
      },
      [reference]() -> std::string& { return reference().DataResolution; });
  frame.check({"Public", "The value can be seen while the program runs."},
              [reference]() -> bool& { return reference().Public; });
  for (std::size_t table = 0; table < model::maxTables; ++table)
    if (project.tables[table].TableOn) addMask(frame, project, table, reference);
}

}  // namespace ui
