// 费用类型: the types of expenses and income, and the dialog of one.
#include "accounts/expense_types.h"
#include "ui/list_screen.h"

namespace jxc {
namespace fylx_detail {

using expenses::Side;
using ui::ColumnKind;
using ui::FieldKind;

constexpr ui::ColumnSpec kColumns[] = {{"fy_lx", "类型名称", ColumnKind::Text, 20},
                                       {"fx", "收支", ColumnKind::Text, 8},
                                       {"fy_note", "备注", ColumnKind::Text, 40}};
constexpr ui::GridSpec kGrids[] = {{"gridFylx", "类型列表", kColumns, "还没有类型，按F2增加"}};
constexpr ui::CommandSpec kCommands[] = {
    {"btnAdd", "增加", "F2"}, {"btnModi", "修改", "F3"}, {"btnDele", "删除", "Ctrl+D"}, {"btnCancel", "退出", "Esc"}};
constexpr ui::ScreenSpec kList = {
    .name = "F_Fylx", .title = "费用收入类型", .grids = kGrids, .commands = kCommands, .focus = "gridFylx"};

constexpr ui::FieldSpec kFields[] = {{"tname", "类型名称：", FieldKind::Text, "jxc_fylx.fy_lx"},
                                     {"comFx", "收支：", FieldKind::Combo},
                                     {"tnote", "备注：", FieldKind::Text, "jxc_fylx.fy_note"}};
constexpr ui::CommandSpec kEditCommands[] = {{"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};
constexpr ui::ScreenSpec kEdit = {
    .name = "F_Fylx_Add", .title = "类型资料", .fields = kFields, .commands = kEditCommands, .focus = "tname"};

class TF_Fylx_Add : public ui::RowScreen {
 public:
  TF_Fylx_Add() : RowScreen(kEdit) {
    panel().form({"tname", "comFx", "tnote"}).buttons("| btnOK btnCancel");
    field("comFx").setItems(
        {{QStringLiteral("费用"), QStringLiteral("0")}, {QStringLiteral("收入"), QStringLiteral("1")}});
    on(command("btnOK"), [this] {
      if (!checkFields()) return;
      const Side side = field("comFx").key() == u"1" ? Side::Income : Side::Expense;
      if (expenses::saveType({id_, field("tname").text(), side, field("tnote").text()}, prompt())) accept();
    });
  }
  bool edit(std::int64_t id) { return (id == 0 || expenses::mayChangeType(id, prompt())) && RowScreen::edit(id); }

 protected:
  void activate() override {
    setWindowTitle(id_ == 0 ? QStringLiteral("增加类型") : QStringLiteral("修改类型"));
    const expenses::TypeDraft draft = id_ == 0 ? expenses::TypeDraft{} : expenses::readType(id_);
    field("tname").load(draft.name);
    field("comFx").setKey(draft.side == Side::Income ? QStringLiteral("1") : QStringLiteral("0"));
    field("tnote").load(draft.note);
  }
};

struct TF_Fylx : ui::ListScreen {
  TF_Fylx() : ListScreen(kList, [](const QString&) { return expenses::typeList(); }) {
    editedBy([](std::int64_t id) { return ui::screenAs<TF_Fylx_Add>("F_Fylx_Add").edit(id); });
    row("btnDele", [this](std::int64_t id) { return expenses::deleteType(id, prompt()); });
  }
};

const ui::Registered<TF_Fylx> kListScreen{"F_Fylx"};
const ui::Registered<TF_Fylx_Add> kEditScreen{"F_Fylx_Add"};

}  // namespace fylx_detail
}  // namespace jxc
