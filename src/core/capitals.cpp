#include "core/capitals.h"

#include <array>

namespace jxc {
namespace capitals_detail {

constexpr std::u16string_view kDigits = u"零壹贰叁肆伍陆柒捌玖";
// By place from the right, fen first. Above 亿 the sections are named by the words that cheques use.
constexpr std::array<std::u16string_view, 30> kUnits = {
    u"分", u"角", u"",   u"拾",   u"佰", u"仟", u"万", u"拾",     u"佰", u"仟", u"亿", u"拾",     u"佰", u"仟", u"万亿",
    u"拾", u"佰", u"仟", u"亿亿", u"拾", u"佰", u"仟", u"万亿亿", u"拾", u"佰", u"仟", u"亿亿亿", u"拾", u"佰", u"仟"};
constexpr int kYuanPlace = 3;

QStringView capitalDigit(QChar digit) {
  return QStringView(kDigits).mid(digit.digitValue(), 1);
}

bool isPlainAmount(QStringView text) {
  int points = 0;
  for (const QChar c : text) {
    if (c == u'.')
      ++points;
    else if (c < u'0' || c > u'9')
      return false;
  }
  return points <= 1;
}

// The digits of the amount in fen. Leading zeros of the yuan are dropped, those of a text that starts with the point
// stay: "0.05" reads "零伍分".
QString fenDigits(QStringView amount) {
  const auto point = amount.indexOf(u'.');
  QStringView yuan = point < 0 ? amount : amount.left(point);
  while (yuan.startsWith(u'0'))
    yuan = yuan.mid(1);
  QString fen = point < 0 ? QString() : amount.mid(point + 1, 2).toString();
  fen = fen.leftJustified(2, u'0');
  // What is typed as briefly as ".5" or "0" is read as a number of fen, without leading zeros.
  if (yuan.isEmpty() && amount.size() < 4) return QString::number(fen.toInt());
  return yuan.toString() + fen;
}

bool endsSection(qsizetype place) {
  return place > 4 && (place + 1) % 4 == 0;
}  // 万, 亿, 万亿 …

}  // namespace capitals_detail

QString moneyInCapitals(QStringView amount) {
  using namespace capitals_detail;
  const bool negative = amount.startsWith(u'-');
  if (negative) amount = amount.mid(1);
  if (!isPlainAmount(amount)) return {};
  const QString fen = fenDigits(amount);
  if (fen.size() > static_cast<qsizetype>(kUnits.size())) return {};

  QString capitals;
  bool zeroPending = false;
  bool sectionOpen = true;
  for (qsizetype i = 0; i < fen.size(); ++i) {
    const qsizetype place = fen.size() - i;
    const QStringView unit = kUnits[static_cast<std::size_t>(place - 1)];
    if (fen[i] != u'0') {
      if (zeroPending) capitals += u'零';
      capitals += capitalDigit(fen[i]);
      capitals += unit;
      zeroPending = false;
      sectionOpen = !endsSection(place);
    } else {
      zeroPending = true;
      if (endsSection(place) && sectionOpen) {
        capitals += unit;
        zeroPending = false;
        sectionOpen = false;
      }
    }
    if (place == kYuanPlace) {
      capitals += u'元';
      zeroPending = false;
    }
  }
  if (capitals.isEmpty()) return QStringLiteral("零元整");  // nothing has no sign
  if (fen.endsWith(u"00")) capitals += u'整';
  return negative ? u'负' + capitals : capitals;
}

}  // namespace jxc
