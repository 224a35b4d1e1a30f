// 表定义: the shape of one table as data: what its columns are and with which rows it begins.
#pragma once

#include <span>
#include <string_view>

namespace jxc::schema {

/// One table. `columns` is one "name type" a line in the words of the dialect, without the leading `id` Counter that
/// every table has, for example
///     dw_name  nvarchar(64)
///     dw_pl    int
/// `seeds` are the tails of insert statements, "(dw_name,dw_pl) values ('副',0)", run in order after the create.
struct TableDefinition {
  std::string_view name;
  std::string_view columns;
  std::span<const std::string_view> seeds = {};
};

// One list a subsystem, in files named after them; schema.cpp puts them in their one order.
std::span<const TableDefinition> coreTables();
std::span<const TableDefinition> stockTables();
std::span<const TableDefinition> masterdataTables();
std::span<const TableDefinition> purchasingTables();
std::span<const TableDefinition> salesTables();
std::span<const TableDefinition> posTables();
std::span<const TableDefinition> membersTables();
std::span<const TableDefinition> accountsTables();
std::span<const TableDefinition> statisticsTables();
std::span<const TableDefinition> outputTables();
std::span<const TableDefinition> messagingTables();
std::span<const TableDefinition> maintenanceTables();

}  // namespace jxc::schema
