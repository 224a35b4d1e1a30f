// 成批写入: statements that travel together, because nobody waits for what each of them did.
#pragma once

#include "engine/database.h"

#include <span>

namespace jxc {

/// What an engine can do about round trips.
class Posting {
 public:
  virtual ~Posting() = default;
  virtual void post(const SqlText& sql, std::span<const Value> values) = 0;
};

/// Runs one statement without asking how many rows: inside a transaction on a server it is sent along with the next
/// call that has an answer, so that many writes cost one round trip. Its failure may then come out of a later call, at
/// the latest of the outermost commit. Elsewhere the same as `execute`.
void postStatement(Database& database, const SqlText& sql, std::span<const Value> values);

}  // namespace jxc
