// 数据结算: closes an account set up to a day. What came to its end by then goes, with its ledger rows; each balance is
// carried on as one row of that day, and every figure behind it stays what it was.
#pragma once

#include "core/prompt.h"
#include "core/reading.h"
#include "core/refusal.h"

#include <QString>

#include <functional>
#include <optional>
#include <stdexcept>

namespace jxc::closing {

struct Request {
  QString day;                  // the last day that goes, yyyy-MM-dd
  bool keepsUnfinished = true;  // what waits, and goods on loan, stay
};

/// The day that is proposed: the end of last year, while that can be closed and is not yet, else of last month.
QString proposedDay();
/// What stands against closing that day: it is none, lies in the future, or nothing at all is dated so early.
Refusal dayRefusal(const QString& day);
/// The latest closing of this day or a later one; empty: there was none. Closing anew is asked about.
QString closedAlready(const QString& day);

/// What a closing finds, before it is done: documents that go, with counts, pieces and yuan, and what has not come to
/// its end by then and goes or stays. `id`, `xm` (item), `ds` (documents), `sl`, `je`, `cl` (what becomes of it).
RowSet whatGoes(const Request& request);
/// What another station has changed between two such lists, a line each; empty: nothing.
QString changesBetween(const RowSet& before, const RowSet& now);

/// Percent, and what is being done; false stops, and everything is as before.
using Progress = std::function<bool(int percent, const QString& doing)>;

/// A balance would not be after the closing what it was before, or what would go is not what was agreed to: its words
/// name it. Nothing has happened.
class ClosingDiffers : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Closes, in one transaction, without questions; `archive` is the copy that was made before, empty without one. The
/// balances before and after, one row each: `id`, `lb` (which ledger), `bh`, `mc`, `ss` (warehouse, or kind of
/// partner), and `sl1`, `cb1`, `je1` before, `sl2`, `cb2`, `je2` after. Nothing: stopped. `agreed` is the list that was
/// agreed to, where one was. Throws ClosingDiffers, and DbError.
std::optional<RowSet> closeBooks(const Request& request, const QString& archive, const Progress& progress = {},
                                 const std::optional<RowSet>& agreed = {});

/// All closings by item, the newest day first: `nj_jsrq`, `nj_year`, `nj_xm`, `nj_ds`, `nj_sl`, `nj_je`.
Sql summaries();
/// All closings with the copy of the set that was made before, the newest first: `da_time`, `da_year`, `da_file`,
/// `a_name`.
Sql archives();

}  // namespace jxc::closing
