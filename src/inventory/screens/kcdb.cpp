// 库存调拨: the screen of the stock transfer and its satellites: goods list, line dialog, spreadsheet.
#include "core/fillers.h"
#include "core/text.h"
#include "inventory/screens/inventory_parts.h"
#include "inventory/transfer.h"
#include "stock/screens/line_import_screen.h"
#include "stock/screens/line_screen.h"

namespace jxc {
namespace kcdb_detail {

using transfer::TransferDraft;
using ui::ColumnKind;
using ui::FieldKind;

// ---- the document ------------------------------------------------------------------------------------------------

constexpr ui::FieldSpec kFields[] = {
    {"comCk", "调出仓库：", FieldKind::Combo},
    {"comCk2", "调入仓库：", FieldKind::Combo},
    {"dateCg", "调拨日期：", FieldKind::Date},
    {"gldjh", "单据编号：", FieldKind::Text, "jxc_kcdbd.gl_djh", 0, ui::ReadOnly},
    {"comUser", "经办人：", FieldKind::Combo},
    {"tSptm", "商品条码：", FieldKind::Text, "jxc_goods.g_sptm"},
    {"tnote", "备注：", FieldKind::Text, "jxc_kcdbd.db_note", 0, ui::OffersRemarks},
    {"tkey", "查找：", FieldKind::Text, "", 50},
    {"comSort", "排序：", FieldKind::Combo},
};

// A sale price beside the cost tells what is earned.
constexpr auto kLines = inventory_parts::lineColumns<"db_", kSeesProfit>(
    std::array{ui::ColumnSpec{"db_sj", "售价", ColumnKind::Money, 11, {}, kSeesProfit}});
constexpr ui::ColumnSpec kWaiting[] = {
    {"gl_djh", "单据编号", ColumnKind::Text, 16},  {"db_dbrq", "调拨日期", ColumnKind::Date},
    {"ck_name", "调出仓库", ColumnKind::Text, 16}, {"into_name", "调入仓库", ColumnKind::Text, 16},
    {"u_name", "经办人", ColumnKind::Text, 10},    {"a_name", "操作员", ColumnKind::Text, 10},
    {"db_note", "备注", ColumnKind::Text, 24},
};
constexpr ui::GridSpec kGrids[] = {
    {"gridLines", "调拨商品", kLines, "扫描商品条码，或按F2添加商品"},
    {"gridWaiting", "待审核单据", kWaiting, "没有待审核的调拨单"},
    {"gridWaitingLines", "单据商品", kLines, "选择上面的单据，这里显示它的商品"},
};
constexpr auto kCommands = inventory_parts::renamed(inventory_parts::documentCommands, "btn_Dele", "btn_Dele2");

constexpr std::string_view kHeadForm[] = {"comCk comCk2 dateCg gldjh", "comUser tnote"};

constexpr std::string_view kOwn[] = {"comCk2"};

constexpr DocumentScreenSpec kDocument = inventory_parts::documentOf({
    .screen = {.name = "F_Kcdb",
               .title = "库存调拨",
               .fields = kFields,
               .grids = kGrids,
               .commands = kCommands,
               .focus = "tSptm"},
    .draftTitle = "库存调拨单",
    .waitingTitle = "待审核调拨单",
    .auditedList = "F_Kcdb_Djcx",
    .auditedTitle = "库存调拨查询",
    .deleteCommand = "btn_Dele2",
    .pickScreen = "F_Kcdb_Add",
    .lineScreen = "F_Kcdb_Sele",
    .importScreen = "F_Kcdb_Import",
    .make = {{"kcgl", 1}, u"库存调拨！"},
    .audit = {{"kcgl", 8}, u"库存调拨审核！"},
    .headForm = kHeadForm,
    .waitingButtons = "btnRCheck btnPreview btn_Check btn_Date btn_Dele2 btn_ChaKan btn_Prin |",
    .own = kOwn,
});

class TF_Kcdb : public DocumentScreenOver<TransferDraft> {
 public:
  TF_Kcdb() : DocumentScreenOver(kDocument, transfer::rules()) {}

 protected:
  void fillLists() override {
    DocumentScreenOver::fillLists();
    // A shop sends its goods to any other, also one whose operator sees only his own.
    comCk2.setItems(fillWarehouseCombo({}));
  }
  void showDraft() override {
    comCk2.setKey(draft().into);
    DocumentScreenOver::showDraft();
  }
  void collect() override {
    DocumentScreenOver::collect();
    draft().into = comCk2.key();
  }
  report::Report draftReport() override {
    report::Report report = DocumentScreenOver::draftReport();
    report.setText(u"ckOut", comCk.text());
    report.setText(u"ckIn", comCk2.text());
    return report;
  }

 private:
  ui::Field& comCk2 = field("comCk2");
};

// ---- goods list, one line ----------------------------------------------------------------------------------------

constexpr auto kStaging = inventory_parts::stagingColumns<kSeesProfit>();
constexpr auto kPickGrids = inventory_parts::pickGrids(kStaging);
class TF_Kcdb_Add : public GoodsPickScreen {
 public:
  TF_Kcdb_Add()
      : GoodsPickScreen(inventory_parts::pickOf("F_Kcdb_Add", "库存调拨 - 选择商品", kPickGrids,
                                                rulesOf<transfer::rules>, "F_Kcdb_Sele")) {}
};

constexpr ui::FieldSpec kLineFields[] = {
    {"tsl", "调拨数量：", FieldKind::Quantity, "", 0, ui::NoMinus},
    {"tdj", "单价：", FieldKind::Money},
    {"tzje", "金额：", FieldKind::Money},
};
constexpr LineScreenSpec kLine = {.screen = {.name = "F_Kcdb_Sele",
                                             .title = "库存调拨商品明细",
                                             .fields = kLineFields,
                                             .commands = trading_parts::okCancel,
                                             .focus = "tsl"},
                                  .rules = rulesOf<transfer::rules>,
                                  .price = "tdj"};

class TF_Kcdb_Sele : public LineScreen {
 public:
  TF_Kcdb_Sele() : LineScreen(kLine) {}
};

const ui::Registered<TF_Kcdb> kRegistered{"F_Kcdb"};
const ui::Registered<TF_Kcdb_Add> kRegisteredAdd{"F_Kcdb_Add"};
const ui::Registered<TF_Kcdb_Sele> kRegisteredSele{"F_Kcdb_Sele"};
const RegisteredImport kRegisteredImport{"F_Kcdb_Import", rulesOf<transfer::rules>};

}  // namespace kcdb_detail
}  // namespace jxc
