#include "maintenance/account_sets.h"

#include "core/account_place.h"
#include "core/backup.h"
#include "core/data_module.h"
#include "core/file_names.h"
#include "core/numbers.h"
#include "core/program_directory.h"
#include "core/refusal.h"
#include "core/schema/schema.h"
#include "core/session.h"
#include "core/set_files.h"
#include "core/startup.h"
#include "core/text.h"
#include "core/verified_copy.h"
#include "engine/file_use.h"
#include "maintenance/backups.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <array>
#include <optional>
#include <string>

namespace jxc {
namespace account_sets_detail {

constexpr const char* kSelect =
    "select id,zt_sn,zt_name,zt_default,zt_forbid,zt_note,zt_dbname from jxc_xtzt order by id";

template <class... Args>
std::int64_t change(const char* sql, const Args&... args) {
  const std::array<Value, sizeof...(Args)> values{Value(args)...};
  return catalogueDb().execute(sql, values);
}

QString dataFile(const QString& name) {
  return programPath(QStringLiteral("data/") + name);
}

/// Where a set waits whose row is about to go.
QString leavingName(const QString& file) {
  return file + QStringLiteral(".del");
}

AccountSet setOf(const Row& row) {
  AccountSet set;
  set.id = row.integer("id");
  set.sn = row.text("zt_sn");
  set.name = row.text("zt_name");
  set.note = row.text("zt_note");
  set.isDefault = row.flag("zt_default");
  set.isForbidden = row.flag("zt_forbid");
  set.dbName = row.text("zt_dbname");
  set.file = dataFile(set.dbName);
  set.address = addressIn(set.file);
  return set;
}

QString placeOf(const AccountSet& set) {
  if (!QFileInfo::exists(set.file)) return QStringLiteral("文件不见了");
  return set.address.isEmpty() ? QStringLiteral("本机文件") : QStringLiteral("服务器");
}

void ensureDefaultRow() {
  if (catalogueDb().lookup("select zt_sn from jxc_xtzt where zt_default<>0").isNull())
    change("update jxc_xtzt set zt_default=1 where zt_sn='100001'");
}

/// What a new set or a deletion that was cut off has left. The row says which way it goes: a finished file without its
/// name gets it when its row is there, and a set whose row is gone goes.
void finishWhatWasCutOff() {
  static const QRegularExpression name(QStringLiteral("^(jxc_\\d+\\.mdb)\\.(new|del)$"));
  const QDir folder(programPath(QStringLiteral("data")));
  Transaction transaction(catalogueDb());  // nobody else is in the middle of one
  for (const QString& left :
       folder.entryList({QStringLiteral("jxc_*.mdb.new"), QStringLiteral("jxc_*.mdb.del")}, QDir::Files)) {
    const QRegularExpressionMatch match = name.match(left);
    if (!match.hasMatch()) continue;
    const std::array<Value, 1> set{Value(match.captured(1))};
    const bool isListed = !catalogueDb().lookup("select zt_sn from jxc_xtzt where zt_dbname=?", set).isNull();
    const QString file = dataFile(match.captured(1)), beside = dataFile(left);
    if (isListed && !QFileInfo::exists(file))
      moveSetFile(beside, file);
    else if (!isListed || left.endsWith(QStringLiteral(".new")))
      removeSetFile(beside);
    if (!QFileInfo::exists(file)) removeSetFile(file);  // its log, when the rest of it has gone
  }
}

/// One more than the greatest, and never one whose file is there: it may be all that is left of a shop.
QString freeSerial() {
  QString sn = nextSerialZT("jxc_xtzt", "zt_sn");
  const auto taken = [&sn] {
    const QString file = dataFile(QStringLiteral("jxc_%1.mdb").arg(sn));
    return QFileInfo::exists(file) || QFileInfo::exists(leavingName(file)) ||
           QFileInfo::exists(unfinishedAtConsole(file));
  };
  while (taken())
    sn = QString::number(sn.toInt() + 1);
  return sn;
}

/// A failure in the words that it has for the operator.
QString wordsOf(const std::exception& failure) {
  const auto* const ours = dynamic_cast<const DbError*>(&failure);
  return ours ? ours->message() : QString::fromUtf8(failure.what());
}

Refusal nameless(const QString& name) {
  return {name.isEmpty(), QStringLiteral("帐套名称必须填写！"), Subject::Name};
}

Refusal inUse(const AccountSet& set, const char16_t* what) {
  return {set.address.isEmpty() && isAccountFileInUse(set.file),
          QStringLiteral("帐套“%1”正在使用，%2").arg(set.name, QString::fromUtf16(what))};
}

bool isSetInUse(const AccountSet& set) {
  return set.dbName.compare(session().dbName, Qt::CaseInsensitive) == 0;
}

/// A copy of the set under its name and the moment; false when stopped. Throws DbError.
bool copySet(const AccountSet& set, const QString& file, const CopyStep& step) {
  if (isSetInUse(set)) return backUpAs(file, step);
  const std::unique_ptr<Database> books =
      set.address.isEmpty() ? openSqlite(set.file, {.readOnly = true, .essential = false}) : openAccountFile(set.file);
  return makeVerifiedCopy(*books, file, step);
}

/// The books of a set that is not in use.
std::unique_ptr<Database> openSet(const AccountSet& set) {
  if (!set.address.isEmpty()) return openAccountFile(set.file);
  return openSqlite(set.file, {.essential = false});
}

/// The backup as the file of a set. What stands there, and is no set that opens, stays beside it under another name;
/// whenever this is cut off, the next opening of the catalogue finds the one file or the other. False when stopped.
bool restoreAnew(const AccountSet& set, OpenedBackup& backup, const CopyReport& report) {
  logRestore(backup, {});
  backup.database().execute("update jxc_backupzk set bz_set=''");  // the shop's own backups are not this set's
  const QString beside = unfinishedSet(set.file);
  removeSetFile(beside);
  if (!makeVerifiedCopy(backup.database(), beside, report, Beside::Nothing)) return false;
  const QString aside = set.file + QStringLiteral(".old-") + backupStamp();
  const bool stoodThere = QFileInfo::exists(set.file);
  if (stoodThere) moveSetFile(set.file, aside);
  try {
    moveSetFile(beside, set.file);
  } catch (const DbError&) {
    // Not restored after all, and nothing that the next opening of the catalogue would take for a set.
    removeSetFile(beside);
    if (stoodThere) moveSetFile(aside, set.file);
    throw;
  }
  return true;
}

}  // namespace account_sets_detail

AccountSets::AccountSets() : remarks_(ensureCatalogue()) {
  dataModule().openCatalogue();
  try {
    account_sets_detail::finishWhatWasCutOff();
  } catch (...) {
    dataModule().closeCatalogue();
    throw;
  }
}

AccountSets::~AccountSets() {
  dataModule().closeCatalogue();
}

RowSet AccountSets::rows() const {
  const RowSet stored = catalogueDb().select(account_sets_detail::kSelect);
  RowSet rows({"id", "zt_sn", "zt_name", "zt_default", "zt_forbid", "zt_note", "zt_dbname", "place"});
  for (const Row row : stored) {
    const AccountSet set = account_sets_detail::setOf(row);
    rows.addInteger(set.id);
    rows.addText(set.sn.toStdString());
    rows.addText(set.name.toStdString());
    rows.addInteger(set.isDefault ? 1 : 0);
    rows.addInteger(set.isForbidden ? 1 : 0);
    rows.addText(set.note.toStdString());
    rows.addText(set.dbName.toStdString());
    rows.addText(account_sets_detail::placeOf(set).toStdString());
  }
  return rows;
}

std::optional<AccountSet> AccountSets::find(std::int64_t id) const {
  for (const Row row : catalogueDb().select(account_sets_detail::kSelect))
    if (row.integer("id") == id) return account_sets_detail::setOf(row);
  return {};
}

bool AccountSets::add(const AccountSetDraft& draft, Prompt& prompt) {
  using namespace account_sets_detail;
  if (isRefused(nameless(draft.name.trimmed()), prompt)) return false;
  QString file;
  try {
    // The file is whole before its row is kept, and has its name after it: whenever this is cut off, the row says
    // whether there is a set, and the next opening of the catalogue gives the file its name or takes it away.
    Transaction transaction(catalogueDb());
    const QString sn = freeSerial();
    const QString dbName = QStringLiteral("jxc_%1.mdb").arg(sn);
    file = dataFile(dbName);
    if (draft.isDefault) change("update jxc_xtzt set zt_default=0");
    change(
        "insert into jxc_xtzt (zt_sn,zt_name,zt_default,zt_forbid,zt_note,zt_dbname,zt_dbpwd) "
        "values (?,?,?,?,?,?,'')",
        sn, sanitizeText(draft.name.trimmed()), draft.isDefault ? 1 : 0, draft.isForbidden ? 1 : 0,
        sanitizeText(draft.note), dbName);
    makeUnfinishedSet(file);
    transaction.commit();
  } catch (const std::exception& failure) {
    if (!file.isEmpty()) removeSetFile(unfinishedSet(file));
    prompt.notice(QStringLiteral("新帐套没有建成：") + wordsOf(failure));
    return false;
  }
  finishWhatWasCutOff();
  return true;
}

bool AccountSets::modify(const AccountSetDraft& draft, Prompt& prompt) {
  using namespace account_sets_detail;
  if (isRefused(nameless(draft.name.trimmed()), prompt)) return false;
  Transaction transaction(catalogueDb());
  const std::optional<AccountSet> set = find(draft.id);
  if (!set) return !isRefused({QStringLiteral("该帐套已被删除！")}, prompt);
  change("update jxc_xtzt set zt_name=?,zt_note=?,zt_default=?,zt_forbid=? where id=?",
         sanitizeText(draft.name.trimmed()), sanitizeText(draft.note), draft.isDefault ? 1 : 0,
         draft.isForbidden && !set->isBuiltIn() ? 1 : 0, draft.id);
  if (draft.isDefault) change("update jxc_xtzt set zt_default=0 where id<>?", draft.id);
  transaction.commit();
  return true;
}

bool AccountSets::remove(std::int64_t id, Prompt& prompt) {
  using namespace account_sets_detail;
  const std::optional<AccountSet> set = find(id);
  if (!set) return false;
  const auto hindrance = [](const AccountSet& now) {
    if (now.isDefault) return Refusal(QStringLiteral("默认帐套不能删除！"));
    if (now.isBuiltIn()) return Refusal(QStringLiteral("系统内置帐套不能删除！"));
    return inUse(now, u"不能删除！");
  };
  if (isRefused(hindrance(*set), prompt)) return false;
  const QString question =
      set->address.isEmpty()
          ? QStringLiteral("删除帐套后，该帐套所包含的数据也将一起被删除，\r\n\r\n确定要删除所选的帐套信息吗？")
          : QStringLiteral(
                "该帐套的数据在服务器上。这里只删除本机指向服务器的连接，服务器上的数据全部保留。"
                "\r\n\r\n确定要删除所选的帐套信息吗？");
  if (!prompt.ask(question)) return false;

  const QString leaving = leavingName(set->file);
  std::optional<Refusal> refusal;
  bool isMoved = false;
  try {
    Transaction transaction(catalogueDb());
    const std::optional<AccountSet> now = find(id);
    if (!now) return true;
    if (Refusal meanwhile = hindrance(*now)) {
      refusal = std::move(meanwhile);
    } else {
      if (QFileInfo::exists(now->file)) moveSetFile(now->file, leaving);
      isMoved = true;
      change("delete from jxc_xtzt where id=?", id);
      ensureDefaultRow();
      transaction.commit();
    }
  } catch (const DbError& failure) {
    // Not deleted after all: the set stands where it stood.
    if (isMoved && QFileInfo::exists(leaving)) moveSetFile(leaving, set->file);
    prompt.notice(failure.message());
    return false;
  }
  if (refusal) return !isRefused(*refusal, prompt);
  if (QFileInfo::exists(leaving) && !removeSetFile(leaving))
    prompt.notice(QStringLiteral("帐套已删除，但是它的文件删不掉：") + QFileInfo(leaving).fileName());
  return true;
}

void AccountSets::ensureDefault() {
  Transaction transaction(catalogueDb());
  account_sets_detail::ensureDefaultRow();
  transaction.commit();
}

std::optional<QString> backUpAccountSet(const AccountSet& set, const QString& folder, const CopyStep& step,
                                        Prompt& prompt) {
  using namespace account_sets_detail;
  const QString path = folder.trimmed();
  if (refused({{path.isEmpty(), QStringLiteral("备份路径必须填写！")},
               {!path.isEmpty() && !QFileInfo(path).isDir(), QStringLiteral("备份失败，文件夹不存在！")}},
              prompt))
    return {};
  // The name of the set may hold what no file may; the set keeps it.
  const QString file = freeFileName(path, asFileName(set.name) + backupStamp(), QStringLiteral(".DAT"));
  try {
    if (!copySet(set, file, step)) return {};
  } catch (const std::exception& failure) {
    prompt.notice(QStringLiteral("备份失败：") + wordsOf(failure));
    return {};
  }
  prompt.notice(QStringLiteral("备份完成！"));
  prompt.say(QStringLiteral("已备份到 ") + QDir::toNativeSeparators(file));
  return file;
}

bool mayRestoreAccountSet(const AccountSet& set, Prompt& prompt) {
  using namespace account_sets_detail;
  return !refused({{isSetInUse(set), QStringLiteral("该帐套为当前正在使用帐套，请在软件“系统维护”窗口，\r\n\r\n"
                                                    "打开“备份恢复数据”窗口进行恢复操作！")},
                   inUse(set, u"不能恢复！")},
                  prompt);
}

bool restoreAccountSet(const AccountSet& set, OpenedBackup& backup, Prompt& prompt, const RestoreReports& reports) {
  using namespace account_sets_detail;
  const bool isThere = QFileInfo::exists(set.file);
  if (!mayRestoreAccountSet(set, prompt) ||
      isRefused({isThere && QFileInfo(backup.file).canonicalFilePath() == QFileInfo(set.file).canonicalFilePath(),
                 QStringLiteral("所选的就是该帐套自己的文件，不用恢复。")},
                prompt))
    return false;
  if (set.address.isEmpty()) refuseNetworkShare(set.file);  // neither written into nor replaced there
  std::unique_ptr<Database> books;
  QString before = QStringLiteral("帐套“%1”的文件不见了，将由这份备份代替。").arg(set.name);
  try {
    if (isThere) books = openSet(set);
  } catch (const DbError& failure) {
    // A server that does not answer, or a program that is at the file at this moment: it may be sound.
    if (!set.address.isEmpty() || failure.kind() == DbError::Kind::Busy) throw;
    before = QStringLiteral("帐套“%1”的文件打不开，将由这份备份代替，原来的文件改名保留：%2")
                 .arg(set.name, failure.message());
  }
  if (books) return restoreBackup(backup, *books, set.name, prompt, reports);
  return prompt.ask(backup.words().join(QStringLiteral("\r\n")) + QStringLiteral("\r\n\r\n") + before +
                    QStringLiteral("\r\n\r\n确定要恢复吗？")) &&
         restoreAnew(set, backup, reports.writing);
}

}  // namespace jxc
