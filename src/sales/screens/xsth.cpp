// 顾客退货: the screen of the customer return and its satellites: goods list, line dialog, audit dialog, list of sales.
#include "core/fillers.h"
#include "core/session.h"
#include "core/text.h"
#include "masterdata/screens/partner_picker.h"
#include "sales/sale_return.h"
#include "sales/screens/price.h"
#include "sales/screens/sales_parts.h"
#include "stock/screens/audit_screen.h"
#include "stock/screens/goods_pick_screen.h"
#include "stock/screens/line_import_screen.h"
#include "stock/screens/line_screen.h"
#include "stock/screens/modi_date.h"
#include "stock/screens/source_picker.h"
#include "stock/screens/trading_parts.h"
#include "stock/screens/trading_screen.h"

namespace jxc {
namespace xsth_detail {

using ui::ColumnKind;
using ui::FieldKind;

// ---- the document ------------------------------------------------------------------------------------------------

constexpr ui::FieldSpec kFields[] = {
    {"tkh", "客户：", FieldKind::Picker},
    {"dateCg", "收货日期：", FieldKind::Date},
    {"jsn", "单据编号：", FieldKind::Text, "jxc_xsthd.gl_djh", 0, ui::ReadOnly},
    {"comCk", "收货仓库：", FieldKind::Combo},
    {"comUser", "经办人：", FieldKind::Combo},
    {"tSptm", "商品条码：", FieldKind::Text, "jxc_goods.g_sptm"},
    {"tyfje", "应退金额：", FieldKind::Money, "", 0, ui::ReadOnly},
    {"tssje", "实退金额：", FieldKind::Money},
    {"comJsfs", "结算方式：", FieldKind::Combo},
    {"comYhzh", "付款账户：", FieldKind::Combo},
    {"tfpno", "发票号码：", FieldKind::Text, "jxc_xsthd.th_fpno"},
    {"tfpje", "发票金额：", FieldKind::Money},
    {"tnote", "备注：", FieldKind::Text, "jxc_xsthd.th_note", 0, ui::OffersRemarks},
    {"tkey", "查找：", FieldKind::Text, "", 50},
    {"tGhsName", "客户：", FieldKind::Picker},
    {"comSort", "排序：", FieldKind::Combo},
};

constexpr auto kLines = trading_parts::lineColumns<PartnerType::Customer, "th_">(
    std::array<ui::ColumnSpec, 0>{},
    std::array{ui::ColumnSpec{"th_cbj", "成本价", ColumnKind::Money, 10, {}, kSeesCost}});
constexpr auto kWaiting = trading_parts::waitingColumns({.number = "gl_djh",
                                                         .date = "th_xsrq",
                                                         .partner = "kh_name",
                                                         .note = "th_note",
                                                         .dateCaption = "收货日期",
                                                         .partnerCaption = "客户",
                                                         .warehouseCaption = "收货仓库",
                                                         .dueCaption = "应退金额",
                                                         .paidCaption = "实退金额",
                                                         .openCaption = "未退金额"});
constexpr ui::GridSpec kGrids[] = {
    {"gridLines", "退货商品", kLines, "扫描商品条码，按F2添加商品，或按F7选择一张销售单整单退货"},
    {"gridWaiting", "待审核单据", kWaiting, "没有待审核的退货单"},
    {"gridWaitingLines", "单据商品", kLines, "选择上面的单据，这里显示它的商品"},
};
constexpr auto kCommands = trading_parts::documentCommands({
    {"btnPanel", "条码选项"},
    {"btnAddOld", "添加商品", "F2"},
    {"btnZdth", "整单退货", "F7"},
    trading_parts::importLines,
    {"btnRChk", "审核", "F6", "审核当前单据，可修改实退金额"},
    {"btnAllKh", "全部客户", "Ctrl+Q", "显示所有客户的待审核单据"},
    {"btn_Date", "修改单据", "Ctrl+E", "修改日期、客户、仓库"},
});

constexpr std::string_view kHeadForm[] = {"tkh dateCg jsn", "comCk comUser"};
constexpr std::string_view kFootForm[] = {"tyfje tssje comJsfs comYhzh", "tfpno tfpje", "tnote"};

QString changeHead(const QString& number) {
  return changeSaleHead(families::saleReturn, number);
}
QString pickSale() {
  return pickSource("F_Xsth_Search", "gl_djh");
}

constexpr TradingScreenSpec kDocument = {
    .document = {.screen = {.name = "F_Xsth",
                            .title = "顾客退货",
                            .fields = kFields,
                            .grids = kGrids,
                            .commands = kCommands,
                            .focus = "tSptm"},
                 .draftTitle = "顾客退货",
                 .waitingTitle = "待审核退货单",
                 .employeeFlag = "u_xs",
                 .findsGoods = true,
                 .pickScreen = "F_Xsth_Add",
                 .lineScreen = "F_Xsth_Sele",
                 .auditScreen = "F_Xsth_Check",
                 .importScreen = "F_Xsth_Import",
                 .changeHead = changeHead,
                 .make = {{"xsgl", 2}, u"顾客退货！"},
                 .audit = {{"xsgl", 8}, u"顾客退货审核！"},
                 .addWaiting = {{"xsgl", 2}, u"顾客退货！"},
                 .deleteWaiting = {{"xsgl", 2}, u"顾客退货！"},
                 .headForm = kHeadForm,
                 .footForm = kFootForm,
                 .scanRow = "tSptm btnPanel | btnAddOld btnZdth btnJpgd btnModi btnDel btnImport",
                 .saveRow = "btnPrin | btnOK btnCancel",
                 .searchRow = "tkey btnSearch tGhsName btnAllKh comSort |",
                 .waitingButtons = "btnRChk btn_Check btn_Date btn_Dele btn_ChaKan btn_Prin |",
                 .lineButtons = "btnAdd btnTab2Jpgd btnTab2Import btnTab2Modi btnDele |"},
    .rules = sale_return::rules,
    .pickPartner = pickCustomer,
    .addPartner = addCustomer,
    .newPartner = {{"qtcz", 3}, u"客户设置！"},
    .partner = "tkh",
    .paid = "tssje",
    .settleKind = u"xt",
    .pickReturned = pickSale,
};

class TF_Xsth : public TradingScreen {
 public:
  TF_Xsth() : TradingScreen(kDocument) {}
};

// ---- sales to return as a whole ----------------------------------------------------------------------------------

constexpr ui::ColumnSpec kSales[] = {
    {"gl_djh", "单据编号", ColumnKind::Text, 16},
    {"ls_xsrq", "出货日期", ColumnKind::Date},
    {"kh_name", "客户", ColumnKind::Text, 22},
    {"ck_name", "出货仓库", ColumnKind::Text, 12},
    {"ls_yfje", "应收金额", ColumnKind::Money, 13, {}, kSeesPrice},
    {"ls_sfje", "实收金额", ColumnKind::Money, 13, {}, kSeesPrice},
    {"ls_th", "已退货", ColumnKind::Flag, 8},
    {"ls_note", "备注", ColumnKind::Text, 16},
};
constexpr ui::GridSpec kSalesGrid[] = {{"gridSales", "已审核销售单", kSales, "没有符合条件的已审核销售单"}};

class TF_Xsth_Search : public SourcePicker {
 public:
  TF_Xsth_Search()
      : SourcePicker({"F_Xsth_Search", "选择整单退货的销售单", kSalesGrid, sale_return::returnableSales}) {}
};

// ---- goods list --------------------------------------------------------------------------------------------------

constexpr ui::FieldSpec kPickFields[] = {
    {"tkey", "查找：", FieldKind::Text, "", 50},
    {"comLb", "类别：", FieldKind::Combo},
    {"chkKh", "只显示该客户买过的商品", FieldKind::Check},
    {"tsl", "默认添加数量：", FieldKind::Quantity, "", 0, ui::NoMinus},
};
constexpr ui::GridSpec kPickGrids[] = {
    {"gridGoods", "商品列表", sales_parts::goodsColumns, "没有符合条件的商品，或该客户还没有买过"},
    {"gridStaging", "已选商品", trading_parts::stagingColumns<PartnerType::Customer>,
     "在上面的列表中按回车选择商品，选完后按F5"},
};
constexpr GoodsPickSpec kPick = {.screen = {.name = "F_Xsth_Add",
                                            .title = "顾客退货 - 选择商品",
                                            .fields = kPickFields,
                                            .grids = kPickGrids,
                                            .commands = trading_parts::pickCommands,
                                            .focus = "tkey"},
                                 .rules = rulesOf<sale_return::rules>,
                                 .lineScreen = "F_Xsth_Sele",
                                 .partnerBox = "chkKh"};

class TF_Xsth_Add : public GoodsPickScreen {
 public:
  TF_Xsth_Add() : GoodsPickScreen(kPick) {}
};

// ---- one line ----------------------------------------------------------------------------------------------------

constexpr ui::FieldSpec kLineFields[] = {
    {"tsl", "数量：", FieldKind::Quantity, "", 0, ui::NoMinus},
    {"tgsj", "单价：", FieldKind::Money, "", 0, ui::NoMinus},
    {"tdzl", "打折率：", FieldKind::Percent, "", 0, ui::NoMinus},
    {"ttax", "税率(%)：", FieldKind::Percent, "", 0, ui::NoMinus},
    {"ttaxdj", "含税单价：", FieldKind::Money, "", 0, ui::NoMinus},
    {"tzje", "总金额：", FieldKind::Money, "", 0, ui::NoMinus},
    {"tnote", "备注：", FieldKind::Text, "jxc_xsthsp.th_bz", 0, ui::OffersRemarks},
};
constexpr ui::GridSpec kLineGrids[] = {
    {"gridHistory", "历史销售", sales_parts::historyColumns, "该商品还没有销售记录"},
    {"gridQuotes", "客户报价", sales_parts::quoteColumns, "没有报价"},
};
constexpr ui::CommandSpec kLineCommands[] = {
    {"btnSpsj", "选择售价", "F4"}, {"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};
constexpr LineScreenSpec kLine = {.screen = {.name = "F_Xsth_Sele",
                                             .title = "退货商品明细",
                                             .fields = kLineFields,
                                             .grids = kLineGrids,
                                             .commands = kLineCommands,
                                             .focus = "tsl"},
                                  .rules = rulesOf<sale_return::rules>,
                                  .price = "tgsj",
                                  .historyTitle = "最近十次销售",
                                  .quotesTitle = "客户报价",
                                  .historyPrice = "ls_dj",
                                  .quotesPrice = "kb_bj",
                                  .askPrice = askGoodsPrice};

class TF_Xsth_Sele : public LineScreen {
 public:
  TF_Xsth_Sele() : LineScreen(kLine) {}
};

// ---- audit -------------------------------------------------------------------------------------------------------

constexpr auto kAuditFields = trading_parts::auditFields({.date = "收货日期：",
                                                          .partner = "客户：",
                                                          .warehouse = "收货仓库：",
                                                          .due = "应退金额：",
                                                          .paidName = "tssje",
                                                          .paid = "实退金额：",
                                                          .account = "付款账户："});
constexpr AuditScreenSpec kAudit = {.screen = {.name = "F_Xsth_Check",
                                               .title = "顾客退货单审核确认",
                                               .fields = kAuditFields,
                                               .commands = trading_parts::auditCommands,
                                               .focus = "tssje"},
                                    .rules = sale_return::rules,
                                    .paid = "tssje",
                                    .settleKind = u"xt"};

class TF_Xsth_Check : public AuditScreen {
 public:
  TF_Xsth_Check() : AuditScreen(kAudit) {}
};

const ui::Registered<TF_Xsth> kRegistered{"F_Xsth"};
const ui::Registered<TF_Xsth_Search> kRegisteredSearch{"F_Xsth_Search"};
const ui::Registered<TF_Xsth_Add> kRegisteredAdd{"F_Xsth_Add"};
const ui::Registered<TF_Xsth_Sele> kRegisteredSele{"F_Xsth_Sele"};
const ui::Registered<TF_Xsth_Check> kRegisteredCheck{"F_Xsth_Check"};
const RegisteredImport kRegisteredImport{"F_Xsth_Import", rulesOf<sale_return::rules>};

}  // namespace xsth_detail
}  // namespace jxc
