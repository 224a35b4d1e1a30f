// 结算档案: the enquiries over the account set as it was before a closing, in a window of their own.
#pragma once

#include "ui/screen.h"

namespace jxc {

class TF_Nzjs_Archive : public ui::Screen {
 public:
  TF_Nzjs_Archive();
  QString day;  // of the closing

 protected:
  void activate() override;
  bool onlyLooks(const ui::CommandSpec&) const override { return true; }

 private:
  void openCurrent();
  ui::Grid& gridCommands = grid("gridCommands");
};

/// Opens the copy that was made before the closing of this day, shows its enquiries until the window is closed, and
/// goes back to the shop. What stands against it is told.
void showArchive(const QString& file, const QString& day, Prompt& prompt);

}  // namespace jxc
