#include "core/passwords.h"

#include "core/clock.h"
#include "core/log.h"
#include "core/password_hash.h"
#include "core/schema/schema.h"
#include "core/statements.h"
#include "core/text.h"
#include "core/wiping.h"
#include "engine/bulk.h"

#include <algorithm>
#include <optional>

namespace jxc {
namespace passwords_detail {

/// Stands in the column of the plain password where there is a hash. No older build could store this character.
constexpr char16_t kHashed[] = u"^";

constexpr int kFreeFailures = 5;  // in a row
constexpr int kFirstWait = 30;    // seconds; each further failure doubles it
constexpr int kLongestWait = 15 * 60;

struct Kept {
  QString name;
  QString hash;        // empty: no password, or one of an older build
  QString plain;       // of an older build
  bool isOld = true;   // nobody has set it with this build: the forms that older ones stored count too
  int failures = 0;    // since he last got in
  QString lastFailed;  // "yyyy-MM-dd HH:mm:ss"
};

bool hasTable(Database& database) {
  return stands(database, "select mm_hash from jxc_adminmm");
}

Kept keptOf(Database& database, const QString& number) {
  const std::array<Value, 1> key{Value(number)};
  Kept kept;
  bool isHashed = false;
  for (const Row row : database.select("select a_name,a_pwd from jxc_admin where a_sn=?", key)) {
    kept.name = row.text("a_name");
    kept.plain = row.text("a_pwd");
    isHashed = kept.plain == kHashed;
  }
  if (isHashed) {
    kept.plain.clear();
    kept.hash = QString::fromUtf16(kHashed);  // of no password: a mark whose hash is gone lets nobody in
  } else if (!hasTable(database)) {
    return kept;
  }
  for (const Row row : database.select("select * from jxc_adminmm where a_sn=?", key)) {
    // What an older build has written since then holds.
    if (isHashed && !row.text("mm_hash").isEmpty()) kept.hash = row.text("mm_hash");
    if (kept.plain.isEmpty()) kept.isOld = row.flag("mm_old");
    kept.failures = static_cast<int>(row.integer("mm_fails"));
    kept.lastFailed = row.text("mm_failed");
  }
  return kept;
}

bool isIt(const Kept& kept, QStringView typed) {
  return kept.plain.isEmpty() ? isPasswordOf(kept.hash, typed) : kept.plain == passwordIn(typed);
}

/// As typed; and where an older build has stored it, as each of its inputs would have changed it.
bool matches(const Kept& kept, const QString& typed) {
  if (isIt(kept, typed)) return true;
  if (!kept.isOld) return false;
  const WipedText stored(sanitizeKeyword(passwordIn(typed)));
  const WipedText compared(sanitizeText(passwordIn(typed)));
  const QString& asStored = stored;
  const QString& asCompared = compared;
  if (asStored != passwordIn(typed) && isIt(kept, asStored)) return true;
  return asCompared != asStored && isIt(kept, asCompared);
}

void keepFailures(const QString& number, int failures, const QString& moment) {
  const QString last = failures == 0 ? QString() : moment;
  if (execSql("update jxc_adminmm set mm_fails=?,mm_failed=? where a_sn=?", failures, last, number) > 0) return;
  insertRow("jxc_adminmm",
            {{"a_sn", number}, {"mm_hash", u""}, {"mm_old", 1}, {"mm_fails", failures}, {"mm_failed", last}});
}

int waitAfter(int failures) {
  if (failures < kFreeFailures) return 0;
  return std::min(kLongestWait, kFirstWait << std::min(failures - kFreeFailures, 10));
}

/// Seconds that he has to wait yet.
int waitsYet(const QString& number, const Kept& kept) {
  const int wait = waitAfter(kept.failures);
  const QDateTime failed = QDateTime::fromString(kept.lastFailed, u"yyyy-MM-dd HH:mm:ss"_qs);
  if (wait == 0 || !failed.isValid()) return 0;
  const qint64 passed = failed.secsTo(clock::now());
  if (passed >= 0) return static_cast<int>(std::max<qint64>(0, wait - passed));
  // A clock went back: the wait begins anew, or it would last until the clock is where it was.
  Transaction transaction(accountDb());
  keepFailures(number, kept.failures, clock::stamp());
  transaction.commit();
  return wait;
}

QString inWords(int seconds) {
  return seconds < 60 ? QStringLiteral("%1秒").arg(seconds) : QStringLiteral("%1分钟").arg((seconds + 59) / 60);
}

Refusal mustWait(int failures, int seconds, Subject input) {
  return {seconds > 0, QStringLiteral("密码连续输错%1次，请%2后再试！").arg(failures).arg(inWords(seconds)), input};
}

void countFailure(const QString& number, const Kept& kept) {
  keepFailures(number, kept.failures + 1, clock::stamp());
  writeLog(QStringLiteral("密码错误，操作员：%1，连续第%2次").arg(kept.name).arg(kept.failures + 1));
}

/// `hash` is empty when what is kept stays.
void welcome(const QString& number, const QString& hash) {
  if (!hash.isEmpty()) keepPassword(number, hash);
  keepFailures(number, 0, {});
}

}  // namespace passwords_detail

bool hasPassword(Database& database, const QString& number) {
  const std::array<Value, 1> key{Value(number)};
  return !database.lookup("select a_pwd from jxc_admin where a_sn=?", key).text().isEmpty();
}

bool hasAnyPassword(Database& database) {
  return !database.lookup("select top 1 a_sn from jxc_admin where a_pwd<>''").isNull();
}

bool isHisPassword(Database& database, const QString& number, const QString& typed) {
  return passwords_detail::matches(passwords_detail::keptOf(database, number), typed);
}

void keepPassword(const QString& number, const QString& hash) {
  const QString mark = hash.isEmpty() ? QString() : QString::fromUtf16(passwords_detail::kHashed);
  execSql("update jxc_admin set a_pwd=? where a_sn=?", mark, number);
  passwords_detail::keepFailures(number, 0, {});
  execSql("update jxc_adminmm set mm_hash=?,mm_old=0 where a_sn=?", hash, number);
}

void forgetPassword(const QString& number) {
  execSql("delete from jxc_adminmm where a_sn=?", number);
}

bool admits(const QString& number, const QString& typed, const Refusal& wrong, Prompt& prompt) {
  using namespace passwords_detail;
  const auto waiting = [&](const Kept& kept) { return mustWait(kept.failures, waitsYet(number, kept), wrong.about); };
  const Kept before = keptOf(accountDb(), number);
  if (isRefused(waiting(before), prompt)) return false;
  const bool isRight = matches(before, typed);
  const bool isOld = before.isOld && !passwordIn(typed).isEmpty();
  const QString hash = isRight && isOld ? passwordHash(typed) : QString();
  // Comparing takes its time, and others may try at many stations at once. Attempts count in the order in which they
  // end here: who comes behind the fifth failure waits, whatever he typed. Who changes nothing asks without a
  // transaction: a set that may only be read lets him in.
  std::optional<Transaction> transaction;
  if (!isRight || isOld || before.failures > 0) transaction.emplace(accountDb());
  const Kept now = keptOf(accountDb(), number);
  Refusal refusal = waiting(now);
  if (transaction && !refusal) {
    if (isRight)
      welcome(number, hash);
    else
      countFailure(number, now);
  }
  if (transaction) transaction->commit();
  transaction.reset();
  if (!refusal && !isRight) refusal = wrong;
  return !isRefused(refusal, prompt);
}

void hashOldPasswords(Database& database) {
  using namespace passwords_detail;
  const std::array<Value, 1> hashed{Value(QString::fromUtf16(kHashed))};
  const RowSet operators = database.select("select id,a_sn,a_pwd from jxc_admin where a_pwd<>'' and a_pwd<>?", hashed);
  const bool isThere = hasTable(database);
  if (isThere && operators.isEmpty()) return;
  Transaction transaction(database);
  if (!isThere) createTable(database, "jxc_adminmm");
  for (const Row row : operators) {
    const std::array<Value, 1> number{row.value("a_sn")};
    const std::array<Value, 2> hash{row.value("a_sn"), Value(passwordHash(row.text("a_pwd")))};
    const std::array<Value, 2> mark{hashed[0], row.value("id")};
    database.execute("delete from jxc_adminmm where a_sn=?", number);
    database.execute("insert into jxc_adminmm (a_sn,mm_hash,mm_old,mm_fails,mm_failed) values (?,?,1,0,'')", hash);
    database.execute("update jxc_admin set a_pwd=? where id=?", mark);
  }
  transaction.commit();
}

void forgetPlainPasswords(Database& database) {
  forgetReplaced(database, "jxc_admin");
}

}  // namespace jxc
