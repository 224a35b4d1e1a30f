#include "core/screens/login.h"

#include "core/at_work.h"
#include "core/build_info.h"
#include "core/login.h"
#include "core/session.h"
#include "engine/error.h"
#include "ui/skin.h"

#include <QLabel>
#include <QScopeGuard>

#include <optional>
#include <utility>

namespace jxc {
namespace login_screen_detail {

constexpr int kPause = 1000;  // ms between two looks whether somebody has the set for himself
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
  look_.setInterval(login_screen_detail::kPause);
  connect(&look_, &QTimer::timeout, this, [this] { lookWhetherToWait(); });
}

/// Somebody has the account set for himself: it is said here, and the form is usable again when he is done.
void TF_Login::lookWhetherToWait() {
  if (!isVisible()) return look_.stop();
  std::optional<QString> why;
  try {
    why = whyToWait();
  } catch (const DbError&) {
    // A server that does not answer is told about by the login.
  }
  const bool waited = std::exchange(waits_, why.has_value());
  if (!why && !waited) return;
  btnOK.setEnabled(!why);
  if (why)
    lMsg->setText(*why);
  else
    comAdminChange();
}

void TF_Login::activate() {
  loginOk = false;
  comAdmin.setItems(loginOperators());
  // Who changes the operator is somebody else.
  const QString last = session().editMode == u"hb" ? QString() : lastOperatorHere();
  if (!last.isEmpty()) comAdmin.setKey(last);
  tpwd.clear();
  comAdminChange();
  look_.start();
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
