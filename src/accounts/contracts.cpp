#include "accounts/contracts.h"

#include "core/clock.h"
#include "core/log.h"
#include "core/login.h"
#include "core/numbers.h"
#include "core/pinyin.h"
#include "core/refusal.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"
#include "masterdata/partners.h"
#include "stock/contract_ties.h"
#include "stock/document_family.h"

#include <QStringList>

namespace jxc::contracts {
namespace contracts_detail {

using attachments::Place;

constexpr qsizetype kMostOfName = 64, kMostOfLetters = 32;

RowSet rowOf(const QString& number) {
  return openSelect("select * from jxc_htgl where ht_sn=? and ht_sn<>''", number);
}
Place placeOf(const Row& row) {
  return {row.text("ht_path"), row.text("ht_fujian"), row.text("ht_fjname"),
          row.text("ht_type") == words(customerSide.type) ? &customerSide : &supplierSide};
}
Refusal gone() {
  return {u"该合同刚刚被其他操作员删除！"_qs};
}

/// All that a form shows or changes of a contract; its tie moves with documents.
QString shownOf(const Row& row) {
  QStringList texts;
  for (const char* column : {"ht_rq", "ht_name", "ht_note", "ht_fujian", "ht_fjname", "u_sn", "ghs_sn"})
    texts << row.text(column);
  return texts.join(u'\n');
}

/// Why a change can no longer be written.
Refusal overtakenBy(const Draft& draft) {
  if (draft.number.isEmpty()) return {};
  const RowSet rows = rowOf(draft.number);
  if (rows.isEmpty()) return gone();
  return {!draft.shown.isEmpty() && shownOf(rows.front()) != draft.shown,
          u"该合同刚刚被其他操作员修改，请取消后重新打开！"_qs};
}

/// The document that a contract is tied to no longer points to it.
void untie(const QString& number) {
  for (const DocumentFamily* family : {&families::purchaseReceipt, &families::sale})
    execSql(compose("update {} set ht_sn='' where ht_sn=?", {family->head}), number);
}

/// Whether the partner may stand on it: one who was there before may be disabled since, and is not gone by that.
Refusal partnerStands(const PartnerSide& side, const Draft& draft) {
  const Refusal left = partnerLeft(side, draft.partner);
  const RowSet before = rowOf(draft.number);
  const bool stays = !before.isEmpty() && before.front().text("ghs_sn") == draft.partner;
  return stays && !partnerName(side, draft.partner).isEmpty() ? Refusal() : left;
}

/// A file is noted before it goes on its way and struck off together with the row that names it: whatever breaks in
/// between, this station or the server of the books, it is known and removed. For a day it may still be on its way.
void noteOnItsWay(const Place& place) {
  insertRow("jxc_htwj", {{"ht_path", place.folder},
                         {"ht_fujian", place.stored},
                         {"ht_fjname", place.shown},
                         {"ht_type", words(place.side->type)},
                         {"ht_rq", clock::now().addDays(1).toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"))}});
}
/// Whether there was one.
bool strikeNote(const Place& place) {
  return execSql("delete from jxc_htwj where ht_fujian=?", place.stored) > 0;
}

/// No contract names the file: what there is of it goes at once. Where the books cannot be asked the note comes due by
/// itself. Waits for a commit that nobody has answered: a write has its turn only when the one before is over.
void letGo(const Place& place, bool isThere = true) {
  if (place.stored.isEmpty()) return;
  try {
    if (!isThere) {
      strikeNote(place);
      return;
    }
    execSql("update jxc_htwj set ht_rq='' where ht_fujian=?", place.stored);
    removeLeftFiles();
  } catch (const std::exception&) {
    // The operator is told why his contract was not saved; the note comes due by itself.
  }
}

/// Takes the file of a draft, if it has one. Nothing, after telling why, when it was refused or stopped.
std::optional<Place> taken(const PartnerSide& side, const Draft& draft, Prompt& prompt,
                           const attachments::Progress& progress) {
  Place place;
  if (draft.file.isEmpty()) return place;
  try {
    place = attachments::placeFor(side, draft.file, draft.keeper);
    noteOnItsWay(place);
    attachments::take(draft.file, place, progress);
    return place;
  } catch (const attachments::AttachmentStopped& stopped) {
    letGo(place, stopped.leavesPart());
    prompt.say(u"传输已取消，合同没有保存"_qs);
  } catch (const attachments::AttachmentError& failure) {
    letGo(place, failure.leavesPart());
    prompt.notice(QString::fromUtf8(failure.what()));
  }
  return {};
}

/// Its number. A changed one stands still.
QString write(const PartnerSide& side, const Draft& draft, const Place& place) {
  const QString name = sanitizeText(draft.name.trimmed()).left(kMostOfName);
  const QString letters = makeJm(name).left(kMostOfLetters);
  std::int64_t id = 0;
  QString number = draft.number;
  if (number.isEmpty()) {
    number = nextSerial("jxc_htgl", "ht_sn");
    id = insertRow("jxc_htgl", {{"gl_djh", u""},
                                {"ht_sn", number},
                                {"ht_rq", draft.date},
                                {"ht_name", name},
                                {"ht_jm", letters},
                                {"ht_note", draft.content},
                                {"ht_path", place.folder},
                                {"ht_fujian", place.stored},
                                {"ht_fjname", place.shown},
                                {"ht_type", words(side.type)},
                                {"a_name", session().a_name},
                                {"u_sn", draft.employee},
                                {"ghs_sn", draft.partner}});
    contract_ties::markNew(number, draft.ofDocument);
  } else {
    const RowSet rows = rowOf(number);
    id = rows.front().integer("id");
    updateRow("jxc_htgl", id,
              {{"gl_djh", contract_ties::standingDocument(number)},
               {"ht_rq", draft.date},
               {"ht_name", name},
               {"ht_jm", letters},
               {"ht_note", draft.content},
               {"a_name", session().a_name},
               {"u_sn", draft.employee},
               {"ghs_sn", draft.partner}});
    if (!place.stored.isEmpty()) {
      contract_ties::leaveFile(rows.front());
      updateRow("jxc_htgl", id, {{"ht_path", place.folder}, {"ht_fujian", place.stored}, {"ht_fjname", place.shown}});
    }
  }
  if (!place.stored.isEmpty() && !strikeNote(place))
    throw DbError(DbError::Kind::Other,
                  u"附件在保存时被另一台电脑删除了，请检查各台电脑的日期和时间，然后重新保存！"_qs);
  writeLog((draft.number.isEmpty() ? u"增加合同，编号："_qs : u"修改合同，编号："_qs) + number + u"，名称："_qs + name);
  return number;
}

/// A file whose end the operator waits for.
struct Awaited {
  QString stored;
  const attachments::Progress& progress;
};

/// Why the file that is waited for is still there, in words. The note of a file goes when the file has gone, or when
/// its server has said no to a call that nobody waited for. A file of another station waits until that one comes by.
std::optional<QString> removeLeft(const Awaited* awaited) {
  std::optional<QString> why;
  // Inside a transaction that may be taken back, the contract may come back as well.
  if (accountDb().inTransaction()) return why;
  for (const Row row : openSelect("select * from jxc_htwj where ht_rq<=?", clock::stamp())) {
    const Place place = placeOf(row);
    bool isDone = exists("select top 1 id from jxc_htgl where ht_fujian=?", place.stored);
    if (!isDone && awaited && awaited->stored == place.stored) {
      why = attachments::remove(place, awaited->progress);
      isDone = !why;
    } else if (!isDone) {
      isDone = attachments::removeBeside(place) != attachments::Leaving::Going;
    }
    if (isDone) execSql("delete from jxc_htwj where id=?", row.integer("id"));
  }
  return why;
}

/// The station that holds the file of a contract which another one deleted may not work with contracts for months.
const bool kComesByAtLogin = [] {
  loginHooks().emplace_back([] {
    try {
      removeLeftFiles();
    } catch (const std::exception&) {
      // A file that is left is no reason to keep anybody out.
    }
  });
  return true;
}();

}  // namespace contracts_detail

std::optional<Contract> openContract(const PartnerSide& side, const QString& number, Prompt& prompt) {
  namespace detail = contracts_detail;
  const RowSet rows = detail::rowOf(number);
  if (refused({{rows.isEmpty() || rows.front().text("ht_type") != words(side.type), detail::gone().text}}, prompt))
    return {};
  const Row row = rows.front();
  const QString employee = row.text("u_sn");
  return Contract{.id = row.integer("id"),
                  .number = number,
                  .name = row.text("ht_name"),
                  .date = row.text("ht_rq").left(10),
                  .partner = row.text("ghs_sn"),
                  .partnerName = partnerName(side, row.text("ghs_sn")),
                  .employee = employee,
                  .employeeName = lookupValue("select u_name from jxc_user where u_sn=?", employee),
                  .content = row.text("ht_note"),
                  .document = row.text("gl_djh"),
                  .attachment = row.text("ht_fjname"),
                  .shown = detail::shownOf(row)};
}

std::optional<QString> saveContract(const PartnerSide& side, const Draft& draft, Prompt& prompt,
                                    const attachments::Progress& progress) {
  namespace detail = contracts_detail;
  if (refused({{draft.name.trimmed().isEmpty(), u"合同名称必须填写！"_qs, Subject::Name},
               {draft.partner.isEmpty(), u"必须选择合同单位！"_qs, Subject::Partner},
               {draft.employee.isEmpty(), u"请选择经办人！"_qs, Subject::Employee}},
              prompt))
    return {};
  // The file first: a row that promises one which is not there would be worse than a file that nobody names.
  const auto taken = detail::taken(side, draft, prompt, progress);
  if (!taken) return {};
  QString number;
  Refusal overtaken;
  try {
    Transaction transaction(accountDb());
    overtaken = detail::partnerStands(side, draft);
    if (!overtaken) overtaken = detail::overtakenBy(draft);
    if (!overtaken) {
      number = detail::write(side, draft, *taken);
      transaction.commit();
    }
  } catch (...) {
    detail::letGo(*taken);
    throw;
  }
  if (overtaken) {
    detail::letGo(*taken);
    isRefused(overtaken, prompt);
    return {};
  }
  removeLeftFiles();
  return number;
}

std::optional<QString> attachmentToOpen(const QString& number, Prompt& prompt, const attachments::Progress& progress) {
  namespace detail = contracts_detail;
  const RowSet rows = detail::rowOf(number);
  if (rows.isEmpty()) {
    isRefused(detail::gone(), prompt);
    return {};
  }
  const attachments::Place place = detail::placeOf(rows.front());
  if (place.shown.isEmpty()) return {};
  try {
    return attachments::fetch(place, progress);
  } catch (const attachments::AttachmentStopped&) {
    prompt.say(u"传输已取消"_qs);
  } catch (const attachments::AttachmentError& failure) {
    prompt.notice(QString::fromUtf8(failure.what()));
  }
  return {};
}

bool deleteContract(const QString& number, Prompt& prompt, const attachments::Progress& progress) {
  namespace detail = contracts_detail;
  if (!prompt.ask(QStringLiteral("您确定要删除该合同信息吗！"))) return false;
  QString stored;
  {
    Transaction transaction(accountDb());
    const RowSet rows = detail::rowOf(number);
    if (rows.isEmpty()) return true;  // another operator was quicker: the list is read anew
    stored = rows.front().text("ht_fujian");
    detail::untie(number);
    contract_ties::deleteContract(number);
    writeLog(u"删除合同，编号："_qs + number + u"，名称："_qs + rows.front().text("ht_name"));
    transaction.commit();
  }
  const detail::Awaited awaited{stored, progress};
  const auto why = detail::removeLeft(&awaited);
  if (why) prompt.notice(u"合同已删除，附件文件还没有删除："_qs + *why);
  return true;
}

void htDelete(const QString& number) {
  {
    Transaction transaction(accountDb());
    contracts_detail::untie(number);
    contract_ties::deleteContract(number);
    transaction.commit();
  }
  removeLeftFiles();
}

void dropAdded(const QString& number) {
  {
    Transaction transaction(accountDb());
    if (!contract_ties::isOfOwnDraft(number)) return;
    htDelete(number);
    transaction.commit();
  }
  removeLeftFiles();
}

void removeLeftFiles() {
  contracts_detail::removeLeft(nullptr);
}

Sql contractList(const PartnerSide& side, const Criteria& criteria) {
  Filter filter;
  filter.add("a.ht_type=?", words(side.type));
  addPeriod(filter, criteria, "a.ht_rq");
  addChoice(filter, "a.ghs_sn", criteria.partner);
  const std::string columns[] = {"a.ht_sn",
                                 "a.ht_name",
                                 "a.ht_jm",
                                 compose("c.{}", {side.name}),
                                 compose("c.{}", {side.jm}),
                                 compose("c.{}", {side.sn})};
  addKey(filter, criteria, columns);
  // A contract whose partner or employee is gone is shown all the same: nothing else leads to it.
  return Sql(compose("select a.*,b.u_name,c.{} as ghs_name from (jxc_htgl a left join jxc_user b on a.u_sn=b.u_sn) "
                     "left join {} c on a.ghs_sn=c.{}",
                     {side.name, side.table, side.sn}))
      .where(filter)
      .add(" order by a.id desc");
}

}  // namespace jxc::contracts
