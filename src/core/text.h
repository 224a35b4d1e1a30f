// 文本: cleaning of typed text, switches, and small text tricks.
#pragma once

#include <QString>
#include <QStringView>

#include <string_view>

namespace jxc {

/// Typed text as it is stored: the ASCII marks ' ? % ! $ & , ( ) + - / @ ~ " become their full-width forms, ^ and the
/// backtick vanish. Statements bind their values, so this is no defence but the form that existing data has.
QString sanitizeText(QStringView text);
/// The same without ( ) + - / : for operator names, passwords and search keys.
QString sanitizeKeyword(QStringView text);

/// Words and names out of tables of data.
inline QString words(std::u16string_view text) {
  return QStringView(text).toString();
}
inline QString words(std::string_view utf8) {
  return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

/// A switch read as text: false for "", "0" and "False", true otherwise.
bool strIsTrue(QStringView text);

/// Whether a price grade switched by `value` may be shown: kind "all" needs the rights to see cost and price, "cj" the
/// one for cost, "xs" the one for price.
bool priceGradeAllowed(QStringView value, QStringView kind);

/// 1-based position of the n-th occurrence of `needle`; 0 when there are fewer, or nothing to look for.
int nthPos(QStringView text, QStringView needle, int n);

/// A list kept as text, every entry with its comma behind ("张三,李四,"), with one entry replaced, or taken out when
/// `now` is empty. Entries are compared whole: "李四" is not touched by a new name of "李".
QString replaceListEntry(const QString& list, const QString& entry, const QString& now);

/// Today's weekday, "星期日 " to "星期六 ", with a trailing blank: it stands before a time.
QString weekdayName();

}  // namespace jxc
