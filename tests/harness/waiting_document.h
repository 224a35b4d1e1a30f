// 待审单据: a waiting document of any family, its head and lines written as bare rows.
#pragma once

#include "core/statements.h"
#include "stock/document_family.h"
#include "stock/partial_movement.h"

#include <QString>

#include <vector>

namespace jxc::test {

/// So many pieces of a goods at so many yuan each, without tax and discount; on a count the pieces that were found.
struct Pieces {
  QString goods;
  double quantity, price;
  std::vector<Field> more = {};  // what this line has besides, or has in another way
};

/// One line under this number, its amounts as they follow from the pieces, its cost that of the day; a count finds the
/// stock written that is there now.
std::int64_t writeLine(const DocumentFamily& family, const QString& number, const QString& date, const Pieces& line,
                       const QString& warehouse = QStringLiteral("100001"));

/// Lines and their head: of this day ("yyyy-MM-dd"), in the first warehouse, with the first customer or supplier, on
/// account and nothing paid. `head` holds what is otherwise. Nothing is checked or asked. Returns its number.
QString waitingDocument(const DocumentFamily& family, const QString& date, const std::vector<Field>& head,
                        const std::vector<Pieces>& lines);

/// What a customer borrowed by this line comes back, or he keeps it: posted at once. `price` and `rent` in yuan.
QString returnLoan(const QString& date, std::int64_t line, double back, double kept, double price, double rent = 0,
                   const QString& account = QStringLiteral("现金"));

/// A waiting document that moves so many pieces of each line of an audited source, in their order; of a line without a
/// number all that is open. Partner and warehouse are those of the source. Its number.
QString waitingPart(const PartialMovement& movement, const QString& date, const QString& source,
                    const std::vector<double>& pieces = {});

}  // namespace jxc::test
