#include "ui/identifier_fields.h"

#include <QGridLayout>

#include "text/strings.h"
#include "ui/form.h"

namespace ui {
namespace {

struct FieldName {
  const char *title, *help;
  int largest;
};
constexpr std::array<FieldName, 6> names = {
    {{"Priority", "Priority of the message; 0 is the highest.", 7},
     {"Reserved", "The reserved bit.", 1},
     {"Page", "The data page.", 1},
     {"PDU format", "From 240 on the message is for all.", 255},
     {"PDU specific", "The address that is meant; from PDU format 240 on a part of the group.",
      255},
     {"Source", "The address that sends.", 255}}};

std::string wordsOf(const can::cCanConfig& config) {
  can::Identifier identifier = can::parsedIdentifier(config.DataID(), config.LargestIdentifier());
  identifier.hexadecimal = true;
  const std::string both = text::concat(identifier.value, " = ", can::identifierText(identifier));
  return config.IdentifierBits() == 11 ? both : text::concat(both, ", PGN ", config.PGNVal());
}

}  // namespace

IdentifierFields::IdentifierFields(QWidget* parent) : QWidget(parent), words_(new QLabel(this)) {
  auto* layout = new QGridLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  for (std::size_t f = 0; f < count; ++f) {
    const FieldName& name = names[f];
    auto* box = boxes_[f] =
        new NumberBox(Bounds{0, static_cast<double>(name.largest), 1}, true, this);
    describe(*box, name.title, name.help);
    box->setObjectName(name.title);
    auto* caption = new QLabel(name.title, this);
    caption->setBuddy(box);
    const int row = 2 * static_cast<int>(f / 3), column = static_cast<int>(f % 3);
    layout->addWidget(caption, row, column);
    layout->addWidget(box, row + 1, column);
    connect(box, &NumberBox::edited, this, [this, f] { store(static_cast<int>(f)); });
    connect(box, &NumberBox::editingFinished, this, [this] { showFields(); });
  }
  words_->setObjectName("words");
  words_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  layout->addWidget(words_, 4, 0, 1, 3);
  setFocusProxy(boxes_[0]);
}

/// A box that goes with the window still hears that it loses the focus.
IdentifierFields::~IdentifierFields() {
  for (NumberBox* box : boxes_) box->disconnect(this);
}

void IdentifierFields::show(const std::string& identifier, int dataIdType) {
  config_ = {};
  config_.SetMode(dataIdType);
  const bool valid = config_.DataID(identifier);
  showFields();
  words_->setText(valid ? qstring(wordsOf(config_)) : "no identifier");
}

void IdentifierFields::showFields() {
  for (std::size_t f = 0; f < count; ++f) {
    boxes_[f]->setEnabled(config_.IdentifierBits() == 29);
    boxes_[f]->setValue(config_.J1939_FieldVal(static_cast<int>(f)));
  }
}

/// What is no value of the field goes when the box is left.
void IdentifierFields::store(int field) {
  const auto value = boxes_[static_cast<std::size_t>(field)]->value();
  if (!value) return;
  config_.J1939_FieldVal(field, static_cast<std::int32_t>(*value));
  Q_EMIT edited(qstring(config_.DataID()));
}

}  // namespace ui
