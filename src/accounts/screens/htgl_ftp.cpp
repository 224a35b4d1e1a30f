// FTP参数: the server that attachments of contracts may lie on.
#include "accounts/attachment_server.h"
#include "core/text.h"
#include "ui/progress.h"
#include "ui/screen.h"

#include <QPushButton>

namespace jxc {
namespace htgl_ftp_detail {

using ui::FieldKind;

constexpr ui::FieldSpec kFields[] = {
    {"ftp_ip", "服务器地址：", FieldKind::Text, "jxc_ftpcs.ftp_ip"},
    {"ftp_port", "端口：", FieldKind::Integer, "", 5, ui::NoMinus},
    {"ftp_user", "用户名：", FieldKind::Text, "jxc_ftpcs.ftp_user"},
    {"ftp_pwd", "密码：", FieldKind::Password, "jxc_ftpcs.ftp_pwd"},
    {"ftp_folder", "文件夹：", FieldKind::Text, "jxc_ftpcs.ftp_folder"},
    {"chkPlain", "服务器不支持加密时，允许明文传输", FieldKind::Check},
    {"tcert", "信任的证书：", FieldKind::Text, "", 64, ui::ReadOnly},
};
constexpr ui::CommandSpec kCommands[] = {{"btnTest", "测试连接", "F6"},
                                         {"btnForget", "不再信任证书", "Ctrl+D"},
                                         {"btnOK", "确定", "F5"},
                                         {"btnCancel", "取消", "Esc"}};
constexpr ui::ScreenSpec kScreen = {
    .name = "F_Htgl_Ftp", .title = "FTP参数", .fields = kFields, .commands = kCommands, .focus = "ftp_ip"};

}  // namespace htgl_ftp_detail

class TF_Htgl_Ftp : public ui::Screen {
 public:
  TF_Htgl_Ftp() : Screen(htgl_ftp_detail::kScreen) {
    panel()
        .form({"ftp_ip ftp_port", "ftp_user ftp_pwd", "ftp_folder", "chkPlain", "tcert"})
        .stretch()
        .buttons("btnTest btnForget | btnOK btnCancel");
    for (const char* each : {"ftp_ip", "ftp_port"})
      field(each).onChanged([this] { trust({}); });  // of the server that stood there
    on(command("btnTest"), [this] { test(); });
    on(command("btnForget"), [this] { trust({}); });
    on(command("btnOK"), [this] {
      if (checkFields() && attachments::saveServerSettings(typed(), prompt())) accept();
    });
    resize(620, 260);
  }

 protected:
  void activate() override {
    const attachments::ServerSettings settings = attachments::serverSettings().value_or(attachments::ServerSettings());
    field("ftp_ip").load(settings.host);
    field("ftp_port").load(settings.port);
    field("ftp_user").load(settings.user);
    field("ftp_pwd").load(settings.password);
    field("ftp_folder").load(settings.folder);
    field("chkPlain").load(settings.mayBePlain ? 1 : 0);
    trust(settings.trusted);
  }

 private:
  attachments::ServerSettings typed() {
    return {.host = field("ftp_ip").trimmed(),
            .user = field("ftp_user").text(),
            .password = field("ftp_pwd").text(),
            .port = field("ftp_port").trimmed(),
            .folder = field("ftp_folder").trimmed(),
            .mayBePlain = field("chkPlain").isChecked(),
            .trusted = trusted_};
  }
  void trust(const QString& pin) {
    trusted_ = pin;
    field("tcert").setText(pin.isEmpty() ? u"无：只接受公认机构签发的证书"_qs : u"公钥 "_qs + pin);
    command("btnForget").setEnabled(!pin.isEmpty());
  }
  void test() {
    if (!checkFields()) return;
    attachments::ServerSettings settings = typed();
    attachments::testServer(settings, prompt(), ui::progressOnDemand(u"正在测试连接……"_qs, this));
    field("chkPlain").setChecked(settings.mayBePlain);
    trust(settings.trusted);
  }

  QString trusted_;
};

namespace htgl_ftp_detail {
const ui::Registered<TF_Htgl_Ftp> kRegistered{"F_Htgl_Ftp"};
}

}  // namespace jxc
