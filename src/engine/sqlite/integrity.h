// 存储检查: whether every page of an account file can be read, and fits the others.
#pragma once

#include "engine/database.h"
#include "engine/sqlite/failure.h"

#include <functional>
#include <sqlite3.h>

namespace jxc::sqlite {

/// Reads the whole file of a connection and lets SQLite compare its tables with their indexes and its list of free
/// pages. A database in memory lies on no disk: it is sound. Throws what `progress` throws.
StorageCheck checkIntegrity(sqlite3* connection, const std::function<bool(int percent)>& progress);

}  // namespace jxc::sqlite
