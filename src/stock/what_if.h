// 预览影响: what an audit or a cancel would change: the real command runs inside a transaction, the differences are
// noted, and everything is taken back.
#pragma once

#include "core/prompt.h"
#include "engine/row_set.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

namespace jxc {

/// One difference. `warns` marks what an operator should look at: balances that turn negative, costs that jump by a
/// fifth and more, profits of sales that no longer go with the cost, and what a back-dated document crosses.
struct Impact {
  QString kind;   // "成本均价", "销售毛利" …
  QString place;  // goods, warehouse, document, partner, account
  QString before, after;
  bool warns = false;
};

struct WhatIf {
  bool done = false;      // the command came through
  QStringList questions;  // what it asked; the preview says yes to all of them
  QStringList notices;    // what it told, refusals among them
  QString failure;        // what it threw; empty: nothing
  std::vector<Impact> impacts;
  /// All of it in a line each: stock, money, partners, profit; only what changes, and what this operator may see.
  QStringList summary;

  /// For a list: `id`, `kind`, `place`, `valuebefore`, `valueafter`, `warns` (0 or 1). Questions and notices come
  /// first.
  RowSet rows() const;
};

/// Runs `command` (the real one: true when it did its work) on the document of this number, or on the goods, and takes
/// it back. Nothing is left behind, in the account set or in the session, also when the command refuses or throws.
/// Questions are answered with yes and listed.
WhatIf whatIf(const QString& number, const std::function<bool(Prompt&)>& command);

}  // namespace jxc
