// 单位: the list of units that goods are counted in.
#pragma once

#include "core/prompt.h"
#include "core/reading.h"

#include <QString>

#include <cstdint>
#include <optional>

namespace jxc {

/// Adds a unit and returns its number; refuses an empty name and a name that stands already.
std::optional<QString> addUnit(const QString& name, Prompt& prompt);
/// Renames a unit in the list. Goods keep the text they were given: it is theirs.
bool renameUnit(std::int64_t id, const QString& name, Prompt& prompt);
/// Deletes a unit from the list. Asks. Goods that use the word keep it.
bool deleteUnit(std::int64_t id, Prompt& prompt);
RowSet selectUnits();

}  // namespace jxc
