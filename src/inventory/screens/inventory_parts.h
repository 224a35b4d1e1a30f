// 库存单据屏幕部件: columns, inputs and commands that the screens of documents within the house share, as plain data.
#pragma once

#include "core/joined_text.h"
#include "masterdata/screens/goods_columns.h"
#include "stock/screens/document_screen.h"
#include "stock/screens/goods_pick_screen.h"
#include "stock/screens/modi_date.h"
#include "stock/screens/trading_parts.h"
#include "ui/joined_tables.h"
#include "ui/specs.h"

#include <array>
#include <span>
#include <string_view>

namespace jxc::inventory_parts {

/// What a line is of, before its figures.
inline constexpr const auto& goodsOfLine = goodsNames;
inline constexpr std::array barcodeOfLine{goodsBarcode};

/// Price, quantity and amount, in columns that begin with the prefix of their table; only the quantity is typed. Who
/// sees the amount: in a transfer it may be that of the sale price.
template <FixedText Prefix, const Right& AmountTo = kSeesCost>
inline constexpr std::array<ui::ColumnSpec, 3> figureColumns = {{
    {joined<Prefix, "dj">, "单价", ui::ColumnKind::Money, 11, {}, kSeesCost},
    {joined<Prefix, "sl">, "数量", ui::ColumnKind::Quantity, 9, {.sum = true, .editable = true}},
    {joined<Prefix, "zje">, "金额", ui::ColumnKind::Money, 12, {.sum = true}, AmountTo},
}};

template <FixedText Prefix, const Right& AmountTo = kSeesCost, std::size_t Behind = 0>
constexpr auto lineColumns(const std::array<ui::ColumnSpec, Behind>& behind = {}) {
  return ui::joinedTables(goodsOfLine, figureColumns<Prefix, AmountTo>, behind, barcodeOfLine);
}

template <const Right& AmountTo = kSeesCost, std::size_t Behind = 0>
constexpr auto stagingColumns(const std::array<ui::ColumnSpec, Behind>& behind = {}) {
  return ui::joinedTables(goodsNamesNoColour, figureColumns<"ts_", AmountTo>, behind);
}

/// Goods to pick from, with what lies of them in the warehouse.
inline constexpr auto goodsColumns = ui::joinedTables(
    goodsToPick, std::array{ui::ColumnSpec{"g_pjjj", "平均进价", ui::ColumnKind::Money, 11, {}, kSeesCost}});

inline constexpr ui::FieldSpec pickFields[] = {
    {"tkey", "查找：", ui::FieldKind::Text, "", 50},
    {"comLb", "类别：", ui::FieldKind::Combo},
    {"chkCk", "只显示有库存商品", ui::FieldKind::Check},
    {"tsl", "默认添加数量：", ui::FieldKind::Quantity, "", 0, ui::NoMinus},
};

/// The picking screen of a document within the house.
constexpr std::array<ui::GridSpec, 2> pickGrids(std::span<const ui::ColumnSpec> staging) {
  return {{{"gridGoods", "商品列表", goodsColumns, "当前仓库中没有符合条件的商品"},
           {"gridStaging", "已选商品", staging, "在上面的列表中按回车选择商品，选完后按F5"}}};
}

/// Commands of a document within the house. Audit is a question here; its effects are looked at apart.
inline constexpr auto documentCommands = trading_parts::documentCommands({
    {"btnPanel", "条码选项"},
    {"btnAddOld", "添加商品", "F2"},
    trading_parts::importLines,
    {"btnRCheck", "审核", "F6", "审核当前单据"},
    {"btnPreview", "预览影响", "F9", "列出审核后库存和成本的变化，不改动任何数据"},
    {"btn_Date", "更改日期", "Ctrl+E"},
});

/// One command under another name; the documents do not all call their commands alike.
template <std::size_t N>
constexpr std::array<ui::CommandSpec, N> renamed(std::array<ui::CommandSpec, N> commands, std::string_view from,
                                                 std::string_view to) {
  for (ui::CommandSpec& each : commands)
    if (each.name == from) each.name = to;
  return commands;
}

inline QString changeDate(const QString& number) {
  return changeDocumentDate(documentFamily(number), number);
}

/// A document within the house: what it says itself, and what is alike on all of them. Who may make it may change it
/// while it waits.
constexpr DocumentScreenSpec documentOf(DocumentScreenSpec own) {
  own.numberInput = "gldjh";
  own.auditCommand = "btnRCheck";
  own.linesHoldWarehouse = true;
  own.changeHead = changeDate;
  own.addWaiting = own.deleteWaiting = own.make;
  own.scanRow = "tSptm btnPanel | btnAddOld btnJpgd btnModi btnDel btnImport";
  own.saveRow = "btnPrin | btnOK btnCancel";
  own.searchRow = "tkey btnSearch comSort |";
  own.lineButtons = "btnAdd btnTab2Jpgd btnTab2Import btnTab2Modi btnDele |";
  return own;
}

/// Its picking screen.
constexpr GoodsPickSpec pickOf(std::string_view name, std::string_view title, std::span<const ui::GridSpec> grids,
                               const DocumentRules& (*rules)(), std::string_view lineScreen) {
  return {.screen = {.name = name,
                     .title = title,
                     .fields = pickFields,
                     .grids = grids,
                     .commands = trading_parts::pickCommands,
                     .focus = "tkey"},
          .rules = rules,
          .lineScreen = lineScreen};
}

}  // namespace jxc::inventory_parts
