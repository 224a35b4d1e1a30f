#include "stock/document_list.h"

#include "accounts/partner_ledger.h"
#include "core/list_audit.h"
#include "core/numbers.h"
#include "core/reading.h"
#include "core/refusal.h"
#include "core/rights_now.h"
#include "core/text.h"
#include "stock/cancelling.h"
#include "stock/document.h"
#include "stock/document_rules.h"
#include "stock/partial_movement.h"

#include <algorithm>
#include <array>
#include <optional>
#include <set>
#include <string>

namespace jxc {
namespace document_list_detail {

std::string of(std::string_view table, std::string_view column) {
  return compose("{}.{}", {table, column});
}
/// A column, or what stands for it where the family has none.
std::string ofOr(std::string_view table, std::string_view column, const char* otherwise) {
  return column.empty() ? otherwise : of(table, column);
}

/// Which of the documents: those that are audited, or those that wait.
enum class State : char { Waiting, Audited };

std::vector<State> statesOf(const Criteria& criteria) {
  if (criteria.has(kWaitingOnly)) return {State::Waiting};
  if (criteria.has(kWaitingToo)) return {State::Audited, State::Waiting};
  return {State::Audited};
}

/// One kind in one state: a part of the union. Each goes along its own index.
struct Part {
  const DocumentFamily& family;
  State state;
  std::string order;  // of the kinds among each other
  const DocumentListing& listing;
  bool isNone = false;
};

/// Read once for all kinds; nothing where all of them are seen.
std::optional<RightsNow> rightsFor(const DocumentListing& listing) {
  return listing.byRight ? std::make_optional<RightsNow>() : std::nullopt;
}

/// The operator has a right to documents of this kind: to make, audit, cancel or look them up.
bool maySeeDocuments(const DocumentFamily& family, const RightsNow& rights) {
  return std::ranges::any_of(std::array{family.make, family.audit, family.cancel, family.look},
                             [&](const Right& right) { return right.isGuarded() && rights.has(right); });
}

std::vector<Part> partsOf(Families families, const Criteria& criteria, const DocumentListing& listing) {
  std::vector<Part> parts;
  const auto sees = rightsFor(listing);
  for (std::size_t i = 0; i < families.size(); ++i) {
    const DocumentFamily& family = *families[i];
    if (!criteria.kind.isEmpty() && criteria.kind != words(family.prefix)) continue;
    if (!criteria.document.isEmpty() && !criteria.document.startsWith(words(family.prefix))) continue;
    if (!criteria.partner.isEmpty() && family.partner.empty()) continue;
    if (criteria.has(kUnpaidOnly | kOpenOnly) && !family.hasMoney()) continue;
    if (sees && !maySeeDocuments(family, *sees)) continue;
    for (const State state : statesOf(criteria))
      parts.push_back({family, state, std::to_string(10 + i), listing});
  }
  if (parts.empty())
    parts.push_back({*families.front(), State::Audited, "10", listing, true});  // the columns without a row
  return parts;
}

std::string periodColumn(const DocumentFamily& family, const Criteria& criteria) {
  return of("a", criteria.order == QStringView(kByAudit) ? family.checkDate : family.date);
}

/// Documents with such goods on them, or, of lines, those lines.
void addGoods(Filter& filter, const DocumentFamily& f, const Criteria& criteria, bool ofLines) {
  if (criteria.group.isEmpty() && criteria.goodsClass.isEmpty() && criteria.goods.isEmpty()) return;
  Filter wanted;
  addChoice(wanted, "g.g_sn", criteria.goods);
  addClass(wanted, criteria, "g.gc_sn");
  addKey(wanted, {.key = criteria.group}, {"g.g_sn", "g.g_name", "g.g_jm", "g.g_sptm"});
  if (ofLines) return void(filter.add(wanted.conditions()));
  Sql any = Sql(compose("(exists (select x.id from {} x,jxc_goods g where x.g_sn=g.g_sn and x.{}=a.{}",
                        {f.lines, f.number, f.number}))
                .andWhere(wanted)
                .add(")");
  if (!f.whole.goods.empty())
    any.add(compose(" or exists (select g.id from jxc_goods g where g.g_sn=a.{}", {f.whole.goods}))
        .andWhere(wanted)
        .add(")");
  filter.add(any.add(")"));
}

/// A transfer belongs to both of its warehouses, unless one end is asked for.
void addWarehouse(Filter& filter, const DocumentFamily& f, const Criteria& criteria, const Warehouses& warehouses) {
  Filter from, to;
  warehouses.restrict(from, of("a", f.warehouse));
  if (from.isEmpty()) return;
  if (!f.into.empty()) warehouses.restrict(to, of("a", f.into));
  if (to.isEmpty() || criteria.has(kGoesOut))
    filter.add(from.conditions());
  else if (criteria.has(kComesIn))
    filter.add(to.conditions());
  else
    filter.add(Sql("(").add(from.conditions()).add(" or ").add(to.conditions()).add(")"));
}

Filter conditions(const Part& part, const Criteria& criteria, const Warehouses& warehouses, bool ofLines) {
  const DocumentFamily& f = part.family;
  Filter filter;
  if (part.isNone) filter.add("1=0");
  filter.add(of("a", f.status) + (part.state == State::Audited ? "=1" : "=0"));
  const QString number = criteria.key.trimmed().toUpper();
  const bool isOne = isDocumentNumber(number);
  if (!isOne) addPeriod(filter, criteria, periodColumn(f, criteria));
  // Two kinds in one table are told apart by their numbers.
  const bool isAlone = std::ranges::none_of(
      documentFamilies(), [&](const DocumentFamily& other) { return &other != &f && other.head == f.head; });
  if (!isAlone) filter.add(of("a", f.number) + " like ?", words(f.prefix) + u'%');
  addChoice(filter, of("a", f.number), criteria.document);
  if (!f.partner.empty()) addChoice(filter, of("a", f.partner), criteria.partner);
  addEmployee(filter, "a.u_sn", criteria.employee);
  if (criteria.has(kUnpaidOnly)) filter.add(openAmount(f) + ">0");
  if (criteria.has(kOpenOnly)) filter.add(openAmount(f) + "<>0");
  addGoods(filter, f, criteria, ofLines);
  addWarehouse(filter, f, criteria, warehouses);
  if (isOne) return filter.add(of("a", f.number) + "=?", number);
  std::vector<std::string> searched{of("a", f.number), of("a", f.note)};
  if (!f.originalNumber.empty()) searched.push_back(of("a", f.originalNumber));
  if (!f.partner.empty())
    for (const std::string_view column : {partnerOf(f).key, partnerOf(f).name, partnerOf(f).mnemonic})
      searched.push_back(of("b", column));
  addKey(filter, criteria, searched);
  return filter;
}

/// The head with the names of whom and what it tells of; who is gone from his list leaves the document where it is.
std::string headTables(const DocumentFamily& f) {
  std::string tables = std::string(f.head) + " a";
  const auto join = [&](std::string_view table, const char* as, const std::string& own, std::string_view key) {
    tables =
        "(" + tables + " left outer join " + std::string(table) + " " + as + " on " + own + "=" + of(as, key) + ")";
  };
  if (!f.partner.empty()) join(partnerOf(f).table, "b", of("a", f.partner), partnerOf(f).key);
  join("jxc_user", "c", "a.u_sn", "u_sn");
  join("jxc_ckxx", "d", of("a", f.warehouse), "ck_sn");
  if (!f.into.empty()) join("jxc_ckxx", "e", of("a", f.into), "ck_sn");
  if (!f.whole.goods.empty()) join("jxc_goods", "h", of("a", f.whole.goods), "g_sn");
  return tables;
}

/// Who is gone from his list is told by his number.
std::string partnerName(const DocumentFamily& f) {
  if (f.partner.empty()) return "''";
  const std::string name = of("b", partnerOf(f).name);
  return "iif(" + name + " is null," + of("a", f.partner) + "," + name + ")";
}

/// Columns that heads and lines share.
std::string commonColumns(const Part& part) {
  const DocumentFamily& f = part.family;
  const bool isAudited = part.state == State::Audited;
  return of("a", f.number) + " as djh,'" + kindWord(f).toStdString() + "' as gtype," + part.order + " as dsort," +
         (isAudited ? "1 as status,'已审核' as zt," : "0 as status,'待审核' as zt,") + of("a", f.date) + " as rq," +
         of("a", f.checkDate) + " as chkrq," + ofOr("a", f.partner, "''") + " as ghs_sn," + partnerName(f) +
         " as ghs_name," + (f.whole.goods.empty() ? "''" : "h.g_name") + " as zg_name," +
         ofOr("a", f.whole.quantity, "null") + " as zg_sl,d.ck_name,c.u_name,";
}

/// The parts in the order of the list; `lines`: of their lines too.
Sql united(const std::vector<Part>& parts, const Criteria& criteria, Sql (*select)(const Part&),
           const Warehouses& warehouses, bool lines) {
  Sql all;
  for (const Part& part : parts) {
    if (!all.isEmpty()) all.add(" union all ");
    all.add(select(part).where(conditions(part, criteria, warehouses, lines)));
  }
  const std::string down = criteria.descending ? " desc" : "";
  all.add(criteria.order == QStringView(kByAudit) ? " order by chkrq" : " order by rq").add(down);
  if (parts.size() > 1) all.add(",dsort");
  return all.add(",djh").add(down).add(lines ? ",lid" : "");
}

Sql heads(const Part& part) {
  const DocumentFamily& f = part.family;
  const LineColumns& line = *f.line.columns;
  const bool seen = seesAmounts(f);
  const auto yuan = [&](const std::string& amount) { return seen ? amount : std::string("null"); };
  const auto money = [&](std::string_view column) {
    return !f.hasMoney() ? std::string("null") : yuan(ofOr("a", column, "0"));
  };
  const std::string worth = f.hasMoney()         ? of("a", f.due)
                            : line.total.empty() ? std::string("null")
                                                 : compose("(select sum(x.{}) from {} x where x.{}=a.{})",
                                                           {line.total, f.lines, f.number, f.number});
  return Sql("select " + commonColumns(part) + (f.into.empty() ? "''" : "e.ck_name") + " as ck_in," + of("a", f.note) +
             " as dnote,a.a_name," + of("a", f.checker) + " as checker," + ofOr("a", f.originalNumber, "''") +
             " as j_sn2," + ofOr("a", f.invoiceNumber, "''") + " as fpno," + ofOr("a", f.isReturned, "0") +
             " as j_th," + money(f.due) + " as yfje," + money(f.paid) + " as sfje," + money(f.discount) + " as yhje," +
             money(f.collected) + " as hkje," + (f.hasMoney() ? yuan(openAmount(f)) : "null") + " as wfje," +
             money(f.freight) + " as yf," + money(f.packing) + " as bzf," + ofOr("a", f.freightPayer, "''") +
             " as yffs," + yuan(worth) + " as zje," + ofOr("a", f.pieces, "null") + " as zsl," + of("a", f.number) +
             " & '-' & a.id as rowkey" + (part.listing.columns ? part.listing.columns(f) : std::string()) + " from " +
             headTables(f));
}

Sql linesOf(const Part& part) {
  const DocumentFamily& f = part.family;
  const LineTable& table = f.line;
  const LineColumns& line = *table.columns;
  const bool seen = seesAmounts(f);
  const std::string sign = f.headSign < 0 ? "-1*" : "";
  const auto signedOf = [&](std::string_view column) { return sign + of("x", column); };
  // An amount that the kind has and the operator may see.
  const auto amount = [&](std::string_view column) {
    return column.empty() || !seen ? std::string("null") : signedOf(column);
  };
  const std::string quantity = table.moves.empty() ? signedOf(line.quantity) : "x.moved";
  const std::string name =
      table.gift.empty() ? "g.g_name" + partial::giftMark(f, "x") : "g.g_name & " + of("x", table.gift);
  const std::string book = ofOr("x", table.countedBook, "null");
  // The head has columns of the same names as some lines: what a line moves is told inside.
  const std::string lines = table.moves.empty() ? std::string(f.lines) + " x"
                                                : "(select y.*," + std::string(table.moves) + " as moved from " +
                                                      std::string(f.lines) + " y) x";
  std::string tables = "(" + headTables(f) + " inner join " + lines + " on " + of("a", f.number) + "=" +
                       of("x", f.number) + ") left outer join jxc_goods g on x.g_sn=g.g_sn";
  if (!table.warehouse.empty())
    tables = "(" + tables + ") left outer join jxc_ckxx w on " + of("x", table.warehouse) + "=w.ck_sn";
  const char* other = !f.into.empty() ? "e.ck_name" : !table.warehouse.empty() ? "w.ck_name" : "''";
  return Sql("select " + commonColumns(part) + other + " as ck_in,x.id as lid," + of("a", f.number) +
             " & '-' & x.id as rowkey," + of("a", f.number) + " as gl_djh," + of("a", f.date) + " as gl_kdrq,x.g_sn," +
             name + " as g_name,g.gg_name,g.color_name,g.dw_name," + quantity + " as gl_sl," +
             (line.price.empty() || !seen ? "null" : of("x", line.price)) + " as gl_dj," +
             amount(line.net.empty() ? line.total : line.net) + " as gl_je," + amount(line.taxAmount) +
             " as gl_taxje," + amount(line.total) + " as gl_zje," + book + " as zmsl," +
             (table.countedBook.empty() ? "null" : of("x", line.quantity) + "-" + book) + " as cysl," +
             ofOr("x", table.note, "''") + " as gl_bz," + ofOr("x", table.source, "''") + " as gl_djh2,x.t_ph," +
             ofOr("x", table.expires, "''") + " as t_yxq from " + tables);
}

/// The audited documents among these numbers are cancelled in the order in which the books grew, from behind. What was
/// put away or issued wrote no rows there, and stands on documents that did: it goes before them.
std::int64_t lastPosting(const QString& number) {
  const DocumentFamily& family = documentFamily(number);
  if (family.partial) {
    constexpr std::int64_t behindAll = std::int64_t{1} << 40;
    return behindAll + firstIdOf(family.head, family.number, number);
  }
  return static_cast<std::int64_t>(lookupNumber("select max(id) from jxc_goodslist where gl_djh=?", number));
}

bool isAudited(const DocumentFamily& family, const QString& number) {
  return exists(compose("select id from {} where {}=1 and {}=?", {family.head, family.status, family.number}), number);
}

bool cancelOne(const QString& number, Prompt& prompt, CancelMode mode) {
  const DocumentFamily& family = documentFamily(number);
  if (mayCancel(family) && !isAudited(family, number)) {
    prompt.notice(u"单据"_qs + number + u"还没有审核，不需要取消审核！"_qs);
    return false;
  }
  return cancelDocument(number, prompt, mode);
}

}  // namespace document_list_detail

void addEmployee(Filter& filter, std::string_view column, const QString& employee) {
  if (employee == QStringView(kOthers))
    filter.add(compose("({} is null or {} not in (select u_sn from jxc_user))", {column, column}));
  else
    addChoice(filter, column, employee);
}

Sql waitingDocuments(Families families, const Warehouses& warehouses) {
  using namespace document_list_detail;
  const Criteria waiting{.boxes = kWaitingOnly};
  const DocumentListing listing;
  Sql all;
  for (const Part& part : partsOf(families, waiting, listing)) {
    if (!all.isEmpty()) all.add(" union all ");
    all.add(Sql(compose("select count(*) as n from {} a", {part.family.head}))
                .where(conditions(part, waiting, warehouses, false)));
  }
  return all;
}

std::string openAmount(const DocumentFamily& family) {
  return compose("(a.{}-a.{}-a.{}", {family.due, family.paid, family.collected}) +
         (family.discount.empty() ? std::string() : compose("-a.{}", {family.discount})) + ")";
}

QString kindWord(const DocumentFamily& family) {
  return words(family.name.substr(0, family.name.size() - 1));  // without "单"
}

std::vector<ListItem> listedKinds(Families families, const DocumentListing& listing) {
  std::vector<ListItem> items{{QStringLiteral("所有单据"), QString::fromUtf16(allKey)}};
  const auto sees = document_list_detail::rightsFor(listing);
  for (const DocumentFamily* family : families)
    if (!sees || document_list_detail::maySeeDocuments(*family, *sees))
      items.push_back({kindWord(*family), words(family->prefix)});
  return items;
}

Sql listedDocuments(Families families, const Criteria& criteria, const Warehouses& warehouses,
                    const DocumentListing& listing) {
  namespace detail = document_list_detail;
  return detail::united(detail::partsOf(families, criteria, listing), criteria, detail::heads, warehouses, false);
}

Sql listedLines(Families families, const Criteria& criteria, const Warehouses& warehouses,
                const DocumentListing& listing) {
  namespace detail = document_list_detail;
  return detail::united(detail::partsOf(families, criteria, listing), criteria, detail::linesOf, warehouses, true);
}

bool isDocumentNumber(QStringView typed) {
  constexpr qsizetype kPrefix = 2, kShortest = 10;
  return typed.size() >= kShortest && findFamily(typed) &&
         std::all_of(typed.begin() + kPrefix, typed.end(), [](QChar letter) { return letter.isDigit(); });
}

std::optional<QString> findListed(Families families, const QString& typed, Prompt& prompt) {
  Criteria criteria;
  criteria.document = typed.trimmed().toUpper();
  criteria.boxes = kWaitingToo;
  if (!criteria.document.isEmpty() && exists(listedDocuments(families, criteria, Warehouses(criteria))))
    return criteria.document;
  prompt.notice(u"没有找到单据“"_qs + typed.trimmed() + u"”！"_qs);
  return {};
}

bool cancelListed(const QString& number, Prompt& prompt) {
  return document_list_detail::cancelOne(number, prompt, CancelMode::Single);
}

std::optional<int> cancelAllListed(std::span<const QString> numbers, Prompt& prompt, const AuditProgress& progress) {
  namespace detail = document_list_detail;
  if (numbers.empty()) return {};
  ListAudit list{.question = u"您的操作将取消列表中 %1 张单据的审核，确认吗？"_qs.arg(numbers.size()),
                 .listed = static_cast<qsizetype>(numbers.size()),
                 .deed = u"取消审核"_qs,
                 .progress = progress};
  for (const QString& number : numbers)
    list.waiting.push_back({.number = number, .id = -detail::lastPosting(number)});
  std::set<const DocumentFamily*> withoutRight;  // told of once
  list.audit = [&](const ListedDocument& document, Prompt& told) {
    const DocumentFamily& family = documentFamily(document.number);
    if (!mayCancel(family) && !withoutRight.insert(&family).second) return false;
    return detail::cancelOne(document.number, told, CancelMode::Batch);
  };
  return auditEach(list, prompt);
}

}  // namespace jxc
