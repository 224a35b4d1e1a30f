// 结算保留: what has not come to its end by the closing day, and stays.
#pragma once

#include "maintenance/period_closing.h"

#include <QSet>

namespace jxc::closing {

/// Numbers of the documents that stay. Receipts of which something waits to be put away, sales to be issued: always,
/// without them shelf and book could never meet again; so does what a document behind the day stands on, and the parts
/// by which the rest of them moved. By the box of the request what waits for its audit, and goods on loan.
QSet<QString> numbersThatStay(const Request& request);
/// Puts numbers aside for `notStaged`, in the operator's own lines, which are emptied before. Inside a transaction.
void stageNumbers(const QSet<QString>& numbers);

/// What has not come to its end, and what of it goes by the request, as `whatGoes` tells it behind the documents.
struct Unfinished {
  QString what;
  double documents = 0, quantity = 0, money = 0;
  QString fate;
};
std::vector<Unfinished> unfinished(const Request& request);

}  // namespace jxc::closing
