#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <set>

#include "control_bench.h"
#include "support_qt/palettes.h"
#include "support_qt/silent_controls.h"
#include "ui/form.h"
#include "ui/sheet.h"

namespace {

using support::ControlBench;
using support::darkPalette;
using support::silentControls;

constexpr int lastWindow = 15;

class EveryWindow : public testing::TestWithParam<int> {};

/// Ready windows and, in the words of the panel, what they are for.
TEST_P(EveryWindow, DoneWithoutAnEditChangesNothing) {
  for (const char* example : {"empty_project", "everything_at_once", "pump_house"}) {
    SCOPED_TRACE(example);
    ControlBench bench;
    bench.openExample(example);
    const model::Project before = bench.project();
    ui::SetupWindow& window = bench.open(GetParam());
    EXPECT_EQ(window.working(), before);
    window.accept();
    EXPECT_EQ(bench.project(), before);
    EXPECT_FALSE(bench.control->session().changed());
  }
}

TEST_P(EveryWindow, SaysWhatEachControlIs) {
  ControlBench bench;
  bench.openExample("everything_at_once");
  ui::SetupWindow& window = bench.open(GetParam());
  EXPECT_EQ(silentControls(window), std::set<QString>());
}

TEST_P(EveryWindow, IsPicturedInLightAndDark) {
  for (const bool dark : {false, true}) {
    const QPalette usual = QApplication::palette();
    if (dark) QApplication::setPalette(darkPalette());
    ControlBench bench;
    bench.openExample("everything_at_once");
    ui::SetupWindow& window = bench.open(GetParam());
    support::keepPicture(window, window.objectName() + (dark ? "_dark" : "_light"));
    window.reject();
    QApplication::setPalette(usual);
  }
}

INSTANTIATE_TEST_SUITE_P(Windows, EveryWindow, testing::Range(0, 16));

TEST(MainPanel, IsPicturedInLightAndDark) {
  for (const bool dark : {false, true}) {
    const QPalette usual = QApplication::palette();
    if (dark) QApplication::setPalette(darkPalette());
    ControlBench bench;
    bench.openExample("engine_test_bed");
    support::keepPicture(*bench.control, dark ? "KGenCtl_dark" : "KGenCtl_light");
    EXPECT_EQ(silentControls(*bench.control), std::set<QString>());
    QApplication::setPalette(usual);
  }
}

}  // namespace
