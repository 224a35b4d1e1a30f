// 进销存统计: what each goods had, what came and went in a period and what it had at its end; behind a sum its lines,
// behind a line its document.
#include "masterdata/goods_classes.h"
#include "statistics/purchase_sale_stock.h"
#include "statistics/screens/movement_columns.h"
#include "stock/document_list.h"
#include "stock/screens/repair_screen.h"
#include "ui/enquiry_screen.h"

#include <array>

namespace jxc {
namespace jxctj_detail {

using namespace movement_columns;
using ui::Asks;

// The opening rows are those of whatever day.
constexpr std::string_view kOfPeriod = "gridHz gridMx", kNothing = "该时间段内没有进出库的商品";
constexpr ui::Criterion kCriteria[] = {
    {.asks = Asks::From, .name = "tdate11", .label = "日期：", .views = kOfPeriod},
    {.asks = Asks::To, .name = "tdate12", .label = "至", .views = kOfPeriod},
    {Asks::Key, "tkey", "商品信息："},
    {Asks::GoodsClass, "tsplb", "商品类别：", goodsClassItems},
    {Asks::Warehouse, "comCk", "仓库："},
    {Asks::Exact, "chkJq", "精确查询"},
    // Without the right to see sale prices, sales are told at cost in any case.
    {.asks = Asks::Box,
     .name = "chkCbj",
     .label = "按成本价统计",
     .box = kAtCost,
     .views = kOfPeriod,
     .right = kSeesPrice},
    {.asks = Asks::Box, .name = "chkBq", .label = "统计本期", .box = kMovedOnly, .views = "gridHz"},
    {.asks = Asks::Box, .name = "chkZero", .label = "数量为0不显示", .box = kHidesZeroOpening, .views = "gridQc"},
};

// Figures are what is looked for: they stand on a small display, what else tells goods apart beside them.
constexpr std::array kNumber{ColumnSpec{"g_sn", "商品编号", ColumnKind::Text, 8}};
constexpr std::array kName{ColumnSpec{"g_name", "商品名称", ColumnKind::Text, 18}};
constexpr std::array kGoods{ColumnSpec{"gg_name", "规格型号", ColumnKind::Text, 7}, hidden("color_name", "颜色"),
                            ColumnSpec{"dw_name", "单位", ColumnKind::Text, 3}, hidden("gc_name", "类别")};
constexpr auto kSums =
    ui::joinedTables(kNumber, kName,
                     std::array{pieces("gl_kc", "上期结存"), yuan("gl_kczje", "上期金额"), pieces("rksl", "本期入库"),
                                yuan("rkzje", "入库金额"), pieces("cksl", "本期出库"), yuan("ckzje", "出库金额"),
                                pieces("glkc", "期末存量"), yuan("glkczje", "期末金额")},
                     kGoods);
constexpr auto kLines = ui::joinedTables(when, document, kName, in(), out(), std::array{hidden("ghs_name", "往来单位")},
                                         kNumber, kGoods, where);
constexpr auto kOpening = ui::joinedTables(when, kNumber, kName, kGoods, in(), where);

bool cancelOf(const Row& line, Prompt& prompt) {
  const QString number = line.text("gl_djh");
  if (findFamily(number)) return cancelListed(number, prompt);
  prompt.notice(QStringLiteral("该记录没有可以取消审核的单据！"));
  return false;
}

/// Costs from the day of the line on, in its warehouse.
bool repairFrom(const Row& line, Prompt&) {
  constexpr qsizetype kDay = 10;
  return ui::screenAs<LedgerRepairScreen>("F_Jxctj_Tb").repairFrom(line.text("gl_kdrq").left(kDay), line.text("ck_sn"));
}

constexpr ui::EnquiryView kViews[] = {
    {.grid = {"gridHz", "汇总表", kSums, kNothing, "g_sn"},
     .source = stockSummary,
     .mode = {"rHzb", "汇总表"},
     .chart = {.label = "g_name", .measure = "cksl"},
     .leads = {"gridMx", [](Criteria& criteria, const Row& row) { criteria.goods = row.text("g_sn"); }, "g_name"},
     .paper = "jxctjhz"},
    {.grid = {"gridMx", "明细表", kLines, kNothing},
     .source = stockMovements,
     .mode = {"rMxb", "明细表"},
     .leads = {.document = "gl_djh"},
     .paper = "jxctjmx",
     .cellLook = sideOf},
    {.grid = {"gridQc", "期初建账信息", kOpening, "没有期初建账的商品"},
     .source = openingStock,
     .mode = {"chkQcjz", "查看期初建账信息"}}};
constexpr ui::EnquiryCommand kCommands[] = {
    {.name = "btn_ChaKan", .caption = "查看单据", .key = "F8", .views = "gridMx"},
    {.name = "btn_UnChk",
     .caption = "取消审核",
     .key = "F6",
     .views = "gridMx",
     .elsewhere = "取消审核操作只能在“明细表”进行。",
     .rule = cancelOf,
     .preview = {"btn_Preview", "取消审核单据", "gl_djh"}},
    {.name = "btn_Jgtb",
     .caption = "价格核对",
     .key = "F7",
     .views = "gridMx",
     .elsewhere = "价格同步作只能在“明细表”进行。",
     .rule = repairFrom}};
constexpr ui::EnquiryTab kTabs[] = {
    {.criteria = kCriteria, .views = kViews, .commands = kCommands, .search = "btnSearch", .period = "btnDate"}};
constexpr ui::EnquirySpec kEnquiry = {.name = "F_Jxctj", .title = "进销存统计", .tabs = kTabs, .focus = "tkey"};

struct TF_Jxctj : ui::EnquiryScreen {
  TF_Jxctj() : EnquiryScreen(kEnquiry) {
    on(command("btn_ChaKan"), [this] { follow(); });
  }
};
const ui::RegisteredEnquiry<TF_Jxctj> kRegistered{kEnquiry};

}  // namespace jxctj_detail
}  // namespace jxc
