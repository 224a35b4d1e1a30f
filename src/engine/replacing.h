// 整体替换: the whole content of one account file in the place of another's.
#pragma once

#include "engine/database.h"

#include <functional>

namespace jxc {

/// Both are SQLite, nobody else has `with` open, and nobody else writes to `set` meanwhile: whoever reads it sees what
/// was there before until the end.
/// One transaction; progress in percent, returning false stops it. False then. Throws DbError; nothing is changed in
/// both cases. Not inside a transaction.
bool replaceContent(Database& set, Database& with, const std::function<bool(int percent)>& progress = {});

}  // namespace jxc
