// 引用: where the key of a row of master data stands elsewhere.
#pragma once

#include "engine/row_set.h"

#include <QString>

#include <initializer_list>
#include <span>
#include <string_view>

namespace jxc {

/// A column in which the key of a row of another table stands, or its name.
struct KeyColumn {
  std::string_view table, column;
};

/// What an operator calls a row: what its table is, its number and its name, as far as it has them: "仓库 100002 分店",
/// "采购进货单 CJ21050310001".
QString rowInWords(std::string_view table, const Row& row);

/// The first row with this value in one of these columns, in words; empty when there is none.
QString firstMention(std::span<const KeyColumn> columns, const QString& value);

/// The same in every table of the account set that has one of these columns, but for `own`: a kind of document that
/// comes to the schema is asked from then on.
QString firstMentionAnywhere(const QString& key, std::initializer_list<std::string_view> columns,
                             std::initializer_list<std::string_view> own);

}  // namespace jxc
