// 分批收发屏幕: putaway and issue: a new document, those that wait for audit, the sources that still have something
// open, and audited ones. Both are described from one table of parts.
#pragma once

#include "masterdata/screens/goods_columns.h"
#include "masterdata/screens/partner_picker.h"
#include "masterdata/screens/partner_text.h"
#include "stock/partial_rules.h"
#include "stock/screens/document_screen.h"
#include "stock/screens/goods_pick_screen.h"
#include "stock/screens/line_screen.h"
#include "stock/screens/modi_date.h"
#include "stock/screens/partner_document_screen.h"
#include "stock/screens/trading_parts.h"
#include "ui/joined_tables.h"

#include <array>

namespace jxc {

struct PartialScreenSpec {
  DocumentScreenSpec document;
  const partial::PartialRules& (*rules)();
  PartnerInput partner;
};

class PartialScreen : public PartnerDocumentScreen<DraftOfPartner, partial::PartialRules> {
 public:
  explicit PartialScreen(const PartialScreenSpec& spec);

  ui::Grid& gridSources = grid("gridSources");
  ui::Grid& gridOpen = grid("gridOpen");

 protected:
  void recallDraft() override { rules().followLines(draft()); }
  void linesChanged() override;
  void showOpen() override;
  void addOld() override;

 private:
  void showOpenLines();
  /// The current source as a whole into the first panel.
  void takeWhole();
  /// What is open of it never comes, or never goes.
  void closeRest();
  QString currentSource() const { return gridSources.currentText("djh"); }

  const DocumentScreenSpec::Guarded make_;
};

namespace partial_parts {

using ui::ColumnKind;
using ui::ColumnSpec;
using ui::FieldKind;
using ui::FieldSpec;

/// The rows of a table but those of these names.
template <std::size_t N, std::size_t M>
constexpr std::array<ui::CommandSpec, N - M> without(const std::array<ui::CommandSpec, N>& commands,
                                                     const std::array<std::string_view, M>& names) {
  std::array<ui::CommandSpec, N - M> left{};
  std::size_t at = 0;
  for (const ui::CommandSpec& each : commands) {
    bool isNamed = false;
    for (const std::string_view name : names)
      isNamed = isNamed || each.name == name;
    if (!isNamed) left[at++] = each;
  }
  return left;
}

/// The sources that the picking screen offers, oldest first.
template <auto Rules>
std::vector<ListItem> sourcesOf(const LinePlace& place) {
  std::vector<ListItem> items{{QStringLiteral("所有单据"), QString()}};
  for (const Row row : openSelect(
           partial::waitingSources(Rules().movement(), {.partner = place.partner, .warehouse = place.warehouse})))
    items.push_back({row.text("djh") + u'　' + row.text("rq").left(10), row.text("djh")});
  return items;
}

/// The screens of a kind by what it is called: the document's ("F_Cgrk"), its tables ("rk": jxc_rkd, rk_sl), the input
/// of its number ("jsn"), the column that names its source ("j_sn"), and in words ("入库", of a "采购").
template <PartnerType Side, const partial::PartialRules& (*Rules)(), FixedText Called, FixedText Kind, FixedText Number,
          FixedText Source, FixedText Doing, FixedText SourceWord>
struct Parts {
  static constexpr bool buys = Side == PartnerType::Supplier;
  static constexpr std::string_view partner = buys ? "tghs" : "tkh";
  static constexpr std::string_view partnerName = partnerColumn<Side, "name">;
  static constexpr auto lines = ui::joinedTables(
      goodsNames,
      std::array{
          ColumnSpec{
              joined<Kind, "_sl">, joined<Doing, "数量">, ColumnKind::Quantity, 9, {.sum = true, .editable = true}},
          ColumnSpec{joined<Source>, joined<SourceWord, "单号">, ColumnKind::Text, 15}, goodsBarcode});
  static constexpr std::array waiting{
      ColumnSpec{"gl_djh", "单据编号", ColumnKind::Text, 16},
      ColumnSpec{joined<Kind, "_rq">, joined<Doing, "日期">, ColumnKind::Date},
      ColumnSpec{partnerName, joined<PartnerText<Side>::noun>, ColumnKind::Text, 22},
      ColumnSpec{"ck_name", "仓库", ColumnKind::Text, 12},
      ColumnSpec{joined<Kind, "_zsl">, joined<Doing, "数量">, ColumnKind::Quantity, 10, {.sum = true}},
      ColumnSpec{"u_name", "经办人", ColumnKind::Text, 10},
      ColumnSpec{"a_name", "操作员", ColumnKind::Text, 10},
      ColumnSpec{joined<Kind, "_note">, "备注", ColumnKind::Text, 22}};
  static constexpr std::array sources{
      ColumnSpec{"djh", joined<SourceWord, "单号">, ColumnKind::Text, 16},
      ColumnSpec{"rq", joined<SourceWord, "日期">, ColumnKind::Date},
      ColumnSpec{"partner_name", joined<PartnerText<Side>::noun>, ColumnKind::Text, 22},
      ColumnSpec{"ck_name", "仓库", ColumnKind::Text, 12},
      ColumnSpec{"openlines", "商品种数", ColumnKind::Number, 8, {.sum = true}},
      ColumnSpec{"opensl", joined<"未", Doing, "数量">, ColumnKind::Quantity, 10, {.sum = true}},
      ColumnSpec{"u_name", "经办人", ColumnKind::Text, 10},
      ColumnSpec{"dnote", "备注", ColumnKind::Text, 22}};
  static constexpr auto openFigures =
      std::array{ColumnSpec{"sl", joined<SourceWord, "数量">, ColumnKind::Quantity, 9, {.sum = true}},
                 ColumnSpec{"movedsl", joined<"已", Doing>, ColumnKind::Quantity, 9, {.sum = true}},
                 ColumnSpec{"opensl", joined<"未", Doing>, ColumnKind::Quantity, 9, {.sum = true}},
                 ColumnSpec{"kc_sl", "库存数量", ColumnKind::Quantity, 9}};
  static constexpr auto open = ui::joinedTables(goodsNames, openFigures, std::array{goodsBarcode});
  static constexpr std::array fields{
      FieldSpec{partner, joined<PartnerText<Side>::noun, "：">, FieldKind::Picker},
      FieldSpec{"dateCg", joined<Doing, "日期：">, FieldKind::Date},
      FieldSpec{joined<Number>, "单据编号：", FieldKind::Text, joined<"jxc_", Kind, "d.gl_djh">, 0, ui::ReadOnly},
      FieldSpec{"comCk", "仓库：", FieldKind::Combo},
      FieldSpec{"comUser", "经办人：", FieldKind::Combo},
      FieldSpec{"tSptm", "商品条码：", FieldKind::Text, "jxc_goods.g_sptm"},
      FieldSpec{"tnote", "备注：", FieldKind::Text, joined<"jxc_", Kind, "d.", Kind, "_note">, 0, ui::OffersRemarks},
      FieldSpec{"tkey", "查找：", FieldKind::Text, "", 50},
      FieldSpec{"comSort", "排序：", FieldKind::Combo},
      FieldSpec{"tOpenKey", "查找：", FieldKind::Text, "", 50}};
  static constexpr std::string_view headForm[] = {buys ? joined<"tghs dateCg ", Number> : joined<"tkh dateCg ", Number>,
                                                  "comCk comUser tnote"};
  static constexpr std::array documentGrids{
      ui::GridSpec{"gridLines", joined<Doing, "商品">, lines, "扫描商品条码，或按F2从未完成的单据中添加商品"},
      ui::GridSpec{"gridWaiting", "待审核单据", waiting, joined<"没有待审核的", Doing, "单">},
      ui::GridSpec{"gridWaitingLines", "单据商品", lines, "选择上面的单据，这里显示它的商品"},
      ui::GridSpec{"gridSources", joined<"待", Doing, "单据">, sources, joined<"没有待", Doing, "的单据">},
      ui::GridSpec{"gridOpen", joined<"待", Doing, "商品">, open, "选择上面的单据，这里显示它还没有完成的商品"}};

  static constexpr auto commands = ui::joinedTables(
      std::array{ui::CommandSpec{"btnPanel", "条码选项"}, ui::CommandSpec{"btnAddOld", "添加商品", "F2"},
                 ui::CommandSpec{"btnRChk", "审核", "F6", "审核当前单据"},
                 ui::CommandSpec{"btnPreview", "预览影响", "F9", "列出审核后库存的变化，不改动任何数据"},
                 ui::CommandSpec{"btn_Date", "更改日期", "Ctrl+E"}, ui::CommandSpec{"btnOpenSearch", "查询", "F2"},
                 ui::CommandSpec{"btn_Zdrk4", joined<"整单", Doing>, "F6",
                                 joined<"当前单据所有未", Doing, "的商品，成为一张新的", Doing, "单">},
                 ui::CommandSpec{"btn_Qxck", joined<"取消", Doing>, "Ctrl+Del",
                                 joined<"当前单据未", Doing, "的商品不再", Doing, "，自动生成退货单">},
                 ui::CommandSpec{"btn_Ckyd", "查看原单", "F8"},
                 ui::CommandSpec{"btn_Jhd", "打印拣货单", "Ctrl+P", "打印当前单据还没有完成的商品"}},
      without(std::to_array(trading_parts::commonCommands),
              std::array<std::string_view, 3>{"btnJpgd", "btnTab2Jpgd", "btnTab2Import"}));

  // ---- the picking screen, one line
  static constexpr std::array pickFields{FieldSpec{"tkey", "查找：", FieldKind::Text, "", 50},
                                         FieldSpec{"comLb", joined<SourceWord, "单：">, FieldKind::Combo},
                                         FieldSpec{"tsl", "默认添加数量：", FieldKind::Quantity, "", 0, ui::NoMinus}};
  static constexpr auto openToPick =
      ui::joinedTables(std::array{ColumnSpec{"djh", joined<SourceWord, "单号">, ColumnKind::Text, 15},
                                  ColumnSpec{"rq", joined<SourceWord, "日期">, ColumnKind::Date}},
                       goodsNames, openFigures, std::array{ColumnSpec{"g_sptm", "商品条码", ColumnKind::Text, 14}});
  static constexpr auto staged = ui::joinedTables(
      goodsNames,
      std::array{ColumnSpec{"ts_sl", joined<Doing, "数量">, ColumnKind::Quantity, 9, {.sum = true, .editable = true}},
                 ColumnSpec{"t_zp", joined<SourceWord, "单号">, ColumnKind::Text, 15}});
  static constexpr std::array pickGrids{
      ui::GridSpec{"gridGoods", joined<"待", Doing, "商品">, openToPick, joined<"没有待", Doing, "的商品">},
      ui::GridSpec{"gridStaging", "已选商品", staged, "在上面的列表中按回车选择商品，选完后按F5"}};
  static constexpr auto pickCommands =
      ui::joinedTables(std::to_array(trading_parts::pickCommands),
                       std::array{ui::CommandSpec{"btnZdrk", joined<"整单", Doing>, "F6",
                                                  joined<"添加当前", SourceWord, "单所有未", Doing, "的商品">}});
  static constexpr std::array lineFields{
      FieldSpec{"tsl", joined<Doing, "数量：">, FieldKind::Quantity, "", 0, ui::NoMinus}};

  /// The document's screen; `own` is what only this kind has: rights, whose employees.
  static constexpr PartialScreenSpec screen(DocumentScreenSpec own) {
    own.screen = {.name = joined<Called>,
                  .title = joined<"商品", Doing>,
                  .fields = fields,
                  .grids = documentGrids,
                  .commands = commands,
                  .focus = "tSptm"};
    own.draftTitle = joined<"商品", Doing>;
    own.waitingTitle = joined<"待审核", Doing, "单">;
    own.openTitle = joined<"待", Doing, SourceWord, "单">;
    own.openPanel = [](ui::Panel panel) {
      panel.row("tOpenKey btnOpenSearch |")
          .grid("gridSources", 3)
          .buttons("btn_Zdrk4 btn_Qxck btn_Ckyd btn_Jhd |")
          .grid("gridOpen", 2);
    };
    own.auditedList = joined<Called, "_Djcx">;
    own.auditedTitle = joined<Doing, "查询">;
    own.numberInput = joined<Number>;
    own.showsScanned = true;
    own.pickScreen = joined<Called, "_Add">;
    own.lineScreen = joined<Called, "_Sele">;
    own.changeHead = [](const QString& number) { return changeDocumentDate(Rules().family(), number); };
    own.headForm = headForm;
    own.scanRow = "tSptm btnPanel | btnAddOld btnModi btnDel";
    own.saveRow = "btnPrin | btnOK btnCancel";
    own.searchRow = "tkey btnSearch comSort |";
    own.waitingButtons = "btnRChk btnPreview btn_Check btn_Date btn_Dele btn_ChaKan btn_Prin |";
    own.lineButtons = "btnAdd btnTab2Modi btnDele |";
    own.addWaiting = own.deleteWaiting = own.make;
    return {.document = own, .rules = Rules, .partner = {partner, pickPartner<Side>}};
  }

  /// Open lines of the sources to pick from.
  struct Pick : GoodsPickScreen {
    Pick()
        : GoodsPickScreen({.screen = {.name = joined<Called, "_Add">,
                                      .title = joined<"商品", Doing, " - 选择待", Doing, "商品">,
                                      .fields = pickFields,
                                      .grids = pickGrids,
                                      .commands = pickCommands,
                                      .focus = "tkey"},
                           .rules = rulesOf<Rules>,
                           .lineScreen = joined<Called, "_Sele">,
                           .key = "lid",
                           .groups = sourcesOf<Rules>,
                           .group = "djh"}) {}
  };
  struct Line : LineScreen {
    Line()
        : LineScreen({.screen = {.name = joined<Called, "_Sele">,
                                 .title = joined<Doing, "商品明细">,
                                 .fields = lineFields,
                                 .commands = trading_parts::okCancel,
                                 .focus = "tsl"},
                      .rules = rulesOf<Rules>}) {}
  };
};

}  // namespace partial_parts
}  // namespace jxc
