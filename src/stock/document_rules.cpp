#include "stock/document_rules.h"

#include "accounts/partner_ledger.h"
#include "core/defaults.h"
#include "core/fillers.h"
#include "core/period_lock.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"
#include "core/without.h"
#include "stock/partial_movement.h"

#include <QDate>

#include <cmath>

namespace jxc {
namespace document_rules_detail {

// No draft is older than this many lines: so the search stays short in an account set of millions.
constexpr std::int64_t recentLines = 2000;

/// ",a.by_sl as bs_sl": the columns of a family once more under the names of another.
std::string renamed(std::initializer_list<std::pair<std::string_view, std::string_view>> columns) {
  std::string all;
  for (const auto& [own, shown] : columns)
    if (own != shown) all += compose(",a.{} as {}", {own, shown});
  return all;
}

/// Lines `a` with their goods, and the warehouse of each where they have one: a line whose warehouse was deleted
/// meanwhile stays in sight.
std::string fromLines(const DocumentFamily& f) {
  const std::string goods = compose("{} a inner join jxc_goods b on a.g_sn=b.g_sn", {f.lines});
  if (f.line.warehouse.empty()) return " from " + goods;
  return ",c.ck_name as line_ck from (" + goods + compose(") left join jxc_ckxx c on a.{}=c.ck_sn", {f.line.warehouse});
}

std::string linesWithNames(const DocumentFamily& f, const DocumentFamily& shown) {
  const LineColumns& own = *f.line.columns;
  const LineColumns& as = *shown.line.columns;
  return "select a.*" +
         renamed({{own.price, as.price},
                  {own.quantity, as.quantity},
                  {own.total, as.total},
                  {f.line.note, shown.line.note}}) +
         (f.isCount() ? compose(",a.{}-a.{} as cysl", {own.quantity, f.line.countedShelf}) : std::string()) + "," +
         nameWithGift(f) + ",b.g_jm,b.gg_name,b.color_name,b.dw_name,b.g_sptm" + fromLines(f) +
         compose(" where a.{}=?", {f.number});
}

/// What is due and paid of a head, as screens show it, and what is open of it.
std::string moneyOf(const DocumentFamily& f) {
  const std::string sign = f.headSign < 0 ? "-1*" : "";
  const std::string discount = f.discount.empty() ? std::string() : compose("-a.{}", {f.discount});
  return "," + sign + compose("a.{} as yfje,", {f.due}) + sign + compose("a.{} as sfje,", {f.paid}) + sign +
         compose("(a.{}-a.{}", {f.due, f.paid}) + discount + ") as wfje";
}

constexpr DocumentPartner kSupplier = {.table = "jxc_ghsxx",
                                       .key = "ghs_sn",
                                       .name = "ghs_name",
                                       .mnemonic = "ghs_jm",
                                       .noun = u"供货商",
                                       .byDefault = defaultSupplierSn};
constexpr DocumentPartner kCustomer = {.table = "jxc_khxx",
                                       .key = "kh_sn",
                                       .name = "kh_name",
                                       .mnemonic = "kh_jm",
                                       .noun = u"客户",
                                       .byDefault = defaultCustomerSn};

}  // namespace document_rules_detail

const DocumentPartner& partnerOf(const DocumentFamily& family) {
  return family.side == PartnerType::Supplier ? document_rules_detail::kSupplier : document_rules_detail::kCustomer;
}

bool goesOn(const LineProgress& progress, std::size_t done, std::size_t all) {
  constexpr std::size_t told = 100;
  if (!progress || all < told) return true;
  if (done == all) progress(100);
  return done == all || done % told != 0 || progress(static_cast<int>(done * 99 / all));
}

bool LineRules::cellMayChange(QStringView goods, bool isGift, QStringView field) const {
  if (goods == u"00000000") return false;  // the balancing line comes from the settlement
  if (isGift) return field == u"sl";
  return (field != u"dj" && field != u"taxdj") || priceMayChange();
}

std::string nameWithGift(const DocumentFamily& family) {
  const std::string_view gift = family.line.gift;
  if (const std::string mark = partial::giftMark(family, "a"); !mark.empty()) return "b.g_name" + mark + " as g_name";
  return gift.empty() ? "b.g_name" : compose("b.g_name+iif(a.{} is null,'',a.{}) as g_name", {gift, gift});
}

QString namedGoods(const QString& goods) {
  return u"\r\n\r\n商品："_qs + goods + u' ' + lookupValue("select g_name from jxc_goods where g_sn=?", goods);
}

bool isTooMany(double quantity, Prompt& prompt, Subject about) {
  return refused({{std::abs(quantity) >= kTooMany, u"数量过大，请检查是否输入了条码或单价！"_qs, about}}, prompt);
}

void tellPassedOver(PickingMemory& memory, Prompt& prompt) {
  if (memory.passedOver.isEmpty()) return;
  prompt.notice(u"下列商品已添加，没有重复添加：\r\n\r\n"_qs + memory.passedOver.join(u'，'));
  memory.passedOver.clear();
}

SheetPrice ManyLines::takeSheetPrice(LineDraft& line, double yuan) const {
  if (yuan == line.amounts.price()) return {};
  if (!priceMayChange()) return {.fault = u"不允许修改单价"_qs};
  line.amounts.setPrice(yuan);
  return {};
}

Sql DocumentRules::draftLines(const QString& number) const {
  const DocumentRules& kind = of(number);
  const DocumentFamily& f = kind.family();
  // What a split takes apart, or a bundle becomes, stands among the lines of the draft and is none of them.
  const std::string parts = f.whole.goods.empty() ? "" : compose(" and a.{}>0", {f.line.columns->quantity});
  return Sql(document_rules_detail::linesWithNames(f, kind.shownAs()) + parts + ofDraft(f, "a") +
                 " and a.a_name=? order by a.id",
             number, session().a_name);
}

Sql DocumentRules::waitingLines(const QString& number) const {
  const DocumentFamily& f = of(number).family();
  // Of a count the largest differences come first: they are looked at before it is audited.
  return Sql(document_rules_detail::linesWithNames(f, of(number).shownAs()) +
                 (f.isCount() ? compose(" order by abs(a.{}) desc,a.id", {f.line.columns->total})
                              : std::string(" order by a.id")),
             number);
}

std::string DocumentRules::headsWithNames() const {
  const DocumentFamily& f = family();
  std::string columns = "select a.*" +
                        document_rules_detail::renamed({{f.date, shownAs().date},
                                                        {f.note, shownAs().note},
                                                        {f.whole.quantity, shownAs().whole.quantity},
                                                        {f.whole.cost, shownAs().whole.cost}}) +
                        ",c.ck_name,d.u_name";
  std::string tables = compose(" from {} a,jxc_ckxx c,jxc_user d", {f.head});
  std::string conditions = compose(" where a.{}=c.ck_sn and a.u_sn=d.u_sn and a.{}=0", {f.warehouse, f.status});
  if (f.hasMoney()) columns += document_rules_detail::moneyOf(f);
  if (!f.partner.empty()) {
    const DocumentPartner& partner = partnerOf(f);
    columns += compose(",b.{}", {partner.name});
    tables += compose(",{} b", {partner.table});
    conditions += compose(" and a.{}=b.{}", {f.partner, partner.key});
  }
  if (!f.into.empty()) {
    columns += ",e.ck_name as into_name";
    tables += ",jxc_ckxx e";
    conditions += compose(" and a.{}=e.ck_sn", {f.into});
  }
  if (!f.whole.goods.empty()) {
    columns += ",w.g_name as whole_name";
    tables += ",jxc_goods w";
    conditions += compose(" and a.{}=w.g_sn", {f.whole.goods});
  }
  return columns + tables + conditions;
}

RowSet DocumentRules::waiting(const WaitingFilter& filter) const {
  const DocumentFamily& f = family();
  Filter chosen;
  // Sales of the till stand in the same table and never wait here.
  if (!f.fromTill.empty()) chosen.add(compose("(a.{}=0 or a.{} is null)", {f.fromTill, f.fromTill}));
  if (!filter.partner.isEmpty()) chosen.add(compose("a.{}=?", {f.partner}), filter.partner);
  if (!filter.warehouse.isEmpty()) chosen.add(compose("a.{}=?", {f.warehouse}), filter.warehouse);
  if (isWarehouseBound())
    chosen.add(compose("a.{} in (select ck_sn from jxc_ckxx where ck_asn like ?)", {f.warehouse}),
               u"%"_qs + session().a_sn + u"%"_qs);
  if (const QString key = sanitizeKeyword(filter.key.trimmed()); !key.isEmpty()) {
    const QString like = u"%"_qs + key + u"%"_qs;
    Sql any(compose("(a.{} like ? or a.{} like ?", {f.number, f.note}), like, like);
    if (!f.partner.empty())
      any.add(compose(" or b.{} like ? or b.{} like ?", {partnerOf(f).name, partnerOf(f).mnemonic}), like, like);
    if (!f.originalNumber.empty()) any.add(compose(" or a.{} like ?", {f.originalNumber}), like);
    if (!f.whole.goods.empty()) any.add(" or w.g_sn like ? or w.g_name like ? or w.g_jm like ?", like, like, like);
    chosen.add(any.add(")"));
  }
  return openSelect(without(
      filter.without,
      Sql(headsWithNames()).andWhere(chosen).add(filter.newestFirst ? " order by a.id desc" : " order by a.id")));
}

void DocumentRules::begin(DocumentDraft& draft, const QString& lastDate) const {
  draft.date = newDocumentDate(lastDate.left(10));
  draft.number = newDocumentNumber(family(), draft.date);
  draft.warehouse = defaultWarehouseSn();
  draft.salesperson = defaultEmployeeSn();
}

bool DocumentRules::isIncomplete(const DocumentDraft& draft, Prompt& prompt, const Refusal& own) const {
  const PeriodLock lock;
  return refused({withoutGoods(family(), draft.number, u"单据中没有业务发生，不能保存！"_qs),
                  lock.against(draft.date),
                  own,
                  {draft.salesperson.isEmpty(), u"请选择经办人！"_qs, Subject::Employee},
                  {draft.warehouse.isEmpty(), u"请选择仓库！"_qs, Subject::Warehouse},
                  warehouseGone(draft.warehouse)},
                 prompt);
}

Refusal warehouseDeleted(const QString& warehouse, Subject which) {
  return {!warehouse.isEmpty() && !exists("select ck_sn from jxc_ckxx where ck_sn=?", warehouse),
          u"所选仓库已被删除，请重新选择仓库！"_qs, which};
}

Refusal warehouseGone(const QString& own) {
  Filter mine;
  mine.add("ck_sn=?", own);
  addWarehouseBinding(mine);
  return {!own.isEmpty() && !exists(Sql("select ck_sn from jxc_ckxx").where(mine)),
          u"所选仓库已被删除，或不再允许您使用，请重新选择仓库！"_qs, Subject::Warehouse};
}

Refusal alreadyOnDocument(const QString& goods) {
  return {u"该商品已添加，不能重复添加，\r\n\r\n可以修改已添加商品的数量！\r\n\r\n商品："_qs + goods + u' ' +
              lookupValue("select g_name from jxc_goods where g_sn=?", goods),
          Subject::Barcode};
}

std::int64_t insertWaitingHead(const DocumentFamily& f, const DocumentDraft& draft, const QString& number) {
  return insertRow(f.head, {{f.number, number},
                            {f.date, draft.date},
                            {f.warehouse, draft.warehouse},
                            {"u_sn", draft.salesperson},
                            {f.note, sanitizeText(draft.note).left(200)},
                            {f.status, 0},
                            {f.checker, QString()},
                            {f.checkDate, QString()},
                            {"a_name", session().a_name}});
}

Sql stagedLines() {
  return Sql(
      // What others have as tax is rent and deposit of goods on loan.
      "select a.*,a.ts_tax as rent,a.ts_taxdj as deposit,b.g_name,b.g_jm,b.gg_name,b.color_name,b.dw_name,b.g_sptm,"
      "b.g_kc from jxc_tempspxf a,jxc_goods b "
      "where a.g_sn=b.g_sn and a.a_name=? order by a.id",
      session().a_name);
}

void unstage(std::int64_t id) {
  execSql("delete from jxc_tempspxf where id=? and a_name=?", id, session().a_name);
}

QString unsavedDraft(const DocumentFamily& family) {
  const double last = lookupNumber(compose("select max(id) from {}", {family.lines}));
  return lookupValue(
      compose("select top 1 {} from {} where id>? and a_name=? and {} like ? and {} not in (select {} from {} where {} "
              "like ?) order by id desc",
              {family.number, family.lines, family.number, family.number, family.number, family.head, family.number}),
      last - static_cast<double>(document_rules_detail::recentLines), session().a_name, words(family.prefix) + u'%',
      words(family.prefix) + u'%');
}

QString dateOfNumber(const QString& number) {
  const QDate date = QDate::fromString(u"20"_qs + number.mid(2, 6), u"yyyyMMdd"_qs);
  return date.isValid() ? date.toString(u"yyyy-MM-dd"_qs) : QString();
}

}  // namespace jxc
