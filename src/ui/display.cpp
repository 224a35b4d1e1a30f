#include "ui/display.h"

#include "core/clock.h"
#include "core/formats.h"

#include <QDate>
#include <QRegularExpression>

namespace jxc::ui {
namespace display_detail {

std::optional<NumberFormat> formatOf(ColumnKind kind, bool footer) {
  switch (kind) {
    case ColumnKind::Money:
      return footer ? totalFormat() : moneyFormat();
    case ColumnKind::Total:
      return totalFormat();
    case ColumnKind::Quantity:
      return quantityFormat();
    default:
      return std::nullopt;
  }
}

QString formatted(ColumnKind kind, double number, bool footer) {
  const auto format = formatOf(kind, footer);
  return format ? format->format(number) : numberText(number);
}

/// Below each other, percents and rates have their points in one line.
QString withTwoDecimals(QString text) {
  constexpr qsizetype kDecimals = 2;
  const qsizetype point = text.indexOf(u'.');
  const qsizetype has = point < 0 ? 0 : text.size() - point - 1;
  if (point < 0) text += u'.';
  return has < kDecimals ? text + QString(kDecimals - has, u'0') : text;
}

}  // namespace display_detail

QString displayNumber(ColumnKind kind, double number) {
  return display_detail::formatted(kind, number, false);
}
QString displaySum(ColumnKind kind, double number) {
  return display_detail::formatted(kind, number, true);
}

QString displayPower(const QString& stored) {
  const auto power = stored.trimmed().isEmpty() ? std::nullopt : readNumber(stored);
  if (!power) return stored;
  return (*power > 0 ? QStringLiteral("+") : QString()) + display_detail::withTwoDecimals(numberText(*power));
}

QString displayCell(const RowSet& rows, int row, int column, ColumnKind kind) {
  if (rows.isNull(row, column)) return {};
  switch (kind) {
    case ColumnKind::Text:
    case ColumnKind::Date:
      return rows.text(row, column);
    case ColumnKind::Power:
      return displayPower(rows.text(row, column));
    case ColumnKind::Flag:
      return rows.integer(row, column) != 0 ? QStringLiteral("√") : QString();
    default:
      break;
  }
  // A text in a number column (a code, "合计") is shown as it stands.
  if (rows.kind(row, column) == Value::Kind::Text && !readNumber(rows.text(row, column))) return rows.text(row, column);
  const QString text = displayNumber(kind, rows.number(row, column));
  return kind == ColumnKind::Percent ? display_detail::withTwoDecimals(text) : text;
}

ColumnKind columnKindOf(FieldKind kind) {
  switch (kind) {
    case FieldKind::Money:
      return ColumnKind::Money;
    case FieldKind::Total:
      return ColumnKind::Total;
    case FieldKind::Quantity:
      return ColumnKind::Quantity;
    case FieldKind::Percent:
      return ColumnKind::Percent;
    case FieldKind::Integer:
      return ColumnKind::Number;
    case FieldKind::Date:
      return ColumnKind::Date;
    case FieldKind::Check:
      return ColumnKind::Flag;
    default:
      return ColumnKind::Text;
  }
}

bool isNumberKind(FieldKind kind) {
  return kind >= FieldKind::Money && kind <= FieldKind::Integer;
}
bool isNumberKind(ColumnKind kind) {
  return kind >= ColumnKind::Money && kind <= ColumnKind::Number;
}

int numberInputLength(FieldKind kind) {
  const auto format = display_detail::formatOf(columnKindOf(kind), false);
  return format ? format->maxLength() : (kind == FieldKind::Integer ? 10 : 19);
}

std::optional<double> readNumber(const QString& text) {
  QString plain;
  plain.reserve(text.size());
  for (const QChar c : text) {
    if (c.isDigit()) {
      plain += QChar(u'0' + c.digitValue());  // full-width digits of a Chinese keyboard too
    } else if (c == u'.' || c == u'。' || c == u'．') {
      plain += u'.';
    } else if (c == u'-' || c == u'－') {
      plain += u'-';
    } else if (c == u',' || c == u'，' || c.isSpace() || c == u'+' || c.category() == QChar::Symbol_Currency) {
      continue;
    } else {
      return std::nullopt;
    }
  }
  if (plain.isEmpty()) return 0.0;
  if (plain == u"-" || plain == u"." || plain == u"-.") return std::nullopt;
  bool ok = false;
  const double number = plain.toDouble(&ok);
  return ok ? std::optional<double>(number) : std::nullopt;
}

QString dayForm(const FieldSpec& spec) {
  return spec.flags & WholeMonth ? QStringLiteral("yyyy-MM") : QStringLiteral("yyyy-MM-dd");
}

std::optional<QString> readMonth(const QString& text) {
  static const QRegularExpression form(QStringLiteral("^(?:(\\d{4})[-/.年]?)?(\\d{1,2})月?$"));
  const auto found = form.match(text.trimmed());
  if (!found.hasMatch()) {
    const auto day = readDate(text);
    return day ? std::optional(day->left(7)) : std::nullopt;
  }
  const int year = found.captured(1).isEmpty() ? clock::now().date().year() : found.captured(1).toInt();
  const QDate first(year, found.captured(2).toInt(), 1);
  return first.isValid() ? std::optional(first.toString(QStringLiteral("yyyy-MM"))) : std::nullopt;
}

std::optional<QString> readDate(const QString& text) {
  QList<int> parts;
  QString digits;
  const auto flush = [&] {
    if (!digits.isEmpty()) parts.push_back(digits.toInt());
    digits.clear();
  };
  for (const QChar c : text.trimmed()) {
    if (c.isDigit()) {
      digits += QChar(u'0' + c.digitValue());
      if (digits.size() > 8) return std::nullopt;
    } else if (QStringView(u"-/.年月日－／． ").contains(c)) {
      flush();
    } else {
      return std::nullopt;
    }
  }
  flush();
  if (parts.size() == 1 && parts[0] >= 10000000) {
    parts = {parts[0] / 10000, parts[0] / 100 % 100, parts[0] % 100};
  } else if (parts.size() == 2) {
    parts.push_front(clock::now().date().year());
  }
  if (parts.size() != 3) return std::nullopt;
  if (parts[0] < 100) parts[0] += 2000;
  const QDate date(parts[0], parts[1], parts[2]);
  return date.isValid() ? std::optional<QString>(date.toString(QStringLiteral("yyyy-MM-dd"))) : std::nullopt;
}

}  // namespace jxc::ui
