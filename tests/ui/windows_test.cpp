#include <gtest/gtest.h>

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QPushButton>
#include <QTimer>

#include "control_bench.h"
#include "edit_everything.h"
#include "support_qt/palettes.h"
#include "support_qt/usable_by_all.h"
#include "ui/calculator_window.h"
#include "ui/screen_room.h"

namespace {

using support::ControlBench;
using support::darkPalette;
using support::expectUsableByAll;

void closeFileDialog() {
  if (auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget()))
    dialog->reject();
}

/// Ready windows, by the button of the panel.
class EveryWindow : public testing::TestWithParam<int> {
 protected:
  /// The windows that the buttons of a window open, one after the other.
  template <class Act>
  void forEachInner(ui::SetupWindow& window, Act act) {
    QList<QPointer<QPushButton>> buttons;
    for (QPushButton* each : window.findChildren<QPushButton*>())
      if (each->isVisible() && qobject_cast<QDialogButtonBox*>(each->parentWidget()) == nullptr)
        buttons += each;
    for (const QPointer<QPushButton>& each : buttons) {
      if (!each || !each->isVisible()) continue;
      QTimer::singleShot(0, &window, closeFileDialog);
      each->click();
      auto* inner = window.findChild<ui::SetupWindow*>();
      if (inner == nullptr) continue;
      SCOPED_TRACE(inner->objectName().toStdString());
      inner->activateWindow();
      // Dialogs share their activation: the owner alone would count as well.
      ASSERT_TRUE(QTest::qWaitFor([inner] { return QApplication::activeWindow() == inner; }));
      ++inners;
      act(*inner);
      QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
  }
  ControlBench bench;
  int inners = 0;
};

TEST_P(EveryWindow, DoneWithoutAnEditChangesNothing) {
  for (const char* example : {"empty_project", "everything_at_once", "pump_house"}) {
    SCOPED_TRACE(example);
    bench.openExample(example);
    const model::Project before = bench.project();
    ui::SetupWindow& window = bench.open(GetParam());
    EXPECT_EQ(window.working(), before);
    forEachInner(window, [&](ui::SetupWindow& inner) {
      const model::Project owners = window.working();
      inner.accept();
      EXPECT_FALSE(inner.isVisible());
      const bool computes = qobject_cast<ui::CalculatorWindow*>(&inner) != nullptr;
      EXPECT_TRUE(computes || window.working() == owners);
    });
    window.reject();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    bench.open(GetParam()).accept();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(bench.project(), before);
    EXPECT_FALSE(bench.control->session().changed());
  }
}

TEST_P(EveryWindow, CancelAfterEditsChangesNothing) {
  bench.openExample("everything_at_once");
  const model::Project before = bench.project();
  ui::SetupWindow& window = bench.open(GetParam());
  forEachInner(window, [&](ui::SetupWindow& inner) {
    const model::Project owners = window.working();
    support::editEverything(inner);
    EXPECT_NE(inner.working(), owners);
    inner.reject();
    EXPECT_EQ(window.working(), owners);
  });
  support::editEverything(window);
  EXPECT_NE(window.working(), before);
  window.reject();
  EXPECT_EQ(bench.project(), before);
  EXPECT_FALSE(bench.control->session().changed());
}

TEST_P(EveryWindow, IsUsableByAll) {
  for (const char* example : {"everything_at_once", "pump_house"}) {
    SCOPED_TRACE(example);
    bench.openExample(example);
    ui::SetupWindow& window = bench.open(GetParam());
    expectUsableByAll(window);
    forEachInner(window, [&](ui::SetupWindow& inner) {
      expectUsableByAll(inner);
      inner.reject();
    });
    window.reject();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
}

TEST_P(EveryWindow, FitsALowScreen) {
  bench.openExample("everything_at_once");
  const QRect low = QGuiApplication::screens().back()->availableGeometry();
  bench.control->window()->move(low.topLeft());
  ui::SetupWindow& window = bench.open(GetParam());
  ASSERT_EQ(window.screen()->availableGeometry(), low);
  const QSize room = ui::roomOn(*window.screen());
  EXPECT_TRUE(QTest::qWaitFor([&] { return window.size().boundedTo(room) == window.size(); }))
      << window.width() << " x " << window.height();
  window.reject();
}

TEST_P(EveryWindow, IsPicturedInLightAndDark) {
  for (const bool dark : {false, true}) {
    const QPalette usual = QApplication::palette();
    if (dark) QApplication::setPalette(darkPalette());
    ControlBench screen;
    screen.openExample("everything_at_once");
    ui::SetupWindow& window = screen.open(GetParam());
    support::keepPicture(window, window.objectName() + (dark ? "_dark" : "_light"));
    window.reject();
    QApplication::setPalette(usual);
  }
}

INSTANTIATE_TEST_SUITE_P(Windows, EveryWindow, testing::Range(0, 16));

TEST(MainPanel, IsUsableByAllInLightAndDark) {
  for (const bool dark : {false, true}) {
    const QPalette usual = QApplication::palette();
    if (dark) QApplication::setPalette(darkPalette());
    ControlBench bench;
    bench.openExample("engine_test_bed");
    support::keepPicture(*bench.control, dark ? "KGenCtl_dark" : "KGenCtl_light");
    bench.control->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(bench.control.get()));
    bench.control->findChild<QWidget*>("button_0")->setFocus();
    expectUsableByAll(*bench.control);
    QApplication::setPalette(usual);
  }
}

}  // namespace
