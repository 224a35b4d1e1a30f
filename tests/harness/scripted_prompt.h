// 脚本提示: answers the questions of a rule in tests, and remembers everything that was said.
#pragma once

#include "core/prompt.h"

#include <QString>
#include <QStringList>

#include <deque>
#include <functional>
#include <utility>

namespace jxc::test {

/// Answers are queued before the command runs. A question without a queued answer fails the test and is answered with
/// No (or Cancel); answers left over at the end fail it too. Notices need no answer.
class ScriptedPrompt : public Prompt {
 public:
  ScriptedPrompt() = default;
  ~ScriptedPrompt() override;

  ScriptedPrompt& willAnswer(Answer answer);
  /// Once, when a question that contains these words has its answer, another station acts.
  ScriptedPrompt& whileAsked(const QString& words, std::function<void()> other);
  ScriptedPrompt& willSayYes() { return willAnswer(Answer::Yes); }
  ScriptedPrompt& willSayNo() { return willAnswer(Answer::No); }

  void notice(const QString& text) override;
  bool ask(const QString& text) override;
  Answer askOrCancel(const QString& text) override;

  QStringList notices;
  QStringList questions;
  /// The last notice, empty when there was none.
  QString lastNotice() const { return notices.isEmpty() ? QString() : notices.last(); }
  /// What was told in place of doing it: `prompt.refused(save(draft, prompt))`.
  template <class Done>
  QString refused(const Done& done) const {
    return done ? QStringLiteral("it was done") : lastNotice();
  }
  void forget();

 private:
  Answer next(const QString& text, Answer fallback);
  std::deque<Answer> answers_;
  QString otherAt_;
  std::function<void()> other_;
};

/// Lets another station act while the question stands, then says yes.
class WhileAsked : public Prompt {
 public:
  explicit WhileAsked(std::function<void()> other) : other_(std::move(other)) {}
  void notice(const QString& text) override { notices << text; }
  bool ask(const QString&) override {
    if (other_) std::exchange(other_, nullptr)();
    return true;
  }
  Answer askOrCancel(const QString& text) override { return ask(text) ? Answer::Yes : Answer::No; }
  QStringList notices;

 private:
  std::function<void()> other_;
};

}  // namespace jxc::test
