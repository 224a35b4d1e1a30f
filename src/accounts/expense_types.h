// 费用类型: what money is spent on and earned with beside trade: rent, wages, interest.
#pragma once

#include "core/fillers.h"
#include "core/prompt.h"
#include "core/sql.h"

#include <QString>

#include <cstdint>
#include <vector>

namespace jxc::expenses {

enum class Side : char { Expense /* FY */, Income /* SR */ };

struct TypeDraft {
  std::int64_t id = 0;  // 0 for a new one
  QString name;
  Side side = Side::Expense;
  QString note;
};

/// Reads a type into a draft; throws DbError when it is gone.
TypeDraft readType(std::int64_t id);
/// Whether a type may be changed; tells when not: those that the audit of documents writes keep their names.
bool mayChangeType(std::int64_t id, Prompt& prompt);
/// Saves a new or changed type. A new name follows into the lines that stand; the side of a type in use stays, because
/// the signs of its amounts tell it. False when refused.
bool saveType(const TypeDraft& draft, Prompt& prompt);
/// Deletes a type that was never used. Asks.
bool deleteType(std::int64_t id, Prompt& prompt);

/// `id`, `fy_lx`, `fx` ("费用" or "收入") and `fy_note`, in the order of entry.
Sql typeList();
std::vector<ListItem> fillTypes(Side side);
/// Types of both sides for lists, with "全部项目" at the top.
std::vector<ListItem> fillAllTypes();

}  // namespace jxc::expenses
