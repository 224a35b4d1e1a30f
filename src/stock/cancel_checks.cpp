#include "stock/cancel_checks.h"

#include "core/refusal.h"
#include "core/rights.h"
#include "core/session.h"
#include "stock/document.h"

namespace jxc::cancel_checks {

bool hasCancelRight(const DocumentFamily& family, Prompt& prompt) {
  if (mayCancel(family)) return true;
  prompt.notice(u"您没有取消审核"_qs + words(family.name) + u"的权限！"_qs);
  return false;
}

bool isFreeOfChecker(const DocumentFamily& family, const QString& number, const QString& checker, Prompt& prompt) {
  if (session().a_sn == builtInSn || session().a_name == checker ||
      hasRightOf(family.cancel.group, family.cancel.position, checker))
    return true;
  prompt.notice(u"单据："_qs + number + u"，的审核人："_qs + checker + u"\r\n\r\n不允许其他人取消审核！"_qs);
  return false;
}

bool passesGate(const QString& number, const QString& date, Prompt& prompt) {
  return !isRefused(cancelGate(number, date), prompt);
}

bool isConfirmed(const QString& question, Prompt& prompt, CancelMode mode) {
  return mode == CancelMode::Batch || prompt.ask(question);
}

QString usualQuestion(const QString& number) {
  return u"您的操作将取消当前选中的已审核单据："_qs + number + u"，确认吗？"_qs;
}

}  // namespace jxc::cancel_checks
