// 审核全部、取消全部: audits (or cancels) the rows of a list, whatever they are: documents, receivables, payments,
// expenses.
#pragma once

#include "core/prompt.h"

#include <QString>

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace jxc {

/// A row of a list that waits for audit.
struct ListedDocument {
  QString number;
  QString date = {};
  std::int64_t id = 0;  // rows are audited in this order, that of entry, however the list is sorted
};

/// Told before each row how far a long list has come, 0 to 100, and 100 before anything is asked; false stops it.
using AuditProgress = std::function<bool(int percent)>;

struct ListAudit {
  QString question;  // asked once, before the first
  std::vector<ListedDocument> waiting;
  /// Audits one row: a command of its own, with its own transaction. True: it is audited now.
  std::function<bool(const ListedDocument&, Prompt&)> audit;
  /// Rows of the list, audited ones too: told at the end with the number of those that were audited now. Nothing: only
  /// what the rows have to say is told.
  std::optional<qsizetype> listed = {};
  QString deed = QStringLiteral("审核");  // what is done to each
  AuditProgress progress = {};
};

/// Asks, then walks the list. A row that is refused or fails does not stop the others; what they say is told together
/// at the end. What every row would meet (disk, file, server, another station) ends the walk: what was done so far is
/// told, and the failure thrown; an operator who stops it keeps what was done, and is told how much that is. Number of
/// rows audited; nothing: the operator said no.
std::optional<int> auditEach(const ListAudit& list, Prompt& prompt);

}  // namespace jxc
