#include "output/screens/template_designer.h"

#include "core/program_directory.h"
#include "platform/report/template_file.h"
#include "ui/designer/design_canvas.h"
#include "ui/file_dialogs.h"
#include "ui/report/preview.h"

#include <QFileInfo>
#include <QPointer>

namespace jxc {

namespace template_designer_detail {

constexpr ui::CommandSpec kCommands[]{
    {"btnSave", "保存", "F5", "原文件另存为同名的 .bak 文件"},
    {"btnSaveAs", "另存为", "F12"},
    {"btnUndo", "撤销", "Ctrl+Z"},
    {"btnRedo", "重做", "Ctrl+Y"},
    {"btnPreview", "打印预览", "F8"},
    {"btnCancel", "退出", "Esc"},
};
constexpr ui::ScreenSpec kScreen{"F_Bbsj_Edit", "报表模板设计", {}, {}, kCommands};
const ui::Registered<TF_Bbsj_Edit> kRegistered{"F_Bbsj_Edit"};

}  // namespace template_designer_detail

using namespace template_designer_detail;

TF_Bbsj_Edit::TF_Bbsj_Edit() : Screen(kScreen) {
  designer_ = new ui::Designer;
  panel().widget(designer_, 1).buttons("btnSave btnSaveAs btnUndo btnRedo btnPreview | btnCancel");
  btnSave.setProperty("main", true);
  on(btnSave, [this] { save(); });
  on(command("btnSaveAs"), [this] { saveAs(); });
  on(btnUndo, [this] { designer_->document().undo(); });
  on(btnRedo, [this] { designer_->document().redo(); });
  addKey(btnRedo, "Ctrl+Shift+Z");
  on(command("btnPreview"), [this] { ui::showPreview(designer_->preview().pages()); });
  designer_->document().onChanged([this] { showState(); });
  showState();
}

void TF_Bbsj_Edit::design(const QString& path, ui::LivePreview::Maker maker) {
  try {
    designer_->document().start(report::loadTemplate(path), path);
  } catch (const report::TemplateError& failure) {
    prompt().notice(failure.message());
    return;
  }
  changedOnDisk_ = QFileInfo(path).lastModified();
  designer_->preview().setMaker(std::move(maker));
  designer_->canvas().setFocus();
  showModal();
}

/// The input under the cursor hands over what it holds, and keeps the cursor.
void TF_Bbsj_Edit::takeTyped() {
  const QPointer<QWidget> input = focusWidget();
  setFocus();
  if (input) input->setFocus();
}

bool TF_Bbsj_Edit::mayLeave() {
  takeTyped();
  if (!designer_->document().isDirty()) return true;
  switch (prompt().askOrCancel(u"模板已修改，要保存吗？"_qs)) {
    case Answer::Yes:
      return save();
    case Answer::No:
      return true;
    case Answer::Cancel:
      return false;
  }
  return false;
}

bool TF_Bbsj_Edit::save() {
  takeTyped();
  const QString& path = designer_->document().path();
  if (path.isEmpty()) return false;
  const QFileInfo file(path);
  if (file.exists() && changedOnDisk_.isValid() && file.lastModified() != changedOnDisk_ &&
      !prompt().ask(u"模板文件“%1”在打开之后又被改动过，要用现在的设计覆盖它吗？"_qs.arg(file.fileName())))
    return false;
  return saveTo(path);
}

bool TF_Bbsj_Edit::saveTo(const QString& path) {
  auto& document = designer_->document();
  try {
    try {
      document.save(path, false);
    } catch (const report::TemplateError& failure) {
      if (failure.kind() != report::TemplateError::Kind::WouldLose) throw;
      if (!prompt().ask(failure.message() + u"\n\n仍然要覆盖它吗？"_qs)) return false;
      document.save(path, true);
    }
  } catch (const report::TemplateError& failure) {
    prompt().notice(failure.message());
    return false;
  }
  changedOnDisk_ = QFileInfo(path).lastModified();
  return true;
}

void TF_Bbsj_Edit::saveAs() {
  takeTyped();
  const QString path = ui::chooseSaveFile(this, u"模板另存为"_qs, QFileInfo(designer_->document().path()).fileName(),
                                          u"报表模板 (*.fr3)"_qs, programPath(u"report"_qs));
  if (!path.isEmpty()) saveTo(path);
}

void TF_Bbsj_Edit::showState() {
  const auto& document = designer_->document();
  btnUndo.setEnabled(document.canUndo());
  btnUndo.setToolTip(document.canUndo() ? u"撤销："_qs + document.undoText() : QString());
  btnRedo.setEnabled(document.canRedo());
  btnRedo.setToolTip(document.canRedo() ? u"重做："_qs + document.redoText() : QString());
  const QString file = QFileInfo(document.path()).fileName();
  setWindowTitle(file.isEmpty() ? u"报表模板设计"_qs
                                : u"报表模板设计 - %1%2"_qs.arg(file, document.isDirty() ? u" *" : u""));
}

}  // namespace jxc
