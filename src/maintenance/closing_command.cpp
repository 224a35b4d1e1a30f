#include "maintenance/closing_command.h"

#include "core/at_work.h"
#include "core/backup.h"
#include "core/clock.h"
#include "core/owner.h"
#include "core/rights.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"
#include "core/verified_copy.h"
#include "engine/bulk.h"

#include <QDir>

namespace jxc::closing {
namespace closing_command_detail {

/// Everything that an operator has to agree to.
bool isAgreed(const Command& command, Prompt& prompt) {
  const QString& day = command.request.day;
  if (!closedAlready(day).isEmpty() && !prompt.ask(day + u"日期已经结算过了，还要重新结算吗？"_qs)) return false;
  if (day == clock::today() &&
      !prompt.ask(u"结算日期是今天！\r\n\r\n结算后今天的单据和账目都不能再增加或改动，确定吗？"_qs))
    return false;
  const QString backup = command.backsUp ? u"数据结算前将备份数据库。\r\n\r\n"_qs : QString();
  if (!prompt.ask(backup + u"结算日期【"_qs + day + u"】及之前的所有数据将被删除。\r\n\r\n您确定要进行数据结算吗！"_qs))
    return false;
  return command.backsUp ||
         prompt.ask(u"没有选择“结算时备份数据库”，删除的数据将不能再查看，也不能恢复！\r\n\r\n确定不备份吗？"_qs);
}

/// The copy lies beside the backups and is known from them by its name: it is never thrown away as too old.
QString archiveName() {
  return backupFileIn(backupFolder(accountDb()), u"(数据结算)"_qs);
}

}  // namespace closing_command_detail

std::optional<RowSet> closePeriod(const Command& command, Prompt& prompt, const Progress& progress,
                                  const std::function<void(const RowSet&)>& show) {
  using namespace closing_command_detail;
  if (session().r_sn != QStringView(builtInSn)) {
    prompt.notice(u"只有系统管理员才能使用此功能！"_qs);
    return {};
  }
  if (isRefused(dayRefusal(command.request.day), prompt)) return {};
  const auto alone = takeForOneself(AloneFor::Closing, prompt);
  if (!alone) return {};
  // Others could post until a moment ago.
  const RowSet now = whatGoes(command.request);
  if (const QString changed = changesBetween(command.listed, now); !changed.isEmpty()) {
    if (show) show(now);
    if (!prompt.ask(u"列出结算内容以后，数据又有了变化：\r\n\r\n%1\r\n\r\n要按现在的内容继续吗？"_qs.arg(changed)))
      return {};
  }
  if (!isAgreed(command, prompt)) return {};
  QString archive;
  if (command.backsUp) {
    archive = archiveName();
    const auto report = [&](int percent) { return !progress || progress(percent, u"备份数据库"_qs); };
    if (!makeVerifiedCopy(accountDb(), archive, report)) return {};
    if (progress) progress(100, {});  // its bar goes before something is told
    prompt.notice(u"备份成功！备份文件保存在："_qs + QDir::toNativeSeparators(archive));
  }
  std::optional<RowSet> sheet;
  try {
    asOwner(prompt, u"数据结算"_qs, [&] {
      sheet = closeBooks(command.request, archive, progress, now);
      if (!sheet) return;
      // It is closed; that the file keeps its size, because it was stopped or another one reads, changes no figure.
      giveRoomBack(accountDb(), [&] { return !progress || progress(99, u"整理数据库文件"_qs); });
    });
  } catch (const ClosingDiffers& error) {
    if (progress) progress(100, {});
    prompt.notice(QString::fromUtf8(error.what()));
  }
  if (!sheet) return {};
  if (progress) progress(100, {});
  prompt.notice(u"结算完成！"_qs);
  return sheet;
}

}  // namespace jxc::closing
