// 软件帮助: what this program is, whose, and where its help stands.
#include "core/build_info.h"
#include "core/screens/help.h"
#include "core/session.h"
#include "ui/icons.h"
#include "ui/screen.h"

#include <QLabel>

namespace jxc {
namespace rjbz_detail {

constexpr ui::CommandSpec kCommands[] = {{"btnHelp", "查看帮助文档", "F1"}, {"btnCancel", "关闭", "Esc"}};
constexpr ui::ScreenSpec kScreen = {.name = "F_Rjbz", .title = "软件帮助", .commands = kCommands};

// What every window understands, for those who look it up here.
constexpr const char16_t* kKeys =
    u"F2　添加或查找　　F5　保存或确定　　F9　新商品\nEnter　下一项　　Esc　离开　　F4　日历\n"
    u"主窗口：数字键打开功能，Ctrl+1～7 换页，Ctrl+K 查找功能，F2 锁定";

}  // namespace rjbz_detail

class TF_Rjbz : public ui::Screen {
 public:
  TF_Rjbz() : Screen(rjbz_detail::kScreen) {
    auto* picture = new QLabel(this);
    picture->setPixmap(ui::icon("glasses").pixmap(64, 64));
    auto* title = new QLabel(QString::fromUtf16(build::programName), this);
    title->setProperty("title", true);
    text_ = new QLabel(this);
    text_->setObjectName(QStringLiteral("lMsg"));
    auto* keys = new QLabel(QString::fromUtf16(rjbz_detail::kKeys), this);
    keys->setProperty("explanation", true);
    panel().widget(picture).widget(title).widget(text_).widget(keys).stretch().buttons("| btnHelp btnCancel");
    on(btnHelp, [this] { openHelp(prompt()); });
  }
  QPushButton& btnHelp = command("btnHelp");

 protected:
  void activate() override {
    QString text =
        QStringLiteral("版本：%1\n%2").arg(QString::fromUtf16(build::version), QString::fromUtf16(build::companyName));
    if (!session().c_name.isEmpty()) text += QStringLiteral("\n使用单位：") + session().c_name;
    text_->setText(text);
    command("btnCancel").setFocus();
  }

 private:
  QLabel* text_;
};

namespace rjbz_detail {
const ui::Registered<TF_Rjbz> kRegistered{"F_Rjbz"};
}

}  // namespace jxc
