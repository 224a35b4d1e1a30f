// 常用备注: standard remarks that the documents offer, the ones used most first.
#pragma once

#include "core/named_list.h"

namespace jxc {

extern const NamedList remarkList;

/// Remarks that hold the typed text, by how often they were used.
Sql remarkListStatement(const QString& typed = {});
/// Counts one more use of a remark.
void bumpRemarkCount(std::int64_t id);

}  // namespace jxc
