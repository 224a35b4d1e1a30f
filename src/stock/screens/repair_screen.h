// 库存修复: the repairs of stock behind one dialog: a question, a bar and a way to stop; those of the ledger begin on a
// date, in a warehouse.
#pragma once

#include "stock/repair.h"
#include "ui/screen.h"

#include <span>

class QLabel;

namespace jxc {

struct RepairScreenSpec {
  ui::ScreenSpec screen;
  std::span<const std::string_view> form;  // its inputs in their lines
  const char* warning;                     // stands on the screen
  const char* question;                    // before it begins
  const char* running;                     // on the bar, before "12 / 500"
  const char* done;
};

/// A repair may be stopped between two goods. What is done stays done, and 确定 goes on from there as long as the
/// screen stands open with the same inputs.
class RepairScreen : public ui::Screen {
 public:
  explicit RepairScreen(const RepairScreenSpec& spec);

 protected:
  void activate() override { forgetPosition(); }
  virtual bool run(const RepairProgress& progress, RepairPosition& position) = 0;
  void forgetPosition();

 private:
  void start();
  const RepairScreenSpec description_;
  QLabel* state_;
  RepairPosition position_;
};

/// A repair of the ledger: its inputs tdate1 and comCk tell where it begins.
class LedgerRepairScreen : public RepairScreen {
 public:
  explicit LedgerRepairScreen(const RepairScreenSpec& spec) : RepairScreen(spec) {}

  /// Opens with this start date and warehouse (empty: all); whether the repair came to its end.
  bool repairFrom(const QString& date, const QString& warehouse);

  ui::Field& tdate1 = field("tdate1");
  ui::Field& comCk = field("comCk");

 protected:
  void activate() override;
  QString warehouse();  // empty: all

 private:
  QString date_, warehouse_;
};

/// Asks which way, and makes balance and ledger of these goods and warehouses agree (`syncStock`); whether it came to
/// its end.
bool syncListed(const RowSet& places);

}  // namespace jxc
