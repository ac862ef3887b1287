#include "ui/main_panel.h"

#include <QFontDatabase>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSyntaxHighlighter>
#include <utility>

#include "ui/form.h"
#include "ui/icon.h"
#include "ui/shown_text.h"
#include "ui/texts.h"
#include "ui/typing.h"

namespace ui {

/// Makes the heads of groups in the summary stand out.
class SummaryHeads final : public QSyntaxHighlighter {
 public:
  SummaryHeads(QTextDocument* document, const control::Session& session, const QWidget& palette)
      : QSyntaxHighlighter(document), session_(session), palette_(palette) {}

  /// All heads anew when the user chose another look.
  void refresh() {
    const QTextCharFormat chosen = chosenFormat();
    if (chosen != std::exchange(format_, chosen)) rehighlight();
  }

 protected:
  void highlightBlock(const QString& line) override {
    if (line.contains("(uSec)") || line.contains("Output Interval ="))
      setFormat(0, static_cast<int>(line.size()), format_);
  }

 private:
  [[nodiscard]] QTextCharFormat chosenFormat() const {
    QTextCharFormat format;
    if (!session_.SoftTextHighlight) format.setFontWeight(QFont::Bold);
    format.setForeground(colour());
    return format;
  }
  [[nodiscard]] QColor colour() const {
    const control::SelectedColors& colors = session_.GetSelectedColors();
    if (colors.SummaryHighlight != control::SelectedColors{}.SummaryHighlight)
      return QColor("#" + qstring(colors.SummaryHighlight));
    return palette_.palette().color(QPalette::Link);
  }
  const control::Session& session_;
  const QWidget& palette_;
  QTextCharFormat format_;
};

namespace {

namespace panel = control::panel;
constexpr int iconSize = 24;

/// Colours that the user chose; those that nobody changed follow the system's, light or dark.
void colour(QWidget& widget, QPalette::ColorRole role, const std::string& chosen,
            const std::string& usual, QPalette& palette) {
  if (chosen != usual) palette.setColor(role, QColor("#" + qstring(chosen)));
  widget.setPalette(palette);
}

/// What a project file can hold of a typed text.
QString identityOf(const QString& typed) {
  QString taken;
  for (const QChar each : typed)
    if (control::isIdentity(utf8(QString(each)))) taken += each;
  return taken;
}

/// The cursor of a box that shows it stays.
void showIn(QLineEdit& box, const std::string& text) {
  if (box.text() != qstring(text)) box.setText(qstring(text));
}

}  // namespace

MainPanel::MainPanel(control::Session& session, QWidget* parent)
    : QWidget(parent), session_(session) {
  setAutoFillBackground(true);
  auto* layout = new QHBoxLayout(this);
  layout->addWidget(buttonColumn());
  layout->addWidget(summaryColumn(), 1);
  refresh();
}

QWidget* MainPanel::buttonColumn() {
  auto* column = new QWidget(this);
  auto* grid = new QGridLayout(column);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setSpacing(4);
  for (std::size_t index = 0; index < buttons_.size(); ++index) {
    const bool saves = index >= panel::saveAndSendButton;
    const int row = static_cast<int>(index) / 2 + (saves ? 1 : 0);
    grid->addWidget(panelButton(index), row, static_cast<int>(index) % 2);
  }
  grid->setRowStretch(static_cast<int>(panel::saveAndSendButton) / 2, 1);
  return column;
}

QToolButton* MainPanel::panelButton(std::size_t index) {
  auto* button = new QToolButton(this);
  const panel::Button& texts = panel::buttons[index];
  button->setText(qstring(texts.caption));
  button->setIcon(icon(QString("button_%1").arg(index, 2, 10, QChar('0'))));
  button->setIconSize({iconSize, iconSize});
  button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  button->setFocusPolicy(Qt::StrongFocus);
  button->setObjectName(QString("button_%1").arg(index));
  describe(*button, qstring(texts.caption), qstring(texts.help));
  connect(button, &QToolButton::clicked, this,
          [this, index] { Q_EMIT buttonPressed(static_cast<int>(index)); });
  buttons_[index] = button;
  return button;
}

QLineEdit* MainPanel::identityBox(std::string_view name, std::string_view help,
                                  std::string model::LoggerConfiguration::*place) {
  auto* box = new QLineEdit(this);
  box->setMaxLength(static_cast<int>(panel::longestIdentity));
  box->setValidator(new TypingRule(identityOf, box));
  describe(*box, qstring(name), qstring(help));
  connect(box, &QLineEdit::textEdited, this, [this, box, place] { enterIdentity(*box, place); });
  return box;
}

/// At once: a save or a window by its key finds what was typed.
void MainPanel::enterIdentity(const QLineEdit& box,
                              std::string model::LoggerConfiguration::*place) {
  model::Project next = session_.project();
  next.configuration.*place = utf8(box.text());
  session_.editOn(std::move(next), "operator and ID");
}

QWidget* MainPanel::summaryColumn() {
  auto* column = new QWidget(this);
  auto* layout = new QVBoxLayout(column);
  layout->setContentsMargins(0, 0, 0, 0);
  operator_ =
      identityBox("Operator", panel::help::operatorName, &model::LoggerConfiguration::Operator);
  id_ = identityBox("ID", panel::help::idNumber, &model::LoggerConfiguration::IDNumber);
  auto* row = new QHBoxLayout;
  for (const auto& [caption, box] : {std::pair{"Operato&r:", operator_}, {"ID:", id_}}) {
    auto* label = new QLabel(caption, this);
    label->setBuddy(box);
    row->addWidget(label);
    row->addWidget(box, 1);
  }
  layout->addLayout(row);
  summary_ = new QPlainTextEdit(this);
  summary_->setReadOnly(true);
  summary_->setUndoRedoEnabled(false);
  summary_->setLineWrapMode(QPlainTextEdit::NoWrap);
  summary_->setTabChangesFocus(true);
  summary_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  summary_->setMinimumWidth(summary_->fontMetrics().horizontalAdvance(QString(64, '0')) + 30);
  describe(*summary_, "Summary", qstring(panel::help::summary));
  heads_ = new SummaryHeads(summary_->document(), session_, *summary_);
  layout->addWidget(summary_, 1);
  layout->addWidget(bottomRow());
  return column;
}

QWidget* MainPanel::bottomRow() {
  auto* row = new QWidget(this);
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  const auto add = [&](const char* caption, std::string_view help, void (MainPanel::*signal)()) {
    auto* button = new QPushButton(caption, row);
    describe(*button, caption, qstring(help));
    connect(button, &QPushButton::clicked, this, signal);
    layout->addWidget(button);
    return button;
  };
  add("Print...", panel::help::printOptions, &MainPanel::printPressed);
  add("Help", panel::help::extendedHelp, &MainPanel::helpPressed);
  layout->addStretch(1);
  quit_ = add("&Quit", panel::help::quit, &MainPanel::quitPressed);
  return row;
}

void MainPanel::refresh() {
  const model::LoggerConfiguration& configuration = session_.project().configuration;
  showIn(*operator_, configuration.Operator);
  showIn(*id_, configuration.IDNumber);
  heads_->refresh();
  const QString text = qstring(session_.summary());
  if (text != shownSummary_) showText(*summary_, std::exchange(shownSummary_, text), text);
  buttons_[panel::saveAndSendButton]->setVisible(session_.sendButtonShown());
  quit_->setVisible(session_.quitButtonShown());
  showColours();
}

void MainPanel::showColours() {
  const control::SelectedColors& chosen = session_.GetSelectedColors();
  const control::SelectedColors usual;
  QPalette own = QWidget().palette();
  colour(*this, QPalette::Window, chosen.FormBackground, usual.FormBackground, own);
  QPalette buttons = own;
  for (QToolButton* each : buttons_) {
    colour(*each, QPalette::Button, chosen.PanelBackground, usual.PanelBackground, buttons);
    colour(*each, QPalette::ButtonText, chosen.PanelText, usual.PanelText, buttons);
  }
  QPalette texts = own;
  colour(*summary_, QPalette::Base, chosen.SummaryBackground, usual.SummaryBackground, texts);
  colour(*summary_, QPalette::Text, chosen.SummaryText, usual.SummaryText, texts);
}

}  // namespace ui
