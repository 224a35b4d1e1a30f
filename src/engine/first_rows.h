// 前几行: the first screenful of a list, ahead of the rest.
#pragma once

#include "engine/sql_text.h"

#include <optional>
#include <string>

namespace jxc {

/// The select limited to its first rows, where these come sooner than all of them (jet/first_rows.h). Nothing for what
/// cannot be read either: the whole statement says what is wrong with it.
std::optional<std::string> firstRows(const SqlText& select, int rows);

}  // namespace jxc
