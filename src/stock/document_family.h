// 单据族: what a kind of document is, as data: tables, fields, rights, words and paper of all families. Whoever
// adds a family adds one record; numbering, waiting list, audit, cancel, print, proof and preview go by it.
#pragma once

#include "core/right.h"
#include "core/text.h"
#include "stock/document_paper.h"
#include "stock/line_columns.h"

#include <QString>
#include <QStringView>

#include <functional>
#include <optional>
#include <span>
#include <string_view>

namespace jxc {

class Prompt;
class Row;
struct PartialMovement;
enum class CancelMode : char;
enum class PartnerType : char;

/// Where else than in its head and lines the number of a waiting document is remembered.
struct NumberMention {
  std::string_view table, column;
  std::string_view partner = {};  // code of the document's partner there; empty: not told
  std::string_view saved = {};    // 0 there while the document is a draft; empty: only saved documents are remembered
};

/// What a split takes apart, or a bundle becomes: the head is a line of its own.
struct HeadGoods {
  std::string_view goods, quantity, cost;  // columns of the head; empty on other documents
};

/// The spreadsheet that lines come from.
struct LineImport {
  std::string_view title;                // of its dialog; empty: lines are not imported
  std::string_view templateFile;         // below 模板文件
  bool needsProduced = false;            // each line must tell its production date
  bool hasPrice = true, hasNote = true;  // columns beside goods and quantity
  bool priceAlone = false;               // a list of prices: no quantity, and each row must have its price
  std::u16string_view price = u"单价";
  std::u16string_view notOffered = u"本单不能选择该商品";  // of goods that are not in its list to pick from
  std::u16string_view unknownGoods = u"商品不存在";
  std::u16string_view repeated = {};  // of goods that stand on the document already, where it takes each once
};

/// A kind of document. Table and field names are identifiers for `compose`; texts are the program's own words.
struct DocumentFamily {
  std::u16string_view prefix;  // of the number, two letters
  std::u16string_view name;    // as rights refusals, cancels and lists of papers call it
  std::string_view flag;       // of its rows in the stock ledger

  // head and lines
  std::string_view head, lines, number, date, status, checker, checkDate, note;
  std::string_view warehouse;                // of the head, the one that stock is tested against
  std::string_view into;                     // the other warehouse, of a transfer
  HeadGoods whole;                           // of split and bundle
  LineTable line;                            // columns of `lines`
  bool comesIn = false;                      // lines bring goods into the warehouse
  bool sharesTables = false;                 // stands in the tables of the family before it, told apart by its number
  std::string_view allMoved;                 // of the head: no line waits to be put away or issued
  std::string_view pieces;                   // of the head: the sum of its lines, where it keeps one
  const PartialMovement* partial = nullptr;  // moves parts of another document: no ledger rows, no amounts
  std::string_view fromTill;                 // marks heads that the till wrote: its money goes its own way
  std::u16string_view shortageWord;  // what goods cannot do beyond the stock, in the words of its test: 出库, 退货 …
  std::u16string_view shortageAtAudit;  // kind for checkStockShort before audit; empty: not tested

  // money side of trading documents; empty names on the others
  std::string_view partner;                         // partner code
  PartnerType side{};                               // which kind of partner, where there is one
  std::string_view due, paid, settlement, account;  // amounts as the head stores them, settlement index, account
  std::string_view discount;                        // what is let off under settlement at paid amount
  std::string_view collected;                       // paid later against this document
  int headSign = 1;                                 // returns store minus the screen's amounts in their head
  std::string_view originalNumber;                  // of the partner's own document
  std::string_view isReturned, returnedBy;          // that it went back as a whole, and the number of the return
  std::string_view contract;                        // number of its contract

  // what a waiting document may still change in its head; empty names where it has none
  std::string_view invoiceNumber, invoiceAmount, freight, packing, freightPayer;

  Right make, audit, cancel;
  Right look;  // to look audited ones up, where that is a right of its own: in the enquiry of a side

  // words
  std::u16string_view savedLog;      // + number + "，共" + n + "种商品"
  std::u16string_view deletedLog;    // + number
  std::u16string_view emptiedLog;    // + number, when the last line took the head along
  std::u16string_view cancelledLog;  // + number
  std::u16string_view enquiry;       // where a document that was audited at once may be cancelled
  std::u16string_view waitingHint;   // second sentence of the save question of a document that will wait

  /// Asked of a waiting head before audit besides; null: nothing more. False: the operator said no.
  bool (*mayAuditMore)(const Row& head, Prompt& prompt) = nullptr;
  /// What stands against its audit, in words: asked before, and again inside its transaction.
  std::optional<QString> (*standsAgainst)(const QString& number) = nullptr;
  /// Why a waiting document cannot be deleted: another one stands on it. Null: it always can.
  std::optional<QString> (*stays)(const QString& number) = nullptr;
  bool logsEverySave = false;       // also of a document that is audited at once: its audit writes no log
  bool staysWithStock = false;      // takes another warehouse only when that knows its goods and has enough of them
  bool redateRenewsNumber = false;  // a new date always takes a number of that date
  std::string_view onDelete;        // statement with one `?`, the number, run when a waiting document is deleted
  std::span<const NumberMention> mentions = {};  // follow when the document takes another number

  /// Effects of audit, run inside its transaction once the head is audited.
  void (*post)(const QString& number);
  /// Takes an audited document back to waiting; false: refused.
  bool (*takeBack)(const QString& number, Prompt& prompt, CancelMode mode);

  DocumentPaper paper;
  LineImport import;

  /// A document with a partner's account: what is due and paid moves with it.
  constexpr bool hasMoney() const { return !due.empty(); }
  constexpr bool isCount() const { return !line.countedBook.empty(); }
};

namespace families {
extern const DocumentFamily purchaseReceipt, purchaseReturn, sale, saleReturn;
extern const DocumentFamily transfer, stocktake, loss, overflow, split, bundle;
extern const DocumentFamily loan, loanReturn;
extern const DocumentFamily putaway, issue;
inline constexpr std::reference_wrapper<const DocumentFamily> all[] = {
    purchaseReceipt, purchaseReturn, sale,   saleReturn, transfer,   stocktake, loss,
    overflow,        split,          bundle, loan,       loanReturn, putaway,   issue};
}  // namespace families

/// All of them, trading documents first.
inline std::span<const std::reference_wrapper<const DocumentFamily>> documentFamilies() {
  return families::all;
}
/// By prefix, or by a number that begins with it. Throws std::out_of_range for anything else.
const DocumentFamily& documentFamily(QStringView prefixOrNumber);
/// The same; null for anything else.
const DocumentFamily* findFamily(QStringView prefixOrNumber);
const DocumentFamily* findFamily(std::string_view prefixOrNumber);

}  // namespace jxc
