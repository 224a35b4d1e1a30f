// 名称列表: short lists of words with a number (regions, departments, remarks …): added, renamed and deleted alike.
#pragma once

#include "core/mentions.h"
#include "core/prompt.h"
#include "core/sql.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace jxc {

/// One such list. Empty texts and lists mean that the refusal or the following does not exist.
struct NamedList {
  std::string_view table, sn, name;  // the table, its number and its name
  const char16_t* needsName;         // told for an empty name
  const char16_t* nameTaken;         // told for a name that stands already
  const char16_t* deleteQuestion;
  const char16_t* builtIn = nullptr;     // told when row "100001" is to be deleted
  const char16_t* inUse = nullptr;       // told when one of the next has a row
  std::span<const KeyColumn> namedIn{};  // copies of the name: they follow when it is changed
  std::span<const KeyColumn> numberedIn{};
};

/// The word as it is stored; nothing, and told, when it is empty or another row has it.
std::optional<QString> checkedName(const NamedList& list, std::int64_t id, const QString& typed, Prompt& prompt);
/// Adds a checked word (id 0) or renames one; copies of a renamed one follow. Returns its id.
std::int64_t writeName(const NamedList& list, std::int64_t id, const QString& name);
/// Checks and writes. False when refused.
bool saveNamed(const NamedList& list, std::int64_t id, const QString& typed, Prompt& prompt);
/// Deletes a word. Asks. False when refused.
bool deleteNamed(const NamedList& list, std::int64_t id, Prompt& prompt);
/// The word of a row; empty when it is gone.
QString nameOf(const NamedList& list, std::int64_t id);
/// All columns of the list in entry order.
Sql namedListStatement(const NamedList& list);

}  // namespace jxc
