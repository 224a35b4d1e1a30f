// 逐项提示: a question that is answered for each of several things, which one box after another would make unbearable.
#pragma once

#include "core/prompt.h"

#include <QStringList>

#include <optional>
#include <vector>

namespace jxc {

struct EachQuestion {
  QString text;  // what happened, and what is asked
  QStringList headings;
  std::vector<QStringList> items;  // cells under the headings
  QString first, second;           // the two answers; the first is proposed
};
enum class EachAnswer : char { First, Second };

/// A prompt that can show them all at once.
class EachPrompt {
 public:
  EachPrompt() = default;
  virtual ~EachPrompt() = default;
  EachPrompt(const EachPrompt&) = delete;
  EachPrompt& operator=(const EachPrompt&) = delete;
  /// One answer for each item, in their order; nothing: the operator leaves it.
  virtual std::optional<std::vector<EachAnswer>> askEach(const EachQuestion& question) = 0;
};

/// Asks where `prompt` can show them all; any other prompt is asked once for all: yes for the first answer, no for the
/// second.
std::optional<std::vector<EachAnswer>> askEach(Prompt& prompt, const EachQuestion& question);

}  // namespace jxc
