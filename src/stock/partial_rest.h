// 取消入库、取消出库: what is still open of a receipt or a sale never comes, or never goes: a return closes it, whose
// goods touch no shelf.
#pragma once

#include "stock/partial_movement.h"

#include <QString>

#include <optional>

namespace jxc::partial {

/// Asks where the money goes, then closes all that is open of the source by an audited return of today, in one
/// transaction. The number of the return; nothing: refused, or the operator said no.
std::optional<QString> closeRest(const PartialMovement& movement, const QString& source, Prompt& prompt);

/// The audited return that closed a rest of this document; empty: none.
QString restReturnOf(const PartialMovement& movement, const QString& source);
/// Yuan that went back in cash with that return.
double restPaidBack(const DocumentFamily& source, const QString& number);
/// Whether this return closed a rest: it touched no shelf, and its cancel opens the lines again.
bool closesRest(const DocumentFamily& back, const QString& number);
/// Why a document cannot go back as a whole: something of it is open. Nothing: it can.
std::optional<QString> openRefusal(const DocumentFamily& source, const QString& number);

}  // namespace jxc::partial
