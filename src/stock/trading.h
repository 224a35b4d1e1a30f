// 购销单据过账规则: the four trading documents as values of one posting and one cancel routine.
#pragma once

#include "accounts/partner_ledger.h"
#include "core/posting.h"
#include "members/member_ledger.h"
#include "stock/document_family.h"
#include "stock/line_amounts.h"
#include "stock/stock_effect.h"

#include <QString>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace jxc::trading {

/// How a trading document reaches the ledgers. Statements take the number as their only `?` unless told otherwise.
struct Rules {
  const DocumentFamily* family;
  std::u16string_view cashKind;     // xj_dlx
  int cashSign;                     // −1: what the head calls paid leaves the shop
  std::u16string_view kindText;     // k_djtxt
  std::u16string_view freightWord;  // "采购单" … in the notes of freight; empty: the document carries none
  bool keepsBalancing;              // a line of goods "00000000" may stand among its lines
  std::u16string_view auditLog;     // + number + "，共" + n + "种商品"

  const char* markLines[2];  // before the ledger is written; the first only while goods move at audit
  std::string insertLedger;  // values: auditor, today, number
  const char* afterLedger;   // may be null
  const char* effectRows;  // ledger rows without "00000000": id,g_sn,ck_sn,gl_sl,gl_dj,gl_cbj,id2,moved,gl_kdrq,gl_flag
  bool outwards;           // stock falls by gl_sl, and the quantity counts as sold
  bool movesCost;          // the goods' average is written anew
  // Goods master: change of g_kc, then for purchases price, supplier (receipts only) and average, then goods.
  const char* goodsPosted;
  const char* goodsCancelled;
  void (*bumpEmployee)(const QString& employee);  // may be null

  // Cancel.
  std::u16string_view shortageAtCancel;   // kind for checkStockShort; empty: stock comes back
  const char* effectElsewhere;            // finds a document that hangs on this one; null: none can
  std::u16string_view elsewhereDocument;  // its name in the refusal, "入库" …
  const char* reopenHead;
  const char* deleteMore;  // may be null; value: "%number%"
  // Lines that came from goods which never moved (a cancelled putaway or issue); null: the family has none.
  const char* reopenSource;  // source line by id2
  const char* sourceOpen;    // value id2: number of the source document with lines that wait again
  const char* reopenSourceHead;
  // A document that the till made too: the statement finds its member, empty for a customer without a card.
  const char* tillMember;  // may be null
  HySaleMode undoAtTill;
};

const Rules& purchase();
const Rules& purchaseReturn();
const Rules& sale();
const Rules& saleReturn();

/// The head of a trading document, with the names that the ledgers copy.
struct Head {
  QString number, date, partner, partnerName, warehouse, warehouseName, salesperson, salespersonName;
  QString checker, note, account, invoiceNumber, freightPayer;
  double due = 0, paid = 0, invoiced = 0, freight = 0, packing = 0;
  int settlement = 0;
  QString month() const { return date.left(7); }
};
/// False: there is no such head, or a name is missing.
bool readHead(const Rules& rules, const QString& number, Head& head);
/// The same of an audited document, for its cancel. No name is looked up: an employee or a partner that is gone from
/// his list meanwhile does not stand against it. False: the document is not audited.
bool readAudited(const Rules& rules, const QString& number, Head& head);

/// What the ledger rows of a document do to stock, in the order of the rows.
std::vector<StockEffect> effectsOf(const Rules& rules, const QString& number);
/// The same in two steps.
Ahead askEffects(const Rules& rules, const QString& number);
std::vector<StockEffect> effectsIn(const Rules& rules, const RowSet& rows);

}  // namespace jxc::trading
