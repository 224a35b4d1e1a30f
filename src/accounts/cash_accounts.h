// 现金银行账户: the accounts of the shop: adding, renaming, deleting, and what was in them when the books began.
#pragma once

#include "core/fillers.h"
#include "core/prompt.h"
#include "core/sql.h"

#include <QString>

#include <cstdint>
#include <vector>

namespace jxc::cash {

struct AccountDraft {
  std::int64_t id = 0;  // 0 for a new one
  QString name, type, note;
  double opening = 0;  // yuan
};

/// Reads an account into a draft; throws DbError when it is gone.
AccountDraft readAccount(std::int64_t id);

/// Whether an account may be changed; tells when not: the till is always "现金".
bool mayChangeAccount(std::int64_t id, Prompt& prompt);

/// Saves a new or changed account. A new name follows into the ledger and the documents. Another opening amount is
/// treated as `setOpening` does. False when refused.
bool saveAccount(const AccountDraft& draft, Prompt& prompt);

/// Deletes an account that was never used. Asks.
bool deleteAccount(std::int64_t id, Prompt& prompt);

/// Whether lines besides the opening one name the account.
bool isAccountUsed(const QString& name);
/// Before the opening amount of an account is changed: warns and asks when business was done. False: leave it.
bool mayChangeOpening(const QString& name, Prompt& prompt);
/// Writes the opening amount and carries it through the balances.
void setOpening(std::int64_t id, double amount);

Sql accountList();
/// Accounts by name for lists; with `first` given it stands on top with the key "-1".
std::vector<ListItem> fillAccounts(const QString& first = {});

}  // namespace jxc::cash
