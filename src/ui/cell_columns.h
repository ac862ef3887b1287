#pragma once

#include "channels/cells.h"
#include "model/project.h"
#include "text/numbers.h"
#include "ui/sheet.h"

namespace ui {

/// A truth as a cell: "yes" or "no".
std::string yesNoText(bool value);
using channels::storeYesNo;
SheetColumn yesNoColumn(const QString& title, const QString& help,
                        std::function<bool&(std::size_t row)> value);

/// A number as a cell; another text is refused.
Complaint storeNumber(std::string_view cell, double low, double high, double& value);
template <class Number>
SheetColumn numberColumn(const QString& title, const QString& help, double low, double high,
                         std::function<Number&(std::size_t row)> value) {
  return {title, help,
          [value](std::size_t row) { return text::shortest(static_cast<double>(value(row))); },
          [value, low, high](std::size_t row, std::string_view cell) {
            double number = 0;
            Complaint complaint = storeNumber(cell, low, high, number);
            if (!complaint) value(row) = static_cast<Number>(number);
            return complaint;
          }};
}

/// A text as a cell, kept to a rule.
SheetColumn textColumn(const QString& title, const QString& help,
                       std::function<std::string&(std::size_t row)> value,
                       std::function<Complaint(std::string_view)> rule = {});

/// A text out of a list.
SheetColumn listColumn(const QString& title, const QString& help, std::vector<std::string> texts,
                       std::function<std::string(std::size_t row)> text,
                       std::function<void(std::size_t row, std::size_t index)> store);

/// What the processings of a table (from 0) stand for, offered by their codes.
std::function<std::string(std::size_t row, std::size_t code)> processingHelp(
    const model::Project& project, std::size_t table);

}  // namespace ui
