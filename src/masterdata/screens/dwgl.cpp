// 单位设置: the list of units that goods are counted in.
#include "masterdata/screens/dwgl.h"

#include "masterdata/units.h"

namespace jxc {
namespace dwgl_detail {

using ui::FieldKind;

constexpr ui::FieldSpec kFields[] = {{"tname", "单位名称：", FieldKind::Text, "jxc_dw.dw_name"}};
constexpr ui::ColumnSpec kColumns[] = {{"dw_sn", "单位编号"}, {"dw_name", "单位名称", ui::ColumnKind::Text, 24}};
constexpr ui::GridSpec kGrids[] = {{"gridDw", "单位列表", kColumns, "还没有单位，写下名称后按F2增加"}};
constexpr ui::CommandSpec kCommands[] = {{"btnAdd", "增加", "F2"},
                                         {"btnModi", "改名", "F3"},
                                         {"btnDele", "删除", "Ctrl+D"},
                                         {"btnOK", "确定", "F5", "选用当前单位"},
                                         {"btnCancel", "退出", "Esc"}};
constexpr ui::ScreenSpec kScreen = {
    .name = "F_Dwgl", .title = "单位设置", .fields = kFields, .grids = kGrids, .commands = kCommands, .focus = "tname"};

}  // namespace dwgl_detail

TF_Dwgl::TF_Dwgl() : Screen(dwgl_detail::kScreen) {
  panel().row("tname btnAdd btnModi btnDele").grid("gridDw").buttons("| btnOK btnCancel");
  on(command("btnAdd"), [this] {
    if (const auto number = addUnit(tname.text(), prompt())) changed(*number);
    tname.focus();
  });
  on(command("btnModi"), [this] {
    if (gridDw.currentId() != 0 && renameUnit(gridDw.currentId(), tname.text(), prompt())) {
      changed(gridDw.currentText("dw_sn"));
    }
  });
  on(command("btnDele"), [this] {
    if (gridDw.currentId() != 0 && deleteUnit(gridDw.currentId(), prompt())) changed({});
  });
  on(command("btnOK"), [this] { take(); });
  gridDw.onActivated([this] { take(); });
  tname.onEnter([this] {
    if (!tname.isEmpty()) command("btnAdd").click();
    return true;
  });
}

QString TF_Dwgl::pick() {
  return showModal() ? gridDw.currentText("dw_name") : QString();
}

void TF_Dwgl::activate() {
  tname.clear();
  gridDw.setRows(selectUnits());
}

void TF_Dwgl::changed(const QString& number) {
  tname.clear();
  gridDw.setRows(selectUnits());
  for (int row = 0; row < gridDw.rowCount(); ++row) {
    if (gridDw.rows()[row].text("dw_sn") == number) gridDw.selectId(gridDw.rows()[row].integer("id"));
  }
}

void TF_Dwgl::take() {
  if (gridDw.current()) accept();
}

namespace dwgl_detail {
const ui::Registered<TF_Dwgl> kRegistered{"F_Dwgl"};
}

}  // namespace jxc
