// 查询: what an enquiry is asked for, as one value, and the statement or computation that answers it.
#pragma once

#include "core/sql.h"
#include "engine/grouped_sums.h"

#include <QString>

#include <cstdint>
#include <exception>
#include <functional>
#include <initializer_list>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace jxc {

class Transaction;

/// What the figures of a period are compared with.
enum class CompareWith : std::uint8_t { Nothing, PeriodBefore, LastYear };

/// What the operator asks for. An empty text is no restriction. A row that was followed to what stands behind it adds
/// what it stands for: the goods, the day, the partner …
struct Criteria {
  QString from, to;    // first and last day "yyyy-MM-dd", or months "yyyy-MM"; both included
  QString warehouse;   // ck_sn; empty: all that the operator may see
  QString goodsClass;  // gc_sn: this class and all below
  QString goods;       // g_sn
  QString partner;     // kh_sn or ghs_sn
  QString employee;    // u_sn
  QString account;     // of the cash ledger, by name
  QString document;    // its number
  QString group;       // of a grouping that has no field of its own: a region, a type
  QString key;         // typed to be looked for
  bool exact = false;  // the key is a whole text, not a part of one
  QString kind;        // what the enquiry's own list of kinds says
  QString order;       // what the enquiry's own list of orders says
  bool descending = false;
  double amount = 0;                           // a quantity or amount that something is compared with
  CompareWith compare = CompareWith::Nothing;  // seen to by the kind: a statement is asked for each period
  unsigned boxes = 0;                          // what is ticked, as bits of the enquiry's own
  bool has(unsigned box) const { return (boxes & box) != 0; }
  bool operator==(const Criteria&) const = default;
};

// Conditions by the criteria, for a statement's filter. Columns are named with their alias: "a.gl_kdrq".
/// From the first second of the first day to the last second of the last one. The column holds text, with or without a
/// time behind the day.
void addPeriod(Filter& filter, const Criteria& criteria, std::string_view column);
/// The key as a part of one of the columns, without regard to case; with `exact` as the whole of one of them.
void addKey(Filter& filter, const Criteria& criteria, std::span<const std::string> columns);
void addKey(Filter& filter, const Criteria& criteria, std::initializer_list<std::string_view> columns);
/// The class and all below it.
void addClass(Filter& filter, const Criteria& criteria, std::string_view column);
/// Equal to what was chosen, when something was.
void addChoice(Filter& filter, std::string_view column, const QString& chosen);

/// The warehouses that an answer may tell of: the one that was chosen, and never one that the operator is not bound to.
/// Every statement over goods that stand somewhere restricts itself to them, each of its branches by its own column:
/// what reaches the operator is then his, in lines and in sums alike.
class Warehouses {
 public:
  /// Of the session's operator.
  explicit Warehouses(const Criteria& criteria);
  void restrict(Filter& filter, std::string_view column) const;
  /// Every warehouse counts: the statement may do without naming one.
  bool areAll() const;
  bool wereAskedFor() const { return asked_; }

 private:
  QString chosen_, operator_;
  mutable bool asked_ = false;
};

/// Why an answer knows no warehouse: what it tells of belongs to the whole shop.
struct NoWarehouse {
  std::string_view reason;
};

/// Thrown out of a computation that the operator has stopped.
struct EnquiryStopped : std::exception {
  const char* what() const noexcept override { return "enquiry stopped"; }
};

/// What a computed answer reads with: a connection that may be one of another thread. It notices when nobody waits any
/// longer.
class EnquiryReader {
 public:
  /// `goOn` is told how far the work is, in percent, and says whether to go on; it may come from any thread. `begins`
  /// gets the rows that an answer begins with.
  EnquiryReader(Database& database, std::function<bool(int percent)> goOn = {}, std::function<void(RowSet)> begins = {})
      : database_(database), goOn_(std::move(goOn)), begins_(std::move(begins)) {}
  /// Rows of a select; throws EnquiryStopped when it was stopped meanwhile.
  RowSet select(const Sql& sql);
  /// Tells the rows of a select ahead of the rest: the answer begins with them, each as it stays. Where nobody looks on
  /// they are not read.
  void begin(const Sql& first);
  /// Rows of a select summed (engine/grouped_sums.h); throws as well.
  RowSet sums(const Sql& lines, const SumColumns& columns);
  /// From now on all that is read is of one moment, whatever others post meanwhile. For a connection that only reads:
  /// it takes no lock then.
  void holdMoment();
  /// To be called every some thousand rows; throws EnquiryStopped when it was stopped.
  void progress(int percent);

 private:
  Database& database_;
  template <class Read>
  RowSet stoppable(Read read);
  std::function<bool(int)> goOn_;
  std::function<void(RowSet)> begins_;
  int percent_ = 0;
  std::shared_ptr<Transaction> moment_;
};

/// Work that gives rows, in whatever thread: what it needs of session and parameters is in it already.
using Computation = std::function<RowSet(EnquiryReader&)>;

/// An answer that is only to be run: a statement, or a computation.
using Question = std::variant<Sql, Computation>;

/// Where the rows of an enquiry come from. There is no way to make one that says nothing of warehouses.
class Source {
 public:
  /// A statement that restricts itself to the warehouses.
  constexpr Source(Sql (*statement)(const Criteria&, const Warehouses&)) : bound_(statement) {}
  /// Work that does. It is made in the window's thread, and runs elsewhere.
  constexpr Source(Computation (*computation)(const Criteria&, const Warehouses&)) : computed_(computation) {}
  /// A statement, or work, over what belongs to no warehouse, with the reason.
  constexpr Source(Sql (*statement)(const Criteria&), NoWarehouse why) : plain_(statement), why_(why.reason) {
    if (why.reason.empty()) throw std::exception();  // never compiles: say why
  }
  constexpr Source(Computation (*computation)(const Criteria&), NoWarehouse why)
      : computedPlain_(computation), why_(why.reason) {
    if (why.reason.empty()) throw std::exception();
  }

  /// The statement or the work for these criteria and the session's operator. Throws std::logic_error when it did not
  /// ask for the warehouses although it says so.
  Question ask(const Criteria& criteria) const;
  /// Empty where warehouses count.
  std::string_view reasonForNoWarehouse() const { return why_; }

 private:
  Sql (*bound_)(const Criteria&, const Warehouses&) = nullptr;
  Computation (*computed_)(const Criteria&, const Warehouses&) = nullptr;
  Sql (*plain_)(const Criteria&) = nullptr;
  Computation (*computedPlain_)(const Criteria&) = nullptr;
  std::string_view why_;
};

/// Runs a question on a connection.
RowSet answer(const Question& question, EnquiryReader& reader);
/// The same at once, on the account database in use.
RowSet answer(const Source& source, const Criteria& criteria);

}  // namespace jxc
