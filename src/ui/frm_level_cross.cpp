#include "ui/frm_level_cross.h"

#include <algorithm>

#include "model/parameter_text.h"
#include "model/pick_list.h"
#include "text/numbers.h"
#include "ui/cell_columns.h"
#include "ui/listed_variables.h"

namespace ui {
namespace {

constexpr double farthest = 1e9;

/// The settings of the levels from one table for another.
void copyLevels(const model::TableProcessing& from, model::TableProcessing& to) {
  to.LevelCode = from.LevelCode;
  to.LevelMeas = from.LevelMeas;
  to.LevelMeasName = from.LevelMeasName;
  to.LevNumLevels = from.LevNumLevels;
  to.LevelVarOne = from.LevelVarOne;
  to.LevNumTests = from.LevNumTests;
  to.LevelVarTwo = from.LevelVarTwo;
  to.NumDims = from.NumDims;
}

/// While a number is typed it may be a small one for a moment: what is beyond it stays until Done.
void grow(std::vector<double>& values, double count) {
  values.resize(std::max(values.size(), static_cast<std::size_t>(count)));
}

}  // namespace

frmLevelCross::frmLevelCross(SetupWindow& owner, ProcessingTarget target)
    : ProcessingWindow(owner, std::move(target), code,
                       {"frmLevelCross", "Level Crossing", "level crossing", "histograms"}),
      before_(processing()),
      picture_(new pictures::LevelPicture(this)) {
  build(picture_);
}

std::vector<double> frmLevelCross::numbers() {
  return model::sizedParameters(parameterText(), model::TableProcessing().LevelCode);
}

void frmLevelCross::addParameters(Form& form) {
  addLevels(form);
  addTests(form);
  addParameter(form,
               {"H&ysteresis:", "The signal must come back by more before it can cross again."},
               {0, farthest, 0.1}, hysteresis);
  addFormOfResult(form, formOfResult);
}

void frmLevelCross::addLevels(Form& form) {
  form.addNumber(
      {"&Levels:", "How many levels are crossed."},
      [] {
        return Bounds{1, static_cast<double>(model::maxLevels)};
      },
      true, [this] { return numbers()[levels]; }, [this](double count) { setLevels(count); });
  form.row(sheetOf(levels_,
                   columnOf("Level", "The value whose crossings are counted.",
                            &model::TableProcessing::LevelVarOne),
                   levels));
}

void frmLevelCross::addTests(Form& form) {
  form.pick(
          {"Second &variable:", "Crossings are counted by its value too; empty for none."},
          [this] {
            std::vector<std::string> names = listedVariables(ports_, working_);
            names.insert(names.begin(), "");
            return names;
          },
          [this]() -> std::string& { return processing().LevelMeasName; })
      .then([this] { chooseSecond(); });
  form.addNumber(
          {"T&ests:", "Limits between which the second variable is told apart."},
          [] {
            return Bounds{1, static_cast<double>(model::maxLevels)};
          },
          true, [this] { return numbers()[tests]; }, [this](double count) { setTests(count); })
      .shownWhen([this] { return hasSecond(); });
  QWidget* sheet = sheetOf(
      tests_,
      columnOf("Test", "A limit of the second variable.", &model::TableProcessing::LevelVarTwo),
      tests);
  form.row(sheet);
  onRefresh([this, sheet] { sheet->setVisible(hasSecond()); });
}

QWidget* frmLevelCross::sheetOf(SheetModel& sheet, const SheetColumn& column, Place count) {
  sheet.setColumns({column}, [this, count] { return static_cast<std::size_t>(numbers()[count]); });
  auto* view = new SheetView(sheet, this);
  view->setObjectName(column.title);
  describe(*view, column.title, column.help);
  add(sheet);
  return view;
}

/// Levels that were never set are 0.
SheetColumn frmLevelCross::columnOf(const QString& title, const QString& help,
                                    std::vector<double> model::TableProcessing::*values) {
  return {title, help,
          [this, values](std::size_t row) {
            const std::vector<double>& now = processing().*values;
            return text::shortest(row < now.size() ? now[row] : 0.0);
          },
          [this, values](std::size_t row, std::string_view cell) {
            double number = 0;
            Complaint complaint = storeNumber(cell, -farthest, farthest, number);
            if (complaint) return complaint;
            setLevels(numbers()[levels]);
            setTests(numbers()[tests]);
            (processing().*values)[row] = number;
            return complaint;
          }};
}

void frmLevelCross::setLevels(double count) {
  std::vector<double> now = numbers();
  now[levels] = count;
  parameterText() = model::parameterText(now);
  processing().LevNumLevels = static_cast<std::int16_t>(count);
  grow(processing().LevelVarOne, count);
}

void frmLevelCross::setTests(double count) {
  std::vector<double> now = numbers();
  now[tests] = count;
  parameterText() = model::parameterText(now);
  processing().LevNumTests = static_cast<std::int16_t>(hasSecond() ? count : 0);
  grow(processing().LevelVarTwo, processing().LevNumTests);
}

void frmLevelCross::chooseSecond() {
  const std::vector<std::string> names = model::variableNames(working_);
  const auto found = std::find(names.begin(), names.end(), processing().LevelMeasName);
  const bool listed = found != names.end();
  processing().LevelMeas = static_cast<std::int16_t>(listed ? found - names.begin() + 1 : 0);
  processing().NumDims = hasSecond() ? 2 : 1;
  setTests(hasSecond() ? std::max(numbers()[tests], 1.0) : 1);
}

void frmLevelCross::showPicture() {
  std::vector<double> all = processing().LevelVarOne;
  all.resize(static_cast<std::size_t>(numbers()[levels]));
  picture_->setShape({QList<double>(all.begin(), all.end()), numbers()[hysteresis], false});
}

bool frmLevelCross::mayBeDone() {
  if (processing() == before_) return true;
  processing().LevelVarOne.resize(static_cast<std::size_t>(processing().LevNumLevels));
  processing().LevelVarTwo.resize(static_cast<std::size_t>(processing().LevNumTests));
  const model::TableProcessing edited = processing();
  for (std::size_t t = 0; t < model::maxTables; ++t)
    if (channelsIn(t) > 0) copyLevels(edited, target().levels(working_, t));
  return true;
}

}  // namespace ui
