#include "masterdata/partners.h"

#include "accounts/cash_ledger.h"
#include "core/clock.h"
#include "core/defaults.h"
#include "core/deletion.h"
#include "core/fillers.h"
#include "core/letter_search.h"
#include "core/log.h"
#include "core/numbers.h"
#include "core/period_lock.h"
#include "core/pinyin.h"
#include "core/posting.h"
#include "core/refusal.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"
#include "engine/value.h"

namespace jxc {
namespace partners_detail {
constexpr KeyColumn kCustomersBusiness[] = {{"jxc_lsxsd", "kh_sn"}, {"jxc_posxsd", "kh_sn"}};
constexpr KeyColumn kSuppliersBusiness[] = {{"jxc_jhd", "ghs_sn"}};
}  // namespace partners_detail

const PartnerSide customerSide = {
    .which = PartnerType::Customer,
    .type = "kh",
    .table = "jxc_khxx",
    .sn = "kh_sn",
    .name = "kh_name",
    .jm = "kh_jm",
    .contact = "kh_lxr",
    .phone = "kh_tele",
    .address = "kh_address",
    .note = "kh_note",
    .balance = "kh_lwje",
    .isDefault = "kh_default",
    .uses = "kh_pl",
    .forbidden = "kh_forbid",
    .kind = "kt_name",
    .kindKey = "kt_sn",
    .employeeNames = "kh_uname",
    .employeeKeys = "kh_usn",
    .openingPrefix = "YS",
    .paymentPrefix = "SK",
    .settlementLike = "SK%",
    .noun = u"客户",
    .openingWord = u"期初应收款",
    .business = partners_detail::kCustomersBusiness,
    .diary = "jxc_khlx",
    .quotes = "jxc_khbj",
    .dueWord = u"应收款",
    .paymentWord = u"收款",
    .cashSign = 1,
    .stockFlag = "xs",
    .addedDueLog = u"增加应收款",
    .changedDueLog = u"修改应收款",
};

const PartnerSide supplierSide = {
    .which = PartnerType::Supplier,
    .type = "ghs",
    .table = "jxc_ghsxx",
    .sn = "ghs_sn",
    .name = "ghs_name",
    .jm = "ghs_jm",
    .contact = "ghs_lxr",
    .phone = "ghs_tele",
    .address = "ghs_address",
    .note = "ghs_note",
    .balance = "ghs_lwje",
    .isDefault = "ghs_default",
    .uses = "ghs_pl",
    .forbidden = "ghs_forbid",
    .kind = "gt_name",
    .kindKey = "",
    .employeeNames = "",
    .employeeKeys = "",
    .openingPrefix = "YF",
    .paymentPrefix = "FK",
    .settlementLike = "FK%",
    .noun = u"供货商",
    .openingWord = u"期初应付款",
    .business = partners_detail::kSuppliersBusiness,
    .diary = "jxc_ghslx",
    .quotes = "jxc_ghsbj",
    .dueWord = u"应付款",
    .paymentWord = u"付款",
    .cashSign = -1,
    .stockFlag = "cj",
    .addedDueLog = u"增加未审核应付款",
    .changedDueLog = u"修改未审核应付款",
};

namespace partners_detail {

/// The built-in partner of each side: the one for passing trade.
constexpr auto builtInNumber = "100001";

QString typeText(const PartnerSide& side) {
  return words(side.type);
}

/// One line of typed text as it is stored: line breaks and other control characters come from pasting and would tear
/// lists and printed documents.
QString line(const QString& typed) {
  QString text;
  for (const QChar c : sanitizeKeyword(typed))
    text += c.category() == QChar::Other_Control ? QChar(u' ') : c;
  return text.trimmed();
}

/// The opening amount is a document of its own in the partner ledger, so that the running balance starts with it.
void writeOpening(const PartnerSide& side, const QString& number, double amount) {
  const QString today = PeriodLock().openFrom(clock::today());
  const QString type = typeText(side);
  const QString word = words(side.openingWord);
  execSql("delete from jxc_ysyfk_dj where k_type=? and k_ghskh=?", type, number);
  execSql("delete from jxc_ysyfk where k_type=? and k_ghskh=?", type, number);
  if (amount == 0) return;

  const QString document = nextDocNoOn("jxc_ysyfk", "gl_djh", QString::fromLatin1(side.openingPrefix.data()), today);
  insertRow("jxc_ysyfk_dj", {{"gl_djh", document},
                             {"k_ghskh", number},
                             {"a_name", session().a_name},
                             {"u_sn", defaultEmployeeSn()},
                             {"k_fkfs", word},
                             {"k_sfje", 0},
                             {"k_yhje", 0},
                             {"k_qcje", 0},
                             {"k_ljje", amount},
                             {"k_yfje", amount},
                             {"k_type", type},
                             {"k_djlx", side.openingPrefix.data()},
                             {"k_djtxt", word},
                             {"k_note", words(side.noun) + QStringLiteral("的") + word},
                             {"k_flag", 1},
                             {"k_rq", today},
                             {"k_check", 1},
                             {"k_checker", session().a_name},
                             {"k_chkrq", today}});
  execSql(R"(insert into jxc_ysyfk (gl_djh,k_ghskh,a_name,u_sn,k_fkfs,k_sfje,k_yhje,k_qcje,k_ljje,k_yfje,
      k_type,k_djlx,k_djtxt,k_note,k_flag,k_rq)
    select gl_djh,k_ghskh,a_name,u_sn,k_fkfs,k_sfje,k_yhje,k_qcje,k_ljje,k_yfje,
      k_type,k_djlx,k_djtxt,k_note,k_flag,k_rq
    from jxc_ysyfk_dj where gl_djh=?)",
          document);
}

/// What the books hold of a partner behind the lock stays.
Refusal linesLocked(const PartnerSide& side, const QString& number) {
  const PeriodLock lock;
  const Ahead owed = sendAhead("select min(k_rq) from jxc_ysyfk where k_type=? and k_ghskh=?", typeText(side), number);
  const Ahead paid =
      sendAhead("select min(xj_rq) from jxc_xjyh where ghs_sn=? and gl_djh like ?", number, side.settlementLike.data());
  for (const Ahead* each : {&owed, &paid})
    if (const QString first = each->rows().text(0, 0); !first.isEmpty())
      if (const Refusal locked = lock.against(first, OnDay::Booked)) return locked;
  return {};
}

/// What would become that of the next new partner, who may get this number; empty: nothing. What a closing carried on
/// of invoices has no number of its own.
QString holderOf(const PartnerSide& side, const QString& number) {
  if (QString business = firstMention(side.business, number); !business.isEmpty()) return business;
  const RowSet invoices =
      openSelect("select top 1 * from jxc_fpdjb where fp_type=? and fp_ghskh=? order by id", typeText(side), number);
  if (!invoices.isEmpty()) return rowInWords("jxc_fpdjb", invoices.front());
  const RowSet contracts =
      openSelect("select top 1 * from jxc_htgl where ht_type=? and ghs_sn=? order by id", typeText(side), number);
  if (contracts.isEmpty()) return {};
  return u"合同 "_qs + contracts.front().text("ht_sn") + u' ' + contracts.front().text("ht_name");
}

/// The opening document keeps its number and its day; one that began with nothing owed gets its document now.
void changeOpening(const PartnerSide& side, const QString& number, double amount) {
  const QString type = typeText(side);
  const auto lines =
      execSql("update jxc_ysyfk set k_ljje=?,k_yfje=? where k_type=? and k_ghskh=?", amount, amount, type, number);
  execSql("update jxc_ysyfk_dj set k_ljje=?,k_yfje=? where k_type=? and k_ghskh=?", amount, amount, type, number);
  if (lines == 0) writeOpening(side, number, amount);
}

QString numberOf(const PartnerSide& side, std::int64_t id) {
  return lookupValue(compose("select {} from {} where id=?", {side.sn, side.table}), id);
}

/// Whether another opening amount would be written, and on a day that is locked.
Refusal openingLocked(const PartnerSide& side, const PartnerDraft& draft) {
  const QString number = numberOf(side, draft.id);
  if (readPartner(side, draft.id).opening == draft.opening || !openingIsOpen(side, number)) return {};
  return linesLocked(side, number);
}

QString saveNew(const PartnerSide& side, const PartnerDraft& draft, const QString& name) {
  const QString number = nextSerial(side.table, side.sn);
  const auto id = insertRow(side.table, {{side.sn, number},
                                         {side.name, name},
                                         {side.jm, makeJm(name)},
                                         {side.balance, draft.opening},
                                         {side.uses, 0},
                                         {side.forbidden, 0}});
  updateRow(side.table, id,
            {{side.contact, line(draft.contact)},
             {side.phone, line(draft.phone)},
             {side.address, line(draft.address)},
             {side.note, line(draft.note)},
             {side.kind, draft.kindName},
             {side.isDefault, draft.isDefault},
             {"ck_sn", draft.warehouseKey},
             {"ck_name", draft.warehouseName},
             {"z_name", line(draft.zone)}});
  if (draft.opening != 0) writeOpening(side, number, draft.opening);
  return number;
}

/// Documents and ledgers carry the partner's name as it was: a rename follows into them. In both ledgers the partner of
/// a sale stands in the ghs_ columns too.
void renameInHistory(const QString& number, const QString& before, const QString& now) {
  execSql("update jxc_goodslist set ghs_name=? where ghs_name=? and ghs_sn=?", now, before, number);
  execSql("update jxc_xjyh set ghs_name=? where ghs_name=? and ghs_sn=?", now, before, number);
}

void saveChanged(const PartnerSide& side, const PartnerDraft& draft, const QString& number, const QString& name) {
  const PartnerDraft before = readPartner(side, draft.id);
  if (before.opening != draft.opening && openingIsOpen(side, number)) {
    changeOpening(side, number, draft.opening);
    updateRow(side.table, draft.id, {{side.balance, draft.opening}});
  }
  updateRow(side.table, draft.id,
            {{side.name, name},
             {side.contact, line(draft.contact)},
             {side.phone, line(draft.phone)},
             {side.address, line(draft.address)},
             {side.note, line(draft.note)},
             {side.kind, draft.kindName},
             {side.isDefault, draft.isDefault},
             {"ck_sn", draft.warehouseKey},
             {"ck_name", draft.warehouseName},
             {"z_name", line(draft.zone)}});
  if (before.name == name) return;  // search letters that were set by hand stay, too
  updateRow(side.table, draft.id, {{side.jm, makeJm(name)}});
  renameInHistory(number, before.name, name);
}

/// Money that goes with a partner leaves its accounts; their running balances follow.
void deleteSettlements(const PartnerSide& side, const QString& number) {
  const char* like = side.settlementLike.data();
  const RowSet accounts = openSelect(
      "select xj_kmmc,min(xj_rq) as rq from jxc_xjyh where ghs_sn=? and gl_djh like ? group by xj_kmmc", number, like);
  execSql("delete from jxc_xjyh where ghs_sn=? and gl_djh like ?", number, like);
  for (const Row account : accounts)
    recomputeXjyh(account.text("xj_kmmc"), account.text("rq"));
}

/// What the operator does not see when he deletes a partner: the books of the shop change with it. Empty: they do not.
QString tellSettlements(const PartnerSide& side, std::int64_t id) {
  const RowSet paid = openSelect(
      compose("select count(*) as n,sum(xj_je) as je from jxc_xjyh a,{} b where a.ghs_sn=b.{} and b.id=? and "
              "a.gl_djh like ?",
              {side.table, side.sn}),
      id, side.settlementLike.data());
  if (paid.front().integer("n") == 0) return {};
  return u"\r\n\r\n该%1的 %2 笔%3（现金银行账中合计 %4 元）将一并删除，账户余额随之改变，不能恢复。"_qs
      .arg(words(side.noun))
      .arg(paid.front().integer("n"))
      .arg(words(side.paymentWord), numberText(paid.front().number("je")));
}

void saveCustomerExtras(const PartnerSide& side, const PartnerDraft& draft, const QString& number) {
  if (!side.kindKey.empty()) {
    execSql(compose("update {} set {}=? where {}=?", {side.table, side.kindKey, side.sn}), draft.kindKey, number);
  }
  if (!side.employeeKeys.empty()) {
    execSql(compose("update {} set {}=?,{}=? where {}=?", {side.table, side.employeeNames, side.employeeKeys, side.sn}),
            draft.employeeNames, draft.employeeKeys, number);
  }
}

}  // namespace partners_detail

PartnerDraft readPartner(const PartnerSide& side, std::int64_t id) {
  const RowSet rows = openSelect(compose("select * from {} where id=?", {side.table}), id);
  if (rows.isEmpty()) {
    throw DbError(DbError::Kind::Other, QStringLiteral("该记录已被其他操作员删除，请刷新列表！"));
  }
  const Row row = rows.front();
  PartnerDraft draft;
  draft.id = id;
  draft.name = row.text(side.name);
  draft.contact = row.text(side.contact);
  draft.phone = row.text(side.phone);
  draft.address = row.text(side.address);
  draft.note = row.text(side.note);
  draft.zone = row.text("z_name");
  draft.kindName = row.text(side.kind);
  if (!side.kindKey.empty()) draft.kindKey = row.text(side.kindKey);
  if (!side.employeeKeys.empty()) {
    draft.employeeNames = row.text(side.employeeNames);
    draft.employeeKeys = row.text(side.employeeKeys);
  }
  draft.warehouseKey = row.text("ck_sn");
  draft.warehouseName = row.text("ck_name");
  draft.opening = row.number(side.balance);
  draft.isDefault = row.flag(side.isDefault);
  return draft;
}

QString partnerName(const PartnerSide& side, const QString& number) {
  return lookupValue(compose("select {} from {} where {}=?", {side.name, side.table, side.sn}), number);
}

Refusal partnerLeft(const PartnerSide& side, const QString& number) {
  const RowSet rows =
      openSelect(compose("select {} from {} where {}=?", {side.forbidden, side.table, side.sn}), number);
  if (!rows.isEmpty() && !rows.front().flag(side.forbidden)) return {};
  return {u"该"_qs + words(side.noun) + u"刚刚被其他操作员"_qs + (rows.isEmpty() ? u"删除"_qs : u"禁用"_qs) +
              u"，请重新选择！"_qs,
          Subject::Partner};
}

bool openingIsOpen(const PartnerSide& side, const QString& number) {
  if (!firstMention(side.business, number).isEmpty()) return false;
  const QString type = partners_detail::typeText(side);
  const QString opening = words(side.openingWord);
  const auto otherLine = [&](const char* sql) { return !lookupValue(sql, type, number, opening).isEmpty(); };
  return !otherLine("select top 1 id from jxc_ysyfk where k_type=? and k_ghskh=? and k_djtxt<>?") &&
         !otherLine("select top 1 id from jxc_ysyfk_dj where k_type=? and k_ghskh=? and k_djtxt<>?");
}

std::optional<QString> savePartner(const PartnerSide& side, const PartnerDraft& draft, Prompt& prompt) {
  using namespace partners_detail;
  const QString name = line(draft.name);
  // The lists of bound employees are columns of 200 characters.
  if (refused({{name.isEmpty(), words(side.noun) + u"名称必须填写！"_qs, Subject::Name},
               {draft.employeeKeys.size() > 200 || draft.employeeNames.size() > 200,
                u"选择的业务员太多，请减少后再保存！"_qs, Subject::Employees}},
              prompt))
    return {};
  const bool taken =
      !lookupValue(compose("select top 1 {} from {} where {}=? and id<>?", {side.name, side.table, side.name}), name,
                   draft.id)
           .isEmpty();
  if (draft.id != 0 && isRefused(openingLocked(side, draft), prompt)) return {};
  if (taken && !prompt.ask(words(side.noun) + QStringLiteral("已经存在，确认可以重复吗？"))) return {};

  Transaction transaction(accountDb());
  if (draft.id != 0)
    if (const Refusal locked = openingLocked(side, draft)) throw PeriodLocked(locked.text.toStdString());
  if (draft.isDefault) execSql(compose("update {} set {}=0", {side.table, side.isDefault}));
  QString number;
  if (draft.id == 0) {
    number = saveNew(side, draft, name);
  } else {
    number = numberOf(side, draft.id);
    saveChanged(side, draft, number, name);
  }
  saveCustomerExtras(side, draft, number);
  transaction.commit();
  return number;
}

bool deletePartner(const PartnerSide& side, std::int64_t id, Prompt& prompt) {
  using namespace partners_detail;
  const QString noun = words(side.noun);
  return deleteAsking(
      {.table = side.table,
       .question = QStringLiteral("您确定要删除当前%1吗！").arg(noun) + tellSettlements(side, id),
       .hindrance = [&](const Row& row) -> std::optional<Hindrance> {
         const QString number = row.text(side.sn);
         if (number == QLatin1String(builtInNumber))
           return Hindrance{u"该%1为系统内置%1，不能删除！"_qs.arg(noun), {}, orRename()};
         const QString holder = holderOf(side, number);
         if (!holder.isEmpty()) return Hindrance{u"该%1已发生过业务，不能删除！"_qs.arg(noun), holder, orDisable()};
         const Refusal locked = linesLocked(side, number);
         return locked ? std::optional(Hindrance{locked.text, {}, orDisable()}) : std::nullopt;
       },
       .alsoDelete =
           [&](const Row& row) {
             const QString number = row.text(side.sn);
             const QString type = typeText(side);
             execSql("delete from jxc_ysyfk_dj where k_type=? and k_ghskh=?", type, number);
             execSql("delete from jxc_ysyfk where k_type=? and k_ghskh=?", type, number);
             deleteSettlements(side, number);
             // The next new partner may get this number: what was written and quoted to this one must
             // not become his.
             execSql(compose("delete from {} where {}=?", {side.diary, side.sn}), number);
             execSql(compose("delete from {} where {}=?", {side.quotes, side.sn}), number);
             writeLog(QStringLiteral("删除%1，编号：%2，名称：%3").arg(noun, number, row.text(side.name)));
           }},
      id, prompt);
}

void togglePartnerForbidden(const PartnerSide& side, std::int64_t id) {
  execSql(compose("update {} set {}=iif({}=0,1,0) where id=?", {side.table, side.forbidden, side.forbidden}), id);
}

void setPartnerMnemonic(const PartnerSide& side, std::int64_t id, const QString& mnemonic) {
  execSql(compose("update {} set {}=? where id=?", {side.table, side.jm}), sanitizeKeyword(mnemonic), id);
}

RowSet selectBindableEmployees(const QString& boundKeys) {
  return openSelect("select u_sn,u_name from jxc_user where u_jy=0 or instr(?,u_sn)>0 order by id", boundKeys);
}

Sql partnerListStatement(const PartnerSide& side, const PartnerConditions& conditions, PartnerOrder order) {
  using State = PartnerConditions::State;
  Filter filter;
  if (conditions.state == State::InUse) filter.add(compose("{}=0", {side.forbidden}));
  if (conditions.state == State::Forbidden) filter.add(compose("{}<>0", {side.forbidden}));
  if (conditions.state == State::Owing) filter.add(compose("{}<>0", {side.balance}));
  addListBinding(filter);
  const auto like = [](const QString& typed) { return u'%' + sanitizeKeyword(typed) + u'%'; };
  const auto contains = [&](std::string_view column, const QString& typed) {
    if (!typed.isEmpty()) filter.add(compose("{} like ?", {column}), like(typed));
  };
  if (!conditions.key.isEmpty()) {
    const QString k = like(conditions.key);
    Sql any(compose("({} like ? or {} like ? or {} like ? or {} like ? or {} like ? or {} like ? or {} like ? "
                    "or z_name like ?",
                    {side.sn, side.name, side.jm, side.contact, side.phone, side.address, side.kind}),
            k, k, k, k, k, k, k, k);
    orOtherReadings(any, side.jm, side.name, conditions.key);
    filter.add(any.add(")"));
  }
  if (!conditions.name.isEmpty()) {
    Sql any(compose("({} like ? or {} like ?", {side.name, side.jm}), like(conditions.name), like(conditions.name));
    orOtherReadings(any, side.jm, side.name, conditions.name);
    filter.add(any.add(")"));
  }
  contains(side.contact, conditions.contact);
  contains(side.phone, conditions.phone);
  contains(side.address, conditions.address);
  if (!conditions.kind.isEmpty()) filter.add(compose("{}=?", {side.kind}), conditions.kind);
  if (!conditions.zone.isEmpty()) filter.add("z_name=?", conditions.zone);
  Sql list = Sql(compose("select * from {}", {side.table})).where(filter).add(" order by ");
  if (order == PartnerOrder::MostUsedFirst) list.add(compose("{} desc,", {side.uses}));
  return list.add("id");
}

RowSet selectPartners(const PartnerSide& side, const PartnerConditions& conditions) {
  return openSelect(partnerListStatement(side, conditions));
}

int copyCustomersToSuppliers(std::span<const std::int64_t> customers, const std::function<bool(int)>& progress,
                             Prompt& prompt) {
  if (customers.empty()) {
    prompt.notice(QStringLiteral("请选择要复制的客户！"));
    return 0;
  }
  Transaction transaction(accountDb());
  int copied = 0;
  for (const auto id : customers) {
    if (progress && !progress(static_cast<int>(100 * copied / customers.size()))) return 0;
    const RowSet rows = openSelect("select * from jxc_khxx where id=?", id);
    if (rows.isEmpty()) continue;  // deleted at another station meanwhile
    const Row customer = rows.front();
    insertRow("jxc_ghsxx", {{"ghs_sn", nextSerial("jxc_ghsxx", "ghs_sn")},
                            {"ghs_name", customer.value("kh_name")},
                            {"ghs_jm", customer.value("kh_jm")},
                            {"ghs_lxr", customer.value("kh_lxr")},
                            {"ghs_tele", customer.value("kh_tele")},
                            {"ghs_address", customer.value("kh_address")},
                            {"ghs_note", customer.value("kh_note")},
                            {"z_name", customer.value("z_name")},
                            {"gt_name", QString()},
                            {"ghs_lwje", 0},
                            {"ghs_default", 0},
                            {"ghs_pl", 0},
                            {"ghs_forbid", 0},
                            {"ck_sn", QStringLiteral("-1")},
                            {"ck_name", QStringLiteral("所有仓库")}});
    ++copied;
  }
  transaction.commit();
  return copied;
}

}  // namespace jxc
