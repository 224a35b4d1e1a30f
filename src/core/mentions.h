// 引用: where the key of a row of master data stands elsewhere.
#pragma once

#include "core/statements.h"

#include <initializer_list>
#include <optional>
#include <string_view>

namespace jxc {

/// What the first table is called ("采购进货单") in which a key stands in one of these columns; empty when there is
/// none. Every table of the account set that has such a column is asked, but for `own`: a kind of document that comes
/// to the schema is asked from then on.
QString firstMention(const QString& key, std::initializer_list<std::string_view> columns,
                     std::initializer_list<std::string_view> own);

/// "该仓库正在使用（采购进货单），不能删除！" where there is such a table: a row that something names is not deleted.
std::optional<QString> refusalInUse(const QString& noun, const QString& key,
                                    std::initializer_list<std::string_view> columns,
                                    std::initializer_list<std::string_view> own);

}  // namespace jxc
