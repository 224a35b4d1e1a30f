// 单据审核确认: the audit dialog of a trading document: paid amount, settlement, account and note may change.
#pragma once

#include "stock/trading_rules.h"
#include "ui/screen.h"

class QLabel;

namespace jxc {

struct AuditScreenSpec {
  ui::ScreenSpec screen;
  const TradingRules& (*rules)();
  std::string_view paid;           // name of the paid amount's input: "tsfje"
  std::u16string_view settleKind;  // "cg", "xs": which settlements there are
};

class AuditScreen : public ui::Screen {
 public:
  explicit AuditScreen(const AuditScreenSpec& spec);

  /// Opens on a waiting document; whether it is audited now. One that waits no longer opens nothing.
  bool audit(const QString& number);

  ui::Field& paid;
  ui::Field& comJsfs = field("comJsfs");
  ui::Field& comYhzh = field("comYhzh");
  ui::Field& tnote = field("tnote");
  QPushButton& btnOK = command("btnOK");

 protected:
  void activate() override;

 private:
  void collect();  // what the operator has typed
  void showDifference();
  void saveCheckedValueTab2();

  const AuditScreenSpec description_;
  const TradingRules& rules_;
  AuditDraft draft_;
  QLabel* difference_;  // what will become of it, while one types
};

/// How a document may be settled, by its kind: "cg" and "xs" as documents of purchase and sale are, "ct" a return to
/// the supplier, "xt" a return from the customer, whose rest always goes on account.
std::vector<ListItem> settlementItems(std::u16string_view kind);
void showSettlement(ui::Field& field, Settlement settlement);
Settlement chosenSettlement(const ui::Field& field);

/// Names of the cash and bank accounts, in order of entry.
std::vector<ListItem> accountItems();

}  // namespace jxc
