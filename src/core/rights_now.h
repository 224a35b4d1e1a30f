// 现在的权限: all rights of the operator read in one question, for what asks for many of them.
#pragma once

#include "core/right.h"
#include "engine/row_set.h"

namespace jxc {

/// The rights of the session's operator as they stand in the database at this moment, by the rules of `hasRight`.
class RightsNow {
 public:
  RightsNow();
  bool has(const Right& right) const;

 private:
  RowSet rights_;  // no row: none
};

}  // namespace jxc
