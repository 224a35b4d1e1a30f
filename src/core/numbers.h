// 编号: keys of master data, numbers of documents, and whether a row is there at all.
#pragma once

#include "core/sql.h"

#include <QString>

#include <cstdint>
#include <initializer_list>
#include <stdexcept>
#include <string_view>

namespace jxc {

/// A stored number or date that cannot be counted on from. The text is meant for the operator.
class NumberError : public std::runtime_error {
 public:
  explicit NumberError(const QString& message) : std::runtime_error(message.toStdString()) {}
};

/// Next key of a master table: one more than the greatest in text order, "100001" for an empty table. Not reserved.
/// Throws NumberError when the greatest key is no number.
QString nextSerial(std::string_view table, std::string_view field);
/// Key of a row that was just inserted, with its `id`: as nextSerial, but never one that a deleted row had. Counters
/// are never given twice, and keys keep step with them: what still names a key, a binding, a diary, must not come to
/// mean somebody else.
QString serialOfNewRow(std::string_view table, std::string_view field, std::int64_t id);
/// nextSerial on the catalogue of account sets.
QString nextSerialZT(std::string_view table, std::string_view field);

/// Next document number of today: prefix, "yymmdd", five digits from "10001". Tables that share a number space with
/// the prefix (register sales, staged sales, account documents) are looked at too. Not reserved.
QString nextDocNo(std::string_view table, std::string_view field, const QString& prefix);
/// The same for a given date "yyyy-MM-dd" (a time behind it is ignored). Throws NumberError when it is no date.
QString nextDocNoOn(std::string_view table, std::string_view field, const QString& prefix, const QString& date);

/// True when the number stands in `table` under another operator; rows of this operator alone do not count, so that he
/// may save a document of his own again. "XS" numbers are also taken by staged and register sales, "XT" by register
/// returns.
bool isNumberTaken(std::string_view table, std::string_view field, const QString& number);
/// The same question with the field first, as most callers put it.
bool docNoTaken(std::string_view field, std::string_view table, const QString& number);

/// Whether a row of `table` has this value in `field`.
bool rowExists(std::string_view table, std::string_view field, const Value& value);
/// `id` of the first such row, 0 when there is none.
std::int64_t firstIdOf(std::string_view table, std::string_view field, const Value& value);
/// Whether "select top 1 field from table condition" finds a text that is not empty. The condition has
/// its values with it: {"where g_sn=? and ck_sn=?", goods, warehouse}.
bool hasAny(std::string_view field, std::string_view table, const Sql& condition);

}  // namespace jxc
