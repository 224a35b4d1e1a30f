// 修改密码: an operator changes his own password.
#include "core/operators.h"
#include "core/session.h"
#include "ui/screen.h"

#include <QPushButton>

namespace jxc {
namespace pwdmodi_detail {

using ui::FieldKind;

constexpr ui::FieldSpec kFields[] = {
    {"tname", "操作员：", FieldKind::Text, "jxc_admin.a_name", 0, ui::ReadOnly},
    {"toldpwd", "当前密码：", FieldKind::Secret, "", 100},
    {"tnewpwd", "新密码：", FieldKind::Secret, "", 100},
    {"tnewpwd2", "确认新密码：", FieldKind::Secret, "", 100},
};
constexpr ui::CommandSpec kCommands[] = {{"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};
constexpr ui::ScreenSpec kScreen = {
    .name = "F_PwdModi", .title = "修改密码", .fields = kFields, .commands = kCommands, .focus = "toldpwd"};

}  // namespace pwdmodi_detail

class TF_PwdModi : public ui::Screen {
 public:
  TF_PwdModi() : Screen(pwdmodi_detail::kScreen) {
    on(command("btnOK"), [this] {
      const WipedText old = field("toldpwd").secret();
      const WipedText password = field("tnewpwd").secret();
      const WipedText again = field("tnewpwd2").secret();
      if (changeOwnPassword(old, password, again, prompt())) accept();
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
