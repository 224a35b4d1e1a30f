// 现金银行: money by account: lines that wait, lines that count, entry, transfer and repair.
#include "accounts/cash_accounts.h"
#include "accounts/cash_lines.h"
#include "core/clock.h"
#include "core/periods.h"
#include "core/rights.h"
#include "core/session.h"
#include "core/text.h"
#include "output/money_reports.h"
#include "output/printed_documents.h"
#include "output/screens/print_outlet.h"
#include "stock/screens/preview_screen.h"
#include "ui/period_menu.h"
#include "ui/screen.h"

#include <QTabWidget>

namespace jxc {
namespace xjyh_detail {

using cash::Movement;
using ui::ColumnKind;
using ui::FieldKind;

constexpr ui::FieldSpec kFields[] = {
    {"tdate11", "日期：", FieldKind::Date},   {"tdate12", "至", FieldKind::Date},
    {"comYhzh1", "账户：", FieldKind::Combo}, {"tkey1", "查找：", FieldKind::Text, "", 50},
    {"tdate21", "日期：", FieldKind::Date},   {"tdate22", "至", FieldKind::Date},
    {"comYhzh2", "账户：", FieldKind::Combo}, {"tkey2", "查找：", FieldKind::Text, "", 50},
    {"rMxb", "明细表", FieldKind::Radio},     {"rHzb", "汇总表", FieldKind::Radio},
};
constexpr ui::ColumnSpec kWaitingColumns[] = {
    {"xj_rq", "日期", ColumnKind::Date},           {"gl_djh", "单据号", ColumnKind::Text, 15},
    {"xj_dlx", "类型", ColumnKind::Text, 14},      {"xj_kmmc", "账户", ColumnKind::Text, 14},
    {"xj_je", "金额", ColumnKind::Money, 0, true}, {"u_name", "经办人"},
    {"xj_note", "备注", ColumnKind::Text, 24},     {"a_name", "操作员"},
};
constexpr ui::ColumnSpec kAuditedColumns[] = {
    {"xj_kmmc", "账户", ColumnKind::Text, 12},
    {"xj_rq", "日期", ColumnKind::Date},
    {"gl_djh", "单据号", ColumnKind::Text, 15},
    {"xj_dlx", "类型", ColumnKind::Text, 14},
    {"xj_je", "金额", ColumnKind::Money, 0, true},
    {"xj_ljje", "账户余额", ColumnKind::Money},
    {"ghs_name", "往来单位", ColumnKind::Text, 18},
    {"ck_name", "仓库"},
    {"u_name", "经办人"},
    {"xj_note", "备注", ColumnKind::Text, 24},
    {"a_name", "操作员"},
};
constexpr ui::ColumnSpec kTotalColumns[] = {
    {"xj_kmmc", "账户", ColumnKind::Text, 24},
    {"sfje", "本期收支", ColumnKind::Money, 16, true},
    {"ljje", "期末余额", ColumnKind::Money, 16, true},
};
constexpr ui::GridSpec kGrids[] = {
    {"xjyh", "未审核的收付", kWaitingColumns, "没有未审核的信息，按F6进款、F7出款", "id", "xjyh"},
    {"xjyhtj", "收付明细", kAuditedColumns, "该时间段内没有收付，改变条件后按F2查询", "id", "xjyhtj"},
    {"xjyhhz", "账户汇总", kTotalColumns, "该时间段内没有收付，改变条件后按F2查询", "xj_kmmc"},
};
constexpr ui::CommandSpec kCommands[] = {
    {"btnDate1", "时间段"},           {"btnDate2", "时间段"},          {"btnSearch1", "查询", "F2"},
    {"btn_Rukuan", "进款", "F6"},     {"btn_Chuk", "出款", "F7"},      {"btn_Yhzz", "银行转账", "F8"},
    {"btn_Modi", "修改", "F3"},       {"btn_Dele", "删除", "Ctrl+D"},  {"btn_Check", "审核", "F9"},
    {"btnSearch2", "查询", "F2"},     {"btn_UnChk", "取消审核", "F9"}, {"btn_Cxjs", "重新计算", "F8"},
    {"btn_Yhzh", "期初建账", "F4"},   {"btn_Prin", "打印", "Ctrl+P"},  {"btn_Prin2", "打印", "Ctrl+P"},
    {"btn_Export", "导出", "Ctrl+S"}, {"btnCancel", "退出", "Esc"},    {"btnPreview1", "预览影响"},
    {"btnPreview2", "预览影响"},
};
constexpr ui::ScreenSpec kScreen = {
    .name = "F_Xjyh", .title = "现金银行", .fields = kFields, .grids = kGrids, .commands = kCommands, .focus = "xjyh"};

// ---- entry -------------------------------------------------------------------------------------------------------

constexpr ui::FieldSpec kLineFields[] = {
    {"comYhzh", "账户：", FieldKind::Combo},
    {"tfyje", "金额：", FieldKind::Money},
    {"comUser", "经办人：", FieldKind::Combo},
    {"dateCg", "日期：", FieldKind::Date},
    {"tnote", "备注：", FieldKind::Text, "jxc_xjyh.xj_note", 0, ui::OffersRemarks},
};
constexpr ui::FieldSpec kTransferFields[] = {
    {"comYhzh", "出款账户：", FieldKind::Combo},
    {"comYhzh1", "入款账户：", FieldKind::Combo},
    {"tfyje", "金额：", FieldKind::Money},
    {"comUser", "经办人：", FieldKind::Combo},
    {"dateCg", "日期：", FieldKind::Date},
    {"tnote", "备注：", FieldKind::Text, "jxc_xjyh.xj_note", 0, ui::OffersRemarks},
};
constexpr ui::CommandSpec kEntryCommands[] = {
    {"btnPrin", "打印", "F4"}, {"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};

constexpr ui::ScreenSpec entrySpec(std::string_view name, std::string_view title,
                                   std::span<const ui::FieldSpec> fields) {
  return {.name = name, .title = title, .fields = fields, .commands = kEntryCommands, .focus = "tfyje"};
}
constexpr ui::ScreenSpec kIn = entrySpec("F_Xjyh_Jk", "进款", kLineFields);
constexpr ui::ScreenSpec kOut = entrySpec("F_Xjyh_Ck", "出款", kLineFields);
constexpr ui::ScreenSpec kTransfer = entrySpec("F_Xjyh_Zz", "账户转账", kTransferFields);

/// Employees by name: the ledger keeps names.
std::vector<ListItem> employees() {
  Filter filter;
  filter.add("u_jy=0").add("u_name<>''");
  return fillKeyedComboWhere("jxc_user", "u_name", {}, filter, "id", "u_name");
}

std::vector<ListItem> accountsOrAll() {
  return cash::fillAccounts(QStringLiteral("全部账户"));
}

}  // namespace xjyh_detail

/// 进款, 出款 or 银行转账: one form, with a second account for the transfer.
class CashLineScreen : public ui::Screen {
 public:
  CashLineScreen(const ui::ScreenSpec& spec, cash::Movement movement);

  ui::Field& comYhzh = field("comYhzh");
  ui::Field* comYhzh1 = hasField("comYhzh1") ? &field("comYhzh1") : nullptr;
  ui::Field& tfyje = field("tfyje");
  ui::Field& comUser = field("comUser");
  ui::Field& dateCg = field("dateCg");
  ui::Field& tnote = field("tnote");

  /// Opens on a line that waits.
  bool edit(const cash::LineDraft& draft);

 protected:
  void activate() override;

 private:
  cash::LineDraft collect() const;
  void save();
  const cash::Movement movement_;
  cash::LineDraft draft_;
};

CashLineScreen::CashLineScreen(const ui::ScreenSpec& spec, cash::Movement movement)
    : Screen(spec), movement_(movement), draft_(cash::newLine(movement)) {
  if (comYhzh1)
    panel().form({"comYhzh comYhzh1", "tfyje dateCg", "comUser", "tnote"});
  else
    panel().form({"comYhzh tfyje", "comUser dateCg", "tnote"});
  panel().buttons("btnPrin | btnOK btnCancel");
  command("btnOK").setProperty("main", true);
  on(command("btnOK"), [this] { save(); });
  addKey(command("btnPrin"), "Ctrl+P");  // F4 in a date or a remark opens what these offer
  on(command("btnPrin"), [this] {
    if (checkFields()) sendToPaper(cashSlipReport(collect()), PrintWay::Preview, this, windowTitle());
  });
}

bool CashLineScreen::edit(const cash::LineDraft& draft) {
  draft_ = draft;
  const bool done = showModal();
  draft_ = cash::newLine(movement_);
  return done;
}

void CashLineScreen::activate() {
  if (draft_.id == 0) draft_ = cash::newLine(movement_);
  command("btnPrin").setVisible(mayPrintUnsaved());
  comYhzh.setItems(cash::fillAccounts());
  if (comYhzh1) {
    comYhzh1->setItems(cash::fillAccounts());
    comYhzh1->setIndex(comYhzh1->items().size() > 1 ? 1 : 0);
  }
  comUser.setItems(xjyh_detail::employees());
  dateCg.load(draft_.date);
  tfyje.load(draft_.amount);
  tnote.load(draft_.note);
  if (draft_.id == 0) return;
  comYhzh.setKey(draft_.account);
  comUser.setKey(draft_.employee);
}

cash::LineDraft CashLineScreen::collect() const {
  cash::LineDraft draft = draft_;
  draft.date = dateCg.text();
  draft.account = comYhzh.key();
  if (comYhzh1) draft.target = comYhzh1->key();
  draft.amount = tfyje.number();
  draft.employee = comUser.key();
  draft.note = tnote.trimmed();
  return draft;
}

void CashLineScreen::save() {
  if (checkFields() && cash::saveLine(collect(), prompt())) accept();
}

class TF_Xjyh : public ui::Screen {
 public:
  TF_Xjyh();

  ui::Field& tdate11 = field("tdate11");
  ui::Field& tdate12 = field("tdate12");
  ui::Field& comYhzh1 = field("comYhzh1");
  ui::Field& tdate21 = field("tdate21");
  ui::Field& tdate22 = field("tdate22");
  ui::Field& comYhzh2 = field("comYhzh2");
  ui::Field& rMxb = field("rMxb");
  ui::Field& rHzb = field("rHzb");
  ui::Grid& gridXjyh = grid("xjyh");
  ui::Grid& gridXjyhtj = grid("xjyhtj");
  ui::Grid& gridXjyhhz = grid("xjyhhz");

 protected:
  void activate() override;

 private:
  void refresh();
  void enter(std::string_view screen);
  void modify();
  void print(const ui::Grid& list);
  void showMode();
  cash::LineFilter waitingFilter();
  cash::LineFilter auditedFilter();
};

TF_Xjyh::TF_Xjyh() : Screen(xjyh_detail::kScreen) {
  auto area = panel();
  area.page("cxTab1", QStringLiteral("现金银行"))
      .row("tdate11 tdate12 btnDate1 comYhzh1 tkey1 btnSearch1 |")
      .grid("xjyh")
      .buttons("btn_Rukuan btn_Chuk btn_Yhzz btn_Modi btn_Dele btn_Prin | btnPreview1 btn_Check");
  area.page("cxTab2", QStringLiteral("现金银行统计"))
      .row("tdate21 tdate22 btnDate2 comYhzh2 tkey2 rMxb rHzb btnSearch2 |")
      .grid("xjyhtj")
      .grid("xjyhhz")
      .buttons("btn_Cxjs btn_Prin2 | btnPreview2 btn_UnChk");
  area.buttons("btn_Yhzh btn_Export | btnCancel");

  for (const char* each : {"btnSearch1", "btnSearch2"})
    on(command(each), [this] { refresh(); });
  for (const char* each : {"tkey1", "tkey2"})
    field(each).onEnter([this] {
      refresh();
      return true;
    });
  for (ui::Field* each : {&tdate11, &tdate12, &comYhzh1, &tdate21, &tdate22, &comYhzh2})
    each->onChanged([this] { refresh(); });
  for (ui::Field* each : {&rMxb, &rHzb})
    each->onChanged([this] {
      showMode();
      refresh();
    });
  ui::addPeriodMenu(command("btnDate1"), tdate11, tdate12, [this] { refresh(); });
  ui::addPeriodMenu(command("btnDate2"), tdate21, tdate22, [this] { refresh(); });

  on(command("btn_Rukuan"), [this] { enter("F_Xjyh_Jk"); });
  on(command("btn_Chuk"), [this] { enter("F_Xjyh_Ck"); });
  on(command("btn_Yhzz"), [this] { enter("F_Xjyh_Zz"); });
  on(command("btn_Modi"), [this] { modify(); });
  gridXjyh.onActivated([this] { modify(); });
  on(command("btn_Dele"), [this] {
    if (!gridXjyh.isEmpty() && cash::deleteLine(gridXjyh.currentText("gl_djh"), prompt())) refresh();
  });
  on(command("btn_Check"), [this] {
    if (gridXjyh.isEmpty()) return;
    cash::auditLine(gridXjyh.currentText("gl_djh"), prompt());
    refresh();
  });
  on(command("btn_UnChk"), [this] {
    if (gridXjyhtj.isEmpty()) return;
    cash::cancelLine(gridXjyhtj.currentId(), prompt());
    refresh();
  });
  on(command("btnPreview1"), [this] {
    if (gridXjyh.isEmpty()) return;
    const QString number = gridXjyh.currentText("gl_djh");
    showWhatIf(u"审核"_qs + number, number, [&](Prompt& agreeing) { return cash::auditLine(number, agreeing); });
  });
  on(command("btnPreview2"), [this] {
    if (gridXjyhtj.isEmpty()) return;
    const QString number = gridXjyhtj.currentText("gl_djh");
    showWhatIf(u"取消审核"_qs + number, number,
               [this](Prompt& agreeing) { return cash::cancelLine(gridXjyhtj.currentId(), agreeing); });
  });
  on(command("btn_Prin"), [this] { print(gridXjyh); });
  on(command("btn_Prin2"), [this] { print(gridXjyhtj); });
  on(command("btn_Cxjs"), [this] {
    if (cash::recomputeAccounts(auditedFilter().account, tdate21.text(), prompt())) refresh();
  });
  on(command("btn_Yhzh"), [this] {
    ui::openScreen("F_Yhzh");
    comYhzh1.setItems(xjyh_detail::accountsOrAll(), true);
    comYhzh2.setItems(xjyh_detail::accountsOrAll(), true);
    refresh();
  });
  connect(area.tabs(), &QTabWidget::currentChanged, this, [this] {
    if (isVisible()) refresh();
  });
}

void TF_Xjyh::activate() {
  const Period month{clock::month() + u"-01"_qs, clock::today()};  // what is asked for most
  tdate11.setText(month.from);
  tdate12.setText(month.to);
  tdate21.setText(month.from);
  tdate22.setText(month.to);
  for (const char* each : {"tkey1", "tkey2"})
    field(each).clear();
  comYhzh1.setItems(xjyh_detail::accountsOrAll());
  comYhzh2.setItems(xjyh_detail::accountsOrAll());
  rMxb.setChecked(true);
  const bool mayAudit = hasRight("rcgl", 14);
  for (const char* each : {"btn_Check", "btn_UnChk", "btnPreview1", "btnPreview2"})
    command(each).setEnabled(mayAudit);
  showMode();
  refresh();
}

void TF_Xjyh::showMode() {
  const bool detail = rMxb.isChecked();
  gridXjyhtj.setVisible(detail);
  gridXjyhhz.setVisible(!detail);
  for (const char* each : {"btn_UnChk", "btnPreview2", "btn_Prin2"})
    command(each).setVisible(detail);
}

cash::LineFilter TF_Xjyh::waitingFilter() {
  return {tdate11.text(), tdate12.text(), comYhzh1.index() <= 0 ? QString() : comYhzh1.key(), field("tkey1").trimmed()};
}

cash::LineFilter TF_Xjyh::auditedFilter() {
  return {tdate21.text(), tdate22.text(), comYhzh2.index() <= 0 ? QString() : comYhzh2.key(), field("tkey2").trimmed()};
}

void TF_Xjyh::refresh() {
  const auto keepingPlace = [](ui::Grid& grid, Sql query) {
    const std::int64_t id = grid.currentId();
    grid.loadQuery(std::move(query));
    if (id != 0) grid.selectId(id);
  };
  keepingPlace(gridXjyh, cash::waitingLines(waitingFilter()));
  if (rMxb.isChecked())
    keepingPlace(gridXjyhtj, cash::auditedLines(auditedFilter()));
  else
    gridXjyhhz.loadQuery(cash::accountTotals(auditedFilter()));
}

void TF_Xjyh::enter(std::string_view screen) {
  if (ui::openScreen(screen)) refresh();
}

void TF_Xjyh::print(const ui::Grid& list) {
  if (list.isEmpty()) return;
  const QString number = list.currentText("gl_djh");
  // Lines of other documents have papers of their own.
  const bool own = number.startsWith(u"XJ") || number.startsWith(u"XC") || number.startsWith(u"XZ");
  if (!own) return prompt().notice(QStringLiteral("只能打印出款、入款和转账信息！"));
  sendToPaper(cashSlipReport(number), PrintWay::Preview, this, number);
}

void TF_Xjyh::modify() {
  if (gridXjyh.isEmpty()) return;
  const auto draft = cash::openLine(gridXjyh.currentId(), prompt());
  if (!draft) return refresh();
  auto& form = ui::screenAs<CashLineScreen>(draft->movement == cash::Movement::In ? "F_Xjyh_Jk" : "F_Xjyh_Ck");
  if (form.edit(*draft)) refresh();
}

namespace xjyh_detail {

struct TF_Xjyh_Jk : CashLineScreen {
  TF_Xjyh_Jk() : CashLineScreen(kIn, Movement::In) {}
};
struct TF_Xjyh_Ck : CashLineScreen {
  TF_Xjyh_Ck() : CashLineScreen(kOut, Movement::Out) {}
};
struct TF_Xjyh_Zz : CashLineScreen {
  TF_Xjyh_Zz() : CashLineScreen(kTransfer, Movement::Transfer) {}
};

const ui::Registered<TF_Xjyh> kXjyh{"F_Xjyh"};
const ui::Registered<TF_Xjyh_Jk> kJk{"F_Xjyh_Jk"};
const ui::Registered<TF_Xjyh_Ck> kCk{"F_Xjyh_Ck"};
const ui::Registered<TF_Xjyh_Zz> kZz{"F_Xjyh_Zz"};

}  // namespace xjyh_detail
}  // namespace jxc
