// 赠品: goods that may be given for points, and the small store of gift items that are no goods; what came in and went
// out of it.
#pragma once

#include "core/enquiry.h"
#include "core/prompt.h"

#include <cstdint>

namespace jxc::gifts {

// ---- goods as gifts ------------------------------------------------------------------------------------------------

/// Goods that may be given away, in use and not.
Sql goodsInUse(const Criteria& criteria);
Sql goodsNotInUse(const Criteria& criteria);
/// Takes a goods into use at so many points a piece, or changes them. False: refused.
bool use(std::int64_t id, double points, Prompt& prompt);
void stopUsing(std::int64_t id);

/// What members redeemed, line by line, the newest first: rq, gl_djh, member, goods or gift item, pieces and points.
Sql redemptions(const Criteria& criteria, const Warehouses& warehouses);

// ---- the store of gift items ---------------------------------------------------------------------------------------

/// Why its lists know no warehouse.
inline constexpr NoWarehouse kOneStore{"gift items lie in a store of their own, outside the warehouses"};

struct Item {
  std::int64_t id = 0;  // 0: new
  QString number, name;
  double quantity = 0, points = 0;  // pieces; points a piece
};
Item read(std::int64_t id);
Sql items(const Criteria& criteria);
/// Adds or changes one, refused in the order of the form. `shown` is the item as the operator found it: what others
/// received or gave meanwhile stays counted.
bool save(const Item& item, const Item& shown, Prompt& prompt);
/// Deletes one that was never received. Asks.
bool remove(std::int64_t id, Prompt& prompt);

struct Receipt {
  QString date;
  double quantity = 0;
  QString note;
};
/// Raises the store of an item.
bool receive(std::int64_t id, const Receipt& receipt, Prompt& prompt);

/// What came in and went out of the item whose number is `criteria.kind`, or of all: receipts, redemptions, gifts with
/// sales, each the newest first: lx (which of them), rq, sl (below zero where it went out), djh, note.
Sql movements(const Criteria& criteria);

}  // namespace jxc::gifts
