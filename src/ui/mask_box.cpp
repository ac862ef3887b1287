#include "ui/mask_box.h"

#include <QMenu>

#include "channels/channel_cells.h"
#include "text/strings.h"
#include "ui/cell_columns.h"

namespace ui {

MaskBox::MaskBox(int last, QWidget* parent) : QToolButton(parent), last_(last) {
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

void MaskBox::explain(const std::function<std::string(std::size_t row, std::size_t code)>& help) {
  menu()->setToolTipsVisible(true);
  const QList<QAction*> actions = menu()->actions();
  for (qsizetype code = 0; code < actions.size(); ++code) {
    const QString words = qstring(help(0, static_cast<std::size_t>(code)));
    actions[code]->setToolTip(words);
    actions[code]->setStatusTip(words);
  }
}

void MaskBox::setMask(std::uint8_t mask) {
  mask_ = mask;
  const QList<QAction*> actions = menu()->actions();
  for (qsizetype code = 0; code < actions.size(); ++code) {
    const bool on = (mask >> code & 1) != 0;
    actions[code]->setChecked(on);
    actions[code]->setVisible(on || code <= last_);  // what a file has beyond can be taken out
  }
  const std::string text = channels::maskText(mask);
  setText(text.empty() ? "nothing" : qstring(text));
}

void MaskBox::tick(std::size_t code, bool on) {
  const unsigned bit = 1U << code;
  setMask(static_cast<std::uint8_t>(on ? mask_ | bit : mask_ & ~bit));
  Q_EMIT edited();
}

namespace {

using MasksPlace = std::function<model::TableMasks&()>;

void addMask(Form& form, const model::Project& project, std::size_t index, int last,
             const std::string& help, const MasksPlace& masks) {
  auto* box = new MaskBox(last, &form);
  box->explain(processingHelp(project, index));
  const std::string caption = text::concat(project.tables[index].TableName, ":");
  Field& field = form.custom({caption, help}, box);
  field.show = [box, masks, index] { box->setMask(masks()[index]); };
  QObject::connect(box, &MaskBox::edited, &form, [&form, box, masks, index] {
    masks()[index] = box->mask();
    form.noteEdit(box->objectName());
  });
}

}  // namespace

void addMasks(Form& form, const model::Project& project, int last, std::string_view what,
              const std::function<model::TableMasks&()>& masks) {
  const std::string help = text::concat("What the table stores of ", what, ".");
  for (std::size_t t = 0; t < model::maxTables; ++t)
    if (project.tables[t].TableOn) addMask(form, project, t, last, help, masks);
}

void addReferenceFields(Form& form, const model::Project& project, model::StoredSource source,
                        const std::function<model::ReferenceTemperature&()>& reference) {
  form.pick(
      {"Data type:", "FP2 takes 2 bytes a value, IEEE4 takes 4."},
      [] {
        return std::vector<std::string>{"FP2", "IEEE4"};
      },
      [reference]() -> std::string& { return reference().DataResolution; });
  form.check({"Public", "The value can be seen while the program runs."},
             [reference]() -> bool& { return reference().Public; });
  addMasks(form, project, model::lastProcessingOf(source), "the reference temperature",
           [reference]() -> model::TableMasks& { return reference().Table; });
}

}  // namespace ui
