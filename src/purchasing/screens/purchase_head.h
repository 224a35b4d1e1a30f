// 修改采购单据: change of date, supplier, warehouse and charges of a waiting receipt or return.
#pragma once

#include "stock/document_family.h"

namespace jxc {

/// Opens the change of head on a waiting purchase document. Its number now; empty when nothing was changed.
QString changePurchaseHead(const DocumentFamily& family, const QString& number);

}  // namespace jxc
