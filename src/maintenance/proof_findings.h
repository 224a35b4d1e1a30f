// 核对结果: the kinds of findings with their words, and the collector that keeps the first of each kind.
#pragma once

#include "maintenance/prove.h"

#include <map>
#include <string_view>

namespace jxc::proof {

enum class Kind : std::uint8_t {
  // what the books lie on
  Damage,
  NoChecksums,
  ForeignCode,
  ForeignTable,
  // stock ledger
  UnknownFlag,
  Running,
  RunningByPrice,
  RunningOtherDigits,
  RunningCancelledTwice,
  RunningLateOpening,
  RunningAverageSet,
  RunningCostFilled,
  // balances
  BalanceMissing,
  BalanceTwice,
  BookStock,
  ShelfStock,
  Sold,
  SoldClosed,
  WarehouseCost,
  WarehouseCostFixed,
  WarehouseCostBehind,
  GoodsStock,
  GoodsAverage,
  GoodsAverageBehind,
  Month,
  MonthBehind,
  MonthTwice,
  // money
  PartnerBalance,
  PartnerMaster,
  CashBalance,
  CashTransferCancelled,
  InvoiceBalance,
  InvoiceByHand,
  // documents
  NoLines,
  GoodsUnmoved,
  MoveUnmarked,
  MovedTooMuch,
  PartsDiffer,
  LoanDiffers,
  LoanTooMuch,
  DepositTooMuch,
  Checker,
  WaitingPosted,
  RowsMissing,
  LedgerAmount,
  HeadAmount,
  StaleBalancing,
  PartnerLine,
  InvoiceLine,
  CashLine,
  DifferenceLine,
  PaymentLine,
  ExpenseLine,
  DocumentTwice,
  DocumentSharedNumber,
  // orphans and doubles
  LedgerOrphan,
  PartnerOrphan,
  CashOrphan,
  InvoiceOrphan,
  RoundingOrphan,
  ContractOrphan,
  ContractGone,
  ContractFile,
  GoodsGone,
  WarehouseGone,
  CodeTwice,
  // the log
  LogChain,
  // hardly meant
  OddFigure,
  FutureDay,
  DatedBack,
  LockedDay,
  ClockBehind,
  // drafts
  Draft,
  Staging,
};

struct KindWords {
  Kind kind;
  std::string_view code;
  Weight weight;
  std::u16string_view check, reason, repair;
};
const KindWords& wordsOf(Kind kind);

/// Where a finding stands and what differs.
struct Place {
  QString place, stored, due;
};

class Findings {
 public:
  /// Counts one; `place` is asked for the first of a kind only.
  template <class MakePlace>
  void add(Kind kind, MakePlace&& place) {
    Entry& entry = entries_[kind];
    if (++entry.count == 1) entry.first = place();
  }
  void add(Kind kind, std::int64_t more, Place place);
  bool has(Kind kind) const { return entries_.contains(kind); }
  /// Wrong ones first, then known ones, then notes.
  std::vector<Finding> all() const;

 private:
  struct Entry {
    std::int64_t count = 0;
    Place first;
  };
  std::map<Kind, Entry> entries_;
};

}  // namespace jxc::proof
