// 购销单据族: the records of receipt, purchase return, sale and customer return, and the staging rows that they share.
#include "accounts/partner_ledger.h"
#include "core/session.h"
#include "core/text.h"
#include "stock/cancelling.h"
#include "stock/document_family.h"
#include "stock/loans.h"
#include "stock/posting.h"
#include "stock/prepayment.h"

namespace jxc {
namespace trading_families_detail {

bool putawayInUse() {
  return strIsTrue(session().cs_sprk);
}
bool issueInUse() {
  return strIsTrue(session().cs_spck);
}

constexpr LineColumns receiptLines = [] {
  LineColumns columns = tradingColumns<"jxc_jhsp", "jh_">();
  columns.moved = "jh_rksl";
  columns.movedLater = putawayInUse;
  return columns;
}();
constexpr LineColumns purchaseReturnLines = tradingColumns<"jxc_thsp", "th_">();
constexpr LineColumns saleLines = [] {
  LineColumns columns = tradingColumns<"jxc_lsxssp", "ls_">();
  columns.moved = "ls_cksl";
  columns.movedLater = issueInUse;
  columns.cost = "ls_cbj";
  columns.costAmount = "ls_zcb";
  return columns;
}();
constexpr LineColumns saleReturnLines = [] {
  LineColumns columns = tradingColumns<"jxc_xsthsp", "th_">();
  columns.cost = "th_cbj";
  columns.costAmount = "th_zcb";
  return columns;
}();
constexpr LineColumns stagingLines = [] {
  LineColumns columns = tradingColumns<"jxc_tempspxf", "ts_">();
  columns.cost = "ts_cbj";
  columns.costAmount = "ts_zcb";
  return columns;
}();

constexpr std::string_view receiptZeros[] = {"jh_qxsl", "id2", "id3"};
constexpr std::string_view returnZeros[] = {"id2"};
constexpr std::string_view saleZeros[] = {"ls_qxsl", "ls_dhbz", "ls_dhdj", "id2", "id3"};

// A contract knows the document that it was made for, a document that was returned as a whole its return.
constexpr NumberMention receiptMentions[] = {{.table = "jxc_htgl", .column = "gl_djh", .partner = "ghs_sn"}};
constexpr NumberMention purchaseReturnMentions[] = {
    {.table = "jxc_jhd", .column = "j_dhdid", .partner = "ghs_sn", .saved = "j_th"}};
constexpr NumberMention saleMentions[] = {{.table = "jxc_htgl", .column = "gl_djh", .partner = "ghs_sn"},
                                          {.table = "jxc_kdd", .column = "gl_djh"},
                                          {.table = "jxc_zsd", .column = "gl_xsdjh"}};
constexpr NumberMention saleReturnMentions[] = {
    {.table = "jxc_lsxsd", .column = "ls_fdmc", .partner = "kh_sn", .saved = "ls_th"}};

constexpr TemplateChoice receiptForms[] = {
    {u"采购单", u"cgjh.fr3", &Session::canSeeCost},
    {u"采购单(不含进价)", u"cgjh2.fr3", nullptr},
};
constexpr TemplateChoice saleForms[] = {
    {u"销售单", u"spxs.fr3", &Session::canSeePrice},
    {u"销售单(不含售价)", u"spxs4.fr3", nullptr},
    {u"销售单(含零售价)", u"spxs2.fr3", &Session::canSeePrice},
};

}  // namespace trading_families_detail

constexpr LineTable stagingLineTable = {.columns = &trading_families_detail::stagingLines,
                                        .note = "ts_note",
                                        .retail = "ts_lsj",
                                        .shownCost = "ts_cbj2",
                                        .gift = "t_zp",
                                        .source = "t_zp",
                                        .sourceLine = "ghs_sn"};

namespace families {

constexpr DocumentFamily purchaseReceipt = {
    .prefix = u"CJ",
    .name = u"采购进货单",
    .flag = "cj",
    .head = "jxc_jhd",
    .lines = "jxc_jhsp",
    .number = "j_sn",
    .date = "j_jhrq",
    .status = "j_status",
    .checker = "j_checker",
    .checkDate = "j_chkrq",
    .note = "j_note",
    .warehouse = "ck_sn",
    .line = {.columns = &trading_families_detail::receiptLines,
             .note = "jh_bz",
             .zeros = trading_families_detail::receiptZeros,
             .closed = "jh_qxsl",
             .link = "id2"},
    .comesIn = true,
    .allMoved = "j_crk",
    .shortageWord = u"出库",
    .partner = "ghs_sn",
    .side = PartnerType::Supplier,
    .due = "j_yfje",
    .paid = "j_sfje",
    .settlement = "j_jsfs",
    .account = "j_kmmc",
    .discount = "j_yhje",
    .collected = "j_hkje",
    .originalNumber = "j_sn2",
    .isReturned = "j_th",
    .returnedBy = "j_dhdid",
    .contract = "ht_sn",
    .invoiceNumber = "j_fpno",
    .invoiceAmount = "j_fpje",
    .freight = "j_yf",
    .packing = "j_bzf",
    .freightPayer = "j_yffs",
    .make = {"cggl", 1},
    .audit = {"cggl", 6},
    .cancel = {"cggl", 10},
    .look = {"cggl", 4},
    .savedLog = u"增加未审核进货单",
    .deletedLog = u"删除采购进货单：",
    .emptiedLog = u"因删除单据的所有商品而删除采购进货单：",
    .cancelledLog = u"取消审核采购进货单",
    .enquiry = u"进退货查询",
    .waitingHint = u"处于“未审核”状态的采购单，可以在“待审核采\r\n\r\n购单”面板中，进行修改及审核操作！",
    .mentions = trading_families_detail::receiptMentions,
    .post = postPurchase,
    .takeBack = cancelPurchase,
    .paper = {.kind = u"cgjh",
              .plain = u"cgjh.fr3",
              .chosen = &Session::purchaseTemplate,
              .asksFormat = &SystemParameters::cs_cs011,
              .printsAtSave = &SystemParameters::cs_cs016,
              .choices = trading_families_detail::receiptForms,
              .printed = "a.g_sn<>''",
              .ordered = true,
              .fixedLines = &SystemParameters::cs_cs006},
    .import = {.title = "采购单据导入", .templateFile = "采购单据模板.xlsx", .needsProduced = true},
};

constexpr DocumentFamily purchaseReturn = {
    .prefix = u"CT",
    .name = u"采购退货单",
    .flag = "ct",
    .head = "jxc_thd",
    .lines = "jxc_thsp",
    .number = "gl_djh",
    .date = "th_thrq",
    .status = "th_status",
    .checker = "th_checker",
    .checkDate = "th_chkrq",
    .note = "th_note",
    .warehouse = "ck_sn",
    .line = {.columns = &trading_families_detail::purchaseReturnLines,
             .note = "th_bz",
             .zeros = trading_families_detail::returnZeros,
             .link = "id2"},
    .shortageWord = u"退货",
    .shortageAtAudit = u"CT",
    .partner = "ghs_sn",
    .side = PartnerType::Supplier,
    .due = "th_yfje",
    .paid = "th_sfje",
    .settlement = "th_jsfs",
    .account = "th_kmmc",
    .collected = "th_hkje",
    .headSign = -1,
    .invoiceNumber = "th_fpno",
    .invoiceAmount = "th_fpje",
    .make = {"cggl", 2},
    .audit = {"cggl", 7},
    .cancel = {"cggl", 11},
    .look = {"cggl", 4},
    .savedLog = u"增加未审核采购退货单",
    .deletedLog = u"删除采购退货单：",
    .emptiedLog = u"因删除单据的所有商品而删除采购退货单：",
    .cancelledLog = u"取消审核采购退货单",
    .enquiry = u"进退货查询",
    .waitingHint = u"处于“未审核”状态的退货单，可以在“待审核\r\n\r\n退货单”面板中，进行修改及审核操作！",
    .staysWithStock = true,
    .onDelete = "update jxc_jhd set j_th=0,j_dhdid='' where j_dhdid=?",  // the receipt may be returned again
    .mentions = trading_families_detail::purchaseReturnMentions,
    .post = postPurchaseReturn,
    .takeBack = cancelPurchaseReturn,
    .paper = {.kind = u"cgth", .plain = u"cgth.fr3", .chosen = &Session::purchaseReturnTemplate},
    .import = {.title = "采购退货单据导入", .templateFile = "采购退货单据模板.xlsx"},
};

constexpr DocumentFamily sale = {
    .prefix = u"XS",
    .name = u"商品销售单",
    .flag = "xs",
    .head = "jxc_lsxsd",
    .lines = "jxc_lsxssp",
    .number = "gl_djh",
    .date = "ls_xsrq",
    .status = "ls_status",
    .checker = "ls_checker",
    .checkDate = "ls_chkrq",
    .note = "ls_note",
    .warehouse = "ck_sn",
    .line = {.columns = &trading_families_detail::saleLines,
             .note = "ls_bz",
             .retail = "ls_lsj",
             .shownCost = "ls_cbj2",
             .entryTotal = "ls_zhje",
             .gift = "t_zp",
             .zeros = trading_families_detail::saleZeros,
             .closed = "ls_qxsl",
             .link = "id2"},
    .allMoved = "ls_crk",
    .fromTill = "ls_dhbz",
    .shortageWord = u"销售",
    .shortageAtAudit = u"XS",
    .partner = "kh_sn",
    .side = PartnerType::Customer,
    .due = "ls_yfje",
    .paid = "ls_sfje",
    .settlement = "ls_jsfs",
    .account = "ls_kmmc",
    .discount = "ls_yhje",
    .collected = "ls_hkje",
    .originalNumber = "gl_djh2",
    .isReturned = "ls_th",
    .returnedBy = "ls_fdmc",
    .contract = "ht_sn",
    .invoiceNumber = "ls_fpno",
    .invoiceAmount = "ls_fpje",
    .freight = "ls_yf",
    .packing = "ls_bzf",
    .freightPayer = "ls_yffs",
    .make = {"xsgl", 1},
    .audit = {"xsgl", 7},
    .cancel = {"xsgl", 11},
    .look = {"xsgl", 4},
    .savedLog = u"增加未审核销售单",
    .deletedLog = u"删除商品销售单：",
    .emptiedLog = u"因删除单据的所有商品而删除商品销售单：",
    .cancelledLog = u"取消审核商品销售单",
    .enquiry = u"销售退货查询",
    .waitingHint = u"处于“未审核”状态的销售单，可以在“待审核销\r\n\r\n售单”面板中，进行修改及审核操作！",
    .mayAuditMore = mayAuditOnAccount,
    .stays = loans::saleStays,
    .mentions = trading_families_detail::saleMentions,
    .post = postSale,
    .takeBack = cancelSale,
    .paper = {.kind = u"spxs",
              .plain = u"spxs.fr3",
              .chosen = &Session::salesTemplate,
              .asksFormat = &SystemParameters::cs_cs010,
              .printsAtSave = &SystemParameters::cs_djzddy,
              .choices = trading_families_detail::saleForms,
              .printed = "a.ls_dzl>0",  // a discount of nothing marks a line that is there for the books only
              .ordered = true,
              .fixedLines = &SystemParameters::cs_cs005},
    .import = {.title = "销售单据导入", .templateFile = "销售单据模板.xlsx"},
};

constexpr DocumentFamily saleReturn = {
    .prefix = u"XT",
    .name = u"顾客退货单",
    .flag = "xt",
    .head = "jxc_xsthd",
    .lines = "jxc_xsthsp",
    .number = "gl_djh",
    .date = "th_xsrq",
    .status = "th_status",
    .checker = "th_checker",
    .checkDate = "th_chkrq",
    .note = "th_note",
    .warehouse = "ck_sn",
    .line = {.columns = &trading_families_detail::saleReturnLines,
             .note = "th_bz",
             .retail = "th_lsj",
             .entryTotal = "th_zhje",
             .zeros = trading_families_detail::returnZeros,
             .link = "id2"},
    .comesIn = true,
    .shortageWord = u"出库",
    .shortageAtAudit = u"-XT",  // lines below zero give out again what an exchange had brought
    .partner = "kh_sn",
    .side = PartnerType::Customer,
    .due = "th_yfje",
    .paid = "th_sfje",
    .settlement = "th_jsfs",
    .account = "th_kmmc",
    .collected = "th_hkje",
    .headSign = -1,
    .invoiceNumber = "th_fpno",
    .invoiceAmount = "th_fpje",
    .make = {"xsgl", 2},
    .audit = {"xsgl", 8},
    .cancel = {"xsgl", 12},
    .look = {"xsgl", 4},
    .savedLog = u"增加未审核销售退货单",
    .deletedLog = u"删除顾客退货单：",
    .emptiedLog = u"因删除单据的所有商品而删除顾客退货单：",
    .cancelledLog = u"取消审核商品退货单",
    .enquiry = u"销售退货查询",
    .waitingHint = u"处于“未审核”状态的退货单，可以在“待审核\r\n\r\n退货单”面板中，进行修改及审核操作！",
    .mentions = trading_families_detail::saleReturnMentions,
    .post = postSaleReturn,
    .takeBack = cancelSaleReturn,
    .paper = {.kind = u"xsth", .plain = u"xsth.fr3", .chosen = &Session::salesReturnTemplate},
    .import = {.title = "顾客退货单据导入", .templateFile = "顾客退货单据模板.xlsx"},
};

}  // namespace families
}  // namespace jxc
