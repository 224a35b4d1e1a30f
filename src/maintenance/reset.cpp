#include "maintenance/reset.h"

#include "core/at_work.h"
#include "core/backup.h"
#include "core/log.h"
#include "core/owner.h"
#include "core/period_lock.h"
#include "core/refusal.h"
#include "core/schema/schema.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"
#include "core/verified_copy.h"
#include "engine/bulk.h"
#include "engine/server.h"
#include "engine/waiting.h"

#include <QDir>
#include <QStringList>

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace jxc {
namespace reset_detail {

using Progress = std::function<bool(int percent, const QString& doing)>;

/// What a shop keeps in tables that a reset empties, and would not count among its documents.
constexpr std::array<std::string_view, 22> besides = {
    "jxc_yhzh",   "jxc_htgl", "jxc_khhtgl", "jxc_gdzc", "jxc_ghsbj", "jxc_khbj",        "jxc_zpxx", "jxc_tx",
    "jxc_ghslx",  "jxc_khlx", "jxc_ywyrz",  "jxc_bqjl", "jxc_txm",   "jxc_goodsremind", "jxc_dxdz", "jxc_lsfdxx",
    "jxc_hyczzs", "jxc_djbz", "jxc_fylx",   "jxc_dept", "jxc_kdgs",  "jxc_yjlx"};
/// What is not lost there but goes back to what it was on the first day.
constexpr std::array<std::string_view, 8> settings = {"jxc_fkfs",  "jxc_jfsz",  "jxc_poscs", "jxc_email",
                                                      "jxc_smscs", "jxc_ftpcs", "jxc_tmdy",  "jxc_hyyh"};

std::int64_t rowsOf(std::string_view table) {
  return static_cast<std::int64_t>(lookupNumber("select count(*) from " + std::string(table)));
}

/// The rows that somebody entered: a new set has some of its own.
std::int64_t enteredRows(std::string_view table) {
  const schema::TableDefinition* const definition = schema::findDefinition(table);
  return rowsOf(table) - static_cast<std::int64_t>(definition ? definition->seeds.size() : 0);
}

QString purposeOf(std::string_view table) {
  for (const schema::TableEntry& entry : schema::tables())
    if (entry.name == table) return words(entry.purpose);
  return words(table);
}

QString counted(std::string_view table) {
  const std::int64_t rows = enteredRows(table);
  return rows > 0 ? QStringLiteral("%1 %2").arg(purposeOf(table)).arg(rows) : QString();
}

template <class Tables, class Say>
QString listed(const Tables& tables, Say say) {
  QStringList all;
  for (const std::string_view table : tables)
    if (const QString each = say(table); !each.isEmpty()) all << each;
  return all.join(u'、');
}

/// A verified copy where backups go, under a name that no tidying of old backups takes away: it is the last that holds
/// what is about to go. False when it failed, which was told, or was stopped.
bool backUp(const Progress& progress, Prompt& prompt) {
  const QString file = backupFileIn(backupFolder(accountDb()), QStringLiteral("(清理前)"));
  try {
    const auto report = [&](int percent) { return !progress || progress(percent, QStringLiteral("备份数据库")); };
    if (!makeVerifiedCopy(accountDb(), file, report)) return false;
  } catch (const DbError& failure) {
    prompt.notice(QStringLiteral("备份没有写成，数据没有清理：") + failure.message());
    return false;
  }
  prompt.notice(QStringLiteral("备份成功！备份文件保存在") + QDir::toNativeSeparators(file));
  return true;
}

/// The backup that comes first, or the operator's word that he goes without.
bool isBackedUp(BackupFirst backup, const Progress& progress, Prompt& prompt) {
  if (backup == BackupFirst::Always ||
      prompt.ask(QStringLiteral("系统初始化之前建议先备份数据库，现在是否备份数据库？")))
    return backUp(progress, prompt);
  return prompt.ask(QStringLiteral("没有备份，清理掉的数据就再也找不回来。\r\n\r\n确定不备份，继续清理吗？"));
}

void clear(Clearing what) {
  const LongWork longWork;
  const DeletingMuch deleting(accountDb());
  Transaction transaction(accountDb());
  if (what == Clearing::Business) {
    resetBusinessAndStock();
    // Nothing is left behind the locked day, and what is entered from now on may lie before it. What closings carried
    // has gone as well: their archives can still be looked into, but they hold no day locked any more.
    execSql("update jxc_jsda set da_ql=1");
    if (!PeriodLock().day().isEmpty()) setPeriodLock({});
  } else {
    takeLogRows(accountDb(), QStringLiteral("删除所有数据"));
    createAllTables();
    writeLog(QStringLiteral("删除所有数据"));
  }
  transaction.commit();
}

}  // namespace reset_detail

QString clearingInWords(Clearing what) {
  using namespace reset_detail;
  QStringList lines;
  lines
      << QStringLiteral(
             "将清除：全部单据，库存流水 %1 行，现金银行账 %2 行，往来账 %3 行，库存 %4 行，日志 %5 行（另存为文件）。")
             .arg(rowsOf("jxc_goodslist"))
             .arg(rowsOf("jxc_xjyh"))
             .arg(rowsOf("jxc_ysyfk"))
             .arg(rowsOf("jxc_kcsp"))
             .arg(rowsOf("jxc_log"));
  if (what == Clearing::All) {
    lines << QStringLiteral(
                 "还会清除：商品 %1、客户 %2、供货商 %3、员工 %4、会员 %5、操作员 %6，以及全部设置。"
                 "只留下操作员 admin，密码为空。")
                 .arg(rowsOf("jxc_goods"))
                 .arg(rowsOf("jxc_khxx"))
                 .arg(rowsOf("jxc_ghsxx"))
                 .arg(rowsOf("jxc_user"))
                 .arg(rowsOf("jxc_hyxx"))
                 .arg(rowsOf("jxc_admin"));
    return lines.join(QStringLiteral("\r\n"));
  }
  lines << QStringLiteral("客户、供货商的欠款和所有库存都归零。");
  if (const QString more = listed(besides, counted); !more.isEmpty())
    lines << QStringLiteral("单据以外还会清除：") + more + u'。';
  lines << QStringLiteral("还会恢复为初始值：") + listed(settings, purposeOf) +
               QStringLiteral("，本店名称“%1”。").arg(lookupValue("select fd_name from jxc_fd"));
  lines << QStringLiteral(
               "保留：商品 %1、客户 %2、供货商 %3、员工 %4、仓库 %5、会员 %6（储值余额共 %7 元）、操作员和系统参数。")
               .arg(rowsOf("jxc_goods"))
               .arg(rowsOf("jxc_khxx"))
               .arg(rowsOf("jxc_ghsxx"))
               .arg(rowsOf("jxc_user"))
               .arg(rowsOf("jxc_ckxx"))
               .arg(rowsOf("jxc_hyxx"))
               .arg(lookupNumber("select sum(hy_ye) from jxc_hyxx"), 0, 'f', 2);
  return lines.join(QStringLiteral("\r\n"));
}

Cleared clearData(Clearing what, const QString& question, BackupFirst backup,
                  const std::function<bool(int percent, const QString& doing)>& progress, Prompt& prompt) {
  using namespace reset_detail;
  if (isRefused({session().r_sn != u"100001", QStringLiteral("只有系统管理员才能使用此功能！")}, prompt))
    return Cleared::Refused;
  // Before the first question: who comes to work meanwhile waits, and reads why.
  const std::unique_ptr<SetForOneself> alone = takeForOneself(AloneFor::Reset, prompt);
  if (!alone || !isBackedUp(backup, progress, prompt)) return Cleared::Refused;
  if (!prompt.ask(question + QStringLiteral("\r\n\r\n") + clearingInWords(what))) return Cleared::Declined;
  try {
    if (!asOwner(prompt, QStringLiteral("数据清理"), [what] { clear(what); })) return Cleared::Refused;
  } catch (const DbError& failure) {
    prompt.notice(QStringLiteral("数据没有清理，全部保持原样：") + failure.message());
    return Cleared::Refused;
  }
  // With what the shop was, of which the file still holds the remains. It is cleared: that they stay there for a while,
  // because this was stopped or another one reads, changes no figure.
  if (!isOnServer(accountDb()))
    giveRoomBack(accountDb(), [&] { return !progress || progress(99, QStringLiteral("整理数据库文件")); });
  if (progress) progress(100, {});
  return Cleared::Done;
}

void saveShopName(const QString& name, const QString& shortName, const QString& telephone, const QString& address) {
  Transaction transaction(accountDb());
  const RowSet rows = openSelect("select id from jxc_company order by id");
  const std::int64_t id = rows.isEmpty() ? insertRow("jxc_company", {{"c_lxr", ""}}) : rows.front().integer("id");
  updateRow("jxc_company", id,
            {{"c_name", sanitizeText(name.trimmed())},
             {"c_jc", sanitizeText(shortName.trimmed())},
             {"c_tele", sanitizeText(telephone.trimmed())},
             {"c_address", sanitizeText(address.trimmed())}});
  transaction.commit();
}

}  // namespace jxc
