#include "ui/help_viewer.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QFile>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QTextBlock>
#include <QVBoxLayout>
#include <QWindow>

#include "ui/form.h"

namespace ui {
namespace {

QUrl urlOf(const QString& page) {
  const QString path = ":/kgen/guide/" + page + ".md";
  return QUrl(QFile::exists(path) ? "qrc" + path : "qrc:/kgen/guide/index.md");
}

/// Shows pictures as wide as the page has room.
class Pages final : public QTextBrowser {
 public:
  using QTextBrowser::QTextBrowser;

 protected:
  QVariant loadResource(int type, const QUrl& name) override {
    QVariant found = QTextBrowser::loadResource(type, name);
    if (type != QTextDocument::ImageResource) return found;
    QImage picture = QImage::fromData(found.toByteArray());
    constexpr int besidePage = 50;  // margins and scroll bar
    const int room = static_cast<int>((width() - besidePage) * devicePixelRatioF());
    if (picture.width() > room) picture = picture.scaledToWidth(room, Qt::SmoothTransformation);
    picture.setDevicePixelRatio(devicePixelRatioF());
    return picture;
  }
};

}  // namespace

HelpViewer::HelpViewer() : browser_(new Pages(this)) {
  setObjectName("frmHelp");
  setAttribute(Qt::WA_QuitOnClose, false);
  setWindowTitle("Help");
  describe(*browser_, "Help page", "Links lead to other pages.");
  connect(browser_, &QTextBrowser::sourceChanged, this, [this] {
    const QString title = browser_->document()->firstBlock().text();
    setWindowTitle(title.isEmpty() ? QString("Help") : "Help: " + title);
  });
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(browser_, 1);
  layout->addWidget(findRow());
  layout->addWidget(buttonRow());
  resize(820, 680);
}

QWidget* HelpViewer::findRow() {
  auto* row = new QWidget(this);
  auto* box = new QLineEdit(row);
  box->setClearButtonEnabled(true);
  describe(*box, "Find", "Finds words on this page; Enter goes on.");
  auto* label = new QLabel("&Find:", row);
  label->setBuddy(box);
  connect(box, &QLineEdit::textEdited, this, [this](const QString& words) { find(words, true); });
  connect(box, &QLineEdit::returnPressed, this, [this, box] { find(box->text(), false); });
  new QShortcut(QKeySequence::Find, this, [box] { box->setFocus(); });
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(label);
  layout->addWidget(box, 1);
  return row;
}

QWidget* HelpViewer::buttonRow() {
  auto* box = new QDialogButtonBox(this);
  const auto add = [&](const char* caption, const char* help, QDialogButtonBox::ButtonRole role) {
    QPushButton* button = box->addButton(caption, role);
    describe(*button, caption, help);
    button->setAutoDefault(false);  // Enter finds on
    return button;
  };
  QPushButton* back = add("&Back", "Press for the page before; closed while there is none.",
                          QDialogButtonBox::ActionRole);
  QPushButton* index =
      add("&Contents", "Press for the list of pages.", QDialogButtonBox::ActionRole);
  add("Close", "Press to close the help.", QDialogButtonBox::RejectRole);
  connect(back, &QPushButton::clicked, browser_, &QTextBrowser::backward);
  connect(browser_, &QTextBrowser::backwardAvailable, back, &QWidget::setEnabled);
  connect(index, &QPushButton::clicked, browser_,
          [this] { browser_->setSource(urlOf("index"), QTextDocument::MarkdownResource); });
  connect(box, &QDialogButtonBox::rejected, this, &QDialog::close);
  back->setEnabled(false);
  return box;
}

/// After the last place it begins at the top again.
void HelpViewer::find(const QString& words, bool fromStart) {
  if (fromStart) browser_->moveCursor(QTextCursor::Start);
  if (words.isEmpty() || browser_->find(words)) return;
  browser_->moveCursor(QTextCursor::Start);
  browser_->find(words);
}

/// A window that waits for an answer blocks every other one but its own: the help is one of those.
void HelpViewer::joinWindow(QWidget* asking) {
  const QWidget* modal = QApplication::activeModalWidget();
  const QWidget* owner = modal != nullptr ? modal : asking->window();
  winId();  // the window of the system has to be there
  windowHandle()->setTransientParent(owner->windowHandle());
}

void HelpViewer::showPage(const QString& page, QWidget* asking) {
  joinWindow(asking);
  show();  // pictures ask how much room there is
  browser_->setSource(urlOf(page), QTextDocument::MarkdownResource);
  raise();
  activateWindow();
}

}  // namespace ui
