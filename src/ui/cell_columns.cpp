#include "ui/cell_columns.h"

#include <algorithm>

#include "text/strings.h"

namespace ui {

std::string yesNoText(bool value) { return value ? "yes" : "no"; }

Complaint storeYesNo(std::string_view cell, bool& value) {
  for (const std::string_view yes : {"yes", "true", "on", "1"})
    if (text::equalsIgnoringCase(cell, yes)) return value = true, Complaint{};
  for (const std::string_view no : {"no", "false", "off", "0"})
    if (text::equalsIgnoringCase(cell, no)) return value = false, Complaint{};
  return text::concat("'", cell, "' is neither yes nor no; write one of them");
}

SheetColumn yesNoColumn(const QString& title, const QString& help,
                        std::function<bool&(std::size_t row)> value) {
  return {title, help, [value](std::size_t row) { return yesNoText(value(row)); },
          [value](std::size_t row, std::string_view cell) { return storeYesNo(cell, value(row)); },
          [] {
            return std::vector<std::string>{"no", "yes"};
          }};
}

Complaint storeNumber(std::string_view cell, double low, double high, double& value) {
  const double number = text::readNumber(cell);
  if (!text::isNumber(cell))
    return text::concat("'", cell, "' is no number; write it with a decimal point");
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
          [texts] { return texts; }};
}

}  // namespace ui
