// 现金银行录入: money in, money out and transfers as they are entered.
#pragma once

#include "accounts/cash_lines.h"
#include "ui/screen.h"

namespace jxc {

/// 进款, 出款 or 银行转账: one form, with a second account for the transfer.
class CashLineScreen : public ui::Screen {
 public:
  CashLineScreen(const ui::ScreenSpec& spec, cash::Movement movement);

  ui::Field& comYhzh = field("comYhzh");
  ui::Field* comYhzh1 = hasField("comYhzh1") ? &field("comYhzh1") : nullptr;
  ui::Field& tfyje = field("tfyje");
  ui::Field& comUser = field("comUser");
  ui::Field& dateCg = field("dateCg");
  ui::Field& tnote = field("tnote");

  /// Opens on a line that waits.
  bool edit(const cash::LineDraft& draft);

 protected:
  void activate() override;

 private:
  cash::LineDraft collect() const;
  void save();
  const cash::Movement movement_;
  cash::LineDraft draft_;
};

// Commands on a row of the ledger.
/// Opens a line that waits. Whether the list has changed, be it by another station.
bool modifyCashLine(const Row& row, Prompt& prompt);
/// Shows the slip; lines of other documents have papers of their own.
bool printCashSlip(const Row& row, Prompt& prompt);

}  // namespace jxc
