// 更改日期: date of a waiting document within the house or of a loan; head of a waiting sale or customer return.
#pragma once

#include "stock/document_family.h"

#include <QString>

namespace jxc {

/// Asks for another date of a waiting document. Its number now; empty when nothing was changed. The caller has seen to
/// the right to change dates.
QString changeDocumentDate(const DocumentFamily& family, const QString& number);

/// The same for sale and customer return, with customer, warehouse, salesperson, invoice and freight.
QString changeSaleHead(const DocumentFamily& family, const QString& number);

}  // namespace jxc
