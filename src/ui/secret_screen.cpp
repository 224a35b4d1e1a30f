#include "ui/secret_screen.h"

#include "core/text.h"

namespace jxc::ui {
namespace secret_screen_detail {

constexpr FieldSpec kFields[] = {{"tpwd", "密码：", FieldKind::Secret, "", 100}};
constexpr CommandSpec kCommands[] = {{"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};
constexpr ScreenSpec kScreen{
    .name = "F_Secret", .title = "信息提醒", .fields = kFields, .commands = kCommands, .focus = "tpwd"};

}  // namespace secret_screen_detail

SecretScreen::SecretScreen(const QString& question) : Screen(secret_screen_detail::kScreen) {
  panel().text(QString(question).replace(u"\r\n"_qs, u"\n"_qs)).form({"tpwd"}).buttons("| btnOK btnCancel");
  on(command("btnOK"), [this] {
    // A copy of its own: the input's is wiped as soon as it is out of sight.
    const WipedText secret = field("tpwd").secret();
    const QString& shared = secret;
    typed_ = QString(shared.constData(), shared.size());
    accept();
  });
  field("tpwd").onEnter([this] {
    command("btnOK").click();
    return true;
  });
}

std::optional<QString> SecretScreen::ask() {
  return showModal() ? std::move(typed_) : std::nullopt;
}

}  // namespace jxc::ui
