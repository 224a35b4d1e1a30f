// 报表模板设计: the window in which the owner of the shop changes a report template.
#pragma once

#include "ui/designer/designer.h"
#include "ui/screen.h"

#include <QDateTime>

class QMenu;

namespace jxc {

struct KnownTemplate;

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
  /// What of the program's papers this is a design of; null when it does not tell.
  const KnownTemplate* kind() const;
  /// Another design in place of this one, as one step that can be taken back.
  void take(const QString& what, const QByteArray& xml, const QString& file);
  void restoreDelivered();
  void listBackups(QMenu& menu);
  void useThis();
  void showState();

  ui::Designer* designer_;
  QPushButton& btnSave = command("btnSave");
  QPushButton& btnUndo = command("btnUndo");
  QPushButton& btnRedo = command("btnRedo");
  QPushButton& btnDefault = command("btnDefault");
  QPushButton& btnBackups = command("btnBackups");
  QPushButton& btnUse = command("btnUse");
  QDateTime changedOnDisk_;
};

}  // namespace jxc
