#include "ui/frm_card.h"

#include <QHBoxLayout>
#include <QRadioButton>

#include "model/quantity_rules.h"
#include "text/strings.h"

namespace ui {
namespace {

constexpr std::size_t cardType = 0, sizeUnit = 1;  // of TcConfigOpts
constexpr int longestSize = 10;
const char* const unitHelp = "Click to set card A units to %1.";

}  // namespace

frmCard::frmCard(SetupWindow& owner)
    : SetupWindow(owner, {"frmCard", "Card A Capacity", "card A", "frmConfig"}),
      sizeBefore_(working_.configuration.SizeCardA) {
  auto* form = new Form;
  form->choice({"&Card type:",
                "Choose the card type and size for Card A. S is a static ram card. Others are "
                "flash ATA memory card."},
               choicesOf({"Flash ATA", "S (static RAM)"}),
               [this]() -> std::int16_t& { return configuration().TcConfigOpts[cardType]; });
  addSize(*form);
  addUnits(*form);
  form->check({"T&ype III card", "Check if Type III card is used."},
              [this]() -> bool& { return configuration().TypeIII; });
  form->rowStretch();
  add(*form);
  setContents(form);
  form->setFocus();
  resize(460, 300);
}

bool frmCard::inGbytes() const { return working_.configuration.TcConfigOpts[sizeUnit] == 1; }

void frmCard::addSize(Form& form) {
  Field& size = form.text(
      {"&Size:", ""}, longestSize, [this]() -> std::string& { return sizeText_; },
      [this](std::string_view typed) -> Complaint {
        if (model::cardSizeMbytes(typed, inGbytes())) return std::nullopt;
        return model::cardSizeHelp(inGbytes());
      });
  size.helpedBy([this] { return model::cardSizeHelp(inGbytes()); }).then([this] {
    if (const auto mbytes = model::cardSizeMbytes(sizeText_, inGbytes()))
      configuration().SizeCardA = *mbytes;
  });
  // The text stays as typed while it stands for the size.
  size.show = [this, show = size.show] {
    const double mbytes = configuration().SizeCardA;
    if (model::cardSizeMbytes(sizeText_, inGbytes()) != mbytes)
      sizeText_ = model::cardSizeText(mbytes, inGbytes());
    show();
  };
}

void frmCard::addUnits(Form& form) {
  auto* row = new QWidget;
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  std::vector<QRadioButton*> buttons;
  for (const char* const unit : {"Mbytes", "Gbytes"}) {
    const bool gbytes = !buttons.empty();
    auto* button = new QRadioButton(QString("&") + unit, row);
    describe(*button, unit, QString(unitHelp).arg(unit));
    button->setObjectName(unit);
    connect(button, &QRadioButton::clicked, this, [this, gbytes] { chooseUnit(gbytes); });
    layout->addWidget(button);
    buttons.push_back(button);
  }
  Field& field = form.custom({"Unit:", "What the size counts."}, row);
  field.show = [this, buttons] { buttons.at(inGbytes() ? 1 : 0)->setChecked(true); };
}

void frmCard::chooseUnit(bool gbytes) {
  configuration().TcConfigOpts[sizeUnit] = gbytes ? 1 : 0;
  noteEdit("unit");
  showOther();  // what was refused in the other unit goes
}

bool frmCard::mayBeDone() {
  const auto question = model::questionAboutCard(sizeBefore_, configuration().SizeCardA);
  return !question || ports_.messages.show(*question) == ports::Answer::yes;
}

}  // namespace ui
