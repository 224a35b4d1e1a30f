// 修改销售单据: change of date, customer, warehouse and charges of a waiting sale or customer return.
#pragma once

#include "stock/document_family.h"

namespace jxc {

/// Opens the change of head on a waiting sales document. Its number now; empty when nothing was changed.
QString changeSalesHead(const DocumentFamily& family, const QString& number);

}  // namespace jxc
