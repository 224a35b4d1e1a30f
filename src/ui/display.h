// 显示格式: how a stored value is written on the screen, by the kind of its field or column.
#pragma once

#include "engine/row_set.h"
#include "ui/specs.h"

#include <QString>

#include <optional>

namespace jxc::ui {

inline QString qs(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// Money with the currency symbol, quantities and totals by the session's digits, the rest in general form.
QString displayNumber(ColumnKind kind, double number);
/// A cell of a row set as its column shows it: null is empty, a flag is "√" or empty, a percent has two decimals or
/// more.
QString displayCell(const RowSet& rows, int row, int column, ColumnKind kind);
/// A power of a lens as it is written everywhere on the screen: -3.00, +0.75; what is no number stays as it is.
QString displayPower(const QString& stored);
/// A footer sum: totals carry no currency symbol.
QString displaySum(ColumnKind kind, double number);

/// Kind of a number column that matches a number field.
ColumnKind columnKindOf(FieldKind kind);
bool isNumberKind(FieldKind kind);
bool isNumberKind(ColumnKind kind);
/// Most characters of a number input: its digits and thirteen more.
int numberInputLength(FieldKind kind);

/// Reads what an operator types as a number: currency signs, group commas and blanks are passed over; nothing when
/// it is no number. Empty reads as 0.
std::optional<double> readNumber(const QString& text);
/// Reads what an operator types as a date: 2026-5-3, 2026/05/03, 2026.5.3, 20260503, or 5-3 of this year; yyyy-MM-dd
/// comes back, nothing when there is no such day.
std::optional<QString> readDate(const QString& text);
/// How a date input writes: a day, or a whole month.
QString dayForm(const FieldSpec& spec);
/// The same of a month: 2026-5, 202605, 5 of this year, or any day of it; yyyy-MM comes back.
std::optional<QString> readMonth(const QString& text);

}  // namespace jxc::ui
