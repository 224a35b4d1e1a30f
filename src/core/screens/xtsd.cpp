#include "core/screens/xtsd.h"

#include "core/login.h"
#include "core/session.h"

#include <QCloseEvent>
#include <QKeyEvent>

namespace jxc {
namespace xtsd_detail {

constexpr ui::FieldSpec kFields[] = {
    {"tname", "操作员：", ui::FieldKind::Text, "jxc_admin.a_name", 0, ui::ReadOnly},
    {"tpwd", "密码：", ui::FieldKind::Secret, "", 100},
};
constexpr ui::CommandSpec kCommands[] = {{"btnOK", "确定", "F5"}};
constexpr ui::ScreenSpec kScreen = {
    .name = "F_Xtsd", .title = "系统锁定", .fields = kFields, .commands = kCommands, .focus = "tpwd"};

const ui::Registered<TF_Xtsd> kRegistered{"F_Xtsd"};

}  // namespace xtsd_detail

TF_Xtsd::TF_Xtsd() : Screen(xtsd_detail::kScreen) {
  setWindowFlag(Qt::WindowCloseButtonHint, false);
  panel().form({"tname", "tpwd"}).buttons("| btnOK");
  on(btnOK, [this] { btnOKClick(); });
  tpwd.onEnter([this] {
    btnOKClick();
    return true;
  });
}

void TF_Xtsd::activate() {
  tname.setText(session().a_name);
  tpwd.clear();
}

void TF_Xtsd::btnOKClick() {
  const WipedText password = tpwd.secret();
  tpwd.clear();
  if (unlock(password, prompt())) return accept();
  tpwd.focus();
}

// F4 with Alt would close a window of the desktop: the lock swallows it.
bool TF_Xtsd::keyPressed(QKeyEvent& key) {
  return key.key() == Qt::Key_F4;
}

void TF_Xtsd::closeEvent(QCloseEvent* event) {
  event->ignore();
}

}  // namespace jxc
