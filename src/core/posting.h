// 成批读写: statements of a rule that touches many rows, in few round trips.
#pragma once

#include "core/statements.h"
#include "engine/posting.h"

namespace jxc {

/// As execSql for whoever does not ask how many rows: see engine/posting.h.
template <class... Args>
void postSql(const SqlText& sql, const Args&... args) {
  const std::array<Value, sizeof...(Args)> values{Value(args)...};
  postStatement(accountDb(), sql, values);
}

/// A select, or a change whose number of rows matters, that travels with those behind it: see engine/posting.h.
template <class... Args>
Ahead sendAhead(const SqlText& sql, const Args&... args) {
  const std::array<Value, sizeof...(Args)> values{Value(args)...};
  return {accountDb(), sql, values};
}

/// As insertRow for whoever does not ask for the number of the row.
void postRow(std::string_view table, std::initializer_list<Field> fields);

}  // namespace jxc
