// 期初建账: the list of cash and bank accounts, the dialog of one, and its opening amount.
#include "accounts/cash_accounts.h"
#include "ui/list_screen.h"

namespace jxc {
namespace yhzh_detail {

using ui::ColumnKind;
using ui::FieldKind;

constexpr ui::ColumnSpec kColumns[] = {
    {"yh_sn", "编号"},
    {"yh_name", "账户名称", ColumnKind::Text, 20},
    {"yh_type", "账户类型", ColumnKind::Text, 20},
    {"yh_zje", "期初金额", ColumnKind::Money, 0, {.sum = true}},
    {"yh_note", "备注", ColumnKind::Text, 30},
};
constexpr ui::GridSpec kGrids[] = {{"gridYhzh", "账户列表", kColumns, "还没有账户，按F2增加"}};
constexpr ui::CommandSpec kCommands[] = {{"btnAdd", "增加", "F2"},
                                         {"btnModi", "修改", "F3"},
                                         {"btnDele", "删除", "Ctrl+D"},
                                         {"btnQcje", "期初金额", "F6"},
                                         {"btnCancel", "退出", "Esc"}};
constexpr ui::ScreenSpec kList = {
    .name = "F_Yhzh", .title = "期初建账", .grids = kGrids, .commands = kCommands, .focus = "gridYhzh"};

constexpr ui::FieldSpec kFields[] = {
    {"tname", "账户名称：", FieldKind::Text, "jxc_yhzh.yh_name"},
    {"ttype", "账户类型：", FieldKind::Text, "jxc_yhzh.yh_type"},
    {"tzje", "期初金额：", FieldKind::Money},
    {"tnote", "备注：", FieldKind::Text, "jxc_yhzh.yh_note"},
};
constexpr ui::CommandSpec kEditCommands[] = {{"btnOk", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};
constexpr ui::ScreenSpec kEdit = {
    .name = "F_Yhzh_Add", .title = "账户资料", .fields = kFields, .commands = kEditCommands, .focus = "tname"};

constexpr ui::FieldSpec kOpeningFields[] = {
    {"tname", "账户名称：", FieldKind::Text, "jxc_yhzh.yh_name", 0, ui::ReadOnly},
    {"tzje", "期初金额：", FieldKind::Money},
};
constexpr ui::ScreenSpec kOpening = {.name = "F_Yhzh_Qcjz",
                                     .title = "建立期初金额",
                                     .fields = kOpeningFields,
                                     .commands = kEditCommands,
                                     .focus = "tzje"};

}  // namespace yhzh_detail

class TF_Yhzh_Add : public ui::RowScreen {
 public:
  TF_Yhzh_Add();
  ui::Field& tname = field("tname");
  ui::Field& ttype = field("ttype");
  ui::Field& tzje = field("tzje");
  ui::Field& tnote = field("tnote");
  bool edit(std::int64_t id);

 protected:
  void activate() override;
};

class TF_Yhzh_Qcjz : public ui::Screen {
 public:
  TF_Yhzh_Qcjz();
  bool edit(std::int64_t id);

 private:
  std::int64_t id_ = 0;
};

TF_Yhzh_Add::TF_Yhzh_Add() : RowScreen(yhzh_detail::kEdit) {
  panel().form({"tname", "ttype", "tzje", "tnote"}).buttons("| btnOk btnCancel");
  on(command("btnOk"), [this] {
    if (!checkFields()) return;
    const cash::AccountDraft draft{
        .id = id_, .name = tname.text(), .type = ttype.text(), .note = tnote.text(), .opening = tzje.number()};
    if (cash::saveAccount(draft, prompt())) accept();
  });
}

bool TF_Yhzh_Add::edit(std::int64_t id) {
  return (id == 0 || cash::mayChangeAccount(id, prompt())) && RowScreen::edit(id);
}

void TF_Yhzh_Add::activate() {
  const cash::AccountDraft draft = id_ == 0 ? cash::AccountDraft{} : cash::readAccount(id_);
  setWindowTitle(id_ == 0 ? QStringLiteral("增加账户") : QStringLiteral("修改账户"));
  tname.load(draft.name);
  ttype.load(draft.type);
  tzje.load(draft.opening);
  tnote.load(draft.note);
}

TF_Yhzh_Qcjz::TF_Yhzh_Qcjz() : Screen(yhzh_detail::kOpening) {
  panel().form({"tname", "tzje"}).buttons("| btnOk btnCancel");
  on(command("btnOk"), [this] {
    if (!checkFields() || id_ == 0) return;
    cash::setOpening(id_, field("tzje").number());
    accept();
  });
}

bool TF_Yhzh_Qcjz::edit(std::int64_t id) {
  const cash::AccountDraft draft = cash::readAccount(id);
  if (!cash::mayChangeOpening(draft.name, prompt())) return false;
  id_ = id;
  field("tname").setText(draft.name);
  field("tzje").load(draft.opening);
  return showModal();
}

namespace yhzh_detail {

struct TF_Yhzh : ui::ListScreen {
  TF_Yhzh() : ListScreen(kList, [](const QString&) { return cash::accountList(); }) {
    editedBy([](std::int64_t id) { return ui::screenAs<TF_Yhzh_Add>("F_Yhzh_Add").edit(id); });
    row("btnDele", [this](std::int64_t id) { return cash::deleteAccount(id, prompt()); });
    row("btnQcje", [](std::int64_t id) { return ui::screenAs<TF_Yhzh_Qcjz>("F_Yhzh_Qcjz").edit(id); });
  }
};

const ui::Registered<TF_Yhzh> kYhzh{"F_Yhzh"};
const ui::Registered<TF_Yhzh_Add> kYhzhAdd{"F_Yhzh_Add"};
const ui::Registered<TF_Yhzh_Qcjz> kYhzhQcjz{"F_Yhzh_Qcjz"};

}  // namespace yhzh_detail
}  // namespace jxc
