// 修改密码: an operator changes his own password.
#include "core/operators.h"
#include "core/session.h"
#include "ui/screen.h"

#include <QLineEdit>
#include <QPushButton>
#include <QValidator>

#include <algorithm>

namespace jxc {
namespace pwdmodi_detail {

using ui::FieldKind;

constexpr ui::FieldSpec kFields[] = {
    {"tname", "操作员：", FieldKind::Text, "jxc_admin.a_name", 0, ui::ReadOnly},
    {"toldpwd", "当前密码：", FieldKind::Password, "jxc_admin.a_pwd"},
    {"tnewpwd", "新密码：", FieldKind::Password, "jxc_admin.a_pwd"},
    {"tnewpwd2", "确认新密码：", FieldKind::Password, "jxc_admin.a_pwd"},
};
constexpr ui::CommandSpec kCommands[] = {{"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};
constexpr ui::ScreenSpec kScreen = {
    .name = "F_PwdModi", .title = "修改密码", .fields = kFields, .commands = kCommands, .focus = "toldpwd"};

/// Swallows characters that are changed when a password is stored: one that holds them would never match again.
class PasswordValidator : public QValidator {
 public:
  using QValidator::QValidator;
  State validate(QString& text, int&) const override {
    return std::all_of(text.begin(), text.end(), mayStandInPassword) ? Acceptable : Invalid;
  }
};

}  // namespace pwdmodi_detail

class TF_PwdModi : public ui::Screen {
 public:
  TF_PwdModi() : Screen(pwdmodi_detail::kScreen) {
    for (const auto* name : {"tnewpwd", "tnewpwd2"}) {
      auto* input = static_cast<QLineEdit*>(field(name).widget());
      input->setValidator(new pwdmodi_detail::PasswordValidator(input));
    }
    on(command("btnOK"), [this] {
      const bool isChanged =
          changeOwnPassword(field("toldpwd").text(), field("tnewpwd").text(), field("tnewpwd2").text(), prompt());
      if (isChanged) accept();
    });
  }

 protected:
  void activate() override {
    for (auto* field : fields())
      field->clear();
    field("tname").setText(session().a_name);
  }
};

namespace pwdmodi_detail {
const ui::Registered<TF_PwdModi> kRegistered{"F_PwdModi"};
}

}  // namespace jxc
