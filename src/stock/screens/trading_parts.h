// 购销屏幕部件: columns, inputs and commands that the screens of all trading documents share, as plain data.
#pragma once

#include "core/joined_text.h"
#include "masterdata/screens/goods_columns.h"
#include "masterdata/screens/partner_text.h"
#include "ui/joined_tables.h"
#include "ui/specs.h"

#include <array>

namespace jxc::trading_parts {

/// What a line is worth, in columns that begin with the prefix of its table: "jh_dj", "jh_sl" …
template <PartnerType Side, FixedText Prefix>
inline constexpr std::array<ui::ColumnSpec, 8> figureColumns = {{
    {joined<Prefix, "dj">, "单价", ui::ColumnKind::Money, 10, {.editable = true}, seesMoney<Side>},
    {joined<Prefix, "sl">, "数量", ui::ColumnKind::Quantity, 8, {.sum = true, .editable = true}},
    {joined<Prefix, "dzl">, "打折率", ui::ColumnKind::Percent, 6, {.editable = true}},
    {joined<Prefix, "zje">, "总金额", ui::ColumnKind::Money, 11, {.sum = true}, seesMoney<Side>},
    {joined<Prefix, "je">, "金额", ui::ColumnKind::Money, 11, {.sum = true}, seesMoney<Side>},
    {joined<Prefix, "tax">, "税率(%)", ui::ColumnKind::Percent, 7, {.editable = true}, seesMoney<Side>},
    {joined<Prefix, "taxdj">, "含税单价", ui::ColumnKind::Money, 10, {.editable = true}, seesMoney<Side>},
    {joined<Prefix, "taxje">, "税额", ui::ColumnKind::Money, 9, {.sum = true}, seesMoney<Side>},
}};

/// Lines of a document; the retail price, the cost and the like by its own.
template <PartnerType Side, FixedText Prefix, std::size_t Before = 0, std::size_t Behind = 0>
constexpr auto lineColumns(const std::array<ui::ColumnSpec, Before>& beforeFigures = {},
                           const std::array<ui::ColumnSpec, Behind>& behindFigures = {}) {
  using ui::ColumnKind, ui::ColumnSpec;
  return ui::joinedTables(goodsNames, beforeFigures, figureColumns<Side, Prefix>, behindFigures,
                          std::array{ColumnSpec{joined<Prefix, "bz">, "备注", ColumnKind::Text, 8}, goodsBarcode});
}

template <PartnerType Side>
inline constexpr auto stagingColumns = ui::joinedTables(goodsNamesNoColour, figureColumns<Side, "ts_">,
                                                        std::array{ui::ColumnSpec{"ts_note", "备注",
                                                                                  ui::ColumnKind::Text, 8}});

/// Columns of the waiting list: fields of the head, captions as the first panel words them.
struct WaitingColumns {
  std::string_view number, date, partner, note;
  std::string_view dateCaption, partnerCaption, warehouseCaption, dueCaption, paidCaption, openCaption;
};
template <std::size_t More = 0>
constexpr auto waitingColumns(const WaitingColumns& of, const std::array<ui::ColumnSpec, More>& more = {}) {
  using ui::ColumnKind, ui::ColumnSpec;
  return ui::joinedTables(std::array{ColumnSpec{of.number, "单据编号", ColumnKind::Text, 16},
                                     ColumnSpec{of.date, of.dateCaption, ColumnKind::Date},
                                     ColumnSpec{of.partner, of.partnerCaption, ColumnKind::Text, 20},
                                     ColumnSpec{"ck_name", of.warehouseCaption, ColumnKind::Text, 12},
                                     ColumnSpec{"u_name", "经办人", ColumnKind::Text, 10},
                                     ColumnSpec{"yfje", of.dueCaption, ColumnKind::Money, 13, {.sum = true}},
                                     ColumnSpec{"sfje", of.paidCaption, ColumnKind::Money, 13, {.sum = true}},
                                     ColumnSpec{"wfje", of.openCaption, ColumnKind::Money, 13, {.sum = true}}},
                          more,
                          std::array{ColumnSpec{"a_name", "操作员", ColumnKind::Text, 10},
                                     ColumnSpec{of.note, "备注", ColumnKind::Text, 16}});
}

inline constexpr ui::CommandSpec pickCommands[] = {
    {"btnSearch", "查询", "F2"}, {"btnAdd", "添加所选", "F8", "按默认数量添加列表中选中的商品"},
    {"btnModi", "修改", "F3"},   {"btnDel", "删除", "Ctrl+D"},
    {"btnOK", "确定", "F5"},     {"btnCancel", "取消", "Esc"},
};

/// Commands of every document screen, on both its panels.
inline constexpr ui::CommandSpec commonCommands[] = {
    {"btnJpgd", "镜片光度", "F12", "按屈光度、散光度输入镜片数量"},
    {"btnModi", "修改", "F3"},
    {"btnDel", "删除", "Ctrl+D"},
    {"btnPrin", "打印", "Ctrl+P"},
    {"btnOK", "保存", "F5"},
    {"btnSearch", "查询", "F2"},
    {"btn_Check", "全部审核", "F7"},
    {"btn_Dele", "删除单据", "Ctrl+Del"},
    {"btn_ChaKan", "查看单据", "F8"},
    {"btn_Prin", "打印单据", "Ctrl+P"},
    {"btnAdd", "新增商品", "Ctrl+N"},
    {"btnTab2Jpgd", "镜片光度", "F12", "按屈光度、散光度输入镜片数量"},
    {"btnTab2Import", "导入商品", "Ctrl+I", "从表格文件导入商品"},
    {"btnTab2Modi", "修改商品", "F3"},
    {"btnDele", "删除商品", "Ctrl+D"},
    {"btnCancel", "退出", "Esc"},
};
/// The commands that only this document has, or words in its own way, and the common ones.
template <std::size_t N>
constexpr auto documentCommands(const ui::CommandSpec (&own)[N]) {
  return ui::joinedTables(std::to_array(own), std::to_array(commonCommands));
}

/// Lines from a spreadsheet, where the document has no menu for it.
inline constexpr ui::CommandSpec importLines = {"btnImport", "导入", "Ctrl+I", "从表格文件导入商品"};

/// The contract of what is being made, and of what waits.
inline constexpr ui::CommandSpec addContract = {"btnHt", "添加合同", "Ctrl+H", "选择或增加与该单位的合同"};
inline constexpr ui::CommandSpec lookAtContract = {"btnCkHt", "单据合同", "Ctrl+H", "查看、更换该单据的合同"};

/// Inputs of the audit dialog; the two sides of the business call them differently.
struct AuditLabels {
  std::string_view date, partner, warehouse, due;
  std::string_view paidName;  // of the paid amount's input
  std::string_view paid, account;
};
constexpr std::array<ui::FieldSpec, 11> auditFields(const AuditLabels& labels) {
  using ui::FieldKind;
  return {{{"jsn", "单据编号：", FieldKind::Text, "", 0, ui::ReadOnly},
           {"trq", labels.date, FieldKind::Text, "", 0, ui::ReadOnly},
           {"tpartner", labels.partner, FieldKind::Text, "", 0, ui::ReadOnly},
           {"tck", labels.warehouse, FieldKind::Text, "", 0, ui::ReadOnly},
           {"tuser", "经办人：", FieldKind::Text, "", 0, ui::ReadOnly},
           {"tadmin", "操作员：", FieldKind::Text, "", 0, ui::ReadOnly},
           {"tyfje", labels.due, FieldKind::Money, "", 0, ui::ReadOnly},
           {labels.paidName, labels.paid, FieldKind::Money},
           {"comJsfs", "结算方式：", FieldKind::Combo},
           {"comYhzh", labels.account, FieldKind::Combo},
           {"tnote", "备注：", FieldKind::Text, "", 100, ui::OffersRemarks}}};
}

inline constexpr ui::CommandSpec okCancel[] = {{"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};
inline constexpr ui::CommandSpec auditCommands[] = {
    {"btnPreview", "预览影响", "F6", "列出审核后库存、成本、毛利和余额的变化，不改动任何数据"},
    {"btnOK", "审核通过", "F5"},
    {"btnCancel", "取消", "Esc"}};

}  // namespace jxc::trading_parts
