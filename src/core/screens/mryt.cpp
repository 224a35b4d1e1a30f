// 每日一帖: a piece of advice at each start.
#include "core/start_reminders.h"
#include "ui/screen.h"

#include <QLabel>

namespace jxc {
namespace mryt_detail {

constexpr ui::FieldSpec kFields[] = {
    {"memoTs", "", ui::FieldKind::Memo, "", 0, ui::ReadOnly},
    {"chkDisp", "每次启动时显示", ui::FieldKind::Check},
};
constexpr ui::CommandSpec kCommands[] = {
    {"btnPrior", "上一条", "PgUp"}, {"btnNext", "下一条", "PgDown"}, {"btnCancel", "关闭", "Esc"}};
constexpr ui::ScreenSpec kScreen = {.name = "F_Mryt", .title = "每日一帖", .fields = kFields, .commands = kCommands};

}  // namespace mryt_detail

class TF_Mryt : public ui::Screen {
 public:
  TF_Mryt() : Screen(mryt_detail::kScreen) {
    auto* title = new QLabel(QStringLiteral("您知道吗……"), this);
    title->setProperty("title", true);
    title->setBuddy(memoTs.widget());
    panel().widget(title).form({"memoTs"}).buttons("chkDisp | btnPrior btnNext btnCancel");
    memoTs.widget()->setMinimumSize(460, 120);
    on(btnPrior, [this] { step(previousTip(tip_)); });
    on(btnNext, [this] { step(nextTip(tip_)); });
  }
  ui::Field& memoTs = field("memoTs");
  ui::Field& chkDisp = field("chkDisp");
  QPushButton& btnPrior = command("btnPrior");
  QPushButton& btnNext = command("btnNext");

 protected:
  void activate() override {
    tip_ = 0;
    chkDisp.setChecked(showsDailyTip());
    show(tipOfTheDay());
    command("btnCancel").setFocus();
  }

  bool mayLeave() override {
    setShowsDailyTip(chkDisp.isChecked());
    return true;
  }

 private:
  using Screen::show;
  void show(const DailyTip& tip) {
    tip_ = tip.id;
    memoTs.setText(tip.id == 0 ? QStringLiteral("没有提示信息") : tip.text);
  }
  void step(const DailyTip& tip) {
    show(tip);
    setShowsDailyTip(chkDisp.isChecked());
  }

  std::int64_t tip_ = 0;
};

namespace mryt_detail {
const ui::Registered<TF_Mryt> kRegistered{"F_Mryt"};
}

}  // namespace jxc
