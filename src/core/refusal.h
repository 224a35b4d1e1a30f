// 拒绝: what stands against a command, in words for the operator, and what it is about, for the screen that leads him.
#pragma once

#include "core/prompt.h"

#include <QString>

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <utility>

namespace jxc {

/// What a refusal is about, in the words of the business: a rule knows no input. Which inputs of a screen hold it
/// stands in `ui/refused_input.h`.
enum class Subject : std::uint8_t {
  None,
  Name,
  Barcode,
  Number,
  Class,
  Unit,
  Brand,
  Sphere,
  Cylinder,
  PurchasePrice,
  SalePrice,
  RetailPrice,
  LevelPrice1,  // the five follow each other
  LevelPrice2,
  LevelPrice3,
  LevelPrice4,
  LevelPrice5,
  OpeningStock,
  OptometristsShare,
  WorkshopsShare,
  SalesmansShare,
  Partner,
  Warehouse,
  WarehouseInto,
  Employee,
  Employees,  // bound to a customer
  Operators,  // bound to a warehouse
  TillDuties,
  Date,
  Note,
  Lines,  // of a document or of a list
  Goods,  // what is taken apart or put together, or to be chosen
  Quantity,
  Price,   // of a line or a quotation
  Cost,    // of a piece
  Points,  // that a gift costs
  Discount,
  Total,
  Account,
  AccountInto,
  AccountKind,
  ExpenseType,
  Department,
  Amount,
  Rent,  // of goods on loan; the deposit that was taken for them, and what of it goes back
  Deposit,
  Refund,
  Role,
  Password,
  PasswordAgain,
  OldPassword,
  Setting,  // of the shop: its own name, which is its input's too, stands for the row
};

struct Refusal {
  Refusal() = default;
  Refusal(bool stands, QString words, Subject what = Subject::None, QString line = {})
      : applies(stands), text(std::move(words)), about(what), row(std::move(line)) {}
  Refusal(QString words, Subject what = Subject::None, QString line = {})
      : Refusal(true, std::move(words), what, std::move(line)) {}
  Refusal(const std::optional<QString>& words) : Refusal(words.has_value(), words.value_or(QString())) {}

  bool applies = false;
  QString text;
  Subject about = Subject::None;
  QString row;  // code of the goods, or number of the document, whose line in a list is at fault

  explicit operator bool() const { return applies; }
  bool operator==(const Refusal&) const = default;
};

/// Tells the first that applies. True: one did.
inline bool refused(std::initializer_list<Refusal> refusals, Prompt& prompt) {
  for (const Refusal& refusal : refusals) {
    if (!refusal) continue;
    prompt.refuse(refusal);
    return true;
  }
  return false;
}
inline bool isRefused(const Refusal& refusal, Prompt& prompt) {
  return refused({refusal}, prompt);
}

}  // namespace jxc
