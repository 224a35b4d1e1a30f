#include "statistics/trade_totals.h"

#include "core/rights.h"
#include "masterdata/partner_side.h"
#include "statistics/trade_terms.h"

#include <algorithm>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace jxc {
namespace trade_totals_detail {

/// Lines of the ledger `x` are summed first, by what stands in them …
struct Key {
  std::string_view of, as;
};
constexpr Key kGoodsKey{"x.g_sn", "g_sn"}, kPartnerKey{"x.ghs_sn", "ghs_sn"}, kEmployeeKey{"x.u_name", "u_name"},
    kTimeKey{"x.gl_kdrq", "tjrq"};  // as it stands: lines come in this order, none is sorted

/// … and the sums `b` are named after: names are read once a sum, not once a line. Where several sums fall under one
/// name (the goods of a class, all partners that are gone), they are summed once more by what is a key then.
struct Named {
  std::string_view of, as;
  bool isKey = false;
};
enum Tables : unsigned {
  Goods = 1,
  Classes = 2,  // by way of the goods, as their suppliers
  GoodsSuppliers = 4,
  Partners = 8,
  Employees = 16,
  GoodsNames = 32 | Goods  // all that tells goods apart
};

struct Grouping {
  TradeBy by;
  std::span<const Key> keys;
  std::span<const Named> named;
  unsigned tables;
  std::string_view order;
};

constexpr Named kGoodsNames[] = {{"b.g_sn", "g_sn"},
                                 {"iif(a.g_name is null,'其他',a.g_name)", "g_name"},
                                 {"a.dw_name", "dw_name"},
                                 {"a.gg_name", "gg_name"},
                                 {"a.color_name", "color_name"},
                                 {"a.g_sptm", "g_sptm"},
                                 {"a.g_sccs", "g_sccs"},
                                 {"a.g_bz", "g_bz"}};
constexpr Named kMoreOfGoods[] = {{"a.g_jm", "g_jm"}, {"iif(c.gc_name is null,'其他',c.gc_name)", "gc_name"}};
constexpr Named kClassNames[] = {{"iif(c.gc_sn is null,'其他',c.gc_sn)", "gc_sn", true},
                                 {"iif(c.gc_name is null,'其他',c.gc_name)", "gc_name"}};
constexpr Named kGoodsSupplierNames[] = {{"iif(s.ghs_sn is null,'其他',s.ghs_sn)", "ghs_sn", true},
                                         {"iif(s.ghs_name is null,'其他',s.ghs_name)", "ghs_name"}};
constexpr Named kPartnerNames[] = {{"iif(p.p_sn is null,'其他',p.p_sn)", "ghs_sn", true},
                                   {"iif(p.p_name is null,'其他',p.p_name)", "ghs_name"}};
constexpr Named kPartnerClassNames[] = {
    kPartnerNames[0],
    kPartnerNames[1],
    kClassNames[0],
    kClassNames[1],
    {"iif(p.p_sn is null,'其他',p.p_sn) & '/' & iif(c.gc_sn is null,'其他',c.gc_sn)", "rowkey"}};
constexpr Named kTypeNames[] = {{"iif(p.p_type is null or p.p_type='','其他',p.p_type)", "kt_name", true}};
constexpr Named kRegionNames[] = {
    {"iif(p.p_sn is null,'其他',iif(p.p_region is null or p.p_region='','无地区',p.p_region))", "z_name", true}};
constexpr Named kEmployeeNames[] = {{"iif(e.e_sn is null,'其他',e.e_sn)", "u_sn", true},
                                    {"iif(e.e_name is null,'其他',e.e_name)", "u_name"}};
constexpr Named kDocumentNames[] = {
    {"b.djh", "djh"}, {"left(b.tjrq,10)", "tjrq"}, {"b.ghs_sn", "ghs_sn"}, kPartnerNames[1], {"b.u_name", "u_name"}};
constexpr Named kDayNames[] = {{"left(b.tjrq,10)", "tjrq", true}}, kMonthNames[] = {{"left(b.tjrq,7)", "tjrq", true}},
                kYearNames[] = {{"left(b.tjrq,4)", "tjrq", true}};
constexpr Named kPartnerGoodsNames[] = {
    {"b.tjrq", "tjrq"}, {"b.ghs_sn", "ghs_sn"}, kPartnerNames[1], {"b.tjrq & b.g_sn & '/' & b.ghs_sn", "rowkey"}};

constexpr Key kOfGoods[] = {kGoodsKey}, kOfPartners[] = {kPartnerKey}, kOfBoth[] = {kPartnerKey, kGoodsKey},
              kOfEmployees[] = {kEmployeeKey}, kOfTime[] = {kTimeKey},
              kOfDocuments[] = {kTimeKey, {"x.gl_djh", "djh"}, kPartnerKey, kEmployeeKey},
              kDaily[] = {{"left(x.gl_kdrq,10)", "tjrq"}, kGoodsKey, kPartnerKey},
              kMonthly[] = {{"left(x.gl_kdrq,7)", "tjrq"}, kGoodsKey, kPartnerKey};
constexpr std::string_view kLatestFirst = "t.tjrq desc,t.g_sn,t.ghs_name";
constexpr Grouping kGroupings[] = {
    {TradeBy::Goods, kOfGoods, kMoreOfGoods, GoodsNames | Classes, "t.g_sn"},
    {TradeBy::GoodsClass, kOfGoods, kClassNames, Goods | Classes, "t.gc_sn"},
    {TradeBy::GoodsSupplier, kOfGoods, kGoodsSupplierNames, Goods | GoodsSuppliers, "t.ghs_sn"},
    {TradeBy::Partner, kOfPartners, kPartnerNames, Partners, "t.ghs_sn"},
    {TradeBy::PartnerClass, kOfBoth, kPartnerClassNames, Goods | Classes | Partners, "t.ghs_sn,t.gc_sn"},
    {TradeBy::CustomerType, kOfPartners, kTypeNames, Partners, "t.kt_name"},
    {TradeBy::Region, kOfPartners, kRegionNames, Partners, "t.z_name"},
    {TradeBy::Employee, kOfEmployees, kEmployeeNames, Employees, "t.u_sn"},
    {TradeBy::Document, kOfDocuments, kDocumentNames, Partners, "t.tjrq desc,t.djh desc"},
    {TradeBy::Day, kOfTime, kDayNames, 0, "t.tjrq"},
    {TradeBy::Month, kOfTime, kMonthNames, 0, "t.tjrq"},
    {TradeBy::Year, kOfTime, kYearNames, 0, "t.tjrq"},
    {TradeBy::PartnerGoodsDay, kDaily, kPartnerGoodsNames, GoodsNames | Partners, kLatestFirst},
    {TradeBy::PartnerGoodsMonth, kMonthly, kPartnerGoodsNames, GoodsNames | Partners, kLatestFirst}};

/// What is summed of a line, and as what.
constexpr Key kFigures[] = {{"x.gl_sl", "sl"},   {"x.gl_je", "je"},   {"x.gl_taxje", "taxje"},
                            {"x.gl_zje", "zje"}, {"x.gl_zcb", "zcb"}, {"x.gl_lr", "lr"}};

/// Puts items of a list together, with commas between them.
template <class List, class Text>
std::string listed(const List& list, Text text) {
  std::string all;
  for (const auto& each : list)
    if (const std::string one = text(each); !one.empty()) all += all.empty() ? one : ',' + one;
  return all;
}
std::string text(auto... parts) {
  return (std::string() + ... + std::string(parts));
}

/// The sums with the tables that name them.
Sql namedSums(const Grouping& grouping, PartnerType side, const Sql& sums) {
  const auto isThere = [&](Tables table) { return (grouping.tables & table) != 0; };
  std::string before = "(", behind = ") b";
  const auto join = [&](const char* table) {
    before += '(';
    behind += text(" left outer join ", table, ")");
  };
  if (isThere(Goods)) join("jxc_goods a on b.g_sn=a.g_sn");
  if (isThere(Classes)) join("(select gc_sn,gc_name from jxc_goodsclass where gc_sn<>'') c on a.gc_sn=c.gc_sn");
  if (isThere(GoodsSuppliers)) join("jxc_ghsxx s on a.ghs_sn=s.ghs_sn");
  if (isThere(Partners))
    join(side == PartnerType::Supplier
             ? "(select ghs_sn as p_sn,ghs_name as p_name,gt_name as p_type,z_name as p_region from jxc_ghsxx) p "
               "on b.ghs_sn=p.p_sn"
             : "(select kh_sn as p_sn,kh_name as p_name,kt_name as p_type,z_name as p_region from jxc_khxx) p "
               "on b.ghs_sn=p.p_sn");
  if (isThere(Employees))
    join("(select u_name as e_name,max(u_sn) as e_sn from jxc_user group by u_name) e on b.u_name=e.e_name");
  return Sql(before).add(sums).add(behind);
}

/// What a sum over a partner, an employee, a type, a region, a class or a supplier of goods stands for. "其他" are the
/// lines of those that are gone and of those without one.
struct Membership {
  std::string_view of;     // of the line
  std::string_view known;  // those that fall under some other name
  std::string_view one;    // those under this one
};
constexpr Membership kOfType{"x.ghs_sn", "select kh_sn from jxc_khxx where kt_name<>'' and kt_name<>'其他'",
                             "select kh_sn from jxc_khxx where kt_name=?"},
    kOfRegion{"x.ghs_sn", "select kh_sn from jxc_khxx where z_name is null or z_name<>'其他'",
              "select kh_sn from jxc_khxx where iif(z_name is null or z_name='','无地区',z_name)=?"},
    kOfClass{"x.g_sn", "select g_sn from jxc_goods where gc_sn in (select gc_sn from jxc_goodsclass where gc_sn<>'')",
             "select g_sn from jxc_goods where gc_sn=?"},
    kOfGoodsSupplier{"x.g_sn", "select g_sn from jxc_goods where ghs_sn in (select ghs_sn from jxc_ghsxx)",
                     "select g_sn from jxc_goods where ghs_sn=?"},
    kOfEmployee{"x.u_name", "select u_name from jxc_user", "select u_name from jxc_user where u_sn=?"},
    kOfCustomer{"x.ghs_sn", "select kh_sn from jxc_khxx", ""},
    kOfSupplier{"x.ghs_sn", "select ghs_sn from jxc_ghsxx", ""};

void addMember(Filter& filter, const Membership& membership, const QString& chosen) {
  const auto& [of, known, one] = membership;
  if (chosen.isEmpty()) return;
  if (chosen == QStringView(kOthers))
    filter.add(text("(", of, " is null or ", of, " not in (", known, "))"));
  else if (one.empty())
    filter.add(text(of, "=?"), chosen);
  else
    filter.add(text(of, " in (", one, ")"), chosen);
}

Filter conditions(PartnerType side, const Criteria& criteria, const Warehouses& warehouses) {
  Filter filter;
  filter.add(text("x.gl_flag in ", tradeFlags(side)));
  const bool asDocuments = criteria.has(kAsDocuments);
  const bool byAudit = asDocuments && criteria.order == QStringView(kByAudit);
  // A whole number finds its document whenever it was made, as in the list.
  if (!asDocuments || !isDocumentNumber(criteria.key.trimmed().toUpper()))
    addPeriod(filter, criteria, byAudit ? "x.gl_chkrq" : "x.gl_kdrq");
  addChoice(filter, "x.gl_flag", criteria.kind);
  addChoice(filter, "x.g_sn", criteria.goods);
  if (isDocumentNumber(criteria.document))
    addChoice(filter, "x.gl_djh", criteria.document);
  else
    addKey(filter, {.key = criteria.document}, {"x.gl_djh", "x.gl_djh2", "x.gl_note", "x.gl_bz"});
  addMember(filter, side == PartnerType::Supplier ? kOfSupplier : kOfCustomer, criteria.partner);
  addMember(filter, kOfEmployee, criteria.employee);
  addMember(filter,
            criteria.has(kGroupIsClass)      ? kOfClass
            : criteria.has(kGroupIsSupplier) ? kOfGoodsSupplier
            : criteria.has(kGroupIsRegion)   ? kOfRegion
                                             : kOfType,
            asDocuments ? QString() : criteria.group);
  warehouses.restrict(filter, "x.ck_sn");
  addGoods(filter, asDocuments ? Criteria{.goodsClass = criteria.goodsClass, .key = criteria.group} : criteria,
           {"g_sn", "g_name", "g_jm", "g_sptm", "gg_name", "color_name", "g_sccs"});
  if (asDocuments) addKey(filter, criteria, {"x.gl_djh", "x.gl_djh2", "x.gl_note", "x.ghs_sn", "x.ghs_name"});
  return filter;
}

/// The totals of these lines without their order: from "select t.* … from (" to ") t".
Sql unordered(PartnerType side, const Grouping& grouping, const Filter& lines) {
  const bool tellsLast = side == PartnerType::Supplier && grouping.by == TradeBy::Goods;
  const Sql sums =
      Sql(text("select ", listed(grouping.keys, [](const Key& key) { return text(key.of, " as ", key.as); }), ",",
               listed(kFigures, [](const Key& figure) { return text("sum(", figure.of, ") as ", figure.as); }),
               tellsLast ? ",max(x.gl_kdrq) as rq" : "", " from jxc_goodslist x"))
          .where(lines)
          .add(" group by " + listed(grouping.keys, [](const Key& key) { return std::string(key.of); }));
  const std::string again =
      listed(grouping.named, [](const Named& each) { return each.isKey ? std::string(each.of) : ""; });
  const auto name = [&](const Named& each) {
    return again.empty() || each.isKey ? text(each.of, " as ", each.as) : text("max(", each.of, ") as ", each.as);
  };
  const auto figure = [&](const Key& each) {
    return again.empty() ? text("b.", each.as) : text("sum(b.", each.as, ") as ", each.as);
  };
  std::string names = listed(grouping.named, name);
  if ((grouping.tables & GoodsNames) == GoodsNames) names += (names.empty() ? "" : ",") + listed(kGoodsNames, name);
  return Sql("select t.*," + percentOf("t.lr", "t.je") + " as lrl from (select " + names + "," +
             listed(kFigures, figure) + (tellsLast ? ",b.rq from " : " from "))
      .add(namedSums(grouping, side, sums))
      .add(again.empty() ? ") t" : " group by " + again + ") t");
}

Sql unordered(PartnerType side, const Grouping& grouping, const Criteria& criteria, const Warehouses& warehouses) {
  return unordered(side, grouping, conditions(side, criteria, warehouses));
}

/// The lines of the latest days, or months, whole ones: of those on which the last so many stand, which an index of
/// dates finds.
Filter latest(PartnerType side, bool months, const Criteria& criteria, const Warehouses& warehouses) {
  constexpr int kLines = 200;  // hardly two of them are one sum
  Criteria open = criteria;
  open.from.clear();  // no second beginning, which the index might be entered by
  Filter filter = conditions(side, open, warehouses);
  const std::string begins = text("left(min(l.gl_kdrq),", months ? "7" : "10", ")");
  return filter.add(Sql(text("x.gl_kdrq>=(select iif(", begins, "<?,?,", begins, ") from (select top ",
                             std::to_string(kLines), " x.gl_kdrq from jxc_goodslist x"),
                        criteria.from, criteria.from)
                        .where(conditions(side, criteria, warehouses))
                        .add(" order by x.gl_kdrq desc,x.id desc) l)"));
}

/// What a ranking goes by. An order by profit tells of cost, one by amount of prices: without the right it goes by
/// quantity.
std::string ranked(PartnerType side, const Criteria& criteria, std::string_view otherwise) {
  std::string order = " order by ";
  const bool isRanking = criteria.order == u"sl" || criteria.order == u"je" || criteria.order == u"lr";
  if (criteria.order == u"je" && hasRight(moneyRight(side)))
    order += "t.je desc,";
  else if (criteria.order == u"lr" && hasRight(kSeesProfit))
    order += "t.lr desc,";
  else if (isRanking)
    order += "t.sl desc,";
  return order + std::string(otherwise);
}

/// Present stock of each goods.
Sql stockToday(const Warehouses& warehouses) {
  Filter filter;
  warehouses.restrict(filter, "ck_sn");
  return Sql("select g_sn,sum(kc_sl) as kcsl from jxc_kcsp").where(filter).add(" group by g_sn");
}

constexpr unsigned kGroups = kGroupIsRegion | kGroupIsClass | kGroupIsSupplier;

/// Purchases and sales side by side, summed by a key that both have; the other columns are names.
Sql sideBySide(std::span<const std::string_view> columns, const Sql& bought, const Sql& sold, const Sql& others) {
  const auto names = listed(columns, [](std::string_view name) { return text("t.", name); });
  const auto shown = [&](std::string_view name) {
    return name == columns.front() ? text("u.", name) : text("max(u.", name, ") as ", name);
  };
  Sql all("select v.*," + percentOf("v.lr", "v.je") + " as lrl," + percentOf("v.xssl", "v.jhsl") +
          " as wcl from (select " + listed(columns, shown) +
          ",sum(u.jhsl) as jhsl,sum(u.jhje) as jhje,sum(u.xssl) as xssl,sum(u.xsje) as xsje,sum(u.je) as je,"
          "sum(u.zcb) as zcb,sum(u.lr) as lr from (select " +
          names + ",t.sl as jhsl,t.zje as jhje,0 as xssl,0 as xsje,0 as je,0 as zcb,0 as lr from (");
  all.add(bought).add(") t union all select " + names +
                      ",0 as jhsl,0 as jhje,t.sl as xssl,t.zje as xsje,t.je,t.zcb,t.lr from (");
  all.add(sold).add(") t").add(others).add(text(") u group by u.", columns.front(), ") v order by v."));
  return all.add(columns.front());
}

const Grouping& grouping(TradeBy by) {
  return *std::ranges::find(kGroupings, by, &Grouping::by);
}

}  // namespace trade_totals_detail

Sql tradeLines(PartnerType side, const Criteria& criteria, const Warehouses& warehouses) {
  return Sql("select x.*," + percentOf("x.gl_lr", "x.gl_je") + " as lrl from jxc_goodslist x")
      .where(trade_totals_detail::conditions(side, criteria, warehouses))
      .add(criteria.order == u"asc" ? " order by x.gl_kdrq,x.id" : " order by x.gl_kdrq desc,x.id desc");
}

Criteria asDocuments(Criteria criteria) {
  criteria.kind = criteria.kind.toLower();
  criteria.boxes = kAsDocuments;
  return criteria;
}

Sql documentSales(const Criteria& criteria, const Warehouses& warehouses) {
  const std::string down = criteria.descending ? " desc" : "";
  const std::string date = criteria.order == QStringView(kByAudit) ? "x.gl_chkrq" : "x.gl_kdrq";
  Filter filter = trade_totals_detail::conditions(PartnerType::Customer, asDocuments(criteria), warehouses);
  if (criteria.has(kUnpaidOnly))
    filter.add(Sql("x.gl_djh in (select z.djh from (")
                   .add(DocumentSet<families::sale, families::saleReturn>::documents(criteria, warehouses))
                   .add(") z)"));
  return Sql("select x.*," + tradeKind("x.gl_flag") + R"( as gtype,x.gl_djh as djh,x.gl_kdrq as rq,
      x.gl_djh & '-' & x.id as rowkey,iif(x.gl_je<>0,x.gl_lr*100.00/x.gl_je,0) as lrl,
      c.gc_name,p.kh_address,p.kh_lxr,p.kh_tele from (((jxc_goodslist x left outer join jxc_goods a on x.g_sn=a.g_sn)
      left outer join jxc_goodsclass c on a.gc_sn=c.gc_sn) left outer join jxc_khxx p on x.ghs_sn=p.kh_sn))")
      .where(filter)
      .add(" order by " + date + down + ",x.gl_flag" + down + ",x.gl_djh" + down + ",x.id" + down);
}

Sql tradeTotals(PartnerType side, TradeBy by, const Criteria& criteria, const Warehouses& warehouses) {
  using namespace trade_totals_detail;
  const Grouping& asked = grouping(by);
  return unordered(side, asked, criteria, warehouses).add(ranked(side, criteria, asked.order));
}

Computation latestFirst(PartnerType side, TradeBy by, const Criteria& criteria, const Warehouses& warehouses) {
  using namespace trade_totals_detail;
  const Grouping& asked = grouping(by);
  const std::string order = ranked(side, criteria, asked.order);
  const Filter lines = latest(side, by == TradeBy::PartnerGoodsMonth, criteria, warehouses);
  return [first = unordered(side, asked, lines).add(order),
          all = tradeTotals(side, by, criteria, warehouses)](EnquiryReader& reader) {
    reader.begin(first);
    return reader.select(all);
  };
}

void narrowToSum(TradeBy by, Criteria& criteria, const Row& row) {
  using namespace trade_totals_detail;
  const auto ofGroup = [&](const char* column, unsigned box) {
    criteria.group = row.text(column);
    criteria.boxes = (criteria.boxes & ~kGroups) | box;
  };
  // A month at the end of the period counts as far as the period goes.
  const auto ofTime = [&](const char* first, const char* last) {
    const QString time = row.text("tjrq");
    if (!criteria.from.startsWith(time)) criteria.from = time + QLatin1String(first);
    if (!criteria.to.startsWith(time)) criteria.to = time + QLatin1String(last);
  };
  switch (by) {
    case TradeBy::Goods:
      criteria.goods = row.text("g_sn");
      break;
    case TradeBy::GoodsClass:
      ofGroup("gc_sn", kGroupIsClass);
      break;
    case TradeBy::GoodsSupplier:
      ofGroup("ghs_sn", kGroupIsSupplier);
      break;
    case TradeBy::PartnerClass:
      ofGroup("gc_sn", kGroupIsClass);
      [[fallthrough]];
    case TradeBy::Partner:
      criteria.partner = row.text("ghs_sn");
      break;
    case TradeBy::CustomerType:
      ofGroup("kt_name", 0);
      break;
    case TradeBy::Region:
      ofGroup("z_name", kGroupIsRegion);
      break;
    case TradeBy::Employee:
      criteria.employee = row.text("u_sn");
      break;
    case TradeBy::Document:
      criteria.document = row.text("djh");
      break;
    case TradeBy::PartnerGoodsDay:
    case TradeBy::PartnerGoodsMonth:
      criteria.goods = row.text("g_sn");
      criteria.partner = row.text("ghs_sn").isEmpty() ? QString::fromUtf16(kOthers) : row.text("ghs_sn");
      [[fallthrough]];
    case TradeBy::Day:
    case TradeBy::Month:
      ofTime("", "");
      break;
    case TradeBy::Year:
      ofTime("-01", "-12");
      break;
  }
}

Sql goodsRanking(const Criteria& criteria, const Warehouses& warehouses) {
  using namespace trade_totals_detail;
  constexpr auto side = PartnerType::Customer;
  return Sql("select t.*,iif(k.kcsl is null,0,k.kcsl) as kcsl from (")
      .add(unordered(side, grouping(TradeBy::Goods), criteria, warehouses))
      .add(") t left outer join (")
      .add(stockToday(warehouses))
      .add(") k on t.g_sn=k.g_sn" + ranked(side, criteria, "t.g_sn"));
}

Criteria salesOfSupplier(Criteria criteria) {
  criteria.group = std::exchange(criteria.partner, {});
  criteria.boxes = kGroupIsSupplier;
  return criteria;
}

Sql supplierTrade(const Criteria& criteria, const Warehouses& warehouses) {
  using namespace trade_totals_detail;
  constexpr std::string_view kColumns[] = {"ghs_sn", "ghs_name"};
  Sql others;
  if (criteria.has(kEverySupplier)) {
    Filter filter;
    addChoice(filter, "ghs_sn", criteria.partner);
    others = Sql(" union all select ghs_sn,ghs_name,0,0,0,0,0,0,0 from jxc_ghsxx").where(filter);
  }
  const Criteria sold = salesOfSupplier(criteria);
  return sideBySide(kColumns, unordered(PartnerType::Supplier, grouping(TradeBy::Partner), criteria, warehouses),
                    unordered(PartnerType::Customer, grouping(TradeBy::GoodsSupplier), sold, warehouses), others);
}

Sql supplierGoods(const Criteria& criteria, const Warehouses& warehouses) {
  using namespace trade_totals_detail;
  constexpr std::string_view kColumns[] = {"g_sn", "g_name", "gg_name", "color_name", "dw_name"};
  const Criteria sold = salesOfSupplier(criteria);
  return sideBySide(kColumns, unordered(PartnerType::Supplier, grouping(TradeBy::Goods), criteria, warehouses),
                    unordered(PartnerType::Customer, grouping(TradeBy::Goods), sold, warehouses), {});
}

Sql supplierLines(const Criteria& criteria, const Warehouses& warehouses) {
  using trade_totals_detail::conditions;
  constexpr std::string_view kSame =
      "select x.id,x.gl_kdrq,x.gl_djh,x.ghs_name,x.g_sn,x.g_name,x.gg_name,x.color_name,x.dw_name,x.ck_name,x.u_name,";
  return Sql(std::string(kSame) +
             "x.gl_sl as jhsl,x.gl_zje as jhje,0 as xssl,0 as xsje,0 as zcb,0 as lr,0 as lrl from jxc_goodslist x")
      .where(conditions(PartnerType::Supplier, criteria, warehouses))
      .add(" union all ")
      .add(kSame)
      .add("0 as jhsl,0 as jhje,x.gl_sl as xssl,x.gl_zje as xsje,x.gl_zcb as zcb,x.gl_lr as lr," +
           percentOf("x.gl_lr", "x.gl_je") + " as lrl from jxc_goodslist x")
      .where(conditions(PartnerType::Customer, salesOfSupplier(criteria), warehouses))
      .add(" order by gl_kdrq desc,id desc");
}

Sql stockTurn(const Criteria& criteria, const Warehouses& warehouses) {
  using namespace trade_totals_detail;
  const auto moved = [&](PartnerType side) {
    return Sql("select x.g_sn,sum(x.gl_sl) as sl from jxc_goodslist x")
        .where(conditions(side, criteria, warehouses))
        .add(" group by x.g_sn");
  };
  Filter filter;
  filter.add("a.g_jy=0").add("a.g_sn<>'00000000'");
  filter.add(criteria.has(kTurnOfAllGoods) ? "(b.sl is not null or c.sl is not null)"
                                           : "b.sl is not null and c.sl is not null");
  const std::string_view order = criteria.order == u"cgsl"   ? "t.cgsl"
                                 : criteria.order == u"xssl" ? "t.xssl"
                                 : criteria.order == u"kcsl" ? "t.kcsl"
                                                             : "zzbl";
  return Sql("select t.*," + percentOf("t.xssl", "(t.cgsl+t.kcsl)") + R"( as zzbl from
      (select a.g_sn,a.g_name,a.gg_name,a.color_name,a.dw_name,iif(b.sl is null,0,b.sl) as cgsl,
      iif(c.sl is null,0,c.sl) as xssl,iif(k.kcsl is null,0,k.kcsl) as kcsl
      from ((jxc_goods a left outer join ()")
      .add(moved(PartnerType::Supplier))
      .add(") b on a.g_sn=b.g_sn) left outer join (")
      .add(moved(PartnerType::Customer))
      .add(") c on a.g_sn=c.g_sn) left outer join (")
      .add(stockToday(warehouses))
      .add(") k on a.g_sn=k.g_sn")
      .where(filter)
      .add(") t order by " + std::string(order) + " desc,t.g_sn");
}

}  // namespace jxc
