#include "ui/cell_columns.h"

#include <algorithm>

#include "model/time_units.h"
#include "text/strings.h"

namespace ui {

std::string yesNoText(bool value) { return value ? "yes" : "no"; }

SheetColumn yesNoColumn(const QString& title, const QString& help,
                        std::function<bool&(std::size_t row)> value) {
  return {title, help, [value](std::size_t row) { return yesNoText(value(row)); },
          [value](std::size_t row, std::string_view cell) { return storeYesNo(cell, value(row)); },
          [] {
            return std::vector<std::string>{"no", "yes"};
          }};
}

Complaint storeNumber(std::string_view cell, double low, double high, double& value) {
  double number = 0;
  if (Complaint complaint = channels::storeNumber(cell, number)) return complaint;
  if (number < low || number > high)
    return text::concat("'", cell, "' is not from ", low, " to ", high);
  value = number;
  return std::nullopt;
}

SheetColumn textColumn(const QString& title, const QString& help,
                       std::function<std::string&(std::size_t row)> value,
                       std::function<Complaint(std::string_view)> rule) {
  return {title, help, [value](std::size_t row) { return value(row); },
          [value, rule](std::size_t row, std::string_view cell) {
            Complaint complaint = rule ? rule(cell) : Complaint();
            if (!complaint) value(row) = cell;
            return complaint;
          }};
}

SheetColumn listColumn(const QString& title, const QString& help, std::vector<std::string> texts,
                       std::function<std::string(std::size_t row)> text,
                       std::function<void(std::size_t row, std::size_t index)> store) {
  return {title, help, std::move(text),
          [texts, store](std::size_t row, std::string_view cell) -> Complaint {
            const auto found = std::find_if(
                texts.begin(), texts.end(),
                [cell](const std::string& each) { return text::equalsIgnoringCase(each, cell); });
            if (found == texts.end())
              return text::concat("'", cell, "' is not in the list; choose from it");
            store(row, static_cast<std::size_t>(found - texts.begin()));
            return std::nullopt;
          },
          [texts = std::move(texts)] { return texts; }};
}

std::function<std::string(std::size_t row, std::size_t code)> processingHelp(
    const model::Project& project, std::size_t table) {
  return [&project, table](std::size_t, std::size_t code) {
    return KGEN_COMMON::ProcessingDescription(project, static_cast<int>(code), table + 1);
  };
}

}  // namespace ui
