#include "ui/frm_filt_setup.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QPushButton>

#include "control_bench.h"
#include "ui/number_box.h"
#include "ui/sheet.h"

namespace {

using model::BlockKind;
using support::ControlBench;
using support::controlOf;

constexpr int filter = 8;

class FilterWindow : public testing::Test {
 protected:
  void open(const std::string& example) {
    bench.openExample(example);
    show();
  }
  void show() { window = &bench.open<ui::frmFiltSetup>(filter); }
  void edit(const std::function<void(model::Project&)>& change) {
    model::Project project = bench.project();
    change(project);
    bench.control->session().edit(std::move(project), "test");
  }
  void press(const char* caption) { controlOf<QPushButton>(*window, caption).click(); }
  void choose(const char* caption, const QString& text) {
    auto& box = controlOf<QComboBox>(*window, caption);
    ASSERT_GE(box.findText(text), 0) << text.toStdString();
    box.setCurrentIndex(box.findText(text));
    Q_EMIT box.activated(box.currentIndex());
  }
  void enter(const char* caption, const QString& text) {
    support::type(controlOf<ui::NumberBox>(*window, caption), text);
  }
  [[nodiscard]] const model::MeasurementBlock& block(std::size_t number) const {
    return window->working().block(BlockKind::filter, number);
  }

  ControlBench bench;
  ui::frmFiltSetup* window = nullptr;
};

TEST_F(FilterWindow, ABlockMoreMovesThoseOfLaterModules) {
  bench.openExample("vibration");  // two blocks on the first module, one on the second
  edit([](model::Project& project) { project.block(BlockKind::filter, 2).Reps = 1; });
  const model::MeasurementBlock second = bench.project().block(BlockKind::filter, 2);
  const model::MeasurementBlock third = bench.project().block(BlockKind::filter, 3);
  show();
  press("Add a block");
  EXPECT_EQ(window->chosenBlock(), 3U);
  EXPECT_EQ(block(2), second);
  EXPECT_EQ(block(3).Reps, 0);
  EXPECT_EQ(block(4), third);
  EXPECT_FALSE(model::isFft(window->working(), 3));
  EXPECT_TRUE(model::isFft(window->working(), 4));
  press("Remove the block");
  EXPECT_EQ(window->working(), bench.project());
}

TEST_F(FilterWindow, AddsBlocksWhileThereIsRoom) {
  open("empty_project");
  press("Add a block");
  ASSERT_FALSE(bench.messages.shown.empty());
  EXPECT_EQ(bench.messages.shown.back().title, "NO MODULE");
  EXPECT_EQ(bench.messages.shown.back().text, "Please add a 7125 module first.");
  window->reject();
  bench.messages.shown.clear();
  edit([](model::Project& project) {
    project.configuration.quantity(model::ModuleKindIndex::filter7125) = 2;
  });
  show();
  for (int n = 1; n <= 8; ++n) press("Add a block");
  EXPECT_EQ(window->working().filterSlots[0].BlockCount, 7);
  EXPECT_EQ(bench.messages.titles(), (std::vector<std::string>{"TOO MANY"}));
  EXPECT_EQ(bench.messages.shown.back().text, "The limit of 7 blocks is reached.");
  enter("Reps:", "9");
  EXPECT_EQ(bench.messages.shown.back().text, "Not enough channels: 6 free.");
  EXPECT_EQ(block(7).Reps, 6);
}

TEST_F(FilterWindow, The7103HasNoSpectra) {
  bench.openExample("vibration");
  edit([](model::Project& project) {
    project.configuration.quantity(model::ModuleKindIndex::cpu) = 1;
    project.filterSlots[1].FFTType = 0;
  });
  show();
  window->chooseBlock(3);
  choose("Result:", "Spectra");
  EXPECT_EQ(bench.messages.titles(), (std::vector<std::string>{"CHANGE 7125 MEASUREMENT"}));
  EXPECT_TRUE(bench.messages.shown.back().text.starts_with(
      "FFT Spectra are not supported in the 7103 CPU."));
  EXPECT_EQ(window->working().filterSlots[1].FFTType, 0);
}

TEST_F(FilterWindow, BinsFollowTheLength) {
  open("vibration");
  window->chooseBlock(3);
  enter("FFT length:", "300");
  EXPECT_EQ(window->working().filterSlots[1].FFTLength, 256);
  EXPECT_LE(block(3).IHigh, 128);
  enter("Last bin:", "200");
  window->accept();
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(window->hint(), QString("Enter a value from %1 to 128.").arg(block(3).ILow));
}

}  // namespace
