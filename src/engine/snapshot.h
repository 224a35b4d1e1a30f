// 快照: a whole account set as bytes, and fresh in-memory account sets made from it within milliseconds.
#pragma once

#include "engine/database.h"

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

namespace jxc {

/// The content of an SQLite connection made by openSqlite or openSqliteSnapshot. Not inside a transaction.
std::vector<std::byte> snapshot(Database& database);

/// A new connection of its own, in memory, that begins with this content. Throws DbError(File) when the bytes are no
/// account database.
std::unique_ptr<Database> openSqliteSnapshot(std::span<const std::byte> bytes);

}  // namespace jxc
