// 业务员管理: the desk of an employee: his documents of a period and his diary.
#include "core/clock.h"
#include "core/periods.h"
#include "masterdata/employee_diary.h"
#include "masterdata/employees.h"
#include "ui/display.h"
#include "ui/period_menu.h"
#include "ui/screen.h"

#include <QLabel>
#include <QTabWidget>

namespace jxc {
namespace ywygl_detail {

using ui::ColumnKind;
using ui::FieldKind;

constexpr ui::FieldSpec kFields[] = {{"date1", "单据日期：", FieldKind::Date}, {"date2", "至", FieldKind::Date}};
constexpr ui::ColumnSpec kUserColumns[] = {
    {"u_name", "员工姓名", ColumnKind::Text, 10}, {"u_duty", "职务", ColumnKind::Text, 8}, {"u_tele", "电话"}};
constexpr ui::ColumnSpec kDocumentColumns[] = {
    {"rq", "日期", ColumnKind::Date},
    {"zflx", "单据类型"},
    {"djh", "单据号", ColumnKind::Text, 16},
    {"dwmc", "往来单位", ColumnKind::Text, 18},
    {"ck_name", "仓库"},
    {"yfje", "应付应收", ColumnKind::Money, 0, true},
    {"sfje", "实付实收", ColumnKind::Money, 0, true},
    {"wfje", "未付未收", ColumnKind::Money, 0, true},
};
constexpr ui::ColumnSpec kDiaryColumns[] = {{"rz_rq", "日期", ColumnKind::Date},
                                            {"rz_note", "日志内容", ColumnKind::Text, 60}};
constexpr ui::GridSpec kGrids[] = {
    {"gridUser", "员工列表", kUserColumns, "还没有员工"},
    {"gridDj", "员工单据", kDocumentColumns, "这段时间没有已审核的单据"},
    {"gridRz", "员工日志", kDiaryColumns, "还没有日志，按F2增加"},
};
constexpr ui::CommandSpec kCommands[] = {{"btnMenu1", "时间段(&P)"},    {"btnSearch", "查询", "F5"},
                                         {"btnAdd", "增加", "F2"},      {"btnModi", "修改", "F3"},
                                         {"btnDele", "删除", "Ctrl+D"}, {"btnCancel", "退出", "Esc"}};
constexpr ui::ScreenSpec kScreen = {.name = "F_Ywygl",
                                    .title = "业务员管理",
                                    .fields = kFields,
                                    .grids = kGrids,
                                    .commands = kCommands,
                                    .focus = "gridUser"};

constexpr ui::FieldSpec kEntryFields[] = {
    {"tuser", "员工：", FieldKind::Text, "", 32, ui::ReadOnly},
    {"dateRz", "日期：", FieldKind::Date},
    {"tnote", "内容：", FieldKind::Memo, "jxc_ywyrz.rz_note"},
};
constexpr ui::CommandSpec kEntryCommands[] = {{"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};
constexpr ui::ScreenSpec kAdd = {.name = "F_Ywyrz_Add",
                                 .title = "增加员工日志",
                                 .fields = kEntryFields,
                                 .commands = kEntryCommands,
                                 .focus = "tnote"};
constexpr ui::ScreenSpec kModi = {.name = "F_Ywyrz_Modi",
                                  .title = "修改员工日志",
                                  .fields = kEntryFields,
                                  .commands = kEntryCommands,
                                  .focus = "tnote"};

/// One entry of the diary.
class DiaryEntryScreen : public ui::Screen {
 public:
  explicit DiaryEntryScreen(const ui::ScreenSpec& spec) : Screen(spec) {
    command("btnOK").setProperty("main", true);
    on(command("btnOK"), [this] {
      if (!checkFields()) return;
      draft_.date = field("dateRz").text();
      draft_.note = field("tnote").text();
      if (saveEmployeeDiary(draft_, prompt())) accept();
    });
  }
  bool edit(const QString& employeeName, EmployeeDiaryDraft draft) {
    draft_ = std::move(draft);
    name_ = employeeName;
    return showModal();
  }

 protected:
  void activate() override {
    if (draft_.date.isEmpty()) draft_.date = clock::today();
    field("tuser").setText(name_);
    field("dateRz").load(draft_.date);
    field("tnote").load(draft_.note);
  }

 private:
  EmployeeDiaryDraft draft_;
  QString name_;
};

struct TF_Ywyrz_Add : DiaryEntryScreen {
  TF_Ywyrz_Add() : DiaryEntryScreen(kAdd) {}
};
struct TF_Ywyrz_Modi : DiaryEntryScreen {
  TF_Ywyrz_Modi() : DiaryEntryScreen(kModi) {}
};

}  // namespace ywygl_detail

class TF_Ywygl : public ui::Screen {
 public:
  TF_Ywygl();

 protected:
  void activate() override;

 private:
  void showEmployee();
  void showTotals();

  ui::Grid& users_ = grid("gridUser");
  ui::Grid& documents_ = grid("gridDj");
  ui::Grid& diary_ = grid("gridRz");
  QLabel* totals_ = new QLabel;
};

TF_Ywygl::TF_Ywygl() : Screen(ywygl_detail::kScreen) {
  using ywygl_detail::DiaryEntryScreen;
  totals_->setObjectName(QStringLiteral("lTotal"));
  auto area = panel();
  auto [left, right] = area.columns(1, 3);
  left.grid("gridUser");
  auto documents = right.page("cxTab1", QStringLiteral("单据"));
  documents.row("date1 date2 btnMenu1 btnSearch |").grid("gridDj").widget(totals_);
  auto diary = right.page("cxTab2", QStringLiteral("日志"));
  diary.grid("gridRz").buttons("btnAdd btnModi btnDele |");
  area.buttons("| btnCancel");

  users_.onCurrentChanged([this] { showEmployee(); });
  documents_.onLoaded([this] { showTotals(); });
  ui::addPeriodMenu(command("btnMenu1"), field("date1"), field("date2"), [this] { showEmployee(); });
  on(command("btnSearch"), [this] { showEmployee(); });
  on(command("btnAdd"), [this] {
    const EmployeeDiaryDraft fresh{.id = 0, .employee = users_.currentText("u_sn"), .date = {}, .note = {}};
    auto& entry = ui::screenAs<DiaryEntryScreen>("F_Ywyrz_Add");
    if (users_.current() && entry.edit(users_.currentText("u_name"), fresh)) diary_.reload();
  });
  const auto modify = [this] {
    auto& entry = ui::screenAs<DiaryEntryScreen>("F_Ywyrz_Modi");
    const auto id = diary_.currentId();
    if (id != 0 && entry.edit(users_.currentText("u_name"), readEmployeeDiary(id))) diary_.reload();
  };
  on(command("btnModi"), modify);
  diary_.onActivated(modify);
  on(command("btnDele"), [this] {
    const auto id = diary_.currentId();
    if (id != 0 && deleteEmployeeDiary(id, prompt())) diary_.reload();
  });
}

void TF_Ywygl::activate() {
  const Period month = periodChoices()[5].period();
  field("date1").setText(month.from);
  field("date2").setText(month.to);
  users_.loadQuery(employeeListStatement());
  showEmployee();
}

void TF_Ywygl::showEmployee() {
  const QString employee = users_.currentText("u_sn");
  documents_.loadQuery(deskStatement(employee, field("date1").text(), field("date2").text()));
  diary_.loadQuery(employeeDiaryStatement(employee));
}

void TF_Ywygl::showTotals() {
  const auto money = [](double amount) { return ui::displayNumber(ui::ColumnKind::Money, amount); };
  double bought = 0, sold = 0;
  for (const Row row : documents_.rows()) {
    const bool isPurchase = row.integer("dsort") <= 2;
    (isPurchase ? bought : sold) += row.number("yfje");
  }
  totals_->setText(QStringLiteral("单据数：%1    采购合计：%2    销售合计：%3    未付未收：%4")
                       .arg(documents_.rowCount())
                       .arg(money(bought), money(sold), money(documents_.sum("wfje"))));
}

namespace ywygl_detail {
const ui::Registered<TF_Ywygl> kDesk{"F_Ywygl"};
const ui::Registered<TF_Ywyrz_Add> kEntryAdd{"F_Ywyrz_Add"};
const ui::Registered<TF_Ywyrz_Modi> kEntryModi{"F_Ywyrz_Modi"};
}  // namespace ywygl_detail

}  // namespace jxc
