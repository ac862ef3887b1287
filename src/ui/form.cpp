#include "ui/form.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

#include "text/strings.h"
#include "ui/typing.h"

namespace ui {
namespace {

constexpr int captionColumn = 0, controlColumn = 1, unitColumn = 2, columnCount = 3;

QLabel* dimLabel(QWidget* parent) {
  auto* label = new QLabel(parent);
  QFont font = label->font();
  font.setItalic(true);
  label->setFont(font);
  label->setWordWrap(true);
  label->hide();
  return label;
}

bool lists(const QComboBox& box, const std::vector<Choice>& choices) {
  if (static_cast<std::size_t>(box.count()) != choices.size()) return false;
  for (int i = 0; i < box.count(); ++i) {
    const Choice& choice = choices[static_cast<std::size_t>(i)];
    if (box.itemData(i) != choice.code || box.itemText(i) != qstring(choice.text)) return false;
  }
  return true;
}

/// A box measures its list by itself when it is shown first, and must be told to when another takes
/// the list's place.
void list(QComboBox& box, const std::vector<Choice>& choices) {
  if (lists(box, choices)) return;
  const bool another = box.count() > 0;
  box.clear();
  for (const Choice& choice : choices) box.addItem(qstring(choice.text), choice.code);
  if (another && box.sizeAdjustPolicy() == QComboBox::AdjustToContentsOnFirstShow)
    box.setSizeAdjustPolicy(QComboBox::AdjustToContents);
}

/// A list with its codes; a code that is not in it gets an entry of its own.
void fill(QComboBox& box, std::vector<Choice> choices, int code) {
  const auto known = [code](const Choice& choice) { return choice.code == code; };
  if (std::none_of(choices.begin(), choices.end(), known))
    choices.push_back({text::concat("?? (", code, ")"), code});
  const QSignalBlocker quiet(box);
  list(box, choices);
  box.setCurrentIndex(box.findData(code));
}

void fill(QComboBox& box, const std::vector<std::string>& texts, const std::string& chosen) {
  const QSignalBlocker quiet(box);
  box.clear();
  for (const std::string& each : texts) box.addItem(qstring(each));
  if (box.findText(qstring(chosen), Qt::MatchExactly) < 0) box.insertItem(0, qstring(chosen));
  box.setCurrentIndex(box.findText(qstring(chosen), Qt::MatchExactly));
}

/// Numbers are taken over while they are typed; a text that is refused in the end brings back what
/// was there before.
struct NumberTyping {
  double before = 0;
  std::optional<double> shown;
};

/// A text that is refused stays in its box, until it is corrected or another value comes.
bool isRefused(const QWidget& widget) { return widget.property("refused").toBool(); }

void mark(QWidget& widget, const Complaint& complaint) {
  widget.setProperty("refused", complaint.has_value());
  QPalette palette;  // of the application, unless the text is refused
  if (complaint) palette.setColor(QPalette::Text, QColor(0xd0, 0x30, 0x30));
  widget.setPalette(palette);
}

}  // namespace

std::vector<Choice> choicesOf(std::initializer_list<std::string_view> texts, int firstCode) {
  std::vector<Choice> choices;
  for (const std::string_view each : texts) choices.push_back({std::string(each), firstCode++});
  return choices;
}

void describe(QWidget& widget, const QString& caption, const QString& help) {
  widget.setAccessibleName(withoutMnemonic(caption));
  widget.setAccessibleDescription(help);
  widget.setToolTip(help);
  widget.setStatusTip(help);
}

QScrollArea* scrolled(QWidget* widget) {
  auto* area = new QScrollArea;
  widget->setAttribute(Qt::WA_Resized);  // by the area; else it would be measured here
  area->setWidget(widget);
  area->setWidgetResizable(true);
  area->setFrameShape(QFrame::NoFrame);
  area->setFocusPolicy(Qt::NoFocus);
  return area;
}

QScrollArea* scrolledDown(QWidget* widget) {
  QScrollArea* area = scrolled(widget);
  area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  return area;
}

void fitWidth(QScrollArea& area) {
  const int wanted = std::max(area.widget()->minimumWidth(), area.widget()->sizeHint().width());
  area.setMinimumWidth(wanted + area.verticalScrollBar()->sizeHint().width());
}

Field& Field::closedWhen(std::function<std::string()> reason) {
  reason_ = std::move(reason);
  return *this;
}

Field& Field::then(std::function<void()> act) {
  then_ = std::move(act);
  return *this;
}

Field& Field::settledBy(std::function<double(double)> rule) {
  settle_ = std::move(rule);
  return *this;
}

Field& Field::shownWhen(std::function<bool()> shown) {
  shown_ = std::move(shown);
  return *this;
}

Field& Field::helpedBy(std::function<std::string()> help) {
  helpNow_ = std::move(help);
  return *this;
}

void Field::refresh() {
  show();
  if (helpNow_) help_ = qstring(helpNow_());
  const bool shown = !shown_ || shown_();
  widget->setVisible(shown);
  for (QLabel* each : {label, unitLabel_})
    if (each != nullptr) each->setVisible(shown);
  const QString reason = reason_ ? qstring(reason_()) : QString();
  widget->setEnabled(reason.isEmpty());
  const QString help = reason.isEmpty() ? help_ : help_ + "\n" + reason;
  widget->setToolTip(help);
  widget->setAccessibleDescription(help);
  reasonLabel_->setText(reason);
  reasonLabel_->setVisible(shown && !reason.isEmpty());
}

Form::Form(QWidget* parent) : QWidget(parent), grid_(new QGridLayout(this)) {
  grid_->setColumnStretch(columnCount, 1);
  grid_->setContentsMargins(6, 6, 6, 6);
}

Field& Form::add(const FieldText& text, QWidget* widget, bool labelled) {
  auto field = std::make_unique<Field>();
  const int row = grid_->rowCount();
  field->widget = widget;
  field->help_ = qstring(text.help);
  describe(*widget, qstring(text.caption), field->help_);
  restoreByEscape(*widget);
  widget->setObjectName(withoutMnemonic(qstring(text.caption)));
  if (labelled) {
    field->label = new QLabel(qstring(text.caption), this);
    field->label->setBuddy(widget);
    grid_->addWidget(field->label, row, captionColumn);
  }
  grid_->addWidget(widget, row, labelled ? controlColumn : captionColumn, 1, labelled ? 1 : 2);
  if (!text.unit.empty()) {
    field->unitLabel_ = new QLabel(qstring(text.unit), this);
    grid_->addWidget(field->unitLabel_, row, unitColumn);
  }
  field->reasonLabel_ = dimLabel(this);
  grid_->addWidget(field->reasonLabel_, row + 1, captionColumn, 1, columnCount + 1);
  if (focusProxy() == nullptr && widget->focusPolicy() != Qt::NoFocus) setFocusProxy(widget);
  fields_.push_back(std::move(field));
  return *fields_.back();
}

/// The field's caption, by which edits are told apart, is the name of its control.
void Form::finishEdit(const Field& field) {
  field.then_();
  Q_EMIT edited(field.widget->objectName());
}

Field& Form::addNumber(const FieldText& text, std::function<Bounds()> bounds, bool whole,
                       std::function<double()> value, std::function<void(double)> store) {
  auto* box = new NumberBox({}, whole, this);
  Field& field = add(text, box);
  const auto typing = std::make_shared<NumberTyping>();
  field.show = [box, value, bounds = std::move(bounds), typing] {
    box->setBounds(bounds());
    const double now = value();
    if (isRefused(*box) && now == typing->shown) return;  // until another value takes its place
    typing->shown = now;
    box->setValue(now);
    mark(*box, std::nullopt);
  };
  // A value of the file outside the bounds may stay; only what is typed is refused.
  field.complaint = [box] { return isRefused(*box) ? box->complaint() : Complaint(); };
  connect(box, &NumberBox::edited, this, [this, box, value, store, typing, &field] {
    if (!box->isModifiedByUser()) typing->before = value();
    box->setModifiedByUser(true);
    mark(*box, box->complaint());
    const auto number = box->value();
    if (!number) typing->shown = typing->before;
    store(number.value_or(typing->before));
    finishEdit(field);
  });
  connect(box, &NumberBox::editingFinished, this, [this, box, value, store, &field] {
    if (!box->isModifiedByUser()) return;
    box->setModifiedByUser(false);
    if (!field.settle_ || !box->value()) return;
    store(field.settle_(value()));
    finishEdit(field);
  });
  return field;
}

Field& Form::addCheck(const FieldText& text, std::function<bool()> value,
                      std::function<void(bool)> store) {
  auto* box = new QCheckBox(qstring(text.caption), this);
  Field& field = add(text, box, false);
  field.show = [box, value] {
    const QSignalBlocker quiet(box);
    box->setChecked(value());
  };
  connect(box, &QCheckBox::toggled, this, [this, store, &field](bool on) {
    store(on);
    finishEdit(field);
  });
  return field;
}

Field& Form::addChoice(const FieldText& text, std::function<std::vector<Choice>()> choices,
                       std::function<int()> value, std::function<void(int)> store) {
  auto* box = new QComboBox(this);
  Field& field = add(text, box);
  field.show = [box, choices = std::move(choices), value] { fill(*box, choices(), value()); };
  connect(box, &QComboBox::activated, this, [this, box, store, &field] {
    store(box->currentData().toInt());
    finishEdit(field);
  });
  return field;
}

Field& Form::pick(const FieldText& text, std::function<std::vector<std::string>()> texts,
                  std::function<std::string&()> place, bool editable) {
  auto* box = new QComboBox(this);
  box->setEditable(editable);
  if (editable) box->setCompleter(nullptr);  // it would make 100 of a 1 that is typed
  box->setInsertPolicy(QComboBox::NoInsert);
  Field& field = add(text, box);
  field.show = [box, texts = std::move(texts), place] {
    const bool typedIn = box->isEditable() && box->count() > 0;
    if (!typedIn || box->currentText() != qstring(place())) fill(*box, texts(), place());
  };
  const auto store = [this, box, place, &field] {
    place() = utf8(box->currentText());
    finishEdit(field);
  };
  connect(box, &QComboBox::activated, this, store);
  if (editable) connect(box, &QComboBox::editTextChanged, this, store);
  return field;
}

Field& Form::text(const FieldText& text, int longest, std::function<std::string&()> place,
                  TextRule rule) {
  auto* box = new QLineEdit(this);
  box->setMaxLength(longest);
  Field& field = add(text, box);
  const auto complaint = [box, place, rule]() -> Complaint {
    const std::string typed = utf8(box->text());
    return rule && typed != place() ? rule(typed) : Complaint();
  };
  field.show = [box, place] {
    if (isRefused(*box)) return;
    if (box->text() != qstring(place())) box->setText(qstring(place()));
    mark(*box, std::nullopt);
  };
  field.complaint = complaint;
  connect(box, &QLineEdit::textEdited, this, [this, box, place, complaint, &field] {
    const Complaint refused = complaint();
    mark(*box, refused);
    if (!refused) place() = utf8(box->text());
    finishEdit(field);
  });
  return field;
}

Field& Form::readout(const FieldText& text, std::function<std::string()> words) {
  auto* label = new QLabel(this);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  Field& field = add(text, label);
  field.show = [label, words = std::move(words)] { label->setText(qstring(words())); };
  return field;
}

Field& Form::button(const FieldText& text, std::function<void()> pressed) {
  auto* button = new QPushButton(qstring(text.caption), this);
  button->setAutoDefault(false);
  Field& field = add(text, button, false);
  connect(button, &QPushButton::clicked, this, std::move(pressed));
  return field;
}

Field& Form::custom(const FieldText& text, QWidget* widget) { return add(text, widget); }

void Form::lead(Field& field, QWidget* widget) {
  delete grid_->replaceWidget(field.label, widget);
  delete field.label;
  field.label = nullptr;
}

void Form::row(QWidget* widget) {
  grid_->addWidget(widget, grid_->rowCount(), captionColumn, 1, columnCount + 1);
}

void Form::rowStretch() { grid_->setRowStretch(grid_->rowCount(), 1); }

Form& Form::group(std::string_view title) {
  auto* frame = new QGroupBox(qstring(title), this);
  auto* inner = new Form(frame);
  auto* layout = new QVBoxLayout(frame);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(inner);
  row(frame);
  groups_.push_back(inner);
  connect(inner, &Form::edited, this, &Form::edited);
  return *inner;
}

void Form::refresh() {
  for (const auto& field : fields_) field->refresh();
  for (Form* each : groups_) each->refresh();
}

void Form::forgetRefused() {
  for (const auto& field : fields_) field->widget->setProperty("refused", false);
  for (Form* each : groups_) each->forgetRefused();
}

void Form::disarm() {
  for (const auto& field : fields_) disconnect(field->widget, nullptr, this, nullptr);
  qDeleteAll(findChildren<TypingRule*>());
  qDeleteAll(findChildren<EmptyKeeper*>());
  for (Form* each : groups_) each->disarm();
}

Field* Form::firstComplaint() const {
  for (const auto& field : fields_)
    if (field->widget->isEnabled() && !field->widget->isHidden() && field->complaint())
      return field.get();
  for (const Form* each : groups_)
    if (Field* found = each->firstComplaint()) return found;
  return nullptr;
}

}  // namespace ui
