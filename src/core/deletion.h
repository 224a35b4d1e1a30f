// 删除: a row of a list is deleted: refused, asked about, looked at again, and gone.
#pragma once

#include "core/prompt.h"
#include "engine/row_set.h"

#include <QString>

#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

namespace jxc {

/// What stands against deleting a row.
struct Hindrance {
  QString told;      // the words of its screen
  QString holder;    // the row that needs it, in words; empty: none does
  QString nextStep;  // what the operator can do instead; empty: nothing
};

struct Deletion {
  std::string_view table;
  QString question;
  /// Asked before the question, and of the row as it is then once more inside the transaction: another station may have
  /// begun to use it while the question stood.
  std::function<std::optional<Hindrance>(const Row&)> hindrance = {};
  /// Deletes what goes with the row, inside the same transaction.
  std::function<void(const Row&)> alsoDelete = {};
};

/// The next step where a row that is no longer wanted stays; `word` is what its screen calls that.
inline QString orDisable(QStringView word = u"禁用") {
  return QStringLiteral("不再使用的话，可以%1。").arg(word);
}
/// The same where it can only be told from the others by its name.
inline QString orRename() {
  return QStringLiteral("不再使用的话，可以改名。");
}

/// False: it was refused, with the row, with who needs it and with the next step, or the operator said no. A row that
/// is gone already is deleted.
bool deleteAsking(const Deletion& deletion, std::int64_t id, Prompt& prompt);

}  // namespace jxc
