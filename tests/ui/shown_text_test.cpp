#include "ui/shown_text.h"

#include <gtest/gtest.h>

#include <QTextBlock>
#include <QTextLayout>
#include <random>

#include "ui/program_view.h"

// A box that is brought from one text to the next by the lines that differ.
namespace {

using Random = std::mt19937;

int upTo(Random& random, int most) { return std::uniform_int_distribution<int>(0, most)(random); }

/// A few words, so that lines are alike often; now and then a sign that ends a line elsewhere.
QString someLine(Random& random) {
  static const QStringList words = {"",  "Const A = 1", "Next Scan",
                                    "B", "C\r",         QString(QChar(0x2029))};
  const int odd = upTo(random, 19) == 0 ? 5 : 3;
  return words[upTo(random, odd)];
}

QString edited(const QString& text, Random& random) {
  QStringList lines = text.split('\n');
  for (int edits = upTo(random, 4); edits > 0; --edits) {
    const int place = upTo(random, static_cast<int>(lines.size()) - 1);
    const int what = upTo(random, 2);
    if (what == 0) lines[place] = someLine(random);
    if (what == 1) lines.insert(place + upTo(random, 1), someLine(random));
    if (what == 2 && lines.size() > 1) lines.removeAt(place);
  }
  return lines.join('\n');
}

TEST(ShownText, IsTheTextWhateverItFollows) {
  Random random(7);
  for (int run = 0; run < 60; ++run) {
    QPlainTextEdit box, fresh;
    QString before;
    for (int step = 0; step < 40; ++step) {
      const QString after = edited(before, random);
      ui::showText(box, before, after);
      fresh.setPlainText(after);
      ASSERT_EQ(box.toPlainText(), fresh.toPlainText()) << "run " << run << ", step " << step;
      ASSERT_EQ(box.blockCount(), fresh.blockCount());
      before = after;
    }
  }
}

TEST(ShownText, LeavesTheOtherLinesAsTheyAre) {
  QPlainTextEdit box;
  QStringList lines;
  for (int i = 0; i < 400; ++i) lines += QString::number(i);
  ui::showText(box, {}, lines.join('\n'));
  QTextCursor chosen(box.document()->findBlockByNumber(200));
  chosen.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
  box.setTextCursor(chosen);
  const QString before = lines.join('\n');
  lines[3] = "another";
  lines.insert(300, "new");
  lines.removeAt(350);
  ui::showText(box, before, lines.join('\n'));
  EXPECT_EQ(box.textCursor().selectedText(), "200");
  EXPECT_EQ(box.toPlainText(), lines.join('\n'));
}

/// Lines that stay are coloured for the ground that they stand on now.
TEST(ShownText, FollowsAnotherPalette) {
  ui::ProgramView view;
  view.setProgram("Const A = 1\r\nNext Scan\r\n");
  const auto firstColour = [&view] {
    return view.document()->firstBlock().layout()->formats().value(0).format.foreground().color();
  };
  const QColor onLight = firstColour();
  QPalette dark = view.palette();
  dark.setColor(QPalette::Base, Qt::black);
  view.setPalette(dark);
  EXPECT_NE(firstColour(), onLight);
  EXPECT_GT(firstColour().lightness(), onLight.lightness());
}

}  // namespace
