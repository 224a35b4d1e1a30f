#include "harness/scripted_prompt.h"

#include <gtest/gtest.h>

namespace jxc::test {

ScriptedPrompt::~ScriptedPrompt() {
  EXPECT_TRUE(answers_.empty()) << answers_.size() << " queued answer(s) were never asked for";
}

ScriptedPrompt& ScriptedPrompt::willAnswer(Answer answer) {
  answers_.push_back(answer);
  return *this;
}

ScriptedPrompt& ScriptedPrompt::whileAsked(const QString& words, std::function<void()> other) {
  otherAt_ = words;
  other_ = std::move(other);
  return *this;
}

void ScriptedPrompt::notice(const QString& text) {
  notices << text;
}

bool ScriptedPrompt::ask(const QString& text) {
  return next(text, Answer::No) == Answer::Yes;
}

Answer ScriptedPrompt::askOrCancel(const QString& text) {
  return next(text, Answer::Cancel);
}

void ScriptedPrompt::forget() {
  notices.clear();
  questions.clear();
}

Answer ScriptedPrompt::next(const QString& text, Answer fallback) {
  questions << text;
  if (answers_.empty()) {
    ADD_FAILURE() << "unexpected question: " << text.toStdString();
    return fallback;
  }
  const Answer answer = answers_.front();
  answers_.pop_front();
  if (other_ && text.contains(otherAt_)) std::exchange(other_, nullptr)();
  return answer;
}

}  // namespace jxc::test
