// 提示: how a rule speaks to the operator without knowing any window.
#pragma once

#include <QString>

namespace jxc {

enum class Answer { Yes, No, Cancel };

/// Notices and questions of a rule. On a screen these are message boxes ("系统提示", "信息提醒"); tests script them.
/// Never called inside a transaction.
class Prompt {
 public:
  virtual ~Prompt() = default;
  /// Tells and waits for OK, under the title "系统提示".
  virtual void notice(const QString& text) = 0;
  /// Yes or no, under the title "信息提醒".
  virtual bool ask(const QString& text) = 0;
  /// Yes, no or cancel, under the title "信息提醒".
  virtual Answer askOrCancel(const QString& text) = 0;
};

}  // namespace jxc
