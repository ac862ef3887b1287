#include <gtest/gtest.h>

#include <QDir>
#include <QMessageBox>
#include <QRegularExpression>
#include <QTextBrowser>
#include <QTimer>
#include <QWindow>

#include "control_bench.h"
#include "ui/help_viewer.h"
#include "ui/qt_messages.h"

namespace {

using support::ControlBench;

ui::HelpViewer* shownHelp() {
  for (QWidget* each : QApplication::topLevelWidgets())
    if (auto* help = qobject_cast<ui::HelpViewer*>(each); help && help->isVisible()) return help;
  return nullptr;
}

TEST(Help, CanBeReadBesideTheWindowThatAsked) {
  ControlBench bench;
  ui::SetupWindow& window = bench.open(0);
  QTest::keyClick(&window, Qt::Key_F1);
  ui::HelpViewer* help = shownHelp();
  ASSERT_NE(help, nullptr);
  EXPECT_EQ(help->windowTitle(), "Help: Hardware");
  // Any other window is blocked while a setup window is open.
  EXPECT_EQ(help->windowHandle()->transientParent(), window.windowHandle());
  window.reject();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(shownHelp(), help);
  bench.control->ShowHelpFile();
  EXPECT_EQ(help->windowHandle()->transientParent(), bench.control->windowHandle());
}

/// Pages and pictures that the guide's links lead to.
TEST(Help, HasNoLinkThatLeadsNowhere) {
  const QDir guide(":/kgen/guide");
  static const QRegularExpression link("\\]\\(([^)#]+)");
  for (const QString& page : guide.entryList({"*.md"})) {
    QFile file(guide.filePath(page));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    auto links = link.globalMatch(QString::fromUtf8(file.readAll()));
    while (links.hasNext()) {
      const QString to = links.next().captured(1);
      EXPECT_TRUE(to.startsWith("http") || guide.exists(to))
          << page.toStdString() << " leads to " << to.toStdString();
    }
  }
}

TEST(MessageBox, KeepsLinesWholeAndLongListsShort) {
  ui::QtMessages messages(nullptr);
  const std::string line(75, 'n');
  std::string list = "Names that are used twice:";
  for (int i = 0; i < 600; ++i) list += "\r\n" + std::to_string(i);
  list += "\r\n\r\nTHIS MUST BE CORRECTED.";
  for (const std::string& text : {line, list}) {
    QTimer::singleShot(0, [&] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      ASSERT_NE(box, nullptr);
      auto* label = box->findChild<QLabel*>("qt_msgbox_label");
      if (text == line) {
        EXPECT_GE(label->width(), box->fontMetrics().horizontalAdvance(label->text()));
      } else {
        EXPECT_LE(box->height(), 900);
        EXPECT_TRUE(box->text().endsWith("\n599\n\nTHIS MUST BE CORRECTED."));
        EXPECT_EQ(box->detailedText(), QString::fromStdString(list).remove('\r'));
      }
      box->accept();
    });
    EXPECT_EQ(messages.show({.title = "A TITLE", .text = text}), ports::Answer::ok);
  }
}

}  // namespace
