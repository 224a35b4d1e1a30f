// 应收应付账表屏幕: the overview of each side, settling one document, and the repair: one class each.
#pragma once

#include "accounts/partner_overview.h"
#include "accounts/settling.h"
#include "core/fillers.h"
#include "ui/screen.h"

#include <optional>
#include <string_view>

namespace jxc {

struct PartnerOverviewWords {
  const PartnerSide* side;
  std::string_view settleScreen, repairScreen;
  const char16_t* allPartners;   // 所有客户, 所有供货商
  const char16_t* onlyInDetail;  // refusal of settling in the summary
  std::optional<ListItem> (*pickPartner)();
};

/// "应收款管理", "应付款管理".
class PartnerOverviewScreen : public ui::Screen {
 public:
  PartnerOverviewScreen(const ui::ScreenSpec& spec, const PartnerOverviewWords& words);

  ui::Field& tdate11 = field("tdate11");
  ui::Field& tdate12 = field("tdate12");
  ui::Field& tKhName1 = field("tKhName1");
  ui::Field& comUser = field("comUser");
  ui::Field& tkey = field("tkey");
  ui::Field& chkZero = field("chkZero");
  ui::Field& chkAll = field("chkAll");
  ui::Field& rMxb = field("rMxb");
  ui::Field& rHzb = field("rHzb");
  ui::Grid& gridMx = grid("gridMx");
  ui::Grid& gridGoods = grid("gridGoods");
  ui::Grid& gridHz = grid("gridHz");

 protected:
  void activate() override;

 private:
  void refresh();
  void showMode();
  void showGoods();
  void settle();
  void repair();
  void print();
  QString partner() const;

  const PartnerOverviewWords words_;
};

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

/// "重新计算" of the running balances.
class PartnerRepairScreen : public ui::Screen {
 public:
  PartnerRepairScreen(const ui::ScreenSpec& spec, const PartnerSide& side);
  /// Partner by number (empty: all) and as shown, and the first day.
  bool run(const QString& partner, const QString& shown, const QString& from);

 private:
  const PartnerSide& side_;
  QString partner_, from_;
};

}  // namespace jxc
