// 输入项: one input of a screen: stored value, edit buffer, validator; the widget behind is nobody's business.
#pragma once

#include "core/fillers.h"
#include "core/wiping.h"
#include "engine/value.h"
#include "ui/specs.h"

#include <QObject>
#include <QString>

#include <functional>
#include <optional>
#include <vector>

class QKeyEvent;
class QLabel;
class QWidget;

namespace jxc::ui {

/// An input made from its FieldSpec. What the operator sees is the edit buffer; `load` sets buffer and stored value,
/// `isDirty` compares them, `apply` takes the buffer over, `cancel` goes back. The setters write the buffer and do not
/// call the `changed` hook: that one is for what the operator does.
class Field : public QObject {
 public:
  /// What there is to hold on to besides text: which key a picker fetched.
  using Picking = std::function<std::optional<ListItem>()>;

  Field(const FieldSpec& spec, QWidget* parent);
  ~Field() override;

  const FieldSpec& spec() const { return spec_; }
  QWidget* widget() const { return widget_; }
  /// The label in front; null for a box, which carries its own text.
  QLabel* label() const { return label_; }
  /// The words behind; null without.
  QLabel* suffix() const { return suffix_; }

  // The edit buffer.
  /// As typed, of a secret only its length; date yyyy-MM-dd or empty; number as numberText; box "1" or "0".
  QString text() const;
  QString trimmed() const { return text().trimmed(); }
  double number() const;  // 0 when empty
  int integer() const;
  QString key() const;  // of the chosen item of a list, or of a picker; empty without
  int index() const;    // of the chosen item of a list; -1 without
  bool isChecked() const;
  bool isEmpty() const { return trimmed().isEmpty(); }
  WipedText secret() const;  // what was typed into a secret input
  Value value() const;       // key of a list or picker, number of a number, 0/1 of a box, otherwise the text

  void setText(const QString& text);
  void setNumber(double number);
  void setKey(const QString& key);  // chooses the item with this key; unknown: none
  void setIndex(int index);
  void setChecked(bool on);
  void setPicked(const ListItem& item);  // a picker's name and key
  void setValue(const Value& value);     // by kind, the inverse of value()
  void clear();
  /// A line: as if the operator had typed this in place of what stands there.
  void typeIn(const QString& text);
  /// Items of a list; the first one becomes chosen, unless `keep` and the old key is among them.
  void setItems(const std::vector<ListItem>& items, bool keep = false);
  const std::vector<ListItem>& items() const { return items_; }

  // Stored value and validator.
  void load(const Value& value);
  bool isDirty() const { return !(value() == stored_); }
  const Value& stored() const { return stored_; }
  void apply() { stored_ = value(); }
  void cancel() { setValue(stored_); }
  /// Whether the operator has typed or chosen something since the program last wrote this input, and it stands there.
  bool isTouched() const { return touched_ && text() != written_; }
  /// What is wrong with the buffer, in words for the operator.
  std::optional<QString> problem() const;

  // State.
  void setVisible(bool on);  // with its label; a number that is not seen is not in its widget either
  bool isVisible() const;    // whether meant to be seen, also before the screen shows
  void setEnabled(bool on);
  bool isEnabled() const;
  void setReadOnly(bool on);
  bool isReadOnly() const { return readOnly_; }
  void setLabel(const QString& text);
  void setMaxLength(int characters);  // of one line; 0: no limit
  void focus();
  /// Whether the keys of its window go here; so also while the window is on its way to the front.
  bool hasFocus() const;

  // Hooks.
  void onChanged(std::function<void()> hook) { changed_ = std::move(hook); }
  /// Enter in this input; return true when the focus shall stay (a barcode input, the login).
  void onEnter(std::function<bool()> hook) { enter_ = std::move(hook); }
  /// The list behind a picker, opened by F2, by its button, by Alt+Down, by F4 where no command has it, and by a
  /// letter, which then stands in the search of the list.
  void onPick(Picking hook) { picking_ = std::move(hook); }
  /// When the operator leaves the input.
  void onLeft(std::function<void()> hook) { left_ = std::move(hook); }
  /// When something was chosen from the list behind a picker: the screen goes on.
  void onPicked(std::function<void()> hook) { picked_ = std::move(hook); }

  // For the screen.
  bool enterPressed() { return enter_ && enter_(); }
  void pick();
  /// Whether this key opens the list, the calendar or the remarks behind this input, as its little button says.
  bool isOpenedBy(const QKeyEvent& key) const;
  /// Puts a standard remark where the cursor stands; the operator chooses it from their list.
  void takeRemark();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Quiet;
  struct Writing;
  void build(QWidget* parent);
  void buildLine(QWidget* parent);
  void operatorChanged();
  bool opensList(const QKeyEvent& key);
  void openWithLetters();
  void focusGone();
  void focusCame();
  void showNumber(bool plain);
  void openCalendar();

  FieldSpec spec_;
  QWidget* widget_ = nullptr;
  QLabel* label_ = nullptr;
  QLabel* suffix_ = nullptr;
  std::vector<ListItem> items_;
  Value stored_;
  double number_ = 0;  // exact value behind a number's display
  bool numberEmpty_ = false;
  QString lastDate_;  // last good date that was typed
  QString before_;    // the date before typing began
  QString key_;       // of a picker
  int quiet_ = 0;
  bool readOnly_ = false;
  bool isHidden_ = false;
  bool touched_ = false;
  QString written_;  // what the operator found
  std::function<void()> changed_, left_, picked_;
  std::function<bool()> enter_;
  Picking picking_;
};

/// A letter, digit or sign as it is typed: no blank, no shortcut.
bool isTypedLetter(const QKeyEvent& key);
/// Letters that a picker holds until nobody is typing on: a scanner typed them, and they open no list.
void dropTypedLetters();

/// Where inputs with `OffersRemarks` get their remarks: the screen of standard remarks announces itself here.
void setRemarkSource(std::function<std::optional<QString>()> source);

}  // namespace jxc::ui
