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

struct Deletion {
  std::string_view table;
  QString question;
  /// What stands against deleting this row. Asked before the question, and of the row as it is then once more inside
  /// the transaction: another station may have begun to use it while the question stood.
  std::function<std::optional<QString>(const Row&)> refusal = {};
  /// Deletes what goes with the row, inside the same transaction.
  std::function<void(const Row&)> alsoDelete = {};
};

/// A refusal to delete, and what is done with a row that is no longer wanted; `word` is what its screen calls that.
inline QString orDisable(const QString& refusal, QStringView word = u"禁用") {
  return refusal + QStringLiteral("\r\n\r\n不再使用的话，可以%1。").arg(word);
}

/// False: it was refused, or the operator said no. A row that is gone already is deleted.
bool deleteAsking(const Deletion& deletion, std::int64_t id, Prompt& prompt);

}  // namespace jxc
