// 库存核对: goods whose balance is not what their ledger says, and the two repairs that mend it.
#include "masterdata/screens/goods_columns.h"
#include "stock/screens/goods_enquiry.h"
#include "stock/screens/repair_screen.h"
#include "stock/stock_sync.h"
#include "ui/joined_tables.h"

namespace jxc {
namespace kccx_hd_detail {

using ui::Asks;
using ui::ColumnKind;
using ui::ColumnSpec;

constexpr Right kChecks{"kcgl", 16};
constexpr ui::Criterion kCriteria[] = {{Asks::Warehouse, "comCk", "仓库："}, {Asks::Key, "tkey", "商品信息："}};
constexpr ColumnSpec pieces(std::string_view field, std::string_view caption) {
  return {field, caption, ColumnKind::Quantity, 10, {.sum = true}};
}
constexpr auto kColumns = ui::joinedTables(
    std::array{ColumnSpec{"ck_name", "仓库", ColumnKind::Text, 14}}, goodsNames,
    std::array{pieces("kc_sl", "当前库存"), pieces("kc_zsl", "帐面库存"), pieces("gl_kc", "结存数量"),
               pieces("cysl", "相差"),
               ColumnSpec{"gl_kczje", "结存金额", ColumnKind::Total, 0, {.sum = true}, kSeesStockCost}});
constexpr ui::EnquiryView kViews[] = {{.grid = {"gridHd", "库存核对", kColumns, "库存和结存一致", "rowkey"},
                                       .source = stockDifferences,
                                       .leads = {.command = "btn_Ckmx"}}};
constexpr ui::EnquiryCommand kCommands[] = {
    {.name = "btn_Cxjs", .caption = "重新计算", .key = "F6", .right = kChecks, .opens = "F_Kccx_Js"},
    {.name = "btnKchd", .caption = "库存同步", .key = "F7", .right = kChecks},
    {.name = "btn_Ckmx", .caption = "查看明细", .key = "F8"}};
constexpr ui::EnquiryTab kTabs[] = {{.criteria = kCriteria, .views = kViews, .commands = kCommands}};
constexpr ui::EnquirySpec kEnquiry = {
    .name = "F_kccx_Hd",
    .title = "库存核对",
    .tabs = kTabs,
    .focus = "tkey",
    .explanation = "列出当前库存与库存流水最后一行的结存数量不一致的商品。先重新计算，仍不一致的再同步。"};

struct TF_kccx_Hd : ui::EnquiryScreen {
  TF_kccx_Hd() : EnquiryScreen(kEnquiry) {
    on(command("btnKchd"), [this] { sync(); });
    on(command("btn_Ckmx"), [this] {
      if (const auto row = shown().current()) showMovements(*row, row->text("ck_sn"));
    });
  }

 private:
  void sync() {
    shown().waitLoaded();
    RowSet places({"g_sn", "ck_sn"});
    for (const Row& row : shown().shownRows()) {
      places.addText(row.text("g_sn").toStdString());
      places.addText(row.text("ck_sn").toStdString());
    }
    if (places.isEmpty()) return prompt().notice(QStringLiteral("没有需要同步的商品！"));
    // Also what was stopped has changed some of them.
    syncListed(places);
    rowsChanged();
  }
};
const ui::RegisteredEnquiry<TF_kccx_Hd> kRegistered{kEnquiry};

}  // namespace kccx_hd_detail
}  // namespace jxc
