// 消息框: the operator's Prompt: real message boxes, "系统提示" for notices, "信息提醒" for questions.
#pragma once

#include "core/each_prompt.h"

#include <QPointer>
#include <QWidget>

namespace jxc::ui {

/// Boxes stand over `parent`, or over whatever is on top when there is none. Keys: Enter the default, Y 是, N 否,
/// Esc 否 or 取消.
class MessageBoxPrompt : public Prompt, public EachPrompt {
 public:
  explicit MessageBoxPrompt(QWidget* parent = nullptr) : parent_(parent) {}
  void notice(const QString& text) override;
  bool ask(const QString& text) override;
  Answer askOrCancel(const QString& text) override;
  std::optional<QString> askSecret(const QString& text) override;
  /// The box has a mark to switch the question off for this operator.
  bool askUnlessHabit(const QString& text, const Habit& habit) override;
  /// A list with an answer in each row.
  std::optional<std::vector<EachAnswer>> askEach(const EachQuestion& question) override;
  /// A notice with a button for what may be done about it; whether that was chosen. Enter and Esc leave it at that.
  bool offer(const QString& text, const QString& command);

 private:
  QPointer<QWidget> parent_;
};

}  // namespace jxc::ui
