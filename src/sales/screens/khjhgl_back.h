// 客户还货、借转销售: the ways that goods on loan go, as the list of loans opens them.
#pragma once

#include <QString>

#include <cstdint>

namespace jxc {

/// Opens the return of what is open of a loan (`line` 0) or of one of its lines. Whether one was saved.
bool bringLoanBack(const QString& loan, std::int64_t line);
/// Opens the sale of what is open of a loan line, which the customer keeps. Whether it was saved.
bool keepLoanAsSale(std::int64_t line);

}  // namespace jxc
