// 提示: how a rule speaks to the operator without knowing any window.
#pragma once

#include <QString>

#include <optional>
#include <string_view>

namespace jxc {

struct Refusal;

enum class Answer { Yes, No, Cancel };

/// A question that each operator may answer once for all, at its box: what to keep it by, and the words of the box.
struct Habit {
  std::u16string_view name, words;
};

/// Notices and questions of a rule. On a screen these are message boxes ("系统提示", "信息提醒"); tests script them.
/// Never called inside a transaction.
class Prompt {
 public:
  virtual ~Prompt() = default;
  /// Tells and waits for OK, under the title "系统提示".
  virtual void notice(const QString& text) = 0;
  /// The notice of a refusal (`core/refusal.h`). A screen leads to the input or the row that it is about.
  virtual void refuse(const Refusal& refusal);
  /// Yes or no, under the title "信息提醒".
  virtual bool ask(const QString& text) = 0;
  /// Yes, no or cancel, under the title "信息提醒".
  virtual Answer askOrCancel(const QString& text) = 0;
  /// Yes or no, where this operator has not said before that it is always yes.
  virtual bool askUnlessHabit(const QString& text, const Habit&) { return ask(text); }
  /// A password, which is not shown while it is typed; nothing when the operator gives none.
  virtual std::optional<QString> askSecret(const QString&) { return std::nullopt; }
  /// What was done, in a quiet line that nobody has to answer. Lost where there is none.
  virtual void say(const QString&) {}
};

}  // namespace jxc
