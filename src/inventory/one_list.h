// 合并列表: waiting documents of several kinds as one list.
#pragma once

#include "core/reading.h"

#include <QString>

#include <span>
#include <string_view>

namespace jxc {

struct ListOfKind {
  RowSet rows;   // with gl_djh among their columns
  QString kind;  // in words
};

/// The rows of all, in the order of day and number, or the other way round. Columns: id, djlx (the kind), and those
/// that are named, as far as the lists have them. Ids of several tables would meet: the place in time is the id.
RowSet oneList(std::span<const ListOfKind> lists, std::span<const std::string_view> columns, bool newestFirst);

}  // namespace jxc
