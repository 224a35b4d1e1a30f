// 帐套: the catalogue of account sets: new ones, their names, copies of them, and the end of one.
#pragma once

#include "core/prompt.h"
#include "engine/row_set.h"
#include "maintenance/restoring.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <functional>
#include <optional>

namespace jxc {

/// What the operator says of a set.
struct AccountSetDraft {
  std::int64_t id = 0;  // 0 for a new one
  QString name, note;
  bool isDefault = false, isForbidden = false;
};

struct AccountSet : AccountSetDraft {
  QString sn;
  QString dbName;   // of its file below data/: "jxc_100002.mdb"
  QString file;     // the same with its whole path
  QString address;  // of the server that the file leads to; empty for a set that is its file
  bool isBuiltIn() const { return sn == u"100001"; }
};

/// The catalogue, open while this lives; the account set in use stays open beside it. Made when it is missing. A new
/// set or a deletion that was cut off half-way is brought to its end, or taken back, when it opens.
class AccountSets {
 public:
  /// Throws DbError when the catalogue cannot be read.
  AccountSets();
  ~AccountSets();
  AccountSets(const AccountSets&) = delete;
  AccountSets& operator=(const AccountSets&) = delete;
  /// What the opening of the catalogue found that an operator should read.
  const QStringList& remarks() const { return remarks_; }

  /// `id`, `zt_sn`, `zt_name`, `zt_default`, `zt_forbid`, `zt_note`, `zt_dbname`, and `place` in words: where its data
  /// are.
  RowSet rows() const;
  std::optional<AccountSet> find(std::int64_t id) const;

  /// Makes an empty set with the first rows of every table: its file beside the others, then its row, then the file
  /// under its name. False when refused.
  bool add(const AccountSetDraft& draft, Prompt& prompt);
  bool modify(const AccountSetDraft& draft, Prompt& prompt);
  /// Asks, and deletes a set with its file; of one on a server only the file that leads there.
  bool remove(std::int64_t id, Prompt& prompt);
  /// The built-in set becomes the default one when no other is.
  void ensureDefault();

 private:
  QStringList remarks_;
};

using CopyStep = std::function<bool(int percent)>;
/// A verified copy of the set in the folder, under its name and the moment; of the set in use it is the last good
/// backup from now on. The file; nothing when refused, failed or stopped, which was told.
std::optional<QString> backUpAccountSet(const AccountSet& set, const QString& folder, const CopyStep& step,
                                        Prompt& prompt);
/// Whether the set may be restored from here: the one in use has a screen of its own for that. Told.
bool mayRestoreAccountSet(const AccountSet& set, Prompt& prompt);
/// `restoreBackup` for a set of the list, in its file or on its server. Where its file is gone or cannot be opened the
/// backup becomes its file, and what stood there keeps another name. False when refused, declined or stopped. Throws
/// DbError. In both cases the set is as it was.
bool restoreAccountSet(const AccountSet& set, OpenedBackup& backup, Prompt& prompt, const RestoreReports& reports = {});

}  // namespace jxc
