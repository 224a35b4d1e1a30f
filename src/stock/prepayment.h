// 预付款提醒: a sale on account that the customer's prepayment does not cover is asked about, by parameter
// (`cs_cs001`).
#pragma once

#include <QString>

namespace jxc {

class Prompt;
class Row;

/// A sale leaves `open` yuan on the customer's account. True: his prepayment covers it, or the operator goes on.
bool mayGoOnAccount(const QString& customer, double open, Prompt& prompt);
/// The same for a waiting sale as its head stands, before it is audited.
bool mayAuditOnAccount(const Row& head, Prompt& prompt);

}  // namespace jxc
