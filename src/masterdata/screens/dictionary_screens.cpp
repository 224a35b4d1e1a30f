// 字典屏幕: regions, departments, levels of customers, kinds of suppliers.
#include "core/screens/named_list_screen.h"
#include "masterdata/departments.h"
#include "masterdata/partner_kinds.h"
#include "masterdata/zones.h"

#include <QPushButton>

namespace jxc {
namespace dictionary_screens_detail {

using ui::ColumnKind;
using ui::FieldKind;

constexpr ui::CommandSpec kCommands[] = {
    {"btnAdd", "增加", "F2"}, {"btnModi", "修改", "F3"}, {"btnDele", "删除", "Ctrl+D"}, {"btnCancel", "退出", "Esc"}};
constexpr ui::CommandSpec kRenameCommands[] = {{"btnModi", "修改", "F3"}, {"btnCancel", "退出", "Esc"}};

constexpr ui::ColumnSpec kZoneColumns[] = {{"z_sn", "地区编号"},
                                           {"z_name", "地区名称", ColumnKind::Text, 24},
                                           {"z_jm", "简码"},
                                           {"z_default", "默认", ColumnKind::Flag}};
constexpr ui::GridSpec kZoneGrids[] = {{"gridZone", "地区列表", kZoneColumns, "还没有地区，按F2增加"}};
constexpr ui::ScreenSpec kZone = {
    .name = "F_Zone", .title = "地区设置", .grids = kZoneGrids, .commands = kCommands, .focus = "gridZone"};
constexpr ui::FieldSpec kZoneFields[] = {{"tname", "地区名称：", FieldKind::Text, "jxc_zone.z_name"},
                                         {"chkDefault", "默认地区", FieldKind::Check}};
constexpr ui::CommandSpec kEditCommands[] = {{"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};
constexpr ui::ScreenSpec kZoneEdit = {
    .name = "F_Zone_Add", .title = "地区资料", .fields = kZoneFields, .commands = kEditCommands, .focus = "tname"};

constexpr ui::ColumnSpec kDeptColumns[] = {{"de_sn", "部门编号"}, {"de_name", "部门名称", ColumnKind::Text, 40}};
constexpr ui::GridSpec kDeptGrids[] = {{"gridDept", "部门列表", kDeptColumns, "还没有部门，按F2增加"}};
constexpr ui::ScreenSpec kDept = {
    .name = "F_Dept", .title = "部门设置", .grids = kDeptGrids, .commands = kCommands, .focus = "gridDept"};

constexpr ui::ColumnSpec kLevelColumns[] = {{"kt_sn", "级别编号"}, {"kt_name", "级别名称", ColumnKind::Text, 24}};
constexpr ui::GridSpec kLevelGrids[] = {{"gridType", "客户级别列表", kLevelColumns, "没有级别"}};
constexpr ui::ScreenSpec kLevel = {
    .name = "F_Khgl_Type", .title = "客户级别", .grids = kLevelGrids, .commands = kRenameCommands, .focus = "gridType"};

constexpr ui::ColumnSpec kKindColumns[] = {{"gt_sn", "类别编号"}, {"gt_name", "类别名称", ColumnKind::Text, 24}};
constexpr ui::GridSpec kKindGrids[] = {{"gridType", "供货商类别列表", kKindColumns, "还没有类别，按F2增加"}};
constexpr ui::ScreenSpec kKind = {
    .name = "F_Ghsgl_Type", .title = "供货商类别", .grids = kKindGrids, .commands = kCommands, .focus = "gridType"};

class TF_Zone_Add : public ui::RowScreen {
 public:
  TF_Zone_Add() : RowScreen(kZoneEdit) {
    on(command("btnOK"), [this] {
      if (saveZone({id_, field("tname").text(), field("chkDefault").isChecked()}, prompt())) accept();
    });
  }

 protected:
  void activate() override {
    setWindowTitle(id_ == 0 ? QStringLiteral("增加地区") : QStringLiteral("修改地区"));
    const ZoneDraft draft = id_ == 0 ? ZoneDraft{} : readZone(id_);
    field("tname").load(draft.name);
    field("chkDefault").setChecked(draft.isDefault);
  }
};

class TF_Zone : public ui::ListScreen {
 public:
  TF_Zone() : ListScreen(kZone, [](const QString&) { return namedListStatement(zoneList); }) {
    editedBy([](std::int64_t id) { return ui::screenAs<TF_Zone_Add>("F_Zone_Add").edit(id); });
    row("btnDele", [this](std::int64_t id) { return deleteNamed(zoneList, id, prompt()); });
  }
};

struct TF_Dept : NamedListScreen {
  TF_Dept() : NamedListScreen(kDept, departmentList, QStringLiteral("部门")) {}
};
struct TF_Khgl_Type : NamedListScreen {
  TF_Khgl_Type() : NamedListScreen(kLevel, customerLevelList, QStringLiteral("级别")) {}
};
struct TF_Ghsgl_Type : NamedListScreen {
  TF_Ghsgl_Type() : NamedListScreen(kKind, supplierKindList, QStringLiteral("类别")) {}
};

const ui::Registered<TF_Zone> kZoneScreen{"F_Zone"};
const ui::Registered<TF_Zone_Add> kZoneEditScreen{"F_Zone_Add"};
const ui::Registered<TF_Dept> kDeptScreen{"F_Dept"};
const ui::Registered<TF_Khgl_Type> kLevelScreen{"F_Khgl_Type"};
const ui::Registered<TF_Ghsgl_Type> kKindScreen{"F_Ghsgl_Type"};

}  // namespace dictionary_screens_detail
}  // namespace jxc
