// 数据清理: empties the account set for a fresh start: what goes and what stays, told before it happens.
#pragma once

#include "core/prompt.h"

#include <QString>

#include <functional>

namespace jxc {

/// Business: documents, ledgers, stock and what the shop keeps besides (bank accounts, contracts …); goods, partners,
/// people, warehouses and members stay. All: the set is as it was on its first day, `admin` with an empty password.
enum class Clearing : char { Business, All };

/// Whether the operator is asked for the backup that comes first, or it is simply made.
enum class BackupFirst : char { Asked, Always };

/// How it ended. After `Done` with `Clearing::All` nobody is logged in any more.
enum class Cleared : char {
  Refused,   // it may not be done now, or the backup failed: told
  Declined,  // the operator said no to the clearing
  Done
};

/// What a clearing takes away besides documents, and what it leaves, with counts: lines for its question.
QString clearingInWords(Clearing what);

/// Has the set for itself, makes a verified backup, asks `question` with what goes, and empties the set, in one
/// transaction; then the room of what went is given back to the disk. `progress` hears of the backup and of that, by
/// percent and in words; false stops the one before anything has gone, and leaves of the other a larger file.
Cleared clearData(Clearing what, const QString& question, BackupFirst backup,
                  const std::function<bool(int percent, const QString& doing)>& progress, Prompt& prompt);

/// What the shop is called on its papers, where it is filled in: name, short name, telephone, address.
void saveShopName(const QString& name, const QString& shortName, const QString& telephone, const QString& address);

}  // namespace jxc
