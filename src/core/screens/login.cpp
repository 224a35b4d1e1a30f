#include "core/screens/login.h"

#include "core/build_info.h"
#include "core/login.h"
#include "core/session.h"
#include "ui/skin.h"

#include <QLabel>
#include <QScopeGuard>

namespace jxc {
namespace login_screen_detail {

constexpr ui::FieldSpec kFields[] = {
    {"comAdmin", "操作员：", ui::FieldKind::Combo},
    {"tpwd", "密码：", ui::FieldKind::Secret, "", 100},
};
constexpr ui::CommandSpec kCommands[] = {{"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};
constexpr ui::ScreenSpec kScreen = {
    .name = "F_Login", .title = "操作员登录", .fields = kFields, .commands = kCommands, .focus = "tpwd"};

}  // namespace login_screen_detail

TF_Login::TF_Login() : Screen(login_screen_detail::kScreen) {
  setWindowTitle(QString::fromUtf16(build::programName) + QStringLiteral(" ---- 操作员登录"));
  setMinimumWidth(400);
  auto* title = new QLabel(QString::fromUtf16(build::programName), this);
  title->setProperty("title", true);
  lMsg = new QLabel(this);
  lMsg->setObjectName(QStringLiteral("lMsg"));
  lMsg->setProperty("explanation", true);
  lMsg->setMinimumHeight(lMsg->fontMetrics().height());
  panel().widget(title).form({"comAdmin", "tpwd"}).widget(lMsg).stretch().buttons("| btnOK btnCancel");
  comAdmin.onChanged([this] { comAdminChange(); });
  on(btnOK, [this] { btnOKClick(); });
  tpwd.onEnter([this] {
    btnOK.click();
    return true;
  });
}

void TF_Login::activate() {
  loginOk = false;
  comAdmin.setItems(loginOperators());
  // Who changes the operator is somebody else.
  const QString last = session().editMode == u"hb" ? QString() : lastOperatorHere();
  if (!last.isEmpty()) comAdmin.setKey(last);
  tpwd.clear();
  comAdminChange();
}

void TF_Login::comAdminChange() {
  lMsg->setText(initialPasswordHint(comAdmin.text()));
}

void TF_Login::btnOKClick() {
  // One login at a time, also for an impatient F5. Whatever happens, the form can be used again.
  btnOK.setEnabled(false);
  const auto usable = qScopeGuard([this] { btnOK.setEnabled(true); });
  const bool changing = session().editMode == u"hb";
  const WipedText password = tpwd.secret();
  tpwd.clear();
  const bool known =
      changing ? changeOperator(comAdmin.text(), password, prompt()) : login(comAdmin.text(), password, prompt());
  if (!known) return tpwd.focus();
  loginOk = true;
  rememberOperatorHere();
  ui::applySkin(operatorSkin());
  accept();
}

}  // namespace jxc
