#include "core/screens/not_yet.h"

#include "ui/screen.h"

#include <QLabel>

namespace jxc {
namespace not_yet_detail {

constexpr ui::CommandSpec kCommands[] = {{"btnCancel", "返回", "Esc"}};
constexpr ui::ScreenSpec kScreen = {.name = "F_NotYet", .title = "尚未提供", .commands = kCommands};

class TF_NotYet : public ui::Screen {
 public:
  TF_NotYet() : Screen(kScreen) {
    title = new QLabel(this);
    title->setObjectName(QStringLiteral("lTitle"));
    title->setProperty("title", true);
    text = new QLabel(this);
    text->setObjectName(QStringLiteral("lMsg"));
    text->setWordWrap(true);
    panel().widget(title).widget(text).stretch().buttons("| btnCancel");
    setMinimumSize(420, 200);
    tell(QStringLiteral("功能"));
  }
  void tell(const QString& caption) {
    setWindowTitle(caption);
    title->setText(caption);
    text->setText(QStringLiteral("“%1”在本版本中尚未提供，数据没有任何改变。").arg(caption));
  }
  QLabel* title;
  QLabel* text;
};

const ui::Registered<TF_NotYet> kRegistered{"F_NotYet"};

}  // namespace not_yet_detail

void openOrTell(std::string_view screen, const QString& caption, const QString& searched) {
  if (ui::isScreenRegistered(screen)) {
    ui::openScreen(screen, searched);
    return;
  }
  auto& page = ui::screenAs<not_yet_detail::TF_NotYet>("F_NotYet");
  page.tell(QString(caption).remove(u'&'));
  page.showModal();
}

}  // namespace jxc
