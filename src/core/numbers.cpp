#include "core/numbers.h"

#include "core/clock.h"
#include "core/data_module.h"
#include "core/session.h"
#include "core/statements.h"

#include <QDate>

#include <array>
#include <span>

namespace jxc::numbers_detail {

// Tables that hold numbers of a prefix besides the document's own table.
struct SharedSpace {
  const char16_t* prefix;
  std::string_view table;
};
inline constexpr std::array numberingSpaces{
    SharedSpace{u"XS", "jxc_posxssp"},  SharedSpace{u"XS", "jxc_lsxssptemp"}, SharedSpace{u"XT", "jxc_posthsp"},
    SharedSpace{u"YF", "jxc_ysyfk_dj"}, SharedSpace{u"FK", "jxc_ysyfk_dj"},   SharedSpace{u"YS", "jxc_ysyfk_dj"},
    SharedSpace{u"SK", "jxc_ysyfk_dj"},
};
// A taken number is looked for on the till's side only: account documents test their own table.
inline constexpr std::array takenSpaces{
    SharedSpace{u"XS", "jxc_lsxssptemp"},
    SharedSpace{u"XS", "jxc_posxssp"},
    SharedSpace{u"XT", "jxc_posthsp"},
};

std::int64_t wholeNumber(const QString& digits, const QString& stored) {
  bool isNumber = false;
  const std::int64_t number = digits.toLongLong(&isNumber);
  if (!isNumber) throw NumberError(QStringLiteral("编号“%1”不是数字，无法生成下一个编号！").arg(stored));
  return number;
}

QString nextSerialIn(Database& database, std::string_view table, std::string_view field) {
  const QString greatest = database.lookup(compose("select max({}) as sn from {}", {field, table})).text();
  if (greatest.isEmpty()) return QString::fromUtf16(builtInSn);
  return QString::number(wholeNumber(greatest.trimmed(), greatest) + 1);
}

/// The greatest number that begins with the stem and goes on in digits. Asked as a range and not by `like`, so that an
/// index leads to it at once however many documents there are; ":" is the sign behind the digit nine.
QString greatestNumber(std::string_view table, std::string_view field, const QString& stem) {
  return lookupValue(compose("select max({}) as sn from {} where {}>=? and {}<?", {field, table, field, field}), stem,
                     stem + u':');
}

QString nextDocNoOfDay(std::string_view table, std::string_view field, const QString& prefix, const QDate& day) {
  const QString stem = prefix + day.toString(QStringLiteral("yyMMdd"));
  QString best = greatestNumber(table, field, stem);
  for (const SharedSpace& space : numberingSpaces) {
    if (prefix != QStringView(space.prefix)) continue;
    best = std::max(best, greatestNumber(space.table, "gl_djh", stem));
  }
  std::int64_t serial = 10000;
  if (best.size() >= 13) serial = std::max<std::int64_t>(serial, wholeNumber(best.mid(8, 5), best));
  return stem + QString::number(serial + 1);
}

}  // namespace jxc::numbers_detail

namespace jxc {

QString nextSerial(std::string_view table, std::string_view field) {
  return numbers_detail::nextSerialIn(accountDb(), table, field);
}

QString serialOfNewRow(std::string_view table, std::string_view field, std::int64_t id) {
  const std::int64_t first = QStringView(builtInSn).toLongLong();
  const std::int64_t next = nextSerial(table, field).toLongLong();
  return QString::number(std::max(next, first - 1 + id));  // the built-in row is the first of all
}

QString nextSerialZT(std::string_view table, std::string_view field) {
  return numbers_detail::nextSerialIn(catalogueDb(), table, field);
}

QString nextDocNo(std::string_view table, std::string_view field, const QString& prefix) {
  return numbers_detail::nextDocNoOfDay(table, field, prefix, clock::now().date());
}

QString nextDocNoOn(std::string_view table, std::string_view field, const QString& prefix, const QString& date) {
  const QDate day = QDate::fromString(date.left(10), QStringLiteral("yyyy-MM-dd"));
  if (!day.isValid()) throw NumberError(QStringLiteral("日期“%1”不正确，无法生成单据号！").arg(date));
  return numbers_detail::nextDocNoOfDay(table, field, prefix, day);
}

bool isNumberTaken(std::string_view table, std::string_view field, const QString& number) {
  // A row without an operator is nobody's own, so it takes the number as well.
  const std::string elsewhere =
      compose("select top 1 id from {} where {}=? and (a_name<>? or a_name is null)", {table, field});
  if (lookupNumber(elsewhere, number, session().a_name) != 0) return true;
  for (const auto& space : numbers_detail::takenSpaces) {
    if (number.startsWith(QStringView(space.prefix)) && rowExists(space.table, "gl_djh", number)) return true;
  }
  return false;
}

bool docNoTaken(std::string_view field, std::string_view table, const QString& number) {
  return isNumberTaken(table, field, number);
}

bool rowExists(std::string_view table, std::string_view field, const Value& value) {
  return exists(compose("select top 1 id from {} where {}=?", {table, field}), value);
}

std::int64_t firstIdOf(std::string_view table, std::string_view field, const Value& value) {
  return lookupValue(compose("select top 1 id from {} where {}=? order by id", {table, field}), value).toLongLong();
}

bool hasAny(std::string_view field, std::string_view table, const Sql& condition) {
  return !lookupValue(Sql(compose("select top 1 {} from {} ", {field, table})).add(condition)).isEmpty();
}

}  // namespace jxc
