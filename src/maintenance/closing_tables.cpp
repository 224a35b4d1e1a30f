#include "maintenance/closing_tables.h"

#include "core/session.h"
#include "core/statements.h"
#include "stock/document_family.h"

namespace jxc::closing {
namespace closing_tables_detail {

DocumentTable of(const DocumentFamily& family) {
  return {family.lines, family.head, family.number, family.date, family.status};
}

Item of(std::u16string_view name, const DocumentFamily& family, std::string_view money, std::string_view lineMoney,
        std::string_view lineQuantity) {
  return {.name = name,
          .head = family.head,
          .number = family.number,
          .date = family.date,
          .status = family.status,
          .money = money,
          .quantity = {},
          .lines = family.lines,
          .lineMoney = lineMoney,
          .lineQuantity = lineQuantity};
}

/// What a split takes apart, and what a bundle becomes, stands in the head.
Item ofHead(std::u16string_view name, const DocumentFamily& family, std::string_view money, std::string_view quantity) {
  Item item = of(name, family, money, {}, {});
  item.lines = {};
  item.quantity = quantity;
  return item;
}

std::vector<Item> makeItems() {
  std::vector<Item> all{
      of(u"采购进货单", families::purchaseReceipt, "sum(b.j_yfje)", {}, "sum(a.jh_sl)"),
      of(u"采购退货单", families::purchaseReturn, "sum(-1*b.th_yfje)", {}, "sum(a.th_sl)"),
      of(u"商品销售单", families::sale, "sum(b.ls_yfje)", {}, "sum(a.ls_sl)"),
      of(u"顾客退货单", families::saleReturn, "sum(-1*b.th_yfje)", {}, "sum(a.th_sl)"),
      of(u"商品入库单", families::putaway, {}, {}, "sum(a.rk_sl)"),
      of(u"商品出库单", families::issue, {}, {}, "sum(a.ck_sl)"),
      of(u"库存调拨单", families::transfer, {}, {}, "sum(a.db_sl)"),
      of(u"商品报损单", families::loss, {}, "sum(a.bs_zje)", "sum(a.bs_sl)"),
      of(u"商品报溢单", families::overflow, {}, "sum(a.by_zje)", "sum(a.by_sl)"),
      ofHead(u"被拆分商品", families::split, "sum(b.cf_sl*b.cf_cbj)", "sum(b.cf_sl)"),
      of(u"拆分成的商品", families::split, {}, "sum(a.cf_zje)", "sum(a.cf_sl)"),
      ofHead(u"捆绑成的商品", families::bundle, "sum(b.kb_sl*b.kb_cbj)", "sum(b.kb_sl)"),
      of(u"被捆绑的商品", families::bundle, {}, "sum(a.kb_zje)", "sum(a.kb_sl)"),
      // Of counts the money is the stock that was in the books; the screen says so.
      ofHead(u"库存盘点单", families::stocktake, "sum(b.kc_sl)", "sum(b.pd_sl)"),
      of(u"客户借货单", families::loan, {}, "sum(a.jh_zje)", "sum(a.jh_sl)"),
      {.name = u"费用及收入--费用",
       .head = "jxc_yyfy",
       .date = "fy_rq",
       .money = "sum(b.fy_je)",
       .only = "b.fy_flag='1' and b.fy_chk='1'"},
      {.name = u"费用及收入--收入",
       .head = "jxc_yyfy",
       .date = "fy_rq",
       .money = "sum(b.fy_je)",
       .only = "b.fy_flag='2' and b.fy_chk='1'"},
      {.name = u"赠品兑换单", .head = "jxc_dhd", .date = "dh_dhrq", .quantity = "sum(b.dh_sl)"},
      {.name = u"采购订单",
       .head = "jxc_cgd",
       .number = "j_sn",
       .date = "j_jhrq",
       .status = "j_status",
       .money = "sum(b.j_yfje)",
       .lines = "jxc_cgsp",
       .lineQuantity = "sum(a.jh_sl)"},
      {.name = u"销售订单",
       .head = "jxc_xsd",
       .number = "gl_djh",
       .date = "ls_xsrq",
       .status = "ls_status",
       .money = "sum(b.ls_yfje)",
       .lines = "jxc_xssp",
       .lineQuantity = "sum(a.ls_sl)"},
  };
  // Goods that came back stand in the table of what was lent.
  for (Item& item : all)
    if (item.head == families::loan.head) item.only = "b.jh_flag='jh'";
  return all;
}

Filter condition(const Item& item, const QString& until) {
  Filter filter;
  filter.add(compose("b.{}<=?", {item.date}), until);
  if (!item.status.empty()) filter.add(compose("b.{}=1", {item.status}));
  if (!item.only.empty()) filter.add(item.only);
  if (!item.number.empty()) filter.add(notStaged(compose("b.{}", {item.number})));
  return filter;
}

std::string or0(std::string_view expression) {
  return expression.empty() ? std::string("0") : std::string(expression);
}

}  // namespace closing_tables_detail

Sql notStaged(std::string_view column) {
  return Sql(std::string(column) + " not in (select g_sn from jxc_tempspxf where a_name=? and g_sn<>'')",
             session().a_name);
}

std::vector<DocumentTable> documentTables() {
  using closing_tables_detail::of;
  return {of(families::purchaseReceipt),
          of(families::purchaseReturn),
          of(families::sale),
          of(families::saleReturn),
          of(families::putaway),
          of(families::issue),
          of(families::transfer),
          of(families::loss),
          of(families::overflow),
          of(families::split),
          of(families::bundle),
          {{}, "jxc_jhgl", {}, "jh_rq"},
          of(families::stocktake),
          {"jxc_posxssp", "jxc_posxsd", "gl_djh", "pos_xsrq"},
          {"jxc_cgsp", "jxc_cgd", "j_sn", "j_jhrq", "j_status"},
          {"jxc_xssp", "jxc_xsd", "gl_djh", "ls_xsrq", "ls_status"},
          {{}, "jxc_tempspbd", {}, "t_rq"},
          {"jxc_dhzp", "jxc_dhd", "gl_djh", "dh_dhrq"},
          of(families::loan),
          {{}, "jxc_crk", {}, "crk_rq"},
          {{}, "jxc_kdd", {}, "kd_rq"}};
}

const std::vector<Item>& items() {
  static const std::vector<Item> all = closing_tables_detail::makeItems();
  return all;
}

std::vector<ItemFigures> sumItems(const QString& until) {
  using namespace closing_tables_detail;
  std::vector<ItemFigures> figures;
  for (const Item& item : items()) {
    const Filter filter = condition(item, until);
    const RowSet heads = openSelect(
        Sql("select count(*)," + or0(item.money) + "," + or0(item.quantity) + " from " + std::string(item.head) + " b")
            .where(filter));
    ItemFigures sum{&item, heads.number(0, 0), heads.number(0, 2), heads.number(0, 1)};
    if (!item.lines.empty() && sum.documents != 0) {
      const RowSet lines = openSelect(
          Sql("select " + or0(item.lineQuantity) + "," + or0(item.lineMoney) +
              compose(" from {} a inner join {} b on a.{}=b.{}", {item.lines, item.head, item.number, item.number}))
              .where(filter));
      sum.quantity += lines.number(0, 0);
      sum.money += lines.number(0, 1);
    }
    figures.push_back(sum);
  }
  return figures;
}

}  // namespace jxc::closing
