// 账目锁定: locks the books up to a day and opens them again; what waits up to that day, and who did it when.
#include "core/reading.h"
#include "maintenance/period_locking.h"
#include "ui/screen.h"

#include <QLabel>

namespace jxc {
namespace zmsd_detail {

using ui::ColumnKind;

constexpr ui::FieldSpec kFields[] = {{"dateCg", "锁定到：", ui::FieldKind::Date}};
constexpr ui::ColumnSpec kWaiting[] = {{"kind", "单据", ColumnKind::Text, 22}, {"num", "张数", ColumnKind::Number, 8}};
constexpr ui::ColumnSpec kHistory[] = {{"sd_time", "时间", ColumnKind::Date, 20},
                                       {"a_name", "操作员", ColumnKind::Text, 14},
                                       {"what", "内容", ColumnKind::Text, 22}};
constexpr ui::GridSpec kGrids[] = {{"gridWaiting", "这一天及以前没有审核的单据", kWaiting, "没有未审核的单据"},
                                   {"gridHistory", "锁定记录", kHistory, "还没有锁定过"}};
constexpr ui::CommandSpec kCommands[] = {
    {"btnOK", "锁定", "F5"}, {"btnOpen", "解除锁定", "F6"}, {"btnCancel", "退出", "Esc"}};
constexpr ui::ScreenSpec kScreen = {.name = "F_Zmsd",
                                    .title = "账目锁定",
                                    .fields = kFields,
                                    .grids = kGrids,
                                    .commands = kCommands,
                                    .focus = "dateCg"};

class TF_Zmsd : public ui::Screen {
 public:
  TF_Zmsd() : Screen(kScreen), state_(new QLabel(this)) {
    state_->setObjectName(QStringLiteral("state"));
    panel()
        .text(QStringLiteral(
            "锁定日期及以前的单据和账目不能再保存、更改日期、审核、取消审核和删除。已锁定单据的入库、出库、"
            "退货、收付款和还货，按当天的日期照常办理。"))
        .widget(state_)
        .row("dateCg |");
    auto [waiting, history] = panel().columns(2, 3);
    waiting.group(u"这一天及以前没有审核的单据"_qs).grid("gridWaiting");
    history.group(u"锁定记录"_qs).grid("gridHistory");
    panel().buttons("btnOpen | btnOK btnCancel");
    field("dateCg").onChanged([this] { showWaiting(); });
    on(command("btnOK"), [this] {
      if (checkFields() && period_locking::lockUpTo(field("dateCg").text(), prompt()))
        refresh(period_locking::lockedDay(), u"账目已锁定"_qs);
    });
    on(command("btnOpen"), [this] {
      if (period_locking::open(prompt())) refresh(period_locking::proposedDay(), u"账目锁定已解除"_qs);
    });
  }

 protected:
  void activate() override { refresh(period_locking::proposedDay(), {}); }

 private:
  void refresh(const QString& proposed, const QString& done) {
    const QString day = period_locking::lockedDay();
    state_->setText(day.isEmpty() ? u"账目没有锁定"_qs : u"账目已锁定到 "_qs + day);
    command("btnOpen").setEnabled(!day.isEmpty());
    field("dateCg").setText(proposed);
    grid("gridHistory").readNow(period_locking::history());
    showWaiting();
    say(done);
  }

  void showWaiting() {
    RowSet rows({"id", "kind", "num"});
    std::int64_t id = 0;
    for (const auto& each : period_locking::waitingUpTo(field("dateCg").text())) {
      rows.addInteger(++id);
      rows.addText(each.kind.toStdString());
      rows.addInteger(each.count);
    }
    grid("gridWaiting").setRows(rows);
  }

  QLabel* state_;
};

const ui::Registered<TF_Zmsd> kRegistered{"F_Zmsd"};

}  // namespace zmsd_detail
}  // namespace jxc
