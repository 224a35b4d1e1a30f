#include "accounts/contracts.h"

#include "core/clock.h"
#include "core/log.h"
#include "core/numbers.h"
#include "core/pinyin.h"
#include "core/refusal.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"
#include "masterdata/partners.h"
#include "stock/document_family.h"

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

/// Deleted by another station while the form stood open, he would take the contract out of every list.
Refusal partnerGone(const PartnerSide& side, const QString& partner) {
  return {!exists(compose("select top 1 id from {} where {}=?", {side.table, side.sn}), partner),
          u"该"_qs + words(side.noun) + u"刚刚被其他操作员删除，请重新选择！"_qs, Subject::Partner};
}

/// The document that a contract is tied to no longer points to it.
void untie(const QString& number) {
  for (const DocumentFamily* family : {&families::purchaseReceipt, &families::sale})
    execSql(compose("update {} set ht_sn='' where ht_sn=?", {family->head}), number);
}

/// The row first, inside the caller's transaction; its file when that is on the disk.
void deleteRow(const QString& number) {
  execSql("delete from jxc_htgl where ht_sn=?", number);
}

/// Nothing: it is gone.
std::optional<QString> write(const PartnerSide& side, const Draft& draft, const Place& place, Place& replaced) {
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
  } else {
    const RowSet rows = rowOf(number);
    if (rows.isEmpty()) return {};
    id = rows.front().integer("id");
    updateRow("jxc_htgl", id,
              {{"ht_rq", draft.date},
               {"ht_name", name},
               {"ht_jm", letters},
               {"ht_note", draft.content},
               {"a_name", session().a_name},
               {"u_sn", draft.employee},
               {"ghs_sn", draft.partner}});
    if (!place.stored.isEmpty()) {
      replaced = placeOf(rows.front());
      updateRow("jxc_htgl", id, {{"ht_path", place.folder}, {"ht_fujian", place.stored}, {"ht_fjname", place.shown}});
    }
  }
  writeLog((draft.number.isEmpty() ? u"增加合同，编号："_qs : u"修改合同，编号："_qs) + number + u"，名称："_qs + name);
  return number;
}

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
                  .attachment = row.text("ht_fjname")};
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
  attachments::Place taken, replaced;
  if (!draft.file.isEmpty()) {
    try {
      taken = attachments::take(side, draft.file, draft.keeper, progress);
    } catch (const attachments::AttachmentStopped&) {
      prompt.say(u"传输已取消，合同没有保存"_qs);
      return {};
    } catch (const attachments::AttachmentError& failure) {
      prompt.notice(QString::fromUtf8(failure.what()));
      return {};
    }
  }
  std::optional<QString> number;
  Refusal overtaken;
  try {
    Transaction transaction(accountDb());
    overtaken = detail::partnerGone(side, draft.partner);
    if (!overtaken) {
      number = detail::write(side, draft, taken, replaced);
      if (!number) overtaken = detail::gone();
    }
    if (!overtaken) transaction.commit();
  } catch (...) {
    attachments::removeBeside(taken);
    throw;
  }
  if (overtaken) {
    attachments::removeBeside(taken);
    isRefused(overtaken, prompt);
    return {};
  }
  attachments::removeBeside(replaced);
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
  attachments::Place place;
  {
    Transaction transaction(accountDb());
    const RowSet rows = detail::rowOf(number);
    if (rows.isEmpty()) return true;  // another operator was quicker: the list is read anew
    place = detail::placeOf(rows.front());
    detail::untie(number);
    detail::deleteRow(number);
    writeLog(u"删除合同，编号："_qs + number + u"，名称："_qs + rows.front().text("ht_name"));
    transaction.commit();
  }
  if (const auto left = attachments::remove(place, progress))
    prompt.notice(u"合同已删除，附件文件没有能够删除："_qs + *left);
  return true;
}

void htDelete(const QString& number) {
  namespace detail = contracts_detail;
  attachments::Place place;
  {
    Transaction transaction(accountDb());
    const RowSet rows = detail::rowOf(number);
    if (rows.isEmpty()) return;
    place = detail::placeOf(rows.front());
    detail::deleteRow(number);
    transaction.commit();
  }
  attachments::removeBeside(place);
}

void htLink(const QString& number, const QString& partner, const QString& document) {
  execSql("update jxc_htgl set ghs_sn=?,gl_djh=? where ht_sn=?", partner, document, number);
}

Sql contractList(const PartnerSide& side, const Criteria& criteria) {
  Filter filter;
  filter.add("a.u_sn=b.u_sn").add(compose("a.ghs_sn=c.{}", {side.sn})).add("a.ht_type=?", words(side.type));
  addPeriod(filter, criteria, "a.ht_rq");
  addChoice(filter, "a.ghs_sn", criteria.partner);
  const std::string columns[] = {"a.ht_sn",
                                 "a.ht_name",
                                 "a.ht_jm",
                                 compose("c.{}", {side.name}),
                                 compose("c.{}", {side.jm}),
                                 compose("c.{}", {side.sn})};
  addKey(filter, criteria, columns);
  return Sql(compose("select a.*,b.u_name,c.{} as ghs_name from jxc_htgl a,jxc_user b,{} c", {side.name, side.table}))
      .where(filter)
      .add(" order by a.id desc");
}

}  // namespace jxc::contracts
