// 购销单据: what receipt, purchase return, sale and customer return have beside other documents: partner and money.
#pragma once

#include "stock/document_rules.h"

#include <QString>

#include <optional>

namespace jxc {

/// How a trading document is settled, as its head stores it.
enum class Settlement : int { AtPaidAmount = 0 /* 按实付款结算 */, RestOnAccount = 1 /* 余款记入应付帐 */ };

/// The head of a trading document in the making.
struct TradingDraft : DocumentDraft {
  QString partner;  // code
  QString originalNumber;
  QString invoiceNumber;
  double invoiceAmount = 0, freight = 0, packing = 0;
  bool wePayFreight = false;
  double payable = 0;  // as shown; save reads it anew from the lines
  double paid = 0;
  Settlement settlement = Settlement::AtPaidAmount;
  QString account;                      // name of the cash or bank account
  std::optional<bool> straightToStock;  // "本单商品直接入库"; nothing where the box is not shown
  QString contract;                     // code, usually empty
  QString returnOf;                     // the document that this one returns as a whole
  std::optional<double> settledBefore;  // yuan that were paid for that one, by now; less when it was the other way
};

/// The audit dialog "单据审核确认": opens on the head; paid amount, settlement, account and note may change.
struct AuditDraft {
  QString number, date;
  QString partnerName, warehouseName, salespersonName, operatorName;
  double payable = 0;
  double paid = 0;
  Settlement settlement = Settlement::AtPaidAmount;
  QString account, note;
};

}  // namespace jxc
