// 采购退货: the screen of the purchase return and its satellites: goods list, line dialog, audit dialog, list of
// receipts.
#include "masterdata/screens/partner_picker.h"
#include "purchasing/purchase_return.h"
#include "purchasing/screens/purchase_head.h"
#include "purchasing/screens/purchase_parts.h"
#include "stock/screens/audit_screen.h"
#include "stock/screens/goods_pick_screen.h"
#include "stock/screens/line_import_screen.h"
#include "stock/screens/line_screen.h"
#include "stock/screens/source_picker.h"
#include "stock/screens/trading_parts.h"
#include "stock/screens/trading_screen.h"

namespace jxc {
namespace cgth_detail {

using ui::ColumnKind;
using ui::FieldKind;

// ---- the document ------------------------------------------------------------------------------------------------

constexpr ui::FieldSpec kFields[] = {
    {"tghs", "供货商：", FieldKind::Picker},
    {"dateCg", "退货日期：", FieldKind::Date},
    {"jsn", "单据编号：", FieldKind::Text, "jxc_thd.gl_djh", 0, ui::ReadOnly},
    {"comCk", "出货仓库：", FieldKind::Combo},
    {"comUser", "经办人：", FieldKind::Combo},
    {"tSptm", "商品条码：", FieldKind::Text, "jxc_goods.g_sptm"},
    {"tyfje", "应收金额：", FieldKind::Money, "", 0, ui::ReadOnly},
    {"tsfje", "实收金额：", FieldKind::Money},
    {"comJsfs", "结算方式：", FieldKind::Combo},
    {"comYhzh", "收款账户：", FieldKind::Combo},
    {"tfpno", "发票号码：", FieldKind::Text, "jxc_thd.th_fpno"},
    {"tfpje", "发票金额：", FieldKind::Money},
    {"tnote", "备注：", FieldKind::Text, "jxc_thd.th_note", 0, ui::OffersRemarks},
    {"tkey", "查找：", FieldKind::Text, "", 50},
    {"comSort", "排序：", FieldKind::Combo},
};

constexpr auto kLines = trading_parts::lineColumns<PartnerType::Supplier, "th_">();
constexpr auto kWaiting = trading_parts::waitingColumns({.number = "gl_djh",
                                                         .date = "th_thrq",
                                                         .partner = "ghs_name",
                                                         .note = "th_note",
                                                         .dateCaption = "退货日期",
                                                         .partnerCaption = "供货商",
                                                         .warehouseCaption = "出货仓库",
                                                         .dueCaption = "应收金额",
                                                         .paidCaption = "实收金额",
                                                         .openCaption = "未收金额"});
constexpr ui::GridSpec kGrids[] = {
    {"gridLines", "退货商品", kLines, "扫描商品条码，按F2添加商品，或按F7选择一张进货单整单退货"},
    {"gridWaiting", "待审核单据", kWaiting, "没有待审核的退货单"},
    {"gridWaitingLines", "单据商品", kLines, "选择上面的单据，这里显示它的商品"},
};
constexpr auto kCommands = trading_parts::documentCommands({
    {"btnPanel", "条码选项"},
    {"btnAddOld", "添加商品", "F2"},
    {"btnZdth", "整单退货", "F7"},
    trading_parts::importLines,
    {"btnRChk", "审核", "F6", "审核当前单据，可修改实收金额"},
    {"btn_Date", "修改单据", "Ctrl+E", "修改日期、供货商、仓库"},
});

constexpr std::string_view kHeadForm[] = {"tghs dateCg jsn", "comCk comUser"};
constexpr std::string_view kFootForm[] = {"tyfje tsfje comJsfs comYhzh", "tfpno tfpje", "tnote"};

QString changeHead(const QString& number) {
  return changePurchaseHead(families::purchaseReturn, number);
}
QString pickReceipt() {
  return pickSource("F_Cgth_Zdth_Search", "j_sn");
}

constexpr TradingScreenSpec kDocument = {
    .document = {.screen = {.name = "F_Cgth",
                            .title = "采购退货",
                            .fields = kFields,
                            .grids = kGrids,
                            .commands = kCommands,
                            .focus = "tSptm"},
                 .draftTitle = "采购退货",
                 .waitingTitle = "待审核退货单",
                 .employeeFlag = "u_cg",
                 .findsGoods = true,
                 .pickScreen = "F_Cgth_Add",
                 .lineScreen = "F_Cgth_Sele",
                 .auditScreen = "F_Cgth_Check",
                 .importScreen = "F_Cgth_Import",
                 .changeHead = changeHead,
                 .make = {{"cggl", 2}, u"采购退货！"},
                 .audit = {{"cggl", 7}, u"采购退货审核！"},
                 .addWaiting = {{"cggl", 2}, u"采购退货！"},
                 .deleteWaiting = {{"cggl", 2}, u"采购退货！"},
                 .headForm = kHeadForm,
                 .footForm = kFootForm,
                 .scanRow = "tSptm btnPanel | btnAddOld btnZdth btnJpgd btnModi btnDel btnImport",
                 .saveRow = "btnPrin | btnOK btnCancel",
                 .searchRow = "tkey btnSearch comSort |",
                 .waitingButtons = "btnRChk btn_Check btn_Date btn_Dele btn_ChaKan btn_Prin |",
                 .lineButtons = "btnAdd btnTab2Jpgd btnTab2Import btnTab2Modi btnDele |"},
    .rules = purchase_return::rules,
    .pickPartner = pickSupplier,
    .addPartner = addSupplier,
    .newPartner = {{"qtcz", 2}, u"供货商设置！"},
    .partner = "tghs",
    .paid = "tsfje",
    .settleKind = u"ct",
    .pickReturned = pickReceipt,
};

class TF_Cgth : public TradingScreen {
 public:
  TF_Cgth() : TradingScreen(kDocument) {}
};

// ---- receipts to return as a whole -------------------------------------------------------------------------------

constexpr ui::ColumnSpec kReceipts[] = {
    {"j_sn", "单据编号", ColumnKind::Text, 16},
    {"j_jhrq", "进货日期", ColumnKind::Date},
    {"ghs_name", "供货商", ColumnKind::Text, 22},
    {"ck_name", "收货仓库", ColumnKind::Text, 12},
    {"j_yfje", "应付金额", ColumnKind::Money, 13, {}, kSeesCost},
    {"j_sfje", "实付金额", ColumnKind::Money, 13, {}, kSeesCost},
    {"j_th", "已退货", ColumnKind::Flag, 8},
    {"j_note", "备注", ColumnKind::Text, 16},
};
constexpr ui::GridSpec kReceiptsGrid[] = {{"gridReceipts", "已审核进货单", kReceipts, "没有符合条件的已审核进货单"}};

class TF_Cgth_Zdth_Search : public SourcePicker {
 public:
  TF_Cgth_Zdth_Search()
      : SourcePicker(
            {"F_Cgth_Zdth_Search", "选择整单退货的进货单", kReceiptsGrid, purchase_return::returnableReceipts}) {}
};

// ---- goods list --------------------------------------------------------------------------------------------------

constexpr ui::FieldSpec kPickFields[] = {
    {"tkey", "查找：", FieldKind::Text, "", 50},
    {"comLb", "类别：", FieldKind::Combo},
    {"chkCk", "只显示有库存商品", FieldKind::Check},
    {"chkPartner", "只显示该供货商的商品", FieldKind::Check},
    {"tsl", "默认添加数量：", FieldKind::Quantity, "", 0, ui::NoMinus},
};
constexpr ui::GridSpec kPickGrids[] = {
    {"gridGoods", "商品列表", purchase_parts::goodsColumns, "没有符合条件的商品"},
    {"gridStaging", "已选商品", trading_parts::stagingColumns<PartnerType::Supplier>,
     "在上面的列表中按回车选择商品，选完后按F5"},
};
constexpr GoodsPickSpec kPick = {.screen = {.name = "F_Cgth_Add",
                                            .title = "采购退货 - 选择商品",
                                            .fields = kPickFields,
                                            .grids = kPickGrids,
                                            .commands = trading_parts::pickCommands,
                                            .focus = "tkey"},
                                 .rules = rulesOf<purchase_return::rules>,
                                 .lineScreen = "F_Cgth_Sele"};

class TF_Cgth_Add : public GoodsPickScreen {
 public:
  TF_Cgth_Add() : GoodsPickScreen(kPick) {}
};

// ---- one line ----------------------------------------------------------------------------------------------------

constexpr ui::FieldSpec kLineFields[] = {
    {"tsl", "数量：", FieldKind::Quantity, "", 0, ui::NoMinus},
    {"tgpjjj", "单价：", FieldKind::Money, "", 0, ui::NoMinus},
    {"tdzl", "打折率：", FieldKind::Percent, "", 0, ui::NoMinus},
    {"ttax", "税率(%)：", FieldKind::Percent, "", 0, ui::NoMinus},
    {"ttaxdj", "含税单价：", FieldKind::Money, "", 0, ui::NoMinus},
    {"tzje", "总金额：", FieldKind::Money, "", 0, ui::NoMinus},
    {"tnote", "备注：", FieldKind::Text, "jxc_thsp.th_bz", 0, ui::OffersRemarks},
};
constexpr ui::GridSpec kLineGrids[] = {
    {"gridHistory", "历史进货", purchase_parts::historyColumns, "该商品还没有进货记录"},
    {"gridQuotes", "供货商报价", purchase_parts::quoteColumns, "没有报价"},
};
constexpr LineScreenSpec kLine = {.screen = {.name = "F_Cgth_Sele",
                                             .title = "采购退货商品明细",
                                             .fields = kLineFields,
                                             .grids = kLineGrids,
                                             .commands = trading_parts::okCancel,
                                             .focus = "tsl"},
                                  .rules = rulesOf<purchase_return::rules>,
                                  .price = "tgpjjj",
                                  .historyTitle = "最近十次进货",
                                  .quotesTitle = "供货商报价",
                                  .historyPrice = "jh_dj",
                                  .quotesPrice = "gb_bj"};

class TF_Cgth_Sele : public LineScreen {
 public:
  TF_Cgth_Sele() : LineScreen(kLine) {}
};

// ---- audit -------------------------------------------------------------------------------------------------------

constexpr auto kAuditFields = trading_parts::auditFields({.date = "退货日期：",
                                                          .partner = "供货商：",
                                                          .warehouse = "出货仓库：",
                                                          .due = "应收金额：",
                                                          .paidName = "tsfje",
                                                          .paid = "实收金额：",
                                                          .account = "收款账户："});
constexpr AuditScreenSpec kAudit = {.screen = {.name = "F_Cgth_Check",
                                               .title = "采购退货单审核确认",
                                               .fields = kAuditFields,
                                               .commands = trading_parts::auditCommands,
                                               .focus = "tsfje"},
                                    .rules = purchase_return::rules,
                                    .paid = "tsfje",
                                    .settleKind = u"ct"};

class TF_Cgth_Check : public AuditScreen {
 public:
  TF_Cgth_Check() : AuditScreen(kAudit) {}
};

const ui::Registered<TF_Cgth> kRegistered{"F_Cgth"};
const ui::Registered<TF_Cgth_Zdth_Search> kRegisteredSearch{"F_Cgth_Zdth_Search"};
const ui::Registered<TF_Cgth_Add> kRegisteredAdd{"F_Cgth_Add"};
const ui::Registered<TF_Cgth_Sele> kRegisteredSele{"F_Cgth_Sele"};
const ui::Registered<TF_Cgth_Check> kRegisteredCheck{"F_Cgth_Check"};
const RegisteredImport kRegisteredImport{"F_Cgth_Import", rulesOf<purchase_return::rules>};

}  // namespace cgth_detail
}  // namespace jxc
