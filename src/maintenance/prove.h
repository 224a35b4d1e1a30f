// 数据核对: proves that the books agree: replays everything in memory, compares it with what is stored, writes nothing.
#pragma once

#include "engine/row_set.h"

#include <QString>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace jxc {

class Database;

namespace proof {

/// Wrong: the books do not agree. Known: they differ from a plain replay for a reason that the rules themselves give.
/// Note: nothing is wrong, but somebody may want to know (drafts that nobody saved).
enum class Weight : char { Wrong, Known, Note };

/// The first row of a kind, and how many there are of it.
struct Finding {
  Weight weight;
  std::string code;     // of the kind, for tests and scripts: "running", "cash-balance" …
  QString check;        // what was checked: "流水结存"
  QString place;        // goods, warehouse, document, row
  QString stored, due;  // what stands there, what should
  QString reason;       // the rule behind it
  QString repair;       // the command that mends it
  std::int64_t count = 1;
};

struct Proof {
  std::vector<Finding> findings;  // wrong ones first
  std::int64_t ledgerRows = 0, documents = 0;
  bool finished = false;  // false: stopped, and what was found until then

  /// Kinds of faults, without what is known and what is merely noted.
  int wrong() const;
  bool isClean() const { return finished && wrong() == 0; }
  /// "核对完成：…" in one sentence.
  QString summary() const;
  /// The findings as rows for a list: `id`, `weight` (in words), `level` (the Weight as a number), `checked`, `place`,
  /// `stored`, `due`, `num`, `reason`, `repair`.
  RowSet rows() const;
};

/// Told now and then: percent, and what is being done. False stops the proof.
using Progress = std::function<bool(int percent, const QString& doing)>;

/// Begins with the storage (Database::checkStorage): a damaged file is the only finding then. Checks stock ledger,
/// balances, goods, month rows, cash, partner and invoice ledgers, documents and their lines. The digits and the kind
/// of costing are those of the session. Reads only; what others write meanwhile is not seen where `books` can give a
/// reader of its own (a file), so the answer is of one moment.
Proof prove(Database& books, const Progress& progress = {});
/// The same of the account set in use.
Proof proveAccount(const Progress& progress = {});

}  // namespace proof
}  // namespace jxc
