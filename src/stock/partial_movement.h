// 分批收发: goods that follow a document in parts: what a receipt bought is put away, what a sale sold is issued, as it
// comes and goes. A kind is one value; documents, lists, screens and proof go by it.
#pragma once

#include "core/enquiry.h"
#include "core/sql.h"
#include "stock/cancelling.h"
#include "stock/document_family.h"

#include <QString>

#include <optional>
#include <string>
#include <string_view>

namespace jxc {

/// A document that moves parts of another one (its source), line by line, until nothing of that is open.
struct PartialMovement {
  const DocumentFamily* family;  // putaway, issue
  const DocumentFamily* source;  // receipt, sale
  const DocumentFamily* back;    // the return that closes a rest which never comes, or never goes
  std::string_view emptied;      // of the source's head: the day on which its last piece moved; empty: not kept
  int direction;                 // +1 onto the shelf, −1 off it
  // words
  std::u16string_view shortRefusal, shortQuestion;  // what is not there does not go, by parameter; empty: not tested
  std::u16string_view doing;                        // 入库
  std::u16string_view sourceWord;                   // 采购进货单, before the number of the source
  std::u16string_view sourceDeed;                   // 采购: "入库数量大于采购数量"
  std::u16string_view auditLog, auditLogEnd;        // + number + "，共" + n + end; without an end the number alone

  // Of a line of the source, in pieces: what it is of, what has moved, what never will. Open is what is left of it.
  std::string_view quantity() const { return source->line.columns->quantity; }
  std::string_view moved() const { return source->line.columns->moved; }
  std::string_view cancelled() const { return source->line.closed; }
  bool isInUse() const { return source->line.columns->movedLater(); }  // by parameter
  bool testsShelf() const { return !shortQuestion.empty(); }
};

namespace partial {

extern const PartialMovement putaway, issue;
/// Goods on loan and their return: of it only what is open is asked here.
extern const PartialMovement lending;
/// What moves parts of documents of this family; null: nothing does.
const PartialMovement* behind(const DocumentFamily& source);

/// That a line of the source, called so in the statement, is open. The one place where this is said.
std::string isOpen(const PartialMovement& movement, std::string_view line);
/// What is open of it, in pieces.
std::string openPieces(const PartialMovement& movement, std::string_view line);

/// " & …" behind the name of a goods: the mark of a gift on a line of such a document, as its source has it. Nothing
/// for other documents, and where sources know no gifts.
std::string giftMark(const DocumentFamily& family, std::string_view line);

/// Lines of the source that are open, `b`, with their heads `c` and goods `a`, of this warehouse and partner (empty: of
/// all), oldest first: id, lid (the id that lines refer to), djh, rq, partner, g_sn and the names of the goods, sl,
/// movedsl, opensl, kc_sl (on the shelf), gift. Goods that were disabled are among them: what was bought or sold has to
/// come to its end.
struct OpenLines {
  QString partner, warehouse;
  QString key;          // part of the source's number, or of number, name, letters and barcode of the goods
  QString source;       // only this document
  QString barcode;      // only this code
  std::int64_t id = 0;  // only the line that lines refer to by this id
};
Sql openLines(const PartialMovement& movement, const OpenLines& wanted);

/// Documents with open lines, oldest first: id, djh, rq, partner, partner_name, ck_sn, ck_name, u_sn, u_name, note,
/// lines, opensl. By the head's flag, so that their number counts and not that of all documents.
Sql waitingSources(const PartialMovement& movement, const OpenLines& wanted);

/// Open lines `b` of the goods and warehouses that are asked for, with their heads `c`, as what stands behind `from`.
Sql openOf(const PartialMovement& movement, const Criteria& criteria, const Warehouses& warehouses);

/// What a document takes of a line of its source, in pieces, but for the line `except` of its own.
double takenBy(const PartialMovement& movement, const QString& number, std::int64_t sourceLine, std::int64_t except);

/// Why a document cannot be audited: its source is no audited document of its warehouse any more, or has less open than
/// the document takes; lines of one source line add up.
std::optional<QString> standsAgainst(const PartialMovement& movement, const QString& number);

/// A source of which nothing is open any more says so in its head, and keeps `day` where such a day is kept; empty: it
/// keeps none.
void markEmptied(const PartialMovement& movement, const QString& source, const QString& day);

/// Effects of audit: shelf, goods master, moved pieces and flag of the sources, month figures. No ledger row: the books
/// have known the goods since the source was audited.
void post(const PartialMovement& movement, const QString& number);
/// Takes them back. False: refused.
bool takeBack(const PartialMovement& movement, const QString& number, Prompt& prompt, CancelMode mode);

}  // namespace partial
}  // namespace jxc
