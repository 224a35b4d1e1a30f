// 索引: every index of an account set, in one list, each with the statement that it serves.
#pragma once

#include "engine/database.h"

#include <span>
#include <string_view>

namespace jxc::schema {

/// Columns are separated by commas, as in the create statement.
struct IndexDefinition {
  std::string_view table;
  std::string_view columns;
  std::string_view covers = {};  // what its statement reads besides: stands in the index too, so that no row is fetched
};

std::span<const IndexDefinition> indexes();
/// Whether an index of this name is one of the list, or was one once.
bool isOwnIndex(std::string_view name);

/// Makes the indexes of one table; they must not be there yet.
void createIndexes(Database& database, std::string_view table, std::string_view suffix = {});
/// Makes those indexes of any table that an older database lacks, and drops those that others took the place of.
void createMissingIndexes(Database& database);
/// The same where the index that came last to the list is missing; a set that has it has them all.
void createNewIndexes(Database& database);

}  // namespace jxc::schema
