// 内部单据族: the records of the documents within the house and of what a customer borrows.
#include "accounts/partner_ledger.h"
#include "core/session.h"
#include "stock/cancelling.h"
#include "stock/document_family.h"
#include "stock/ledger.h"
#include "stock/posting.h"

namespace jxc {
namespace internal_families_detail {

constexpr LineColumns transferLines = {.table = "jxc_dbsp", .price = "db_dj", .quantity = "db_sl", .total = "db_zje"};
constexpr LineColumns stocktakeLines = {
    .table = "jxc_kcpdsp", .price = "pd_dj", .quantity = "pd_sl", .total = "pd_zje"};
constexpr LineColumns lossLines = {.table = "jxc_bssp", .price = "bs_dj", .quantity = "bs_sl", .total = "bs_zje"};
constexpr LineColumns overflowLines = {.table = "jxc_bysp", .price = "by_dj", .quantity = "by_sl", .total = "by_zje"};
constexpr LineColumns splitLines = {.table = "jxc_cfsp", .price = "cf_dj", .quantity = "cf_sl", .total = "cf_zje"};
constexpr LineColumns bundleLines = {.table = "jxc_kbsp", .price = "kb_dj", .quantity = "kb_sl", .total = "kb_zje"};
constexpr NumberMention loanMentions[] = {{.table = "jxc_khjhsp", .column = "gl_djh2"}};

constexpr LineColumns returnLines = {.table = "jxc_khjhsp", .price = "jh_dj", .quantity = "jh_sl", .total = "jh_zje"};
/// What is lent comes back later, piece by piece, by documents of their own.
bool comesBackLater() {
  return true;
}
constexpr LineColumns loanLines = [] {
  LineColumns columns = returnLines;
  columns.moved = "jh_hhsl";
  columns.movedLater = comesBackLater;
  columns.lent = "jh_sl2";
  return columns;
}();
constexpr std::string_view loanZeros[] = {"jh_xssl", "jh_yj2", "jh_ts", "jh_zzj", "jh_thyj"};

}  // namespace internal_families_detail

namespace families {

constexpr DocumentFamily transfer = {
    .prefix = u"DB",
    .name = u"库存调拨单",
    .flag = "db",
    .head = "jxc_kcdbd",
    .lines = "jxc_dbsp",
    .number = "gl_djh",
    .date = "db_dbrq",
    .status = "db_status",
    .checker = "db_checker",
    .checkDate = "db_chkrq",
    .note = "db_note",
    .warehouse = "ck_out",
    .into = "ck_in",
    .line = {.columns = &internal_families_detail::transferLines, .retail = "db_sj"},
    .shortageWord = u"出库",
    .shortageAtAudit = u"DB",
    .make = {"kcgl", 1},
    .audit = {"kcgl", 8},
    .cancel = {"kcgl", 12},
    .savedLog = u"增加未审核库存调拨单",
    .deletedLog = u"删除库存调拨单：",
    .emptiedLog = u"因删除单据的所有商品而删除库存调拨单：",
    .cancelledLog = u"取消审核库存调拨单",
    .enquiry = u"库存调拨查询",
    .waitingHint = u"处于“未审核”状态的调拨单，可以在“待审核调\r\n\r\n拨单”面板中，进行修改及审核操作！",
    .post = postTransfer,
    .takeBack = cancelTransfer,
    // It goes from one shop to the other at the sale prices that stand on it.
    .paper = {.kind = u"kcdb",
              .plain = u"kcdbd.fr3",
              .withoutCost = u"kcdbd3.fr3",
              .chosen = &Session::transferTemplate,
              .inCapitals = "select sum(db_sl*db_sj) as zje from jxc_dbsp where gl_djh=?",
              .moreColumns = ",b.g_sj,a.db_sl*a.db_sj as sjje"},
    .import = {.title = "库存调拨单据导入", .templateFile = "库存调拨单据模板.xlsx", .hasNote = false},
};

constexpr DocumentFamily stocktake = {
    .prefix = u"PD",
    .name = u"库存盘点单",
    .flag = "pd",
    .head = "jxc_kcpd",
    .lines = "jxc_kcpdsp",
    .number = "gl_djh",
    .date = "pd_rq",
    .status = "pd_status",
    .checker = "pd_checker",
    .checkDate = "pd_chkrq",
    .note = "pd_note",
    .warehouse = "ck_sn",
    .line = {.columns = &internal_families_detail::stocktakeLines,
             .link = "id2",
             .countedShelf = "kc_sl",
             .countedBook = "kc_zsl"},
    .make = {"kcgl", 2},
    .audit = {"kcgl", 9},
    .cancel = {"kcgl", 13},
    .savedLog = u"增加库存盘点单",
    .deletedLog = u"删除库存盘点单：",
    .emptiedLog = u"因删除单据的所有商品而删除库存盘点单：",
    .cancelledLog = u"取消审核库存盘点单：",
    .enquiry = u"库存盘点查询",
    .waitingHint = u"处于“未审核”状态的盘点单，可以在“待审核盘\r\n\r\n点单”面板中，进行修改及审核操作！",
    .logsEverySave = true,
    .post = postStocktake,
    .takeBack = cancelStocktake,
    .paper = {.kind = u"kcpd",
              .plain = u"kcpdd.fr3",
              .withoutCost = u"kcpdd2.fr3",
              .moreColumns = ",a.pd_sl-a.kc_sl as cysl"},
    .import = {.title = "盘点数据导入",
               .templateFile = "盘点数据模板.xlsx",
               .hasPrice = false,
               .hasNote = false,
               .unknownGoods = u"商品编号不正确",
               .repeated = u"商品不能重复盘点"},
};

constexpr DocumentFamily loss = {
    .prefix = u"BS",
    .name = u"商品报损单",
    .flag = "bs",
    .head = "jxc_bsd",
    .lines = "jxc_bssp",
    .number = "gl_djh",
    .date = "bs_bsrq",
    .status = "bs_status",
    .checker = "bs_checker",
    .checkDate = "bs_chkrq",
    .note = "bs_note",
    .warehouse = "ck_sn",
    .line = {.columns = &internal_families_detail::lossLines, .note = "bs_note", .noteWidth = 200},
    .make = {"kcgl", 3},
    .audit = {"kcgl", 10},
    .cancel = {"kcgl", 14},
    .savedLog = u"增加未审核商品报损单",
    .deletedLog = u"删除商品报损单：",
    .emptiedLog = u"因删除单据的所有商品而删除商品报损单：",
    .cancelledLog = u"取消审核商品报损单",
    .waitingHint = u"处于“未审核”状态的报损单，可以在“报损/报溢\r\n\r\n审核”面板中，进行修改及审核操作！",
    .mayAuditMore = mayLoseBeyondStock,
    .post = postLoss,
    .takeBack = cancelLoss,
    .paper = {.kind = u"spbs",
              .plain = u"bsby.fr3",
              .withoutCost = u"bsby2.fr3",
              .noteAs = u"dNote",
              .ownVariable = u"title",
              .ownText = u"商品报损单"},
    .import = {.title = "报损报溢单据导入", .templateFile = "报损报溢单据模板.xlsx", .hasPrice = false},
};

constexpr DocumentFamily overflow = {
    .prefix = u"BY",
    .name = u"商品报溢单",
    .flag = "by",
    .head = "jxc_byd",
    .lines = "jxc_bysp",
    .number = "gl_djh",
    .date = "by_byrq",
    .status = "by_status",
    .checker = "by_checker",
    .checkDate = "by_chkrq",
    .note = "by_note",
    .warehouse = "ck_sn",
    .line = {.columns = &internal_families_detail::overflowLines, .note = "by_note", .noteWidth = 200},
    .comesIn = true,
    .make = {"kcgl", 3},
    .audit = {"kcgl", 10},
    .cancel = {"kcgl", 14},
    .savedLog = u"增加未审核商品报溢单",
    .deletedLog = u"删除商品报溢单：",
    .emptiedLog = u"因删除单据的所有商品而删除商品报溢单：",
    .cancelledLog = u"取消审核商品报溢单",
    .waitingHint = u"处于“未审核”状态的报溢单，可以在“报损/报溢\r\n\r\n审核”面板中，进行修改及审核操作！",
    .post = postOverflow,
    .takeBack = cancelOverflow,
    .paper = {.kind = u"spby",
              .plain = u"bsby.fr3",
              .withoutCost = u"bsby2.fr3",
              .noteAs = u"dNote",
              .ownVariable = u"title",
              .ownText = u"商品报溢单"},
    .import = {.title = "报损报溢单据导入", .templateFile = "报损报溢单据模板.xlsx", .hasPrice = false},
};

constexpr DocumentFamily split = {
    .prefix = u"CF",
    .name = u"商品拆分单",
    .flag = "cf",
    .head = "jxc_cfd",
    .lines = "jxc_cfsp",
    .number = "gl_djh",
    .date = "cf_cfrq",
    .status = "cf_status",
    .checker = "cf_checker",
    .checkDate = "cf_chkrq",
    .note = "cf_note",
    .warehouse = "ck_sn",
    .whole = {.goods = "g_sn", .quantity = "cf_sl", .cost = "cf_cbj"},
    .line = {.columns = &internal_families_detail::splitLines, .warehouse = "ck_sn"},
    .comesIn = true,
    .shortageWord = u"拆分",
    .shortageAtAudit = u"CF",
    .make = {"kcgl", 5},
    .audit = {"kcgl", 11},
    .cancel = {"kcgl", 15},
    .savedLog = u"增加未审核拆分单",
    .deletedLog = u"删除商品拆分单：",
    .emptiedLog = u"因删除单据的所有商品而删除商品拆分单：",
    .cancelledLog = u"取消审核商品拆分单",
    .enquiry = u"拆分查询",
    .waitingHint = u"处于“未审核”状态的拆分单，可以在“待审核拆\r\n\r\n分单”面板中，进行修改及审核操作！",
    .post = postSplit,
    .takeBack = cancelSplit,
    .paper = {.kind = u"spcf", .plain = u"cfd.fr3", .withoutCost = u"cfd2.fr3", .noteAs = u"cfNote"},
};

constexpr DocumentFamily bundle = {
    .prefix = u"KB",
    .name = u"商品捆绑单",
    .flag = "kb",
    .head = "jxc_kbd",
    .lines = "jxc_kbsp",
    .number = "gl_djh",
    .date = "kb_kbrq",
    .status = "kb_status",
    .checker = "kb_checker",
    .checkDate = "kb_chkrq",
    .note = "kb_note",
    .warehouse = "ck_sn",
    .whole = {.goods = "g_sn", .quantity = "kb_sl", .cost = "kb_cbj"},
    .line = {.columns = &internal_families_detail::bundleLines, .warehouse = "ck_sn"},
    .shortageWord = u"捆绑",
    .shortageAtAudit = u"KB",
    .make = {"kcgl", 5},
    .audit = {"kcgl", 11},
    .cancel = {"kcgl", 15},
    .savedLog = u"增加未审核捆绑单",
    .deletedLog = u"删除商品捆绑单：",
    .emptiedLog = u"因删除单据的所有商品而删除商品捆绑单：",
    .cancelledLog = u"取消审核商品捆绑单",
    .enquiry = u"捆绑查询",
    .waitingHint = u"处于“未审核”状态的捆绑单，可以在“待审核捆\r\n\r\n绑单”面板中，进行修改及审核操作！",
    .post = postBundle,
    .takeBack = cancelBundle,
    .paper = {.kind = u"spkb", .plain = u"kbd.fr3", .withoutCost = u"kbd2.fr3", .noteAs = u"cfNote"},
};

constexpr DocumentFamily loan = {
    .prefix = u"JH",
    .name = u"客户借货单",
    .flag = "jh",
    .head = "jxc_khjh",
    .lines = "jxc_khjhsp",
    .number = "gl_djh",
    .date = "jh_rq",
    .status = "jh_status",
    .checker = "jh_checker",
    .checkDate = "jh_chkrq",
    .note = "jh_note",
    .warehouse = "ck_sn",
    .line = {.columns = &internal_families_detail::loanLines,
             .zeros = internal_families_detail::loanZeros,
             .closed = "jh_xssl",
             .link = "id2",
             .rent = "jh_zj",
             .deposit = "jh_yj",
             .account = "jh_kmmc",
             .kind = "jh_flag",
             .kindText = "借货"},
    .shortageWord = u"出库",
    .shortageAtAudit = u"JH",
    .partner = "kh_sn",
    .side = PartnerType::Customer,
    .make = {"rcgl", 4},
    .audit = {"rcgl", 4},
    .cancel = {"rcgl", 4},
    .savedLog = u"增加未审核借货单",
    .deletedLog = u"删除客户借货单：",
    .emptiedLog = u"因删除单据的所有商品而删除客户借货单：",
    .cancelledLog = u"取消审核客户借货单",
    .enquiry = u"借货查询",
    .waitingHint = u"处于“未审核”状态的借货单，可以在“待审核借货\r\n\r\n单”面板中，进行修改及审核操作！",
    .logsEverySave = true,
    .redateRenewsNumber = true,
    .mentions = internal_families_detail::loanMentions,
    .post = postLoan,
    .takeBack = cancelLoan,
    // The line of a loan counts what has come back of it; its own paper says what was lent, whenever it is printed.
    .paper = {.kind = u"khjh", .plain = u"khjh.fr3", .ownVariable = u"djName", .ownText = u"借货"},
};

constexpr DocumentFamily loanReturn = {
    .prefix = u"HH",
    .name = u"客户还货单",
    .flag = "hh",
    .head = "jxc_khjh",
    .lines = "jxc_khjhsp",
    .number = "gl_djh",
    .date = "jh_rq",
    .status = "jh_status",
    .checker = "jh_checker",
    .checkDate = "jh_chkrq",
    .note = "jh_note",
    .warehouse = "ck_sn",
    .line = {.columns = &internal_families_detail::returnLines,
             .link = "id2",
             .source = "gl_djh2",
             .sourceLine = "id2",
             .moves = "iif(jh_flag='销售',jh_xssl,jh_hhsl)"},
    .comesIn = true,
    .sharesTables = true,
    .partner = "kh_sn",
    .side = PartnerType::Customer,
    .make = {"rcgl", 4},
    .audit = {"rcgl", 4},
    .cancel = {"rcgl", 4},
    .savedLog = u"增加还货单",
    .deletedLog = u"删除客户还货单：",
    .emptiedLog = u"因删除单据的所有商品而删除客户还货单：",
    .cancelledLog = u"取消审核客户还货单",
    .enquiry = u"借货查询",
    .post = postLoanReturn,
    .takeBack = cancelLoanReturn,
    .paper = {.kind = u"khjh", .plain = u"khjh.fr3", .ownVariable = u"djName", .ownText = u"还货"},
};

}  // namespace families
}  // namespace jxc
