#pragma once

#include <QGridLayout>
#include <QLabel>
#include <QScrollArea>
#include <QWidget>
#include <functional>
#include <memory>
#include <type_traits>
#include <vector>

#include "text/numbers.h"
#include "ui/number_box.h"
#include "ui/texts.h"

namespace ui {

/// What a field says: caption with mnemonic, help, and the unit behind its box.
struct FieldText {
  std::string_view caption;
  std::string_view help;
  std::string_view unit = {};
};

/// An entry of a list and the code or text that the project holds for it.
struct Choice {
  std::string text;
  int code = 0;
};
std::vector<Choice> choicesOf(std::initializer_list<std::string_view> texts, int firstCode = 0);

/// Adds name, help and description for mouse, status line and screen reader.
void describe(QWidget& widget, const QString& caption, const QString& help);

/// The widget in an area that scrolls when there is less room than it wants.
QScrollArea* scrolled(QWidget* widget);
/// With a bar only on a screen that is too low; as wide as `fitWidth` makes it.
QScrollArea* scrolledDown(QWidget* widget);
void fitWidth(QScrollArea& area);

/// A labelled control and the value that it stands for.
class Field {
 public:
  QWidget* widget = nullptr;
  QLabel* label = nullptr;
  std::function<void()> show = [] {};  // value to control
  std::function<Complaint()> complaint = [] { return Complaint(); };

  /// The control is closed while the function answers with a reason, which is shown in its place.
  Field& closedWhen(std::function<std::string()> reason);
  /// Done after the value was stored, before anything is shown anew.
  Field& then(std::function<void()> act);
  /// What a number becomes when its box is left or Enter pressed.
  Field& settledBy(std::function<double(double)> rule);
  /// The control is not there at all while the function answers false.
  Field& shownWhen(std::function<bool()> shown);
  /// Help that follows from the values.
  Field& helpedBy(std::function<std::string()> help);

 private:
  friend class Form;
  void refresh();
  QLabel* unitLabel_ = nullptr;
  QLabel* reasonLabel_ = nullptr;
  QString help_;
  std::function<std::string()> reason_;
  std::function<bool()> shown_;
  std::function<std::string()> helpNow_;
  std::function<void()> then_ = [] {};
  std::function<double(double)> settle_;
};

/// Fields below each other, bound to a value: each is one call that names its texts and the member
/// it edits. A field writes only what the user changes, so showing and closing a form changes
/// nothing, whatever odd values it shows.
class Form final : public QWidget {
  Q_OBJECT
 public:
  explicit Form(QWidget* parent = nullptr);

  /// `place` answers with a reference to the number (bool, text, code) in the working copy.
  template <class Place>
  Field& number(const FieldText& text, const Bounds& bounds, Place place);
  /// Bounds that follow from other values.
  template <class Place>
  Field& number(const FieldText& text, std::function<Bounds()> bounds, Place place);
  template <class Place>
  Field& check(const FieldText& text, Place place);
  /// Codes of a list. A code that is not listed is shown as such and kept.
  template <class Place>
  Field& choice(const FieldText& text, std::function<std::vector<Choice>()> choices, Place place);
  template <class Place>
  Field& choice(const FieldText& text, std::vector<Choice> choices, Place place);
  /// A text out of a list; another text is shown and kept. Editable: any text can be typed.
  Field& pick(const FieldText& text, std::function<std::vector<std::string>()> texts,
              std::function<std::string&()> place, bool editable = false);
  using TextRule = std::function<Complaint(std::string_view)>;
  Field& text(const FieldText& text, int longest, std::function<std::string&()> place,
              TextRule rule = {});
  /// The same for what is kept in another way than it is shown.
  Field& addNumber(const FieldText& text, std::function<Bounds()> bounds, bool whole,
                   std::function<double()> value, std::function<void(double)> store);
  Field& addCheck(const FieldText& text, std::function<bool()> value,
                  std::function<void(bool)> store);
  Field& addChoice(const FieldText& text, std::function<std::vector<Choice>()> choices,
                   std::function<int()> value, std::function<void(int)> store);
  /// Words that follow from the values.
  Field& readout(const FieldText& text, std::function<std::string()> words);
  Field& button(const FieldText& text, std::function<void()> pressed);
  /// A control of another kind; show() and complaint() are the caller's to set.
  Field& custom(const FieldText& text, QWidget* widget);
  /// A control in the place of a field's caption: a switch that brings the field.
  void lead(Field& field, QWidget* widget);
  /// A whole row for something without a caption.
  void row(QWidget* widget);
  void rowStretch();
  /// Fields in a frame of their own.
  Form& group(std::string_view title);

  /// All controls anew from their values.
  void refresh();
  /// Texts that were refused make way for the values: another block is shown, or an edit undone.
  void forgetRefused();
  /// Edits count no more: the window goes, and its boxes would still hear that they lose the focus.
  void disarm();
  /// The first field whose text can't be taken; nullptr when all is well.
  [[nodiscard]] Field* firstComplaint() const;
  /// A control was edited: `field` is its caption.
  void noteEdit(const QString& field) { Q_EMIT edited(field); }

 Q_SIGNALS:
  void edited(const QString& field);

 private:
  Field& add(const FieldText& text, QWidget* widget, bool labelled = true);
  void finishEdit(const Field& field);

  QGridLayout* grid_;
  std::vector<std::unique_ptr<Field>> fields_;
  std::vector<Form*> groups_;
};

template <class Place>
Field& Form::number(const FieldText& text, const Bounds& bounds, Place place) {
  return number(text, std::function<Bounds()>([bounds] { return bounds; }), std::move(place));
}

template <class Place>
Field& Form::number(const FieldText& text, std::function<Bounds()> bounds, Place place) {
  using Number = std::remove_reference_t<decltype(place())>;
  return addNumber(
      text, std::move(bounds), std::is_integral_v<Number>,
      [place] { return static_cast<double>(place()); },
      [place](double value) { place() = static_cast<Number>(value); });
}

template <class Place>
Field& Form::check(const FieldText& text, Place place) {
  return addCheck(
      text, [place] { return static_cast<bool>(place()); }, [place](bool on) { place() = on; });
}

template <class Place>
Field& Form::choice(const FieldText& text, std::function<std::vector<Choice>()> choices,
                    Place place) {
  using Number = std::remove_reference_t<decltype(place())>;
  return addChoice(
      text, std::move(choices), [place] { return static_cast<int>(place()); },
      [place](int code) { place() = static_cast<Number>(code); });
}

template <class Place>
Field& Form::choice(const FieldText& text, std::vector<Choice> choices, Place place) {
  return choice(text, std::function<std::vector<Choice>()>([choices] { return choices; }), place);
}

}  // namespace ui
