// 库存盘点: the screen of the count and its satellites: goods list, line dialog, spreadsheet.
#include "core/session.h"
#include "core/station_options.h"
#include "core/text.h"
#include "inventory/screens/inventory_parts.h"
#include "inventory/screens/kcpd_goods.h"
#include "inventory/stocktaking.h"
#include "stock/screens/line_import_screen.h"
#include "stock/screens/line_screen.h"
#include "stock/stocktake.h"
#include "ui/grid_output.h"

namespace jxc {
namespace kcpd_detail {

using ui::ColumnKind;
using ui::FieldKind;

// ---- the document ------------------------------------------------------------------------------------------------

constexpr ui::FieldSpec kFields[] = {
    {"comCk", "盘点仓库：", FieldKind::Combo},
    {"dateCg", "盘点日期：", FieldKind::Date},
    {"gldjh", "单据编号：", FieldKind::Text, "jxc_kcpd.gl_djh", 0, ui::ReadOnly},
    {"comUser", "经办人：", FieldKind::Combo},
    {"tSptm", "商品条码：", FieldKind::Text, "", 48},
    {"tnote", "备注：", FieldKind::Text, "jxc_kcpd.pd_note", 0, ui::OffersRemarks},
    {"chkMp", "盲盘", FieldKind::Check},
    {"tpdsl", "盘点数量合计：", FieldKind::Quantity, "", 0, ui::ReadOnly},
    {"tkcsl", "库存数量合计：", FieldKind::Quantity, "", 0, ui::ReadOnly},
    {"tkey", "查找：", FieldKind::Text, "", 50},
    {"comSort", "排序：", FieldKind::Combo},
};

constexpr auto kLines = ui::joinedTables(
    inventory_parts::goodsOfLine,
    std::array{ui::ColumnSpec{"kc_sl", "库存数量", ColumnKind::Quantity, 9, {.sum = true}},
               ui::ColumnSpec{"kc_zsl", "帐面库存", ColumnKind::Quantity, 9},
               ui::ColumnSpec{"pd_sl", "盘点数量", ColumnKind::Quantity, 9, {.sum = true, .editable = true}},
               ui::ColumnSpec{"cysl", "盈亏数量", ColumnKind::Quantity, 9, {.sum = true}},
               ui::ColumnSpec{"pd_dj", "成本价", ColumnKind::Money, 10, {}, kSeesCost},
               ui::ColumnSpec{"pd_zje", "盈亏金额", ColumnKind::Money, 11, {.sum = true}, kSeesCost}},
    inventory_parts::barcodeOfLine);
/// What a blind count does not show while it is made.
constexpr std::string_view kBook[] = {"kc_sl", "kc_zsl", "cysl", "pd_zje"};

constexpr ui::ColumnSpec kWaiting[] = {
    {"gl_djh", "单据编号", ColumnKind::Text, 16},
    {"pd_rq", "盘点日期", ColumnKind::Date},
    {"ck_name", "盘点仓库", ColumnKind::Text, 16},
    {"pd_sl", "盘点数量", ColumnKind::Quantity, 10, {.sum = true}},
    {"kc_sl", "库存数量", ColumnKind::Quantity, 10, {.sum = true}},
    {"u_name", "经办人", ColumnKind::Text, 10},
    {"a_name", "操作员", ColumnKind::Text, 10},
    {"pd_note", "备注", ColumnKind::Text, 24},
};
constexpr ui::GridSpec kGrids[] = {
    {"gridLines", "盘点商品", kLines, "扫描商品条码（12*条码为12件），或按F2添加商品"},
    {"gridWaiting", "待审核单据", kWaiting, "没有待审核的盘点单"},
    {"gridWaitingLines", "单据商品", kLines, "选择上面的单据，这里显示它的商品，差额大的在前"},
};

constexpr auto kCommands = ui::joinedTables(
    inventory_parts::documentCommands,
    std::array{ui::CommandSpec{"btnWp", "未盘商品", "Ctrl+U", "有库存、还没有盘点的商品：按0盘点或按帐面盘点"},
               ui::CommandSpec{"btnPdb", "盘点表", "Ctrl+T", "打印空白盘点表"},
               ui::CommandSpec{"btnTab2Wp", "未盘商品", "Ctrl+U", "有库存、还没有盘点的商品：按0盘点或按帐面盘点"},
               ui::CommandSpec{"btnHb", "合并单据", "Ctrl+H", "并入同一仓库、同一日期的另一张盘点单"}});

constexpr std::string_view kHeadForm[] = {"comCk dateCg gldjh", "comUser tnote"};
constexpr std::string_view kFootForm[] = {"tpdsl tkcsl"};
constexpr std::string_view kOwn[] = {"chkMp", "tpdsl", "tkcsl", "btnWp", "btnPdb", "btnTab2Wp", "btnHb"};

constexpr DocumentScreenSpec makeDocument() {
  DocumentScreenSpec spec = inventory_parts::documentOf({
      .screen = {.name = "F_Kcpd",
                 .title = "库存盘点",
                 .fields = kFields,
                 .grids = kGrids,
                 .commands = kCommands,
                 .focus = "tSptm"},
      .draftTitle = "库存盘点单",
      .waitingTitle = "待审核盘点单",
      .auditedList = "F_Kcpd_Djcx",
      .auditedTitle = "库存盘点查询",
      .showsScanned = true,
      .pickScreen = "F_Kcpd_Add",
      .lineScreen = "F_Kcpd_Sele",
      .importScreen = "F_Kcpd_Import",
      .make = {{"kcgl", 2}, u"库存盘点！"},
      .audit = {{"kcgl", 9}, u"库存盘点审核！"},
      .headForm = kHeadForm,
      .footForm = kFootForm,
      .waitingButtons = "btnRCheck btnPreview btn_Check btn_Date btnHb btn_Dele btn_ChaKan btn_Prin |",
      .own = kOwn,
  });
  spec.scanRow = "tSptm btnPanel chkMp | btnAddOld btnJpgd btnWp btnModi btnDel btnImport";
  spec.saveRow = "btnPrin btnPdb | btnOK btnCancel";
  spec.lineButtons = "btnAdd btnTab2Jpgd btnTab2Wp btnTab2Import btnTab2Modi btnDele |";
  return spec;
}
constexpr DocumentScreenSpec kDocument = makeDocument();

class TF_Kcpd : public DocumentScreenOver<DocumentDraft> {
 public:
  TF_Kcpd() : DocumentScreenOver(kDocument, stocktaking::rules()) {
    chkMp.onChanged([this] {
      if (chkMp.isChecked() != stationOption(stocktaking::kBlind))
        setStationOption(stocktaking::kBlind, chkMp.isChecked());
      showBook();
    });
    on(command("btnWp"), [this] {
      if (!settleDate() || !hasWarehouse()) return;
      setNumber(handleUncounted(draftPlace(), Lines::Draft).number);
      reloadLines(gridLines.currentId());
    });
    on(command("btnPdb"), [this] {
      if (hasWarehouse()) showCountSheet({comCk.text(), comCk.key()});
    });
    on(command("btnTab2Wp"), [this] {
      const LinePlace place = waitingPlace();
      if (place.number.isEmpty() || !mayDo(kDocument.addWaiting)) return;
      handleUncounted(place, Lines::Waiting);
      refreshWaiting(place.number);
    });
    on(command("btnHb"), [this] { joinAnother(); });
  }

 protected:
  void showByParameters() override {
    DocumentScreenOver::showByParameters();
    chkMp.setChecked(stationOption(stocktaking::kBlind));
    showBook();
  }
  void draftInSight(bool isIn) override {
    DocumentScreenOver::draftInSight(isIn);
    command("btnPdb").setVisible(isIn);
  }
  void linesChanged() override {
    DocumentScreenOver::linesChanged();
    tpdsl.setNumber(gridLines.sum("pd_sl"));
    tkcsl.setNumber(gridLines.sum("kc_sl"));
  }
  void auditWaitingList(const std::vector<ListedDocument>& documents, const AuditProgress& progress) override {
    stock_count::auditAll(documents, prompt(), progress);
  }
  /// A blind count as the list that is counted by: its own paper would tell what the screen does not.
  void printDraft() override {
    if (!chkMp.isChecked() || gridLines.isEmpty()) return DocumentScreenOver::printDraft();
    if (settleDate()) ui::printGrid(gridLines);
  }

 private:
  /// A draft that came back has none until it is chosen.
  bool hasWarehouse() { return !refused({{comCk.key().isEmpty(), u"请选择仓库！"_qs, Subject::Warehouse}}, prompt()); }
  void showBook() {
    const bool blind = chkMp.isChecked();
    for (const std::string_view column : kBook)
      gridLines.setColumnAllowed(column, !blind && (column != "pd_zje" || session().canSeeCost));
    tkcsl.setVisible(!blind);
  }
  void joinAnother() {
    const QString number = waitingNumber();
    if (number.isEmpty() || !mayDo(kDocument.addWaiting)) return;
    const QString other = chooseJoined(number, prompt());
    if (!other.isEmpty()) stocktaking::join(number, other, prompt());
    refreshWaiting(number);
  }

  ui::Field& chkMp = field("chkMp");
  ui::Field& tpdsl = field("tpdsl");
  ui::Field& tkcsl = field("tkcsl");
};

// ---- goods list, one line ----------------------------------------------------------------------------------------

constexpr auto kStaging = ui::joinedTables(
    std::array{inventory_parts::goodsOfLine[0], inventory_parts::goodsOfLine[1], inventory_parts::goodsOfLine[2],
               inventory_parts::goodsOfLine[4]},
    std::array{ui::ColumnSpec{"ts_sl", "盘点数量", ColumnKind::Quantity, 9, {.sum = true, .editable = true}}});
constexpr auto kPickGrids = inventory_parts::pickGrids(kStaging);
class TF_Kcpd_Add : public GoodsPickScreen {
 public:
  TF_Kcpd_Add()
      : GoodsPickScreen(inventory_parts::pickOf("F_Kcpd_Add", "库存盘点 - 选择商品", kPickGrids,
                                                rulesOf<stocktaking::rules>, "F_Kcpd_Sele")) {}
};

constexpr ui::FieldSpec kLineFields[] = {
    {"tsl", "盘点数量：", FieldKind::Quantity, "", 0, ui::NoMinus},
    {"tkcsl", "库存数量：", FieldKind::Quantity, "", 0, ui::ReadOnly},
    {"tkczsl", "帐面库存：", FieldKind::Quantity, "", 0, ui::ReadOnly},
    {"tdj", "成本价：", FieldKind::Money},
    {"tzje", "盈亏金额：", FieldKind::Money},
};
constexpr LineScreenSpec kLine = {.screen = {.name = "F_Kcpd_Sele",
                                             .title = "库存盘点商品明细",
                                             .fields = kLineFields,
                                             .commands = trading_parts::okCancel,
                                             .focus = "tsl"},
                                  .rules = rulesOf<stocktaking::rules>,
                                  .price = "tdj"};

class TF_Kcpd_Sele : public LineScreen {
 public:
  TF_Kcpd_Sele() : LineScreen(kLine) {}
};

const ui::Registered<TF_Kcpd> kRegistered{"F_Kcpd"};
const ui::Registered<TF_Kcpd_Add> kRegisteredAdd{"F_Kcpd_Add"};
const ui::Registered<TF_Kcpd_Sele> kRegisteredSele{"F_Kcpd_Sele"};
const RegisteredImport kRegisteredImport{"F_Kcpd_Import", rulesOf<stocktaking::rules>};

}  // namespace kcpd_detail
}  // namespace jxc
