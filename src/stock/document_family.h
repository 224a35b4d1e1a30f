// 单据族: what a kind of document is, as data: tables, fields, rights and words of all twelve families.
#pragma once

#include "core/text.h"

#include <QString>
#include <QStringView>

#include <span>
#include <string_view>

namespace jxc {

class Prompt;
class Row;

/// A right: group is a column of `jxc_role`, position counts from 1.
struct Right {
  std::string_view group;
  int position;
};

/// Where else than in its head and lines the number of a waiting document is remembered.
struct NumberMention {
  std::string_view table, column;
  std::string_view partner = {};  // code of the document's partner there; empty: not told
  std::string_view saved = {};    // 0 there while the document is a draft; empty: only saved documents are remembered
};

/// A kind of document. Table and field names are identifiers for `compose`; texts are the program's own words.
struct DocumentFamily {
  std::u16string_view prefix;  // of the number, two letters
  std::u16string_view name;    // as rights refusals and cancels call it

  // head and lines
  std::string_view head, lines, number, date, status, checker, checkDate;
  std::string_view warehouse;  // of the head, the one that stock is tested against

  // money side of trading documents; empty names on the others
  std::string_view partner;                // partner code
  std::string_view due, paid, settlement;  // amounts as the head stores them, settlement index
  std::string_view discount;               // what is let off under settlement at paid amount
  std::string_view lineTotal;              // amount with tax of a line
  int headSign;                            // returns store minus the screen's amounts in their head

  // what a waiting document may still change in its head; empty names where it has none
  std::string_view invoiceNumber, invoiceAmount, freight, packing, freightPayer;

  Right make, audit, cancel;

  // words
  std::u16string_view savedLog;      // + number + "，共" + n + "种商品"
  std::u16string_view deletedLog;    // + number
  std::u16string_view emptiedLog;    // + number, when the last line took the head along
  std::u16string_view cancelledLog;  // + number
  std::u16string_view enquiry;       // where a document that was audited at once may be cancelled
  std::u16string_view waitingHint;   // second sentence of the save question of a document that will wait

  std::u16string_view shortageAtAudit;  // kind for checkStockShort before audit; empty: not tested
  /// Asked of a waiting head before audit besides; null: nothing more. False: the operator said no.
  bool (*mayAuditMore)(const Row& head, Prompt& prompt) = nullptr;
  bool logsEverySave = false;       // also of a document that is audited at once: its audit writes no log
  bool redateRenewsNumber = false;  // a new date always takes a number of that date
  std::string_view onDelete;        // statement with one `?`, the number, run when a waiting document is deleted
  std::span<const NumberMention> mentions = {};  // follow when the document takes another number

  /// Effects of audit, run inside its transaction once the head is audited. Null: audit of this family stands
  /// elsewhere.
  void (*post)(const QString& number);
};

std::span<const DocumentFamily> documentFamilies();
/// By prefix, or by a number that begins with it. Throws std::out_of_range for anything else.
const DocumentFamily& documentFamily(QStringView prefixOrNumber);

namespace families {
extern const DocumentFamily& purchaseReceipt;
extern const DocumentFamily& purchaseReturn;
extern const DocumentFamily& sale;
extern const DocumentFamily& saleReturn;
extern const DocumentFamily& transfer;
extern const DocumentFamily& stocktake;
extern const DocumentFamily& loss;
extern const DocumentFamily& overflow;
extern const DocumentFamily& split;
extern const DocumentFamily& bundle;
extern const DocumentFamily& loan;
extern const DocumentFamily& loanReturn;
}  // namespace families

}  // namespace jxc
