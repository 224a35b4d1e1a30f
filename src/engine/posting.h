// 成批写入: statements that travel together, because nobody waits for what each of them did.
#pragma once

#include "engine/database.h"

#include <memory>
#include <span>

namespace jxc {

/// What a statement gave that was sent ahead.
struct Outcome {
  bool there = false;
  RowSet rows;
  std::int64_t changed = 0;
};

/// What an engine can do about round trips.
class Posting {
 public:
  virtual ~Posting() = default;
  virtual void post(const SqlText& sql, std::span<const Value> values) = 0;
  virtual std::shared_ptr<const Outcome> sendAhead(const SqlText& sql, std::span<const Value> values) = 0;
  /// Fills every outcome that was sent ahead.
  virtual void collect() = 0;
  /// How often this connection has waited for an answer so far.
  virtual std::int64_t roundTrips() const = 0;
};

/// Runs one statement without asking how many rows: inside a transaction on a server it is sent along with the next
/// call that has an answer, so that many writes cost one round trip. Its failure may then come out of a later call, at
/// the latest of the outermost commit. Elsewhere the same as `execute`.
void postStatement(Database& database, const SqlText& sql, std::span<const Value> values);

/// A select or a change whose outcome is wanted a little later: on a server it is sent along, and the first look at any
/// outcome fetches all of them in one round trip. Inside a transaction it sees what stood in the tables when it was
/// sent, and is not to be kept longer than the transaction. Outside one a select sees what stands there at that first
/// look, or when the connection's next transaction begins; a change runs at once. Without a server everything does.
class Ahead {
 public:
  Ahead(Database& database, const SqlText& sql, std::span<const Value> values);
  /// Of a select.
  const RowSet& rows() const { return outcome().rows; }
  /// Its first number; 0 when there is no row.
  double number() const { return rows().isEmpty() ? 0 : rows().number(0, 0); }
  /// Rows that a change changed.
  std::int64_t changed() const { return outcome().changed; }

 private:
  const Outcome& outcome() const;

  Posting* posting_ = nullptr;
  std::shared_ptr<const Outcome> outcome_;
};

}  // namespace jxc
