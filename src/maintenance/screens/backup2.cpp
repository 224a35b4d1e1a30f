// 备份当前数据库: the short form of the backup, opened from the guide.
#include "maintenance/screens/backup_page.h"

namespace jxc {
namespace backup2_detail {

constexpr ui::FieldSpec kFields[] = {
    {"tPath", "备份路径：", ui::FieldKind::Text, "jxc_backup.back_path"},
    {"chkExit", "系统退出时自动备份", ui::FieldKind::Check},
};
constexpr ui::CommandSpec kCommands[] = {
    {"btnBack", "选择备份目录", "F3"}, {"btnOK", "确定", "F5"}, {"btnExit", "退出", "Esc"}};
constexpr ui::ScreenSpec kScreen = {
    .name = "F_Backup2", .title = "备份当前数据库", .fields = kFields, .commands = kCommands, .focus = "tPath"};

class TF_Backup2 : public ui::Screen {
 public:
  TF_Backup2() : Screen(kScreen) {
    panel()
        .text(QStringLiteral("备份是帐套在这一刻的完整副本，写好以后重新打开核对。请放在另一个磁盘上。"))
        .row("tPath btnBack")
        .form({"chkExit"})
        .stretch()
        .buttons("| btnOK btnExit");
    showWholePath(tPath);
    on(command("btnBack"), [this] { chooseBackupFolder(*this, tPath); });
    on(command("btnOK"), [this] { btnOKClick(); });
  }
  ui::Field& tPath = field("tPath");
  ui::Field& chkExit = field("chkExit");

 protected:
  void activate() override {
    const BackupSettings settings = backupSettings();
    tPath.setText(settings.folder);
    chkExit.setChecked(settings.atExit);
  }

 private:
  /// The timer and the days of the other screen stay.
  void btnOKClick() {
    BackupSettings settings = backupSettings();
    settings.folder = tPath.trimmed();
    settings.atExit = chkExit.isChecked();
    if (backUpFrom(*this, prompt(), settings)) accept();
  }
};

const ui::Registered<TF_Backup2> kRegistered{"F_Backup2"};

}  // namespace backup2_detail
}  // namespace jxc
