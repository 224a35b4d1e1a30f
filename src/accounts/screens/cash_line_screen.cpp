#include "accounts/screens/cash_line_screen.h"

#include "accounts/cash_accounts.h"
#include "core/defaults.h"
#include "core/session.h"
#include "output/money_reports.h"
#include "output/printed_documents.h"
#include "output/screens/print_outlet.h"

namespace jxc {
namespace cash_line_screen_detail {

using cash::Movement;
using ui::FieldKind;

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

}  // namespace cash_line_screen_detail

CashLineScreen::CashLineScreen(const ui::ScreenSpec& spec, cash::Movement movement)
    : Screen(spec), movement_(movement), draft_(cash::newLine(movement)) {
  if (comYhzh1)
    panel().form({"comYhzh comYhzh1", "tfyje dateCg", "comUser", "tnote"});
  else
    panel().form({"comYhzh tfyje", "comUser dateCg", "tnote"});
  panel().buttons("btnPrin | btnOK btnCancel");
  on(command("btnOK"), [this] { save(); });
  addKey(command("btnPrin"), "Ctrl+P");  // F4 in a date or a remark opens what these offer
  on(command("btnPrin"), [this] {
    if (mayTakeOutUnsaved(prompt()) && checkFields())
      sendToPaper(cashSlipReport(collect()), PrintWay::Preview, this, windowTitle());
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
  comUser.setItems(cash_line_screen_detail::employees());
  dateCg.load(draft_.date);
  tfyje.load(draft_.amount);
  tnote.load(draft_.note);
  if (draft_.id == 0) return comUser.setKey(keyToPropose(comUser.items(), defaultEmployeeName()));
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

bool modifyCashLine(const Row& row, Prompt& prompt) {
  const auto draft = cash::openLine(row.integer("id"), prompt);
  if (!draft) return true;
  const bool in = draft->movement == cash::Movement::In;
  return ui::screenAs<CashLineScreen>(in ? "F_Xjyh_Jk" : "F_Xjyh_Ck").edit(*draft);
}

bool printCashSlip(const Row& row, Prompt& prompt) {
  const QString number = row.text("gl_djh");
  if (number.startsWith(u"XJ") || number.startsWith(u"XC") || number.startsWith(u"XZ"))
    sendToPaper(cashSlipReport(number), PrintWay::Preview, nullptr, number);
  else
    prompt.notice(QStringLiteral("只能打印出款、入款和转账信息！"));
  return false;
}

namespace cash_line_screen_detail {

struct TF_Xjyh_Jk : CashLineScreen {
  TF_Xjyh_Jk() : CashLineScreen(kIn, Movement::In) {}
};
struct TF_Xjyh_Ck : CashLineScreen {
  TF_Xjyh_Ck() : CashLineScreen(kOut, Movement::Out) {}
};
struct TF_Xjyh_Zz : CashLineScreen {
  TF_Xjyh_Zz() : CashLineScreen(kTransfer, Movement::Transfer) {}
};

const ui::Registered<TF_Xjyh_Jk> kJk{"F_Xjyh_Jk"};
const ui::Registered<TF_Xjyh_Ck> kCk{"F_Xjyh_Ck"};
const ui::Registered<TF_Xjyh_Zz> kZz{"F_Xjyh_Zz"};

}  // namespace cash_line_screen_detail
}  // namespace jxc
