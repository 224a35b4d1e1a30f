// 核对用账: the account set in memory as the proof needs it: ledger rows by goods and warehouse, documents with what
// stands for them in each ledger.
#pragma once

#include "engine/database.h"
#include "engine/row_walk.h"
#include "maintenance/proof_findings.h"
#include "stock/document_family.h"
#include "stock/ledger_flags.h"
#include "stock/running_stock.h"

#include <array>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace jxc::proof {

/// Thrown when the operator stops the proof.
struct Stopped {};

/// Codes and numbers as small integers. Looked up for every row of every ledger: slots lie side by side, so that a text
/// is compared only when its hash agrees.
class Names {
 public:
  int add(std::string_view text) { return last_ >= 0 && text == lastText_ ? last_ : addOther(text); }
  int find(std::string_view text) const;  // -1: not there
  const std::string& text(int index) const { return texts_[static_cast<std::size_t>(index)]; }
  QString shown(int index) const { return QString::fromStdString(text(index)); }
  int size() const { return static_cast<int>(texts_.size()); }

 private:
  struct Slot {
    std::uint32_t hash = 0;
    int index = -1;  // -1: free
  };
  int addOther(std::string_view text);
  int found(int index);
  /// The slot of a text, or the free one where it belongs.
  std::size_t slotOf(std::string_view text, std::uint32_t hash) const;
  void makeRoom();

  std::deque<std::string> texts_;  // addresses stay
  std::vector<Slot> slots_ = std::vector<Slot>(64);
  int last_ = -1;
  std::string_view lastText_;
};

struct LedgerRow {
  std::int64_t id;
  int date, number;
  const LedgerFlag* flag;
  double quantity, net, price;
  double stockBefore, valueBefore, average, stock, value;

  StockMovement movement() const { return {flag, quantity, net, price}; }
  /// What the row adds to the stock.
  double inflow() const {
    if (!flag) return 0;
    return flag->group == MovementGroup::In ? quantity : -quantity;
  }
  bool movesAverage() const { return flag && flag->movesAverage(quantity); }
  bool isOpening() const { return flag && flag->flag == "qc"; }
};

struct Balance {
  std::int64_t id = 0;  // 0: there is none
  double shelf = 0, book = 0, cost = 0, sold = 0;
};

/// A goods in a warehouse.
struct Pair {
  int goods = 0, warehouse = 0;
  // By date and id; the balancing lines are left out. Side by side, so that each check runs through memory in its
  // order.
  std::vector<LedgerRow> rows;
  Balance balance;
  double waitingIn = 0;   // received, not put away yet
  double waitingOut = 0;  // sold, not issued yet
};

/// A document, known from its head or from what stands somewhere under its number.
struct Document {
  const DocumentFamily* family = nullptr;  // null: no head
  int number = 0;
  int heads = 0, auditedHeads = 0;
  bool audited = false, signedOff = false;
  bool fromTill = false;
  bool closed = false;        // audited, of a day that a closing has carried on
  std::optional<bool> moved;  // what the head says of its goods; nothing where no putaway or issue can come behind it
  double due = 0, paid = 0;
  int settlement = 0;
  int warehouse = -1, warehouseIn = -1;
  int goods = -1;  // of the head of a split or bundle
  double headQuantity = 0;
  int lines = 0, goodsLines = 0, movingLines = 0;
  int openLines = 0;                // goods that wait for putaway or issue
  int overLines = 0;                // of which more moved than there is
  double total = 0, balancing = 0;  // of lines; the balancing line's part
  double pieces = 0;                // of lines
  std::int64_t firstLine = 0;
  std::string_view lineTable;  // of the first line
  // in the ledgers
  int ledgerRows = 0;
  double ledgerTotal = 0, ledgerPieces = 0;
  std::int64_t firstLedgerRow = 0;
  char ledgerKind = 0;  // '9' till, 'd' gift for points, 'r' reserved kinds, 'o' rounding
  int partnerRows = 0, cashRows = 0, invoiceRows = 0;
  double partnerDue = 0, partnerPaid = 0, cash = 0, invoiceDue = 0;

  /// Its rows in the ledgers stand in those that a closing carried on; it stays until its goods have moved.
  bool isCarried() const { return closed && ledgerRows + partnerRows + cashRows + invoiceRows == 0; }
};

struct Books;

/// A line of a waiting document, for what cancels leave behind.
struct WaitingLine {
  int document, goods, warehouse;  // warehouse: of the line itself, else -1
  double quantity, price;
  double cost;             // of what a customer returned
  bool wasAudited;         // id2 tells, where the family has one
  bool cancelled = false;  // it was audited once: only then it explains anything
};

/// What the log tells of documents: "取消审核商品销售单XS…". Read when it is first asked; an operator may have cleared
/// it.
class DocumentLog {
 public:
  explicit DocumentLog(Books& books) : books_(books) {}
  /// The moment of the last cancel of this document; null: none, as far as the log goes back.
  const std::string* cancelled(int number);
  /// Whether the log knows the document at all: then it also knows whether it was cancelled.
  bool mentions(int number);
  /// Whether documents that leave the cost alone were cancelled and deleted since: their goods are not known any more.
  bool hasDeleted();

 private:
  void read();
  Books& books_;
  bool isRead_ = false, hasDeleted_ = false;
  std::unordered_map<int, std::string> cancelled_;
  std::unordered_set<int> mentioned_;
};

struct Books {
  Books(Database& database, const Progress& progress);

  Database& db;
  StockDigits digits;
  Findings findings;

  Names goods, warehouses, numbers, dates;
  std::string closedUntil;      // the last day that a closing took, with its last second; empty: none did
  std::int64_t ledgerRows = 0;  // all
  std::vector<Pair> pairs;
  std::vector<int> pairsInOrder;  // by codes
  std::vector<Document> documents;
  std::vector<WaitingLine> waiting;
  DocumentLog log{*this};

  void load();

  template <class... Args>
  RowSet select(const SqlText& sql, const Args&... args) {
    const std::array<Value, sizeof...(Args)> values{Value(args)...};
    return db.select(sql, values);
  }
  /// All rows of a table by a select, in its order; the operator is told of them on the way, up to this share of the
  /// work. Neither `take` nor who is told may ask this database.
  template <class Take>
  void walk(std::string_view table, const SqlText& sql, int percentBehind, Take take) {
    Way way = wayThrough(table, percentBehind);
    walkRows(db, sql, {}, [&](const WalkedRow& row) {
      take(row);
      if (++way.done % kToldRows == 0) tell(way);
    });
  }
  /// Rows of a table in the order of `id`. `columns` follow the id. `take` must not ask the database.
  void eachRow(std::string_view table, std::string_view columns, const TakeRow& take);
  /// The share of the whole work that this step is, told to the operator.
  void step(int percent, const QString& doing);

  Pair& pair(int goods, int warehouse) { return pairs[static_cast<std::size_t>(pairOf(goods, warehouse))]; }
  int pairOf(int goods, int warehouse);
  int findPair(int goods, int warehouse) const;  // -1: none
  Document& document(std::string_view number);
  QString nameOf(const Pair& pair) const;
  const std::string& dateOf(const LedgerRow& row) const { return dates.text(row.date); }
  /// For each of `dates` whether it is such a day: there are few of them, and many rows of each.
  template <class Is>
  std::vector<char> whichDates(Is is) const {
    std::vector<char> which;
    for (int i = 0; i < dates.size(); ++i)
      which.push_back(is(dates.text(i)) ? 1 : 0);
    return which;
  }

 private:
  /// The least and the greatest `id`; nothing of an empty table.
  struct Ends {
    std::int64_t first, last;
  };
  std::optional<Ends> endsOf(std::string_view table);
  /// A walk from one share of the work to another. Of so many rows, or of less where some were deleted.
  struct Way {
    int from, behind;
    std::int64_t rows, done = 0;
  };
  static constexpr std::int64_t kToldRows = 16384;
  Way wayThrough(std::string_view table, int percentBehind);
  void tell(const Way& way);
  void loadLedger();
  void loadBalances();
  void loadHeads();
  void loadLines();
  void markCancelled();
  void sortPairs();

  const Progress& progress_;
  int percent_ = 0;
  QString doing_;
  std::vector<std::vector<int>> pairsOfGoods_;  // a goods lies in few warehouses
};

/// Documents of this family leave the cost of their goods alone.
bool leavesCost(const DocumentFamily& family);
/// Amounts with up to six decimals that the program has summed one by one.
bool sameAmount(double a, double b);
bool sameFigure(double a, double b);
/// Whether some of the amounts add up to `sum`, none included.
bool addsUp(double sum, const std::vector<double>& amounts);

// The checks. Each reads what `load` has found and adds to the findings.
void proveStock(Books& books);     // running figures
void proveBalances(Books& books);  // what stands per goods and warehouse
void proveMonths(Books& books);
void proveMoney(Books& books);      // cash, partners, invoices; notes them on the documents
void proveUnusual(Books& books);    // what is possible and hardly meant
void proveDocuments(Books& books);  // heads, lines, ledgers, orphans, doubles, drafts
void proveLog(Books& books);        // each row of the log follows from the one before

}  // namespace jxc::proof
