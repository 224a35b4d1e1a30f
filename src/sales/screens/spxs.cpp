// 商品销售: the screen of the sales document and its satellites: goods list, line dialog, audit dialog.
#include "core/fillers.h"
#include "core/session.h"
#include "core/text.h"
#include "masterdata/screens/partner_picker.h"
#include "masterdata/screens/spxxgl_add.h"
#include "sales/sale.h"
#include "sales/screens/price.h"
#include "sales/screens/sales_parts.h"
#include "sales/screens/spxs_gift.h"
#include "stock/screens/audit_screen.h"
#include "stock/screens/goods_pick_screen.h"
#include "stock/screens/line_import_screen.h"
#include "stock/screens/line_screen.h"
#include "stock/screens/modi_date.h"
#include "stock/screens/trading_parts.h"
#include "stock/screens/trading_screen.h"

namespace jxc {
namespace spxs_detail {

using ui::ColumnKind;
using ui::FieldKind;

// ---- the document ------------------------------------------------------------------------------------------------

constexpr ui::FieldSpec kFields[] = {
    {"tkh", "客户：", FieldKind::Picker},
    {"dateCg", "出货日期：", FieldKind::Date},
    {"jsn", "单据编号：", FieldKind::Text, "jxc_lsxsd.gl_djh", 0, ui::ReadOnly},
    {"comCk", "出货仓库：", FieldKind::Combo},
    {"comUser", "经办人：", FieldKind::Combo},
    {"tsn2", "原始单号：", FieldKind::Text, "jxc_lsxsd.gl_djh2"},
    {"tSptm", "商品条码：", FieldKind::Text, "jxc_goods.g_sptm"},
    {"tyfje", "应收金额：", FieldKind::Money, "", 0, ui::ReadOnly},
    {"tssje", "实收金额：", FieldKind::Money},
    {"comJsfs", "结算方式：", FieldKind::Combo},
    {"comYhzh", "收款账户：", FieldKind::Combo},
    {"tfpno", "发票号码：", FieldKind::Text, "jxc_lsxsd.ls_fpno"},
    {"tfpje", "发票金额：", FieldKind::Money},
    {"tyf", "运费：", FieldKind::Money, "", 0, ui::NoMinus},
    {"tbzf", "包装费：", FieldKind::Money, "", 0, ui::NoMinus},
    {"chkYf", "我方付费", FieldKind::Check},
    {"tnote", "备注：", FieldKind::Text, "jxc_lsxsd.ls_note", 0, ui::OffersRemarks},
    {"chkZj", "本单商品直接出库", FieldKind::Check},
    {"tht", "合同：", FieldKind::Text, "", 80, ui::ReadOnly},
    {"tkey", "查找：", FieldKind::Text, "", 50},
    {"tGhsName", "客户：", FieldKind::Picker},
    {"comSort", "排序：", FieldKind::Combo},
};

constexpr auto kLines = trading_parts::lineColumns<PartnerType::Customer, "ls_">(
    std::array{ui::ColumnSpec{"ls_lsj", "零售价", ColumnKind::Money, 10, {}, kSeesPrice}},
    std::array{ui::ColumnSpec{"ls_cbj2", "成本价", ColumnKind::Money, 10, {}, kSeesCost}});
constexpr auto kWaiting =
    trading_parts::waitingColumns({.number = "gl_djh",
                                   .date = "ls_xsrq",
                                   .partner = "kh_name",
                                   .note = "ls_note",
                                   .dateCaption = "出货日期",
                                   .partnerCaption = "客户",
                                   .warehouseCaption = "出货仓库",
                                   .dueCaption = "应收金额",
                                   .paidCaption = "实收金额",
                                   .openCaption = "未收金额"},
                                  std::array{ui::ColumnSpec{"gl_djh2", "原始单号", ColumnKind::Text, 14}});
constexpr ui::GridSpec kGrids[] = {
    {"gridLines", "销售商品", kLines, "扫描商品条码，或按F2添加商品"},
    {"gridWaiting", "待审核单据", kWaiting, "没有待审核的销售单"},
    {"gridWaitingLines", "单据商品", kLines, "选择上面的单据，这里显示它的商品"},
};
constexpr auto kCommands = trading_parts::documentCommands({
    {"btnPanel", "条码选项"},
    {"btnAddOld", "商品添加", "F2"},
    {"btnAddNew", "新商品添加", "F9"},
    {"btnZpAdd", "添加赠品", "F4"},
    // Sets of material are no goods of this system. The button keeps its place on the screen for shops that look for it
    // there, without a key: F3 changes the line.
    {"btnAddCl", "材料套料出库", "", "不能使用：本系统没有套料商品，请用“商品添加(F2)”逐项添加"},
    trading_parts::addContract,
    trading_parts::lookAtContract,
    {"btnInOut", "导入导出", "", "从表格文件导入商品，或把单据商品导出到表格文件"},
    {"btnRCheck", "审核", "F6", "审核当前单据，可修改实收金额、结算方式"},
    {"btnAllKh", "全部客户", "Ctrl+Q", "显示所有客户的待审核单据"},
    {"btn_Date", "修改单据", "Ctrl+E", "修改日期、客户、仓库"},
});

constexpr std::string_view kHeadForm[] = {"tkh dateCg jsn", "comCk comUser tsn2"};
constexpr std::string_view kFootForm[] = {"tyfje tssje comJsfs comYhzh", "tfpno tfpje tht", "tyf tbzf chkYf chkZj",
                                          "tnote"};

bool parcelsInUse() {
  return strIsTrue(session().cs_kddy);
}

QString changeHead(const QString& number) {
  return changeSaleHead(families::sale, number);
}

// What a shop sells from the counter it often has already: stock of the article may be entered with it.
QString addGoods(const QString& barcode) {
  return ui::screenAs<TF_Spxxgl_Add>("F_Spxxgl_Add").addOne(TF_Spxxgl_Add::OpeningStock::Offered, barcode);
}

constexpr std::string_view kOwn[] = {"btnZpAdd", "btnAddCl"};

constexpr TradingScreenSpec kDocument = {
    .document = {.screen = {.name = "F_Spxs",
                            .title = "商品销售",
                            .fields = kFields,
                            .grids = kGrids,
                            .commands = kCommands,
                            .focus = "tSptm"},
                 .draftTitle = "商品销售",
                 .waitingTitle = "待审核销售单",
                 .employeeFlag = "u_xs",
                 .auditCommand = "btnRCheck",
                 .findsGoods = true,
                 .pickScreen = "F_Spxs_Add",
                 .lineScreen = "F_Spxs_Sele",
                 .auditScreen = "F_Spxs_Check",
                 .importScreen = "F_Spxs_Import",
                 .changeHead = changeHead,
                 .addGoods = addGoods,
                 .make = {{"xsgl", 1}, u"商品销售！"},
                 .audit = {{"xsgl", 7}, u"商品销售审核！"},
                 .addWaiting = {{"xsgl", 15}, u"商品销售待审核界面添加商品！"},
                 .deleteWaiting = {{"xsgl", 16}, u"删除商品销售待审核单据！"},
                 .newGoods = {{"qtcz", 1}, u"商品管理！"},
                 .headForm = kHeadForm,
                 .footForm = kFootForm,
                 .scanRow = "tSptm btnPanel | btnAddOld btnAddNew btnZpAdd btnAddCl btnJpgd btnModi btnDel btnInOut",
                 .saveRow = "btnHt btnPrin | btnOK btnCancel",
                 .searchRow = "tkey btnSearch tGhsName btnAllKh comSort |",
                 .waitingButtons = "btnRCheck btn_Check btn_Date btn_Dele btn_ChaKan btnCkHt btn_Prin |",
                 .lineButtons = "btnAdd btnTab2Jpgd btnTab2Import btnTab2Modi btnDele |",
                 .own = kOwn},
    .rules = sale::rules,
    .pickPartner = pickCustomer,
    .addPartner = addCustomer,
    .newPartner = {{"qtcz", 3}, u"客户设置！"},
    .partner = "tkh",
    .paid = "tssje",
    .settleKind = u"xs",
    .carriesFreight = parcelsInUse,
};

class TF_Spxs : public TradingScreen {
 public:
  TF_Spxs() : TradingScreen(kDocument) {
    on(command("btnZpAdd"), [this] { addGift(); });
    command("btnAddCl").setEnabled(false);
  }

 protected:
  void fillMore() override { fillSalesmen(); }
  void partnerChanged() override { fillSalesmen(); }

  void editLine(const LineScreen::Request& request) override {
    const auto line = rules().lines().loadLine(request.where, request.id);
    if (line && !line->gift.isEmpty()) return changeSaleGift(request.where, request.id, request.place);
    TradingScreen::editLine(request);
  }

 private:
  /// The customer's own salesmen come first, and the first of them is proposed.
  void fillSalesmen() {
    if (!strIsTrue(session().cs_xsyh)) return;
    comUser.setItems(fillSalesmenFor(partner.key()));
  }

  void addGift() {
    if (!settleDate()) return;
    const LineResult added = addSaleGift(Lines::Draft, draftPlace());
    setNumber(added.number);
    reloadLines(added.id);
  }
};

// ---- goods list --------------------------------------------------------------------------------------------------

constexpr ui::FieldSpec kPickFields[] = {
    {"tkey", "查找：", FieldKind::Text, "", 50},
    {"comLb", "类别：", FieldKind::Combo},
    {"chkCk", "显示没有库存的商品", FieldKind::Check},
    {"chkKh", "只显示该客户买过的商品", FieldKind::Check},
    {"tsl", "默认添加数量：", FieldKind::Quantity, "", 0, ui::NoMinus},
};
constexpr ui::GridSpec kPickGrids[] = {
    {"gridGoods", "商品列表", sales_parts::goodsColumns, "没有符合条件的商品"},
    {"gridStaging", "已选商品", trading_parts::stagingColumns<PartnerType::Customer>,
     "在上面的列表中按回车选择商品，选完后按F5"},
};
constexpr GoodsPickSpec kPick = {.screen = {.name = "F_Spxs_Add",
                                            .title = "商品销售 - 选择商品",
                                            .fields = kPickFields,
                                            .grids = kPickGrids,
                                            .commands = trading_parts::pickCommands,
                                            .focus = "tkey"},
                                 .rules = rulesOf<sale::rules>,
                                 .lineScreen = "F_Spxs_Sele",
                                 .partnerBox = "chkKh",
                                 .tickShowsAll = true};

class TF_Spxs_Add : public GoodsPickScreen {
 public:
  TF_Spxs_Add() : GoodsPickScreen(kPick) {}
};

// ---- one line ----------------------------------------------------------------------------------------------------

constexpr ui::FieldSpec kLineFields[] = {
    {"tsl", "数量：", FieldKind::Quantity},
    {"tgsj", "单价：", FieldKind::Money, "", 0, ui::NoMinus},
    {"tdzl", "打折率：", FieldKind::Percent, "", 0, ui::NoMinus},
    {"ttax", "税率(%)：", FieldKind::Percent, "", 0, ui::NoMinus},
    {"ttaxdj", "含税单价：", FieldKind::Money, "", 0, ui::NoMinus},
    {"tzje", "总金额：", FieldKind::Money},
    {"tcbj", "成本价：", FieldKind::Money, "", 0, ui::NoMinus},
    {"tnote", "备注：", FieldKind::Text, "jxc_lsxssp.ls_bz", 0, ui::OffersRemarks},
};
constexpr ui::GridSpec kLineGrids[] = {
    {"gridHistory", "历史销售", sales_parts::historyColumns, "该商品还没有销售记录"},
    {"gridQuotes", "客户报价", sales_parts::quoteColumns, "没有报价"},
};
constexpr ui::CommandSpec kLineCommands[] = {
    {"btnSpsj", "选择售价", "F4"}, {"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};
constexpr LineScreenSpec kLine = {.screen = {.name = "F_Spxs_Sele",
                                             .title = "销售商品明细",
                                             .fields = kLineFields,
                                             .grids = kLineGrids,
                                             .commands = kLineCommands,
                                             .focus = "tsl"},
                                  .rules = rulesOf<sale::rules>,
                                  .price = "tgsj",
                                  .historyTitle = "最近二十次销售",
                                  .quotesTitle = "客户报价",
                                  .historyPrice = "ls_dj",
                                  .quotesPrice = "kb_bj",
                                  .cost = "tcbj",
                                  .askPrice = askGoodsPrice};

class TF_Spxs_Sele : public LineScreen {
 public:
  TF_Spxs_Sele() : LineScreen(kLine) {}
};

// ---- audit -------------------------------------------------------------------------------------------------------

constexpr auto kAuditFields = trading_parts::auditFields({.date = "出货日期：",
                                                          .partner = "客户：",
                                                          .warehouse = "出货仓库：",
                                                          .due = "应收金额：",
                                                          .paidName = "tssje",
                                                          .paid = "实收金额：",
                                                          .account = "收款账户："});
constexpr AuditScreenSpec kAudit = {.screen = {.name = "F_Spxs_Check",
                                               .title = "销售单审核确认",
                                               .fields = kAuditFields,
                                               .commands = trading_parts::auditCommands,
                                               .focus = "tssje"},
                                    .rules = sale::rules,
                                    .paid = "tssje",
                                    .settleKind = u"xs"};

class TF_Spxs_Check : public AuditScreen {
 public:
  TF_Spxs_Check() : AuditScreen(kAudit) {}
};

const ui::Registered<TF_Spxs> kRegistered{"F_Spxs"};
const ui::Registered<TF_Spxs_Add> kRegisteredAdd{"F_Spxs_Add"};
const ui::Registered<TF_Spxs_Sele> kRegisteredSele{"F_Spxs_Sele"};
const ui::Registered<TF_Spxs_Check> kRegisteredCheck{"F_Spxs_Check"};
const RegisteredImport kRegisteredImport{"F_Spxs_Import", rulesOf<sale::rules>};

}  // namespace spxs_detail
}  // namespace jxc
