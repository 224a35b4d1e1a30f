// 采购进货: the screen of the purchase receipt and its satellites: goods list, line dialog, audit dialog, change of
// head.
#include "masterdata/screens/partner_picker.h"
#include "masterdata/screens/spxxgl_add.h"
#include "purchasing/receipt.h"
#include "purchasing/screens/purchase_head.h"
#include "purchasing/screens/purchase_parts.h"
#include "stock/screens/audit_screen.h"
#include "stock/screens/goods_pick_screen.h"
#include "stock/screens/line_import_screen.h"
#include "stock/screens/line_screen.h"
#include "stock/screens/trading_parts.h"
#include "stock/screens/trading_screen.h"

namespace jxc {
namespace cgjh_detail {

using ui::ColumnKind;
using ui::FieldKind;

// ---- the document ------------------------------------------------------------------------------------------------

constexpr ui::FieldSpec kFields[] = {
    {"tghs", "供货商：", FieldKind::Picker},
    {"dateCg", "进货日期：", FieldKind::Date},
    {"jsn", "单据编号：", FieldKind::Text, "jxc_jhd.j_sn", 0, ui::ReadOnly},
    {"comCk", "收货仓库：", FieldKind::Combo},
    {"comUser", "经办人：", FieldKind::Combo},
    {"tsn2", "原始单号：", FieldKind::Text, "jxc_jhd.j_sn2"},
    {"tSptm", "商品条码：", FieldKind::Text, "jxc_goods.g_sptm"},
    {"tyfje", "应付金额：", FieldKind::Money, "", 0, ui::ReadOnly},
    {"tsfje", "实付金额：", FieldKind::Money},
    {"comJsfs", "结算方式：", FieldKind::Combo},
    {"comYhzh", "付款账户：", FieldKind::Combo},
    {"tfpno", "发票号码：", FieldKind::Text, "jxc_jhd.j_fpno"},
    {"tfpje", "发票金额：", FieldKind::Money},
    {"tyf", "运费：", FieldKind::Money, "", 0, ui::NoMinus},
    {"tbzf", "包装费：", FieldKind::Money, "", 0, ui::NoMinus},
    {"chkYf", "我方付费", FieldKind::Check},
    {"tnote", "备注：", FieldKind::Text, "jxc_jhd.j_note", 0, ui::OffersRemarks},
    {"chkZj", "本单商品直接入库", FieldKind::Check},
    {"tht", "合同：", FieldKind::Text, "", 80, ui::ReadOnly},
    {"tkey", "查找：", FieldKind::Text, "", 50},
    {"comSort", "排序：", FieldKind::Combo},
};

constexpr auto kLines = trading_parts::lineColumns<PartnerType::Supplier, "jh_">();
constexpr auto kWaiting =
    trading_parts::waitingColumns({.number = "j_sn",
                                   .date = "j_jhrq",
                                   .partner = "ghs_name",
                                   .note = "j_note",
                                   .dateCaption = "进货日期",
                                   .partnerCaption = "供货商",
                                   .warehouseCaption = "收货仓库",
                                   .dueCaption = "应付金额",
                                   .paidCaption = "实付金额",
                                   .openCaption = "未付金额"},
                                  std::array{ui::ColumnSpec{"j_sn2", "原始单号", ColumnKind::Text, 14}});
constexpr ui::GridSpec kGrids[] = {
    {"gridLines", "进货商品", kLines, "扫描商品条码，或按F2添加商品"},
    {"gridWaiting", "待审核单据", kWaiting, "没有待审核的采购单"},
    {"gridWaitingLines", "单据商品", kLines, "选择上面的单据，这里显示它的商品"},
};
constexpr auto kCommands = trading_parts::documentCommands({
    {"btnPanel", "条码选项"},
    {"btnAddOld", "老商品添加", "F2"},
    {"btnAddNew", "新商品添加", "F9"},
    trading_parts::addContract,
    trading_parts::lookAtContract,
    trading_parts::importLines,
    {"btnRChk", "审核", "F6", "审核当前单据，可修改实付金额、结算方式"},
    {"btn_Date", "修改单据", "Ctrl+E", "修改日期、供货商、仓库"},
    {"btn_Export", "导出单据"},
});

constexpr std::string_view kHeadForm[] = {"tghs dateCg jsn", "comCk comUser tnote"};
constexpr std::string_view kFootForm[] = {"tyfje tsfje comJsfs comYhzh", "tyf tbzf chkYf chkZj",
                                          "tfpno tfpje tht tsn2"};

QString changeHead(const QString& number) {
  return changePurchaseHead(families::purchaseReceipt, number);
}

QString addGoods(const QString& barcode) {
  return ui::screenAs<TF_Spxxgl_Add>("F_Spxxgl_Add").addOne(TF_Spxxgl_Add::OpeningStock::BroughtByDocument, barcode);
}

constexpr TradingScreenSpec kDocument = {
    .document = {.screen = {.name = "F_Cgjh",
                            .title = "采购进货",
                            .fields = kFields,
                            .grids = kGrids,
                            .commands = kCommands,
                            .focus = "tSptm"},
                 .draftTitle = "采购进货",
                 .waitingTitle = "待审核采购单",
                 .employeeFlag = "u_cg",
                 .findsGoods = true,
                 .pickScreen = "F_Cgjh_Add",
                 .lineScreen = "F_Cgjh_Sele",
                 .auditScreen = "F_Cgjh_Check",
                 .importScreen = "F_Cgjh_Import",
                 .changeHead = changeHead,
                 .addGoods = addGoods,
                 .make = {{"cggl", 1}, u"采购进货！"},
                 .audit = {{"cggl", 6}, u"采购进货审核！"},
                 .addWaiting = {{"cggl", 13}, u"采购进货待审核界面添加商品！"},
                 .deleteWaiting = {{"cggl", 14}, u"删除采购进货待审核单据！"},
                 .newGoods = {{"cggl", 15}, u"采购进货增加新商品！"},
                 .headForm = kHeadForm,
                 .footForm = kFootForm,
                 .scanRow = "tSptm btnPanel | btnAddOld btnAddNew btnJpgd btnModi btnDel btnImport",
                 .saveRow = "btnHt btnPrin | btnOK btnCancel",
                 .searchRow = "tkey btnSearch comSort |",
                 .waitingButtons = "btnRChk btn_Check btn_Date btn_Dele btn_ChaKan btnCkHt btn_Prin btn_Export |",
                 .lineButtons = "btnAdd btnTab2Jpgd btnTab2Import btnTab2Modi btnDele |"},
    .rules = receipt::rules,
    .pickPartner = pickSupplier,
    .addPartner = addSupplier,
    .newPartner = {{"qtcz", 2}, u"供货商设置！"},
    .partner = "tghs",
    .paid = "tsfje",
    .settleKind = u"cg",
};

class TF_Cgjh : public TradingScreen {
 public:
  TF_Cgjh() : TradingScreen(kDocument) {}
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
constexpr GoodsPickSpec kPick = {.screen = {.name = "F_Cgjh_Add",
                                            .title = "采购进货 - 选择商品",
                                            .fields = kPickFields,
                                            .grids = kPickGrids,
                                            .commands = trading_parts::pickCommands,
                                            .focus = "tkey"},
                                 .rules = rulesOf<receipt::rules>,
                                 .lineScreen = "F_Cgjh_Sele"};

class TF_Cgjh_Add : public GoodsPickScreen {
 public:
  TF_Cgjh_Add() : GoodsPickScreen(kPick) {}
};

// ---- one line ----------------------------------------------------------------------------------------------------

constexpr ui::FieldSpec kLineFields[] = {
    {"tsl", "数量：", FieldKind::Quantity, "", 0, ui::NoMinus},
    {"tgpjjj", "单价：", FieldKind::Money, "", 0, ui::NoMinus},
    {"tdzl", "打折率：", FieldKind::Percent, "", 0, ui::NoMinus},
    {"ttax", "税率(%)：", FieldKind::Percent, "", 0, ui::NoMinus},
    {"ttaxdj", "含税单价：", FieldKind::Money, "", 0, ui::NoMinus},
    {"tzje", "总金额：", FieldKind::Money, "", 0, ui::NoMinus},
    {"tnote", "备注：", FieldKind::Text, "jxc_jhsp.jh_bz", 0, ui::OffersRemarks},
};
constexpr ui::GridSpec kLineGrids[] = {
    {"gridHistory", "历史进货", purchase_parts::historyColumns, "该商品还没有进货记录"},
    {"gridQuotes", "供货商报价", purchase_parts::quoteColumns, "没有报价"},
};
constexpr LineScreenSpec kLine = {.screen = {.name = "F_Cgjh_Sele",
                                             .title = "进货商品明细",
                                             .fields = kLineFields,
                                             .grids = kLineGrids,
                                             .commands = trading_parts::okCancel,
                                             .focus = "tsl"},
                                  .rules = rulesOf<receipt::rules>,
                                  .price = "tgpjjj",
                                  .historyTitle = "最近十次进货",
                                  .quotesTitle = "供货商报价",
                                  .historyPrice = "jh_dj",
                                  .quotesPrice = "gb_bj"};

class TF_Cgjh_Sele : public LineScreen {
 public:
  TF_Cgjh_Sele() : LineScreen(kLine) {}
};

// ---- audit -------------------------------------------------------------------------------------------------------

constexpr auto kAuditFields = trading_parts::auditFields({.date = "进货日期：",
                                                          .partner = "供货商：",
                                                          .warehouse = "收货仓库：",
                                                          .due = "应付金额：",
                                                          .paidName = "tsfje",
                                                          .paid = "实付金额：",
                                                          .account = "付款账户："});
constexpr AuditScreenSpec kAudit = {.screen = {.name = "F_Cgjh_Check",
                                               .title = "单据审核确认",
                                               .fields = kAuditFields,
                                               .commands = trading_parts::auditCommands,
                                               .focus = "tsfje"},
                                    .rules = receipt::rules,
                                    .paid = "tsfje",
                                    .settleKind = u"cg"};

class TF_Cgjh_Check : public AuditScreen {
 public:
  TF_Cgjh_Check() : AuditScreen(kAudit) {}
};

const ui::Registered<TF_Cgjh> kRegistered{"F_Cgjh"};
const ui::Registered<TF_Cgjh_Add> kRegisteredAdd{"F_Cgjh_Add"};
const ui::Registered<TF_Cgjh_Sele> kRegisteredSele{"F_Cgjh_Sele"};
const ui::Registered<TF_Cgjh_Check> kRegisteredCheck{"F_Cgjh_Check"};
const RegisteredImport kRegisteredImport{"F_Cgjh_Import", rulesOf<receipt::rules>};

}  // namespace cgjh_detail
}  // namespace jxc
