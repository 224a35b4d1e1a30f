// 同一问题只问一次: hands on each notice and question once; the answer holds for all that ask the same.
#pragma once

#include "core/refusal.h"

#include <map>

namespace jxc {

/// For a command over many goods: fifty lines that go short ask once.
class AskedOnce final : public Prompt {
 public:
  explicit AskedOnce(Prompt& prompt) : prompt_(prompt) {}
  void notice(const QString& text) override {
    if (answers_.try_emplace(text, Answer::Yes).second) prompt_.notice(text);
  }
  void refuse(const Refusal& refusal) override {
    if (answers_.try_emplace(refusal.text, Answer::Yes).second) prompt_.refuse(refusal);
  }
  bool ask(const QString& text) override {
    const auto known = answers_.find(text);
    if (known != answers_.end()) return known->second == Answer::Yes;
    const bool yes = prompt_.ask(text);
    answers_.emplace(text, yes ? Answer::Yes : Answer::No);
    return yes;
  }
  Answer askOrCancel(const QString& text) override { return prompt_.askOrCancel(text); }

 private:
  Prompt& prompt_;
  std::map<QString, Answer> answers_;
};

}  // namespace jxc
