// 成批写入: statements of a rule that writes many rows and reads none of them back.
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

}  // namespace jxc
