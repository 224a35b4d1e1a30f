#include "stock/trading.h"

#include "core/posting.h"
#include "core/session.h"
#include "core/small_lookups.h"
#include "core/statements.h"
#include "core/text.h"
#include "stock/ledger_rows.h"

namespace jxc::trading {
namespace trading_detail {

const std::string insertReceiptRows = ledgerInsert({.family = &families::purchaseReceipt,
                                                    .partner = &ledgerSuppliers,
                                                    .different = {{"gl_flag", "'cj'"},
                                                                  {"gl_dj", "b.jh_dj"},
                                                                  {"gl_sl", "b.jh_sl"},
                                                                  {"gl_dzl", "b.jh_dzl"},
                                                                  {"gl_zje", "b.jh_zje"},
                                                                  {"gl_je", "b.jh_je"},
                                                                  {"gl_tax", "b.jh_tax"},
                                                                  {"gl_taxdj", "b.jh_taxdj"},
                                                                  {"gl_taxje", "b.jh_taxje"},
                                                                  {"gl_lsj", "c.g_lsj"},
                                                                  {"gl_note", "a.j_note"},
                                                                  {"gl_bz", "b.jh_bz"},
                                                                  {"gl_sysl", "b.jh_sl"},
                                                                  {"id2", "b.id2"},
                                                                  {"gl_djh2", "a.j_sn2"}}});

const std::string insertPurchaseReturnRows = ledgerInsert({.family = &families::purchaseReturn,
                                                           .partner = &ledgerSuppliers,
                                                           .different = {{"gl_flag", "'ct'"},
                                                                         {"gl_dj", "b.th_dj"},
                                                                         {"gl_sl", "-1*b.th_sl"},
                                                                         {"gl_dzl", "b.th_dzl"},
                                                                         {"gl_zje", "-1*b.th_zje"},
                                                                         {"gl_je", "-1*b.th_je"},
                                                                         {"gl_tax", "b.th_tax"},
                                                                         {"gl_taxdj", "b.th_taxdj"},
                                                                         {"gl_taxje", "-1*b.th_taxje"},
                                                                         {"gl_note", "a.th_note"},
                                                                         {"gl_bz", "b.th_bz"},
                                                                         {"gl_sysl", "-1*b.th_sl"},
                                                                         {"id2", "iif(b.id2 is null,0,b.id2)"}}});

const std::string insertSaleRows = ledgerInsert(
    {.family = &families::sale,
     .partner = &ledgerCustomers,
     .different = {{"gl_flag", "'xs'"},        {"g_name", "left(c.g_name+iif(b.t_zp is null,'',b.t_zp),128)"},
                   {"gl_dj", "b.ls_dj"},       {"gl_cbj", "b.ls_cbj"},
                   {"gl_zcb", "b.ls_zcb"},     {"gl_sl", "b.ls_sl"},
                   {"gl_dzl", "b.ls_dzl"},     {"gl_zje", "b.ls_zje"},
                   {"gl_je", "b.ls_je"},       {"gl_tax", "b.ls_tax"},
                   {"gl_taxdj", "b.ls_taxdj"}, {"gl_taxje", "b.ls_taxje"},
                   {"gl_lsj", "b.ls_lsj"},     {"gl_lr", "b.ls_je-b.ls_zcb"},
                   {"gl_qxsl", "b.ls_qxsl"},   {"gl_note", "a.ls_note"},
                   {"gl_bz", "b.ls_bz"},       {"gl_sysl", "0"},
                   {"id2", "b.id2"},           {"gl_djh2", "a.gl_djh2"}}});

const std::string insertSaleReturnRows = ledgerInsert({.family = &families::saleReturn,
                                                       .partner = &ledgerCustomers,
                                                       .different = {{"gl_flag", "'xt'"},
                                                                     {"gl_dj", "b.th_dj"},
                                                                     {"gl_cbj", "b.th_cbj"},
                                                                     {"gl_zcb", "-1*b.th_zcb"},
                                                                     {"gl_sl", "-1*b.th_sl"},
                                                                     {"gl_dzl", "b.th_dzl"},
                                                                     {"gl_zje", "-1*b.th_zje"},
                                                                     {"gl_je", "-1*b.th_je"},
                                                                     {"gl_tax", "b.th_tax"},
                                                                     {"gl_taxdj", "b.th_taxdj"},
                                                                     {"gl_taxje", "-1*b.th_taxje"},
                                                                     {"gl_lsj", "b.th_lsj"},
                                                                     {"gl_lr", "b.th_zcb-b.th_je"},
                                                                     {"gl_note", "a.th_note"},
                                                                     {"gl_bz", "b.th_bz"},
                                                                     {"gl_sysl", "b.th_sl"},
                                                                     {"id2", "iif(b.id2 is null,0,b.id2)"}}});

/// A column of a head by its family, the name it is read by, and what stands for one that a kind has not.
struct HeadColumn {
  std::string_view DocumentFamily::*column;
  std::string_view name, otherwise = {};
};
constexpr HeadColumn kHeadColumns[] = {
    {&DocumentFamily::number, "djh"},         {&DocumentFamily::date, "rq"},
    {&DocumentFamily::partner, "partner"},    {&DocumentFamily::checker, "checker"},
    {&DocumentFamily::note, "note"},          {&DocumentFamily::account, "kmmc"},
    {&DocumentFamily::settlement, "jsfs"},    {&DocumentFamily::due, "yfje"},
    {&DocumentFamily::paid, "sfje"},          {&DocumentFamily::invoiceNumber, "fpno"},
    {&DocumentFamily::invoiceAmount, "fpje"}, {&DocumentFamily::freight, "yf", "0"},
    {&DocumentFamily::packing, "bzf", "0"},   {&DocumentFamily::freightPayer, "yffs", "''"}};

std::string headColumns(const DocumentFamily& family) {
  std::string sql = "select a.ck_sn,a.u_sn";
  for (const auto& [column, name, otherwise] : kHeadColumns)
    sql += ',' + ((family.*column).empty() ? std::string(otherwise) : compose("a.{}", {family.*column})) +
           compose(" as {}", {name});
  return sql;
}

Head headIn(const Row& row) {
  return {.number = row.text("djh"),
          .date = row.text("rq"),
          .partner = row.text("partner"),
          .partnerName = {},
          .warehouse = row.text("ck_sn"),
          .warehouseName = {},
          .salesperson = row.text("u_sn"),
          .salespersonName = {},
          .checker = row.text("checker"),
          .note = row.text("note"),
          .account = row.text("kmmc"),
          .invoiceNumber = row.text("fpno"),
          .freightPayer = row.text("yffs"),
          .due = row.number("yfje"),
          .paid = row.number("sfje"),
          .invoiced = row.number("fpje"),
          .freight = row.number("yf"),
          .packing = row.number("bzf"),
          .settlement = static_cast<int>(row.integer("jsfs"))};
}

// Returns are not joined to their lines: goods move with the ledger row itself.
constexpr char returnEffects[] = R"(
select id,g_sn,ck_sn,gl_sl,gl_dj,gl_cbj,id2,gl_sl as moved,gl_kdrq,gl_flag from jxc_goodslist
where g_sn<>'00000000' and gl_djh=? order by id)";

const Rules purchaseRules = {
    .family = &families::purchaseReceipt,
    .cashKind = u"采购进货",
    .cashSign = -1,
    .kindText = u"采购进货单",
    .freightWord = u"采购单",
    .keepsBalancing = true,
    .auditLog = u"审核采购进货单",
    .markLines = {"update jxc_jhsp set jh_rksl=jh_sl where j_sn=?",
                  "update jxc_jhsp set id2=id,jh_qxsl=0 where j_sn=?"},
    .insertLedger = insertReceiptRows,
    .effectRows = R"(
select a.id,a.g_sn,a.ck_sn,a.gl_sl,a.gl_dj,a.gl_cbj,a.id2,b.jh_rksl as moved,a.gl_kdrq,a.gl_flag from jxc_goodslist a,jxc_jhsp b
where a.id2=b.id2 and a.g_sn=b.g_sn and a.gl_djh=b.j_sn and a.g_sn<>'00000000' and a.gl_djh=? order by a.id)",
    .outwards = false,
    .movesCost = true,
    .goodsPosted = "update jxc_goods set g_kc=g_kc+(?),g_cgpl=g_cgpl+1,g_scjj=?,ghs_sn=?,g_pjjj=? where g_sn=?",
    .goodsCancelled = "update jxc_goods set g_kc=g_kc-(?),g_cgpl=g_cgpl-1,g_pjjj=? where g_sn=?",
    .bumpEmployee = bumpPurchaseCount,
    .shortageAtCancel = u"CJ",
    .effectElsewhere = "select top 1 gl_djh from jxc_rksp where j_sn=?",
    .elsewhereDocument = u"入库",
    .reopenHead = "update jxc_jhd set j_status=0,j_chkrq='',j_checker='',j_hkje=0 where j_sn=?",
};

const Rules purchaseReturnRules = {
    .family = &families::purchaseReturn,
    .cashKind = u"采购退货",
    .cashSign = -1,
    .kindText = u"采购退货单",
    .auditLog = u"增加采购退货单",
    .insertLedger = insertPurchaseReturnRows,
    .effectRows = returnEffects,
    .outwards = false,
    .movesCost = true,
    .goodsPosted = "update jxc_goods set g_kc=g_kc+(?),g_cgpl=g_cgpl-1,g_pjjj=? where g_sn=?",
    .goodsCancelled = "update jxc_goods set g_kc=g_kc-(?),g_cgpl=g_cgpl+1,g_pjjj=? where g_sn=?",
    .bumpEmployee = bumpPurchaseCount,
    .reopenHead = "update jxc_thd set th_status=0,th_chkrq='',th_checker='',th_hkje=0 where gl_djh=?",
    .reopenSource = "update jxc_jhsp set jh_qxsl=0 where id2=?",
    .sourceOpen = "select top 1 j_sn from jxc_jhsp where id2=? and jh_sl>jh_rksl+jh_qxsl order by id",
    .reopenSourceHead = "update jxc_jhd set j_crk=0 where j_sn=?",
};

const Rules saleRules = {
    .family = &families::sale,
    .cashKind = u"商品销售",
    .cashSign = 1,
    .kindText = u"商品销售单",
    .freightWord = u"销售单",
    .keepsBalancing = true,
    .auditLog = u"审核销售单",
    .markLines = {"update jxc_lsxssp set ls_cksl=ls_sl where gl_djh=?",
                  "update jxc_lsxssp set id2=id,ls_qxsl=0 where gl_djh=?"},
    .insertLedger = insertSaleRows,
    .afterLedger = "update jxc_goodslist set gl_lr=gl_je where g_sn='00000000' and gl_djh=?",
    .effectRows = R"(
select a.id,a.g_sn,a.ck_sn,a.gl_sl,a.gl_dj,a.gl_cbj,a.id2,b.ls_cksl as moved,a.gl_kdrq,a.gl_flag from jxc_goodslist a,jxc_lsxssp b
where a.id2=b.id2 and a.g_sn=b.g_sn and a.gl_djh=b.gl_djh and a.g_sn<>'00000000' and a.gl_djh=? order by a.id)",
    .outwards = true,
    .movesCost = false,
    .goodsPosted = "update jxc_goods set g_kc=g_kc+(?),g_xspl=g_xspl+1 where g_sn=?",
    .goodsCancelled = "update jxc_goods set g_kc=g_kc-(?),g_xspl=g_xspl-1 where g_sn=?",
    .bumpEmployee = bumpSaleCount,
    .shortageAtCancel = u"-XS",
    .effectElsewhere = "select top 1 gl_djh from jxc_cksp where gl_djh2=?",
    .elsewhereDocument = u"出库",
    .reopenHead = "update jxc_lsxsd set ls_status=0,ls_chkrq='',ls_checker='',ls_hkje=0,ls_dhbz=0 where gl_djh=?",
    .deleteMore = "delete from jxc_yyfy where fy_note like ?",
    .tillMember = "select hy_sn from jxc_lsxsd where ls_status=1 and ls_dhbz=1 and gl_djh=?",
    .undoAtTill = HySaleMode::UnXS,
};

const Rules saleReturnRules = {
    .family = &families::saleReturn,
    .cashKind = u"顾客退货",
    .cashSign = 1,
    .kindText = u"顾客退货单",
    .auditLog = u"审核顾客退货单",
    .insertLedger = insertSaleReturnRows,
    .effectRows = returnEffects,
    .outwards = true,
    .movesCost = false,
    .goodsPosted = "update jxc_goods set g_kc=g_kc+(?),g_xspl=g_xspl+1 where g_sn=?",
    .goodsCancelled = "update jxc_goods set g_kc=g_kc-(?),g_xspl=g_xspl-1 where g_sn=?",
    .shortageAtCancel = u"XT",
    .reopenHead = "update jxc_xsthd set th_status=0,th_chkrq='',th_checker='',th_hkje=0,th_qk=0 where gl_djh=?",
    .reopenSource = "update jxc_lsxssp set ls_qxsl=0 where id2=?",
    .sourceOpen = "select top 1 gl_djh from jxc_lsxssp where id2=? and ls_sl>ls_cksl+ls_qxsl order by id",
    .reopenSourceHead = "update jxc_lsxsd set ls_crk=0 where gl_djh=?",
    .tillMember = "select hy_sn from jxc_xsthd where th_status=1 and hy_sn<>'' and gl_djh=?",
    .undoAtTill = HySaleMode::UnXT,
};

}  // namespace trading_detail

const Rules& purchase() {
  return trading_detail::purchaseRules;
}
const Rules& purchaseReturn() {
  return trading_detail::purchaseReturnRules;
}
const Rules& sale() {
  return trading_detail::saleRules;
}
const Rules& saleReturn() {
  return trading_detail::saleReturnRules;
}

bool readHead(const Rules& rules, const QString& number, Head& head) {
  const DocumentFamily& family = *rules.family;
  const LedgerPartner& partner = family.side == PartnerType::Customer ? ledgerCustomers : ledgerSuppliers;
  const RowSet rows = openSelect(
      trading_detail::headColumns(family) +
          compose(
              ",b.u_name,c.{} as partnername,d.ck_name from {} a,jxc_user b,{} c,jxc_ckxx d where a.u_sn=b.u_sn and "
              "a.{}=c.{} and a.ck_sn=d.ck_sn and a.{}=? order by a.{} desc,a.id",
              {partner.name, family.head, partner.table, family.partner, partner.number, family.number, family.status}),
      number);
  if (rows.isEmpty()) return false;
  const Row row = rows.front();
  head = trading_detail::headIn(row);
  head.partnerName = row.text("partnername");
  head.warehouseName = row.text("ck_name");
  head.salespersonName = row.text("u_name");
  return true;
}

bool readAudited(const Rules& rules, const QString& number, Head& head) {
  const DocumentFamily& family = *rules.family;
  const RowSet rows =
      openSelect(trading_detail::headColumns(family) + compose(" from {} a where a.{}=1 and a.{}=? order by a.id",
                                                               {family.head, family.status, family.number}),
                 number);
  if (rows.isEmpty()) return false;
  head = trading_detail::headIn(rows.front());
  return true;
}

std::vector<StockEffect> effectsOf(const Rules& rules, const QString& number) {
  return effectsIn(rules, askEffects(rules, number).rows());
}

Ahead askEffects(const Rules& rules, const QString& number) {
  return sendAhead(rules.effectRows, number);
}

std::vector<StockEffect> effectsIn(const Rules& rules, const RowSet& rows) {
  std::vector<StockEffect> effects;
  effects.reserve(static_cast<std::size_t>(rows.rowCount()));
  const int direction = rules.outwards ? -1 : 1;
  for (const Row row : rows) {
    const double quantity = row.number("gl_sl");
    effects.push_back({.id = row.integer("id"),
                       .goods = row.text("g_sn"),
                       .warehouse = row.text("ck_sn"),
                       .date = row.text("gl_kdrq"),
                       .flag = row.text("gl_flag"),
                       .quantity = quantity,
                       .price = row.number("gl_dj"),
                       .physical = direction * row.number("moved"),
                       .book = direction * quantity,
                       .sold = rules.outwards ? quantity : 0,
                       .firstCost = row.number(rules.outwards ? "gl_cbj" : "gl_dj"),
                       .movesCost = rules.movesCost,
                       .source = row.integer("id2")});
    // A return that closed what an unfinished putaway or issue had left: its goods touch no shelf.
    if (rules.reopenSource && effects.back().source != 0) effects.back().physical = 0;
  }
  return effects;
}

}  // namespace jxc::trading
