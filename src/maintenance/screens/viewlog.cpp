// 查看日志: who did what, when, by period and words.
#include "core/periods.h"
#include "maintenance/log_viewer.h"
#include "ui/period_menu.h"
#include "ui/screen.h"

#include <QLabel>

namespace jxc {
namespace viewlog_detail {

using ui::ColumnKind;
using ui::FieldKind;

constexpr ui::FieldSpec kFields[] = {
    {"date1", "日志记录的时间段：", FieldKind::Date},
    {"date2", "至", FieldKind::Date},
    {"tname", "输入日志记录的相关内容进行查询：", FieldKind::Text, "", 64},
};
constexpr ui::ColumnSpec kColumns[] = {{"log_time", "日志日期", ColumnKind::Text, 20},
                                       {"a_name", "操作员", ColumnKind::Text, 14},
                                       {"log_note", "日志内容", ColumnKind::Text, 70}};
constexpr ui::GridSpec kGrids[] = {{"gridLog", "操作日志", kColumns, "这段时间没有日志"}};
constexpr ui::CommandSpec kCommands[] = {
    {"btnMenu1", "时间段(&P)"}, {"btnSearch1", "查询", "F5"}, {"btn_Dele", "清空"}, {"btn_Exit", "退出", "Esc"}};
constexpr ui::ScreenSpec kScreen = {.name = "F_ViewLog",
                                    .title = "查看日志",
                                    .fields = kFields,
                                    .grids = kGrids,
                                    .commands = kCommands,
                                    .focus = "tname"};

}  // namespace viewlog_detail

class TF_ViewLog : public ui::Screen {
 public:
  TF_ViewLog() : Screen(viewlog_detail::kScreen), log_(grid("gridLog")), count_(new QLabel) {
    count_->setObjectName(QStringLiteral("lCount"));
    auto area = panel();
    area.row("date1 date2 btnMenu1 |").row("tname btnSearch1 |").grid("gridLog");
    area.widget(count_).buttons("| btn_Dele btn_Exit");
    ui::addPeriodMenu(command("btnMenu1"), field("date1"), field("date2"), [this] { search(); });
    on(command("btnSearch1"), [this] { search(); });
    on(command("btn_Dele"), [this] {
      if (clearLog(prompt())) log_.reload();
    });
    field("tname").onEnter([this] {
      search();
      return true;
    });
    log_.onLoaded([this] { count_->setText(QStringLiteral("记录数：%1").arg(log_.rowCount())); });
  }

 protected:
  void activate() override {
    field("tname").clear();
    const Period month = periodChoices()[5].period();
    field("date1").setText(month.from);
    field("date2").setText(month.to);
    command("btn_Dele").setVisible(mayClearLog());
    log_.loadQuery(logStatement());
  }

 private:
  void search() {
    if (!checkFields()) return;
    log_.loadQuery(logStatement(field("date1").text(), field("date2").text(), field("tname").text()));
  }

  ui::Grid& log_;
  QLabel* count_;
};

namespace viewlog_detail {
const ui::Registered<TF_ViewLog> kRegistered{"F_ViewLog"};
}

}  // namespace jxc
