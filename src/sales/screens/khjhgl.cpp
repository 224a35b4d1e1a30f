// 客户借货管理: the screen of the loan and its satellites: goods list, line dialog. What is lent stands in the list of
// the third panel, from where it comes back.
#include "sales/loan.h"
#include "sales/screens/sales_parts.h"
#include "stock/screens/modi_date.h"
#include "stock/screens/partial_screen.h"
#include "stock/screens/partner_document_screen.h"

namespace jxc {
namespace khjhgl_detail {

using ui::ColumnKind;
using ui::ColumnSpec;
using ui::FieldKind;

constexpr ui::FieldSpec kFields[] = {
    {"tkh", "客户：", FieldKind::Picker},
    {"dateCg", "借货日期：", FieldKind::Date},
    {"gldjh", "单据编号：", FieldKind::Text, "jxc_khjh.gl_djh", 0, ui::ReadOnly},
    {"comCk", "仓库：", FieldKind::Combo},
    {"comUser", "经办人：", FieldKind::Combo},
    {"tSptm", "商品条码：", FieldKind::Text, "jxc_goods.g_sptm"},
    {"tnote", "备注：", FieldKind::Text, "jxc_khjh.jh_note", 0, ui::OffersRemarks},
    {"tkey", "查找：", FieldKind::Text, "", 50},
    {"comSort", "排序：", FieldKind::Combo},
};
constexpr std::string_view kHeadForm[] = {"tkh dateCg gldjh", "comCk comUser tnote"};

constexpr auto kLines = ui::joinedTables(
    goodsNames,
    std::array{ColumnSpec{"jh_sl", "借货数量", ColumnKind::Quantity, 9, {.sum = true, .editable = true}},
               ColumnSpec{"jh_zj", "每天租金", ColumnKind::Money, 9},
               ColumnSpec{"jh_yj", "押金", ColumnKind::Money, 10, {.sum = true}},
               ColumnSpec{"jh_kmmc", "收款账户", ColumnKind::Text, 12},
               ColumnSpec{"jh_dj", "成本价", ColumnKind::Money, 10, {}, kSeesCost},
               ColumnSpec{"jh_zje", "成本金额", ColumnKind::Money, 11, {.sum = true}, kSeesCost}, goodsBarcode});
constexpr ColumnSpec kWaiting[] = {
    {"gl_djh", "单据编号", ColumnKind::Text, 16}, {"jh_rq", "借货日期", ColumnKind::Date},
    {"kh_name", "客户", ColumnKind::Text, 22},    {"ck_name", "仓库", ColumnKind::Text, 14},
    {"u_name", "经办人", ColumnKind::Text, 10},   {"a_name", "操作员", ColumnKind::Text, 10},
    {"jh_note", "备注", ColumnKind::Text, 24},
};
constexpr ui::GridSpec kGrids[] = {
    {"gridLines", "借货商品", kLines, "扫描商品条码，或按F2新增商品；按F3输入租金和押金"},
    {"gridWaiting", "待审核单据", kWaiting, "没有待审核的借货单"},
    {"gridWaitingLines", "单据商品", kLines, "选择上面的单据，这里显示它的商品"},
};
constexpr auto kCommands = ui::joinedTables(
    std::array{
        ui::CommandSpec{"btnPanel", "条码选项"}, ui::CommandSpec{"btnAddOld", "新增商品", "F2"},
        ui::CommandSpec{"btnRChk", "审核单据", "F6", "审核当前单据"}, ui::CommandSpec{"btn_Check", "审核全部", "F7"},
        ui::CommandSpec{"btnPreview", "预览影响", "F9", "列出审核后库存的变化，不改动任何数据"},
        ui::CommandSpec{"btn_Delete", "删除单据", "Ctrl+Del"}, ui::CommandSpec{"btn_Date", "更改日期", "Ctrl+E"}},
    partial_parts::without(
        std::to_array(trading_parts::commonCommands),
        std::array<std::string_view, 5>{"btnJpgd", "btnTab2Jpgd", "btnTab2Import", "btn_Check", "btn_Dele"}));

QString changeDate(const QString& number) {
  return changeDocumentDate(families::loan, number);
}

constexpr Right kLoans = {"rcgl", 4};
constexpr DocumentScreenSpec kDocument = {
    .screen = {.name = "F_Khjhgl",
               .title = "客户借货管理",
               .fields = kFields,
               .grids = kGrids,
               .commands = kCommands,
               .focus = "tSptm"},
    .draftTitle = "客户借货",
    .waitingTitle = "待审核借货单",
    .auditedList = "F_Khjhgl_Djcx",
    .auditedTitle = "借货查询",
    .employeeFlag = "u_xs",
    .numberInput = "gldjh",
    .deleteCommand = "btn_Delete",
    .linesHoldWarehouse = true,
    .pickScreen = "F_Khjhgl_Add",
    .lineScreen = "F_Khjhgl_Sele",
    .changeHead = changeDate,
    .make = {kLoans, u"客户借货！"},
    .audit = {kLoans, u"客户借货审核！"},
    .addWaiting = {kLoans, u"客户借货！"},
    .deleteWaiting = {kLoans, u"客户借货！"},
    .headForm = kHeadForm,
    .scanRow = "tSptm btnPanel | btnAddOld btnModi btnDel",
    .saveRow = "btnPrin | btnOK btnCancel",
    .searchRow = "tkey btnSearch comSort |",
    .waitingButtons = "btnRChk btnPreview btn_Check btn_Date btn_Delete btn_ChaKan btn_Prin |",
    .lineButtons = "btnAdd btnTab2Modi btnDele |",
};

constexpr PartnerInput kPartner = {"tkh", pickCustomer};
constexpr std::string_view kKnown[] = {kPartner.name};

class TF_Khjhgl : public PartnerDocumentScreen<DraftOfPartner, RulesOver<DraftOfPartner>> {
 public:
  TF_Khjhgl() : PartnerDocumentScreen(kDocument, lending::rules(), kPartner, kKnown) {}
};

// ---- goods list, one line ----------------------------------------------------------------------------------------

constexpr ui::FieldSpec kPickFields[] = {
    {"tkey", "查找：", FieldKind::Text, "", 50},
    {"comLb", "类别：", FieldKind::Combo},
    {"chkCk", "只显示有库存商品", FieldKind::Check},
    {"tsl", "默认添加数量：", FieldKind::Quantity, "", 0, ui::NoMinus},
};
constexpr auto kStaging = ui::joinedTables(
    goodsNamesNoColour,
    std::array{ColumnSpec{"ts_sl", "借货数量", ColumnKind::Quantity, 9, {.sum = true, .editable = true}},
               ColumnSpec{"rent", "每天租金", ColumnKind::Money, 9},
               ColumnSpec{"deposit", "押金", ColumnKind::Money, 10, {.sum = true}},
               ColumnSpec{"ts_note", "收款账户", ColumnKind::Text, 12}});
constexpr ui::GridSpec kPickGrids[] = {
    {"gridGoods", "商品列表", sales_parts::goodsColumns, "当前仓库中没有符合条件的商品"},
    {"gridStaging", "已选商品", kStaging, "在上面的列表中按回车选择商品，选完后按F5"},
};

class TF_Khjhgl_Add : public GoodsPickScreen {
 public:
  TF_Khjhgl_Add()
      : GoodsPickScreen({.screen = {.name = "F_Khjhgl_Add",
                                    .title = "客户借货 - 选择商品",
                                    .fields = kPickFields,
                                    .grids = kPickGrids,
                                    .commands = trading_parts::pickCommands,
                                    .focus = "tkey"},
                         .rules = rulesOf<lending::rules>,
                         .lineScreen = "F_Khjhgl_Sele"}) {}
};

constexpr ui::FieldSpec kLineFields[] = {
    {"tsl", "借货数量：", FieldKind::Quantity, "", 0, ui::NoMinus},
    {"tzj", "每天租金：", FieldKind::Money, "", 0, ui::NoMinus},
    {"tyj", "押金：", FieldKind::Money, "", 0, ui::NoMinus},
    {"comYhzh", "收款账户：", FieldKind::Combo},
};

class TF_Khjhgl_Sele : public LineScreen {
 public:
  TF_Khjhgl_Sele()
      : LineScreen({.screen = {.name = "F_Khjhgl_Sele",
                               .title = "借货商品明细",
                               .fields = kLineFields,
                               .commands = trading_parts::okCancel,
                               .focus = "tsl"},
                    .rules = rulesOf<lending::rules>}) {}
};

const ui::Registered<TF_Khjhgl> kRegistered{"F_Khjhgl"};
const ui::Registered<TF_Khjhgl_Add> kRegisteredAdd{"F_Khjhgl_Add"};
const ui::Registered<TF_Khjhgl_Sele> kRegisteredSele{"F_Khjhgl_Sele"};

}  // namespace khjhgl_detail
}  // namespace jxc
