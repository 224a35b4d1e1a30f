// 备份/恢复数据库: where the backups go and how often, one at once, and the way back.
#include "core/refusal.h"
#include "core/screens/main_form.h"
#include "maintenance/screens/backup_page.h"
#include "ui/display.h"
#include "ui/file_dialogs.h"
#include "ui/paragraph.h"
#include "ui/progress.h"
#include "ui/skin.h"

#include <QTabWidget>

namespace jxc {
namespace backup_screen_detail {

constexpr ui::FieldSpec kFields[] = {
    {"tPath", "备份路径：", ui::FieldKind::Text, "jxc_backup.back_path"},
    {"tPath2", "第二备份文件夹：", ui::FieldKind::Text, "jxc_backupzk.bz_path"},
    {"chkAuto", "自动备份", ui::FieldKind::Check},
    {"tsj", "每隔", ui::FieldKind::Integer, "", 2, ui::NoMinus, "小时备份一次"},
    {"comDays", "保留最近", ui::FieldKind::Combo},
    {"chkExit", "系统退出时自动备份", ui::FieldKind::Check},
    {"tDays", "超过", ui::FieldKind::Integer, "", 3, ui::NoMinus, "天没有备份时变红"},
    {"tPath1", "恢复路径：", ui::FieldKind::Text, "", 1000},
};
constexpr ui::CommandSpec kCommands[] = {
    {"btnBack", "选择备份目录", "F3"}, {"btnBack2", "选择第二目录", "F4"}, {"btnRestore", "选择备份文件", "F3"},
    {"btnHelp", "说明", "F1"},         {"btnClose", "关闭说明"},           {"btnOK", "确定", "F5"},
    {"btnExit", "退出", "Esc"},
};
constexpr ui::ScreenSpec kScreen = {
    .name = "F_Backup", .title = "备份/恢复数据库", .fields = kFields, .commands = kCommands, .focus = "tPath"};

class TF_Backup : public ui::Screen {
 public:
  TF_Backup() : Screen(kScreen), state_(ui::paragraph(this, "lState")), facts_(ui::paragraph(this, "lFacts")) {
    auto all = panel();
    all.page("cxTab1", QStringLiteral("备份数据"))
        .row("tPath btnBack")
        .row("tPath2 btnBack2")
        .form({"chkAuto tsj", "comDays tDays", "chkExit"})
        .widget(state_)
        .stretch();
    all.page("cxTab2", QStringLiteral("恢复数据"))
        .row("tPath1 btnRestore")
        .text(QStringLiteral("按F5先查看备份里有什么，确认以后才恢复；现在的帐套先另存为“(恢复前)”。"))
        .widget(facts_)
        .stretch();
    all.area(RzPanel_Msg, 0)
        .text(QStringLiteral("备份是帐套在这一刻的完整副本，别人可以同时开单。写好以后重新打开核对，旁边的 .sum "
                             "文件是它的校验和。"))
        .text(QStringLiteral("第二备份文件夹请放在另一个磁盘上。每周试恢复一次最近的备份，结果显示在主窗口下方。"))
        .text(QStringLiteral("恢复时其他工作站要先退出系统。恢复一次完成：中途停止或断电，帐套和原来一样。"))
        .buttons("| btnClose");
    all.buttons("btnHelp | btnOK btnExit");
    for (const ui::Field* path : {&tPath, &tPath2, &tPath1})
      showWholePath(*path);
    // Both folders stand below each other, whatever their labels say.
    tPath.label()->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    tPath.label()->setMinimumWidth(tPath2.label()->sizeHint().width());
    RzPanel_Msg->setObjectName(QStringLiteral("RzPanel_Msg"));
    comDays.setItems({{QStringLiteral("全部备份"), QStringLiteral("0")},
                      {QStringLiteral("5天的备份"), QStringLiteral("5")},
                      {QStringLiteral("7天的备份"), QStringLiteral("7")},
                      {QStringLiteral("10天的备份"), QStringLiteral("10")},
                      {QStringLiteral("15天的备份"), QStringLiteral("15")}});
    chkAuto.onChanged([this] { tsj.setEnabled(chkAuto.isChecked()); });
    tPath1.onChanged([this] { facts_->clear(); });
    on(command("btnBack"), [this] { chooseBackupFolder(*this, tPath); });
    on(command("btnBack2"), [this] { chooseBackupFolder(*this, tPath2); });
    on(command("btnRestore"), [this] { btnRestoreClick(); });
    on(command("btnHelp"), [this] { RzPanel_Msg->setVisible(!RzPanel_Msg->isVisible()); });
    on(command("btnClose"), [this] { RzPanel_Msg->hide(); });
    on(command("btnOK"), [this] { btnOKClick(); });
  }

  void reject() override {
    if (RzPanel_Msg->isVisible()) return RzPanel_Msg->hide();
    Screen::reject();
  }

  ui::Field& tPath = field("tPath");
  ui::Field& tPath2 = field("tPath2");
  ui::Field& chkAuto = field("chkAuto");
  ui::Field& tsj = field("tsj");
  ui::Field& comDays = field("comDays");
  ui::Field& chkExit = field("chkExit");
  ui::Field& tDays = field("tDays");
  ui::Field& tPath1 = field("tPath1");
  QWidget* RzPanel_Msg = nullptr;

 protected:
  void activate() override {
    showSettings();
    tPath1.clear();
    facts_->clear();
    RzPanel_Msg->hide();
    showState();
  }

 private:
  bool isRestoring() { return panelTabs()->currentIndex() == 1; }
  QTabWidget* panelTabs() { return findChild<QTabWidget*>(); }

  void showSettings() {
    const BackupSettings settings = backupSettings();
    tPath.setText(settings.folder);
    tPath2.setText(settings.secondFolder);
    chkAuto.setChecked(settings.automatic);
    tsj.setNumber(settings.hours);
    tsj.setEnabled(settings.automatic);
    comDays.setKey(QString::number(settings.days));
    chkExit.setChecked(settings.atExit);
    tDays.setNumber(settings.alarmDays);
  }

  void showState() {
    const BackupState state = backupState();
    QStringList lines;
    if (state.time.isEmpty())
      lines << QStringLiteral("还没有备份过。");
    else
      lines << QStringLiteral("最近的备份：%1，%2").arg(state.time.left(16), state.file);
    if (!state.failure.isEmpty()) lines << QStringLiteral("上一次没有写成：") + state.failure;
    lines << state.rehearsalWords();
    state_->setText(lines.join(u'\n'));
    ui::setLook(*state_, "warning", state.isAlarming());
  }

  void btnOKClick() {
    if (isRestoring()) return restore();
    BackupSettings settings = backupSettings();
    settings.automatic = chkAuto.isChecked();
    settings.hours = static_cast<int>(tsj.number());
    settings.days = comDays.key().toInt();
    settings.folder = tPath.trimmed();
    settings.secondFolder = tPath2.trimmed();
    settings.atExit = chkExit.isChecked();
    settings.alarmDays = std::max(1, static_cast<int>(tDays.number()));
    backUpFrom(*this, prompt(), settings);
    if (backupSettings() == settings) showSettings();  // stored, whatever became of the copy: leaving loses nothing
    showState();
  }

  void btnRestoreClick() {
    const QString file =
        ui::chooseOpenFile(this, QStringLiteral("选择备份文件"), QStringLiteral("备份 (*.DAT *.mdb);;全部 (*)"));
    if (file.isEmpty()) return;
    tPath1.setText(file);
    facts_->clear();
  }

  void restore() {
    if (restoreFrom(*this, prompt(), tPath1, *facts_, [this](OpenedBackup& backup, const RestoreReports& reports) {
          return restoreBackup(backup, prompt(), reports);
        }))
      endAtLogin();
  }

  QLabel* state_;
  QLabel* facts_;
};

const ui::Registered<TF_Backup> kRegistered{"F_Backup"};

}  // namespace backup_screen_detail

bool backUpFrom(ui::Screen& screen, Prompt& prompt, const BackupSettings& settings) {
  if (!saveBackupSettings(settings, prompt)) return false;
  followBackupTimer();
  QString file;
  try {
    ui::Progress progress(QStringLiteral("正在备份……"), &screen);
    file = backUpNow(settings, progress.report());
  } catch (const DbError& error) {
    prompt.notice(error.message());
    return false;
  }
  if (file.isEmpty()) {
    screen.say(QStringLiteral("备份已停止，没有留下文件。"));
    return false;
  }
  if (const QString failure = backupState().failure; !failure.isEmpty()) prompt.notice(failure);
  screen.say(QStringLiteral("已备份到 ") + file);
  prompt.notice(QStringLiteral("备份完成！"));
  return true;
}

bool restoreFrom(ui::Screen& screen, Prompt& prompt, ui::Field& path, QLabel& facts,
                 const std::function<bool(OpenedBackup&, const RestoreReports&)>& restore) {
  const QString file = path.trimmed();
  if (isRefused({file.isEmpty(), QStringLiteral("恢复路径必须填写！")}, prompt)) {
    path.focus();
    return false;
  }
  facts.clear();
  std::unique_ptr<OpenedBackup> backup;
  try {
    ui::Progress progress(QStringLiteral("正在查看备份……"), &screen);
    backup = OpenedBackup::open(file, progress.report());
  } catch (const DbError& error) {
    prompt.notice(error.message());
    return false;
  }
  if (!backup) return false;
  facts.setText(backup->words().join(u'\n'));
  RestoreReports reports{ui::progressOnDemand(QStringLiteral("正在另存现在的帐套……"), &screen),
                         ui::progressOnDemand(QStringLiteral("正在恢复……"), &screen)};
  try {
    if (!restore(*backup, reports)) return false;
  } catch (const DbError& error) {
    reports = {};
    prompt.notice(restoreFailure(error));
    return false;
  }
  backup.reset();
  prompt.notice(QStringLiteral("恢复完成！"));
  return true;
}

void showWholePath(const ui::Field& path) {
  constexpr int characters = 44;
  constexpr int fillsRow = 100;  // against the empty end of its row
  path.widget()->setMinimumWidth(path.widget()->fontMetrics().averageCharWidth() * characters);
  QSizePolicy fills = path.widget()->sizePolicy();
  fills.setHorizontalStretch(fillsRow);
  path.widget()->setSizePolicy(fills);
}

void chooseBackupFolder(ui::Screen& screen, ui::Field& path) {
  const QString folder = ui::chooseFolder(&screen, QStringLiteral("选择备份目录"));
  if (!folder.isEmpty()) path.setText(folder);
}

}  // namespace jxc
