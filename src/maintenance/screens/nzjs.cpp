// 数据结算: closes the account set up to a day, after a list of what will go; then the balances before and after.
#include "core/reading.h"
#include "core/text.h"
#include "maintenance/closing_command.h"
#include "maintenance/screens/nzjs_archive.h"
#include "ui/progress.h"
#include "ui/screen.h"

#include <QLabel>
#include <QTabWidget>

namespace jxc {
namespace nzjs_detail {

using ui::ColumnKind;

constexpr ui::FieldSpec kFields[] = {
    {"dateCg", "结算日期：", ui::FieldKind::Date},
    {"chkBackup", "结算时备份数据库", ui::FieldKind::Check},
    {"chkKeep", "保留没有完成的单据（未审核的单据和账目、没有还清的借货）", ui::FieldKind::Check},
};
constexpr ui::ColumnSpec kClosed[] = {
    {"nj_year", "结算日期", ColumnKind::Date},   {"nj_jsrq", "操作日期", ColumnKind::Date},
    {"nj_xm", "项目", ColumnKind::Text, 20},     {"nj_ds", "单据数", ColumnKind::Number, 8},
    {"nj_sl", "数量", ColumnKind::Quantity, 14}, {"nj_je", "金额", ColumnKind::Total, 16},
};
constexpr ui::ColumnSpec kGoing[] = {
    {"xm", "项目", ColumnKind::Text, 28},     {"ds", "单据数", ColumnKind::Number, 8},
    {"sl", "数量", ColumnKind::Quantity, 14}, {"je", "金额", ColumnKind::Total, 16},
    {"cl", "结算时", ColumnKind::Text, 16},
};
constexpr ui::ColumnSpec kSheet[] = {
    {"lb", "账目", ColumnKind::Text, 7},
    {"bh", "编号", ColumnKind::Text, 8},
    {"mc", "名称", ColumnKind::Text, 12},
    {"ss", "所属", ColumnKind::Text, 8},
    {"sl1", "前数量", ColumnKind::Quantity, 9, {.sum = true}},
    {"cb1", "前成本", ColumnKind::Money, 9},
    {"je1", "前金额", ColumnKind::Total, 10},
    {"sl2", "后数量", ColumnKind::Quantity, 9, {.sum = true}},
    {"cb2", "后成本", ColumnKind::Money, 9},
    {"je2", "后金额", ColumnKind::Total, 10},
};
constexpr ui::ColumnSpec kArchives[] = {
    {"da_year", "结算日期", ColumnKind::Date},
    {"da_time", "操作时间", ColumnKind::Date, 20},
    {"a_name", "操作员", ColumnKind::Text, 12},
    {"da_file", "结算前的备份文件", ColumnKind::Text, 60},
};
constexpr ui::GridSpec kGrids[] = {
    {"gridNj", "结算结果", kClosed, "还没有结算过"},
    {"gridGoing", "结算内容", kGoing, "按F3列出结算将删除和保留的内容"},
    {"gridSheet", "结算前后对照表", kSheet, "结算完成后列出结算前后的余额"},
    {"gridArchives", "结算档案", kArchives, "还没有结算档案"},
};
constexpr ui::CommandSpec kCommands[] = {{"btn_List", "结算内容", "F3"},
                                         {"btn_Archive", "查看档案", "F6"},
                                         {"btn_Export", "导出", "Ctrl+S"},
                                         {"btn_OK", "确定结算", "F5"},
                                         {"btn_Exit", "退出", "Esc"}};
constexpr ui::ScreenSpec kScreen = {.name = "F_Nzjs",
                                    .title = "数据结算",
                                    .fields = kFields,
                                    .grids = kGrids,
                                    .commands = kCommands,
                                    .focus = "dateCg"};

class TF_Nzjs : public ui::Screen {
 public:
  TF_Nzjs();

 protected:
  void activate() override;

 private:
  enum Page { Closed, Going, Sheet, Archives };

  closing::Request request() const { return {dateCg.trimmed(), chkKeep.isChecked()}; }
  void showDay();
  bool listWhatGoes();
  void showWhatGoes(const RowSet& list);
  void forgetList();
  void close();
  void openArchive();
  void reload();
  void turnTo(Page page) { tabs_->setCurrentIndex(page); }

  ui::Field& dateCg = field("dateCg");
  ui::Field& chkBackup = field("chkBackup");
  ui::Field& chkKeep = field("chkKeep");
  ui::Grid& gridNj = grid("gridNj");
  ui::Grid& gridGoing = grid("gridGoing");
  ui::Grid& gridSheet = grid("gridSheet");
  ui::Grid& gridArchives = grid("gridArchives");
  std::optional<RowSet> listed_;  // what the operator has seen, for this day and this box
  QLabel* warning_;
  QTabWidget* tabs_ = nullptr;
};

TF_Nzjs::TF_Nzjs() : Screen(kScreen), warning_(new QLabel(this)) {
  warning_->setObjectName(QStringLiteral("warning"));
  auto area = panel();
  area.row("dateCg chkBackup chkKeep |").widget(warning_);
  area.page("cxTab1", QStringLiteral("结算结果"))
      .grid("gridNj")
      .text(QStringLiteral("注：库存盘点项的数量为盘点数量，金额为库存数量。"));
  area.page("cxTab2", QStringLiteral("结算内容")).grid("gridGoing");
  area.page("cxTab3", QStringLiteral("结算前后对照表")).grid("gridSheet");
  area.page("cxTab4", QStringLiteral("结算档案")).grid("gridArchives");
  area.buttons("btn_List btn_Archive btn_Export | btn_OK btn_Exit");
  tabs_ = area.tabs();
  gridGoing.setRowLook(
      [](const Row& row) { return row.text("cl") == u"保留" ? ui::RowLook::Normal : ui::RowLook::Bad; });
  dateCg.onChanged([this] { showDay(); });
  chkKeep.onChanged([this] { forgetList(); });
  on(command("btn_List"), [this] { listWhatGoes(); });
  on(command("btn_Archive"), [this] { openArchive(); });
  gridArchives.onActivated([this] { openArchive(); });
  on(command("btn_OK"), [this] { close(); });
}

void TF_Nzjs::activate() {
  dateCg.setText(closing::proposedDay());
  chkBackup.setChecked(true);
  chkKeep.setChecked(true);
  gridSheet.clearRows();
  showDay();
  reload();
  turnTo(Closed);
}

void TF_Nzjs::showDay() {
  warning_->setText(u"将删除： "_qs + dateCg.trimmed() + u" 及该日期之前的全部数据！"_qs);
  forgetList();
}

void TF_Nzjs::forgetList() {
  listed_.reset();
  gridGoing.clearRows();
}

void TF_Nzjs::showWhatGoes(const RowSet& list) {
  listed_ = list;
  gridGoing.setRows(list);
  turnTo(Going);
}

void TF_Nzjs::reload() {
  gridNj.loadQuery(closing::summaries());
  gridArchives.loadQuery(closing::archives());
}

bool TF_Nzjs::listWhatGoes() {
  if (!checkFields() || isRefused(closing::dayRefusal(dateCg.trimmed()), prompt())) return false;
  showWhatGoes(closing::whatGoes(request()));
  return true;
}

void TF_Nzjs::close() {
  // What will go stands on the screen while the question is asked, and is what the operator agrees to.
  if (!listed_ && !listWhatGoes()) return;
  turnTo(Going);
  std::optional<RowSet> sheet =
      closing::closePeriod({request(), chkBackup.isChecked(), *listed_}, prompt(),
                           ui::progressInWords(windowTitle(), this), [this](const RowSet& now) { showWhatGoes(now); });
  if (!sheet) return;
  dateCg.setText(dateCg.trimmed());  // it was typed, and is done: leaving loses nothing
  gridSheet.setRows(*std::move(sheet));
  forgetList();
  reload();
  turnTo(Sheet);
}

void TF_Nzjs::openArchive() {
  turnTo(Archives);
  const auto row = gridArchives.current();
  if (!row) return prompt().notice(u"还没有结算档案！"_qs);
  const QString file = row->text("da_file");
  if (file.isEmpty()) return prompt().notice(u"这次结算没有备份，没有档案可以查看！"_qs);
  showArchive(file, row->text("da_year"), prompt());
}

const ui::Registered<TF_Nzjs> kRegistered{"F_Nzjs"};

}  // namespace nzjs_detail
}  // namespace jxc
