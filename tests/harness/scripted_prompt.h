// 脚本提示: answers the questions of a rule in tests, and remembers everything that was said.
#pragma once

#include "core/prompt.h"

#include <QString>
#include <QStringList>

#include <deque>

namespace jxc::test {

/// Answers are queued before the command runs. A question without a queued answer fails the test and is answered with
/// No (or Cancel); answers left over at the end fail it too. Notices need no answer.
class ScriptedPrompt : public Prompt {
 public:
  ScriptedPrompt() = default;
  ~ScriptedPrompt() override;

  ScriptedPrompt& willAnswer(Answer answer);
  ScriptedPrompt& willSayYes() { return willAnswer(Answer::Yes); }
  ScriptedPrompt& willSayNo() { return willAnswer(Answer::No); }

  void notice(const QString& text) override;
  bool ask(const QString& text) override;
  Answer askOrCancel(const QString& text) override;

  QStringList notices;
  QStringList questions;
  /// The last notice, empty when there was none.
  QString lastNotice() const { return notices.isEmpty() ? QString() : notices.last(); }
  void forget();

 private:
  Answer next(const QString& text, Answer fallback);
  std::deque<Answer> answers_;
};

}  // namespace jxc::test
