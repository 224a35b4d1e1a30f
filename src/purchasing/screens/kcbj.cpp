// 库存报警查询: goods below their minimum with their movements, and goods that do not sell; what is short becomes a
// receipt.
#include "core/text.h"
#include "masterdata/goods_classes.h"
#include "masterdata/screens/goods_columns.h"
#include "purchasing/replenishing.h"
#include "purchasing/screens/kcbj_modi.h"
#include "statistics/purchase_sale_stock.h"
#include "statistics/screens/movement_columns.h"
#include "stock/screens/goods_enquiry.h"
#include "stock/screens/trading_screen.h"
#include "stock/stock_alerts.h"

namespace jxc {
namespace kcbj_detail {

using ui::Asks;
using ui::ColumnKind;
using ui::ColumnSpec;

constexpr ui::Criterion kAlertInputs[] = {
    {Asks::Warehouse, "comCk", "仓库："},
    {Asks::Key, "tkey", "商品信息："},
    {.asks = Asks::From, .name = "tdate1", .label = "进销日期：", .ofBelow = true},
    {.asks = Asks::To, .name = "tdate2", .label = "至", .ofBelow = true}};
constexpr ui::Criterion kSlowInputs[] = {
    {.asks = Asks::Amount, .name = "tts2", .label = "未售天数：", .amount = 90, .whole = true},
    {Asks::Warehouse, "comCk2", "仓库："},
    {Asks::GoodsClass, "tsplb2", "商品类别：", goodsClassItems},
    {Asks::Key, "tkey2", "商品信息："}};

constexpr std::array kPowers{ColumnSpec{"g_qgd", "屈光度", ColumnKind::Power, 8},
                             ColumnSpec{"g_sgd", "散光度", ColumnKind::Power, 8}};
constexpr ColumnSpec price(std::string_view field, std::string_view caption) {
  return {.field = field, .caption = caption, .kind = ColumnKind::Money, .right = kSeesStockCost};
}
constexpr auto kAlerts = ui::joinedTables(
    goodsNames, kPowers,
    std::array{ColumnSpec{"kc", "库存数量", ColumnKind::Quantity}, ColumnSpec{"g_zdkc", "库存下限", ColumnKind::Number},
               ColumnSpec{"qs", "缺少数量", ColumnKind::Quantity, 0, {.sum = true}}, price("g_scjj", "上次进价"),
               price("g_jj", "预设进价"), ColumnSpec{"g_sccs", "商品产地"}, goodsBarcode});
constexpr auto kMovements = movement_columns::ofOneGoods(kSeesStockCost);
constexpr auto kSlow = ui::joinedTables(
    goodsNames, kPowers,
    std::array{ColumnSpec{"kcsl", "库存数量", ColumnKind::Quantity, 0, {.sum = true}},
               ColumnSpec{"kczje", "库存总值", ColumnKind::Total, 0, {.sum = true}, kSeesStockCost},
               ColumnSpec{"zhxs", "最后销售", ColumnKind::Date}, ColumnSpec{"ts", "未售天数", ColumnKind::Number},
               ColumnSpec{"zhjh", "最后进货", ColumnKind::Date}, goodsBarcode});

constexpr ui::RowsBelow kBelow = {
    .grid = {"gridMx", "进货销售明细", kMovements, "该时间段内没有进出库"},
    .source = stockMovements,
    .narrow =
        [](Criteria& criteria, const Row& row) {
          criteria.goods = row.text("g_sn");
          criteria.key.clear();
        },
    .document = "gl_djh",
    .says = [](const Row& row) { return u"进货销售明细："_qs + row.text("g_sn") + u' ' + row.text("g_name"); }};
constexpr ui::EnquiryView kAlertViews[] = {{.grid = {"gridBj", "库存报警", kAlerts, "没有低于库存下限的商品"},
                                            .source = stockAlerts,
                                            .chart = {.label = "g_name", .measure = "qs"},
                                            .below = &kBelow}};
constexpr ui::EnquiryView kSlowViews[] = {{.grid = {"gridZx", "滞销商品", kSlow, "没有滞销的商品"},
                                           .source = slowSellers,
                                           .chart = {.label = "g_name", .measure = "kcsl"},
                                           .leads = {.command = "btn_Ckmx"}}};
constexpr ui::EnquiryCommand kCommands[] = {
    {.name = "btnModi1", .caption = "修改数量", .key = "F3", .views = "gridBj", .rule = changeMinimum},
    {.name = "btn_Pc", .caption = "库存批次", .key = "F4", .views = "gridBj"},
    {.name = "btn_Cgjh", .caption = "生成采购单", .key = "F6", .right = {"cggl", 1}, .views = "gridBj"},
    {.name = "btn_Ckmx", .caption = "查看明细", .key = "F8"}};
constexpr ui::EnquiryTab kTabs[] = {
    {.name = "bjTab1",
     .caption = "库存报警",
     .criteria = kAlertInputs,
     .views = kAlertViews,
     .first = ui::FirstPeriod::YearToToday},
    {.name = "bjTab2", .caption = "滞销商品", .criteria = kSlowInputs, .views = kSlowViews, .search = "btnSearch2"}};
constexpr ui::EnquirySpec kEnquiry = {
    .name = "F_Kcbj", .title = "库存报警查询", .tabs = kTabs, .commands = kCommands, .focus = "tkey"};

struct TF_Kcbj : ui::EnquiryScreen {
  TF_Kcbj() : EnquiryScreen(kEnquiry) {
    grid("gridBj").setMultiSelect(true);
    on(command("btn_Pc"), [this] {
      if (const auto row = shown().current()) showBatches(*row, criteria().warehouse);
    });
    on(command("btn_Cgjh"), [this] {
      std::vector<replenishing::Wanted> wanted;
      for (const Row& row : grid("gridBj").selectedRows())
        wanted.push_back({row.text("g_sn"), row.number("qs")});
      const QString warehouse = criteria().warehouse;
      if (replenishing::draftReceipt(wanted, prompt()) > 0) ui::screenAs<TradingScreen>("F_Cgjh").openIn(warehouse);
    });
    on(command("btn_Ckmx"), [this] {
      if (const auto row = shown().current()) showMovements(*row, criteria().warehouse);
    });
  }
};
const ui::RegisteredEnquiry<TF_Kcbj> kRegistered{kEnquiry};

}  // namespace kcbj_detail
}  // namespace jxc
