#include "output/screens/template_designer.h"

#include "core/program_directory.h"
#include "core/text.h"
#include "output/templates.h"
#include "platform/report/template_file.h"
#include "ui/designer/design_canvas.h"
#include "ui/file_dialogs.h"
#include "ui/report/preview.h"

#include <QFile>
#include <QFileInfo>
#include <QMenu>
#include <QPointer>

namespace jxc {

namespace template_designer_detail {

constexpr ui::CommandSpec kCommands[]{
    {"btnSave", "保存", "F5", "原来的样式保留为备份"},
    {"btnSaveAs", "另存为", "F12", "另存为本店自己的格式，可以在打印时选择，也可以设为默认"},
    {"btnUndo", "撤销", "Ctrl+Z"},
    {"btnRedo", "重做", "Ctrl+Y"},
    {"btnPreview", "打印预览", "F8"},
    {"btnDefault", "恢复默认模板", "", "恢复为随程序提供的样式"},
    {"btnBackups", "恢复备份", "", "以前保存过的样式，按保存的时间"},
    {"btnUse", "设为默认", "", "本机打印这种单据时用这个模板"},
    {"btnCancel", "退出", "Esc"},
};
constexpr ui::ScreenSpec kScreen{"F_Bbsj_Edit", "报表模板设计", {}, {}, kCommands};
const ui::Registered<TF_Bbsj_Edit> kRegistered{"F_Bbsj_Edit"};

}  // namespace template_designer_detail

using namespace template_designer_detail;

TF_Bbsj_Edit::TF_Bbsj_Edit() : Screen(kScreen) {
  designer_ = new ui::Designer;
  panel()
      .widget(designer_, 1)
      .buttons("btnSave btnSaveAs btnUndo btnRedo btnPreview btnDefault btnBackups btnUse | btnCancel");
  on(btnSave, [this] { save(); });
  on(command("btnSaveAs"), [this] { saveAs(); });
  on(btnUndo, [this] { designer_->document().undo(); });
  on(btnRedo, [this] { designer_->document().redo(); });
  addKey(btnRedo, "Ctrl+Shift+Z");
  on(btnDefault, [this] { restoreDelivered(); });
  on(btnUse, [this] { useThis(); });
  auto* backups = new QMenu(this);
  backups->setObjectName(u"backups"_qs);
  connect(backups, &QMenu::aboutToShow, this, [this, backups] { listBackups(*backups); });
  btnBackups.setMenu(backups);
  on(command("btnPreview"), [this] { ui::showPreview(designer_->preview().pages()); });
  designer_->document().onChanged([this] { showState(); });
  showState();
}

void TF_Bbsj_Edit::design(const QString& path, ui::LivePreview::Maker maker) {
  report::Template design;
  try {
    design = report::loadTemplate(path);
  } catch (const report::TemplateError& failure) {
    prompt().notice(failure.message());
    return;
  }
  // A design tells what it is one of, whatever its file is called later.
  const KnownTemplate* known = findTemplate(QFileInfo(path).fileName());
  if (known) design.kind = words(known->name);
  designer_->document().start(std::move(design), path);
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
  const QString file = QFileInfo(designer_->document().path()).fileName();
  const KnownTemplate* known = findTemplate(file);
  const QString path =
      ui::chooseSaveFile(this, u"模板另存为"_qs, known ? words(known->caption) + u"-本店.fr3"_qs : file,
                         u"报表模板 (*.fr3)"_qs, programPath(u"report"_qs));
  if (!path.isEmpty()) saveTo(path);
}

const KnownTemplate* TF_Bbsj_Edit::kind() const {
  const auto& document = designer_->document();
  const KnownTemplate* known = findTemplate(QFileInfo(document.path()).fileName());
  return known ? known : findTemplate(document.current().kind);
}

void TF_Bbsj_Edit::take(const QString& what, const QByteArray& xml, const QString& file) {
  try {
    report::Template design = report::parseTemplate(xml, file);
    design.kind = designer_->document().current().kind;
    designer_->document().choosePage();
    designer_->document().edit(what, [&](report::Template& t) { t = std::move(design); });
  } catch (const report::TemplateError& failure) {
    prompt().notice(failure.message());
  }
}

void TF_Bbsj_Edit::restoreDelivered() {
  takeTyped();
  const KnownTemplate* which = kind();
  if (!which ||
      !prompt().ask(
          u"要把设计恢复为随程序提供的“%1”样式吗？\r\n\r\n保存之前可以撤销，保存之后可以从备份中恢复。"_qs.arg(
              words(which->caption))))
    return;
  take(u"恢复默认模板"_qs, deliveredTemplate(QStringView(which->name)), words(which->name));
}

void TF_Bbsj_Edit::listBackups(QMenu& menu) {
  menu.clear();
  for (const report::TemplateBackup& each : report::backupsOf(designer_->document().path()))
    menu.addAction(each.savedAt.toString(u"yyyy-MM-dd HH:mm:ss"_qs) + u" 保存的样式"_qs, this, [this, each] {
      takeTyped();
      QFile file(each.path);
      if (file.open(QIODevice::ReadOnly)) return take(u"恢复备份"_qs, file.readAll(), each.path);
      prompt().notice(u"备份“%1”无法读取：%2。"_qs.arg(each.path, file.errorString()));
    });
  if (menu.isEmpty()) menu.addAction(u"还没有备份：每次保存时保留一份"_qs)->setEnabled(false);
}

void TF_Bbsj_Edit::useThis() {
  if (designer_->document().isDirty() && !save()) return;
  const KnownTemplate* which = kind();
  if (!which) return;
  const QString file = QFileInfo(designer_->document().path()).fileName();
  useTemplate(which->name, file);
  showState();
  prompt().notice(u"本机打印“%1”时，将使用模板“%2”。"_qs.arg(words(which->caption), file.chopped(4)));
}

void TF_Bbsj_Edit::showState() {
  const auto& document = designer_->document();
  btnUndo.setEnabled(document.canUndo());
  btnUndo.setToolTip(document.canUndo() ? u"撤销："_qs + document.undoText() : QString());
  btnRedo.setEnabled(document.canRedo());
  btnRedo.setToolTip(document.canRedo() ? u"重做："_qs + document.redoText() : QString());
  const QString file = QFileInfo(document.path()).fileName();
  const KnownTemplate* which = kind();
  const bool isInUse = which && file == templateInUse(which->name);
  const bool isOfProgram =
      QFileInfo(document.path()).absoluteFilePath() == QFileInfo(templatePath(file)).absoluteFilePath();
  btnDefault.setEnabled(which);
  btnUse.setEnabled(which && !isInUse && isOfProgram);
  btnUse.setText(isInUse ? u"默认模板"_qs : u"设为默认"_qs);
  setWindowTitle(file.isEmpty() ? u"报表模板设计"_qs
                                : u"报表模板设计 - %1%2"_qs.arg(file, document.isDirty() ? u" *" : u""));
}

}  // namespace jxc
