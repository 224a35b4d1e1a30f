// 单据规则: what the screens of every document ask of its rules: drafts, lines, staging, save, waiting list.
#pragma once

#include "core/reading.h"
#include "core/refusal.h"
#include "stock/document.h"
#include "stock/line_amounts.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace jxc {

/// Which rows a command works on: the draft of this operator, its staging rows, or the lines of a waiting document.
enum class Lines : char { Draft, Staging, Waiting };

/// What the line dialog shows and gives back.
struct LineDraft {
  QString goods;
  LineAmounts amounts;
  QString note;
  QString batch, produced, expires;  // t_ph, t_scrq, t_yxq
  double cost = 0, retail = 0;       // a unit, in yuan; on documents of the sales side
  QString gift;                      // "(赠品)" on a gift: it takes stock and cost and adds nothing to what is due
  QString warehouse;                 // code; of documents whose lines have their own
  double shelf = 0, book = 0;        // pieces, as a count finds them written
  QString source;                    // number of the document that the line moves a part of
  std::int64_t sourceLine = 0;       // and the line there
  double rent = 0, deposit = 0;      // of goods on loan: yuan a piece and day, yuan of the whole line
  QString account;                   // that took the deposit, by its name
};

struct LineResult {
  std::int64_t id = 0;  // 0: nothing was written (quantity zero)
  QString number;       // the document's number now; another one when it had been taken
  explicit operator bool() const { return id != 0; }
};

enum class Scan { Added, Increased, AlreadyThere, NotFound };
struct ScanResult {
  Scan outcome = Scan::NotFound;
  std::int64_t id = 0;  // the line that was added or increased
  QString number;       // the document's number now
  Refusal refusal;
  bool unknown = false;  // no goods at all has this barcode
};

/// Told how far a long command has come; false stops it.
using LineProgress = std::function<bool(int percent)>;
/// Tells it after each hundredth row of a long list, and at its end. False: stopped.
bool goesOn(const LineProgress& progress, std::size_t done, std::size_t all);

struct AddedLines {
  int lines = 0;
  std::int64_t last = 0;  // id; 0: none was written
  QString number;         // the document's number now
  Refusal closed;         // why nothing was written: it waits no longer, or its day is locked; told by whoever asked
};

/// Answers remembered while one picking screen is open.
struct PickingMemory {
  bool refuseRepeats = false;     // the operator said no once: repeats are passed over without asking
  std::optional<bool> goesShort;  // whether goods beyond the stock may be picked, as it was answered for the selection
  QStringList passedOver;         // goods that stand on a document that takes each once; told by whoever clears them
};

/// "\r\n\r\n商品：number name": behind a refusal that would not tell which.
QString namedGoods(const QString& goods);
/// Refuses a quantity that no line has (`kTooMany`).
bool isTooMany(double quantity, Prompt& prompt, Subject about = Subject::Quantity);

/// Names what was passed over, and forgets it.
void tellPassedOver(PickingMemory& memory, Prompt& prompt);

struct CopyResult {
  int lines = 0;
  QString number;
  QStringList leftOff = {};  // "number name" of picked goods that the warehouse turned out not to know
  Refusal closed = {};       // as of `AddedLines`
};

/// What is to be told of a price that a spreadsheet brings.
struct SheetPrice {
  std::optional<QString> fault = {};    // the row is refused
  std::optional<QString> warning = {};  // the row passes without the price
};

/// The head of a document in the making, as every document has it. What a document has besides derives from it.
struct DocumentDraft {
  QString number, date;
  QString warehouse, salesperson;  // codes
  QString note;
};

/// The same of a document with a partner and without his money.
struct DraftOfPartner : DocumentDraft {
  QString partner;  // code
};

struct WaitingFilter {
  QString partner;    // code, where documents have one; empty: all
  QString key;        // part of number, note and what else the document is known by
  QString warehouse;  // code; empty: all
  bool newestFirst = true;
  std::vector<std::string_view> without;  // columns that nobody here may see: they are not asked for
};

/// Where a line stands: what prices, stock and history depend on.
struct LinePlace {
  QString number, date;
  QString partner, warehouse;  // codes
};

/// What the goods list of the picking screen shows.
struct PickFilter {
  QString key;               // one or more words, each must match somewhere
  QString classNumber;       // this class and all below; empty for all
  bool inStock = false;      // only goods that lie in the warehouse
  bool ofPartner = false;    // only goods that this partner has dealt in
  QString lensProduct = {};  // only articles of this lens product
  QString goods = {};        // only this one, by its number
};

/// Goods that are taken many at a time, from a spreadsheet or a sheet of powers: what may stand there, and how it is
/// written. Without state; commands of their own transactions.
class ManyLines {
 public:
  virtual ~ManyLines() = default;

  virtual LineDraft newLine(const QString& goods, const LinePlace& place, bool staged) const = 0;
  /// The part of the line dialog that looks at the price alone: a sale asks before it sells below what was paid.
  virtual bool mayPrice(const LineDraft&, Prompt&) const { return true; }
  virtual QuantityRange quantities() const { return {}; }
  /// Whether a goods stands there at most once: what is picked again is passed over.
  virtual bool goodsStandOnce() const { return false; }
  /// Whether stock, and what depends on it, is not to be seen while lines are typed: whoever knows what should be there
  /// finds it.
  virtual bool hidesStock() const { return false; }
  /// Whether the operator may type a price at all.
  virtual bool priceMayChange() const { return true; }
  /// Many lines as they stand, in their order: all or, when it is stopped, nothing. The number is looked at once.
  virtual std::optional<AddedLines> addLines(Lines where, const LinePlace& place, std::span<const LineDraft> drafts,
                                             const LineProgress& progress = {}) const = 0;
  virtual Sql goodsToPick(const LinePlace& place, const PickFilter& filter) const = 0;
  virtual bool mayStage(const QString& goods, const LinePlace& place, Lines target, PickingMemory& memory,
                        Prompt& prompt) const = 0;
  /// Whether a line may have this quantity: not more than any line has, and against the stock of the warehouse where
  /// the document takes goods out: refused or asked about. With a memory, the first answer holds for the whole
  /// selection.
  virtual bool stockAllows(const QString& goods, double quantity, const LinePlace& place, Prompt& prompt,
                           PickingMemory* memory = nullptr) const = 0;
  /// Takes the price (yuan) that a spreadsheet has for a new line.
  virtual SheetPrice takeSheetPrice(LineDraft& line, double yuan) const;
};

/// Rules of the lines of one document, as its screens ask for them.
class LineRules : public ManyLines {
 public:
  virtual std::optional<LineDraft> loadLine(Lines where, std::int64_t id) const = 0;
  /// Whether a line may stand as it was typed: refusals and questions of the line dialog, before it is written.
  virtual bool mayWrite(const LineDraft&, const LinePlace&, Prompt&) const { return true; }
  /// Whether an article that was made for the document can stand on it: not where goods go out of a warehouse.
  virtual bool takesNewGoods() const { return true; }
  /// OK of the line dialog. Nothing is written for a quantity of zero, or when the operator says no.
  virtual LineResult addLine(Lines where, const LinePlace& place, const LineDraft& draft, Prompt& prompt) const = 0;
  virtual bool changeLine(Lines where, std::int64_t id, const LinePlace& place, const LineDraft& draft,
                          Prompt& prompt) const = 0;
  /// Whether a cell of a line of this goods opens at all; `field` as below.
  bool cellMayChange(QStringView goods, bool isGift, QStringView field) const;
  /// Whether a cell may take what was typed, as the line dialog would ask: asked before `setChange`.
  virtual bool cellAllows(const QString& /*value*/, QStringView /*field*/, Lines, std::int64_t /*id*/, const LinePlace&,
                          Prompt&) const {
    return true;
  }
  /// A cell edit: "dj", "sl", "taxdj", "tax", "dzl".
  virtual double setChange(const QString& value, QStringView field, Lines where, std::int64_t id,
                           Prompt& prompt) const = 0;
  virtual ScanResult enterBarcode(const LinePlace& place, const QString& code, bool oncePerGoods,
                                  Prompt& prompt) const = 0;
  /// One piece of a goods, as its barcode would enter it.
  virtual ScanResult enterGoods(const LinePlace& place, const QString& goods, bool oncePerGoods,
                                Prompt& prompt) const = 0;

  // Staging: goods picked in a list before they become lines of Draft or Waiting.
  virtual std::int64_t stageGoods(const QString& goods, double quantity, const LinePlace& place, Lines target,
                                  PickingMemory& memory, Prompt& prompt) const = 0;
  virtual CopyResult copyStaged(const LinePlace& place, Lines target) const = 0;
  /// The line stands in the warehouse of this place from now on, on documents whose lines have their own.
  virtual void takeWarehouse(LineDraft& line, const LinePlace& place) const { line.warehouse = place.warehouse; }
  /// The lines of this operator's draft take price and stock of another warehouse.
  virtual void moveDraftTo(const LinePlace&) const {}

  // What was traded before, for the line dialog; columns as its grids name them.
  virtual Sql history(const QString&, const QString& /*partner*/) const { return {}; }
  virtual Sql quotes(const QString&, const QString& /*partner*/) const { return {}; }
};

/// The other side of a document, as its head names it.
struct DocumentPartner {
  std::string_view table, key, name, mnemonic;
  std::u16string_view noun;  // 客户, 供货商
  QString (*byDefault)();
};
const DocumentPartner& partnerOf(const DocumentFamily& family);

/// Rules of one document, as its screens ask for them, whatever it has besides lines.
class DocumentRules {
 public:
  virtual ~DocumentRules() = default;

  virtual const DocumentFamily& family() const = 0;
  virtual const LineRules& lines() const = 0;
  /// The rules of the document with this number: others where one screen makes documents of several families. Its lists
  /// name their columns by `family()` then, and ids of its waiting list are those of the list alone.
  virtual const DocumentRules& of(const QString& /*number*/) const { return *this; }

  Sql draftLines(const QString& number) const;
  virtual RowSet waiting(const WaitingFilter& filter) const;
  Sql waitingLines(const QString& number) const;

 protected:
  /// Whose names of columns the lists have beside the family's own.
  virtual const DocumentFamily& shownAs() const { return family(); }
  /// Statement of the waiting heads `a` with the names that screens show (`whole_name`: of what is split or bundled),
  /// open for further conditions.
  std::string headsWithNames() const;
  /// Number, date, warehouse and salesperson of a new document.
  void begin(DocumentDraft& draft, const QString& lastDate) const;
  /// Refusals of save that all documents have, in the order in which the operator sees them; behind the first stands
  /// what this document lacks of its own.
  bool isIncomplete(const DocumentDraft& draft, Prompt& prompt, const Refusal& own = {}) const;
};

/// The same with the head: `Draft` is what the first panel of the screen collects.
template <class Draft>
class RulesOver : public DocumentRules {
 public:
  /// A new document after one of `lastDate`, yyyy-MM-dd.
  virtual Draft fresh(const QString& lastDate) const {
    Draft draft;
    begin(draft, lastDate);
    return draft;
  }
  virtual SaveResult save(const Draft& draft, Prompt& prompt) const = 0;
};

/// Column g_name of a line `a` with its goods `b`, with the mark of a gift.
std::string nameWithGift(const DocumentFamily& family);

/// The warehouse that was chosen is none any more: deleted at another station, or (`own`) taken from this operator.
Refusal warehouseDeleted(const QString& warehouse, Subject which);
Refusal warehouseGone(const QString& own);

/// Whose goods are to stand on a document once: what is scanned a second time is changed where it stands.
Refusal alreadyOnDocument(const QString& goods);

/// A head as every document has it, under this number and waiting; what it has besides is written onto the row. Its id.
std::int64_t insertWaitingHead(const DocumentFamily& family, const DocumentDraft& draft, const QString& number);

/// A document's own routine as descriptions of screens name it that only need what every document has.
template <auto Rules>
const DocumentRules& rulesOf() {
  return Rules();
}

// Staging rows of this operator, whatever document they are picked for.
Sql stagedLines();
void unstage(std::int64_t id);

/// Number of a document of this operator that was begun and never saved: the program ended in between. Empty: none.
QString unsavedDraft(const DocumentFamily& family);
/// The date that a document number was given for, yyyy-MM-dd; empty when it is no number of that form.
QString dateOfNumber(const QString& number);

}  // namespace jxc
