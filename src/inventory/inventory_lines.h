// 库存单据商品行: the goods list that documents within the house pick from.
#pragma once

#include "stock/table_lines.h"

namespace jxc {

/// Yuan a unit of a goods in the warehouse of a line; of goods that it never had what the ledger knows of them.
double warehouseCost(const QString& goods, const LinePlace& place);

/// Lines of a document within the house: goods of one warehouse with what lies of them there.
class InventoryLines : public TableLines {
 public:
  using TableLines::TableLines;

  Sql goodsToPick(const LinePlace& place, const PickFilter& wanted) const override;
};

}  // namespace jxc
