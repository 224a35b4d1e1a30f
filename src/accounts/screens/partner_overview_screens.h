// 应收应付、发票账表的对话框: settling one document, and the repair of the running balances.
#pragma once

#include "accounts/partner_overview.h"
#include "accounts/settling.h"
#include "ui/screen.h"

#include <QString>

#include <optional>

namespace jxc {

/// "单据收款", "单据付款": what one sale, purchase or return still leaves open.
class SettlementScreen : public ui::Screen {
 public:
  SettlementScreen(const ui::ScreenSpec& spec, const PartnerSide& side);
  bool edit(const partner_books::Settlement& settlement);

 protected:
  void activate() override;

 private:
  void save();
  const PartnerSide& side_;
  partner_books::Settlement settlement_;
};

/// Shows the form of its side for a document that may be settled. Whether something was paid or collected.
bool editSettlement(const PartnerSide& side, const std::optional<partner_books::Settlement>& opened);

/// "重新计算" of the running balances of a ledger.
class PartnerRepairScreen : public ui::Screen {
 public:
  PartnerRepairScreen(const ui::ScreenSpec& spec, const partner_books::PartnerLedger& ledger, const PartnerSide& side);
  /// Of one partner by number, or of all (empty), from that day on. Whether it was done.
  bool run(const QString& partner, const QString& from);

 private:
  const partner_books::PartnerLedger& ledger_;
  const PartnerSide& side_;
  QString partner_, from_;
};

}  // namespace jxc
