// 报表模板设计: the window in which the owner of the shop changes a report template.
#pragma once

#include "ui/designer/designer.h"
#include "ui/screen.h"

#include <QDateTime>

namespace jxc {

class TF_Bbsj_Edit : public ui::Screen {
 public:
  TF_Bbsj_Edit();

  /// Opens a template file in the designer and returns when the window is left. A file that is missing, damaged or made
  /// by a newer program is told, and nothing opens. `maker` prints with a real document of the shop instead of samples.
  void design(const QString& path, ui::LivePreview::Maker maker = {});
  ui::Designer& designer() { return *designer_; }

 protected:
  bool mayLeave() override;

 private:
  void takeTyped();
  bool save();
  bool saveTo(const QString& path);
  void saveAs();
  void showState();

  ui::Designer* designer_;
  QPushButton& btnSave = command("btnSave");
  QPushButton& btnUndo = command("btnUndo");
  QPushButton& btnRedo = command("btnRedo");
  QDateTime changedOnDisk_;
};

}  // namespace jxc
