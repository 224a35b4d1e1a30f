// 默认值: the employee, partner and warehouse that a new document begins with: the marked row, else the first; as
// employee the one who bears the operator's name, where there is one.
#pragma once

#include <QString>

namespace jxc {

// All empty when the table is.
QString defaultEmployeeSn();  // the row without a name counts as the marked one
QString defaultEmployeeName();
QString defaultSupplierSn();
QString defaultSupplierName();
QString defaultCustomerSn();
QString defaultCustomerName();
QString defaultWarehouseSn();
QString defaultWarehouseName();

}  // namespace jxc
