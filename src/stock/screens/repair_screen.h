// 库存修复: the two repairs of the stock ledger behind one dialog: a start date, a warehouse, a bar and a way to stop.
#pragma once

#include "stock/repair.h"
#include "ui/screen.h"

class QLabel;

namespace jxc {

struct RepairScreenSpec {
  ui::ScreenSpec screen;
  const char* warning;   // stands on the screen
  const char* question;  // before it begins
  const char* running;   // on the bar, before "12 / 500"
  const char* done;
};

/// A repair may be stopped between two goods. What is done stays done, and 确定 goes on from there as long as the
/// screen stands open with the same inputs.
class RepairScreen : public ui::Screen {
 public:
  explicit RepairScreen(const RepairScreenSpec& spec);

  /// Opens with this start date and warehouse (empty: all); whether the repair came to its end.
  bool repairFrom(const QString& date, const QString& warehouse);

  ui::Field& tdate1 = field("tdate1");
  ui::Field& comCk = field("comCk");

 protected:
  void activate() override;
  virtual bool run(const QString& date, const QString& warehouse, const RepairProgress& progress,
                   RepairPosition& position) = 0;
  void forgetPosition();

 private:
  void start();
  const RepairScreenSpec description_;
  QLabel* state_;
  RepairPosition position_;
  QString date_, warehouse_;
};

}  // namespace jxc
