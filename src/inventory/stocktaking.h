// 库存盘点单: the rules of the count: what lies in one warehouse, counted goods by goods, against what the books say.
#pragma once

#include "stock/document_rules.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace jxc::stocktaking {

/// As its screens ask for them. A goods stands on a count once; zero may be counted, less not. A line is worth its
/// difference to the books, at the cost of the warehouse. Refused at save: a count before a later one of the
/// warehouse, or before later movement of its goods. A barcode may have a multiple before it: "12*6901234567892".
const RulesOver<DocumentDraft>& rules();

/// The option of this station under which book figures, and the differences to them, are not seen until a count is
/// saved: who knows what should be there finds it.
inline constexpr char16_t kBlind[] = u"blindCount";

/// Goods of these classes (numbers, each with all below it; none: all) with stock in the warehouse that are not on the
/// document yet, by number, with `kc_sl`, `kc_zsl` (pieces), `kc_cbj` (yuan a unit).
Sql uncounted(const LinePlace& place, Lines where, const QStringList& classes);
enum class Uncounted : char {
  Zero,   // they were looked for, and are not there
  AsBook  // they were not looked at: no difference; what the books have below zero stays off
};
/// Puts them onto the document, all at once. Lines, and the document's number now.
CopyResult takeUncounted(const LinePlace& place, Lines where, const QStringList& classes, Uncounted as);

/// What a warehouse has of these classes, for a sheet of paper to count on: no stock stands on it.
RowSet countSheet(const QString& warehouse, const QStringList& classes);

/// Waiting counts of the same warehouse and day, which this one can take in.
RowSet joinable(const QString& number);
/// Puts the goods of one waiting count onto another of its warehouse and day; goods that stand on both are told in the
/// question and added. False: the operator said no, or one of them waits no longer or has changed meanwhile (told).
bool join(const QString& into, const QString& from, Prompt& prompt);

}  // namespace jxc::stocktaking
