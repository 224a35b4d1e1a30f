// 分店: which branch this copy of the program is, and the file of its goods, stock and sales for the head office.
#pragma once

#include "core/periods.h"
#include "core/prompt.h"

#include <QString>

#include <functional>
#include <optional>

namespace jxc {

/// The branch that this account set belongs to.
struct Branch {
  QString sn, name;
  QString lastExport;  // day, yyyy-MM-dd; empty: never
};

/// Nothing in a set whose row was taken away.
std::optional<Branch> thisBranch();
/// Code (8 characters) and name (64). False when refused.
bool saveBranch(const QString& sn, const QString& name, Prompt& prompt);
/// Marks that neither a code nor a name may have: whoever reads the sheets joins them into names and statements.
inline constexpr std::u16string_view refusedInBranch = u"!\"%&',=?@[\\]^";

struct BranchExport {
  Period days;  // both included; by the day of the document, audited or not
  QString folder;
};

/// Writes goods, stock, sale lines, return lines and the branch's name as the sheets 1 to 5 of one new .xls file, all
/// of one moment while others go on working, and keeps today as the day of the last export once the file is there.
/// Where a sheet has more rows than such a file holds, it is an .xlsx file, which is told. Returns the file; nothing
/// when refused, stopped or failed, which is told too. Throws DbError when the books cannot be read. Whatever hinders
/// or kills it leaves no file under the told name, and the day as it was.
std::optional<QString> exportBranch(const BranchExport& what, const std::function<bool(int percent)>& progress,
                                    Prompt& prompt);

}  // namespace jxc
