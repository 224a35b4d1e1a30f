// 复制客户资料到供货商信息: whoever buys and sells becomes a supplier too, without being keyed in again.
#include "masterdata/partners.h"
#include "ui/list_screen.h"
#include "ui/progress.h"

#include <vector>

namespace jxc {
namespace copy_customers_detail {

using ui::ColumnKind;

constexpr ui::FieldSpec kFields[] = {{"tkey", "查找：", ui::FieldKind::Text, "", 50}};
constexpr ui::ColumnSpec kColumns[] = {
    {"kh_sn", "客户编号"}, {"kh_name", "客户名称", ColumnKind::Text, 24}, {"kh_lxr", "联系人"},
    {"kh_tele", "电话"},   {"kh_address", "地址", ColumnKind::Text, 24},  {"kt_name", "级别"},
    {"z_name", "地区"},    {"kh_note", "备注", ColumnKind::Text, 24},
};
constexpr ui::GridSpec kGrids[] = {{"gridKh", "要复制的客户", kColumns, "没有符合条件的客户"}};
constexpr ui::CommandSpec kCommands[] = {
    {"btnOK", "复制选中的客户", "F5", "Ctrl、Shift加鼠标或方向键选择多个，Ctrl+A全选"}, {"btnCancel", "取消", "Esc"}};
constexpr ui::ScreenSpec kScreen = {.name = "F_Ghsgl_Copy",
                                    .title = "复制客户资料到供货商信息",
                                    .fields = kFields,
                                    .grids = kGrids,
                                    .commands = kCommands,
                                    .focus = "tkey"};

/// Customers in use; disabled ones are not carried over to the other side.
Sql customers(const QString& typed) {
  return partnerListStatement(customerSide, {.state = PartnerConditions::State::InUse, .key = typed});
}

class TF_Ghsgl_Copy : public ui::ListScreen {
 public:
  TF_Ghsgl_Copy() : ListScreen(kScreen, customers) {
    list.setMultiSelect(true);
    on(command("btnOK"), [this] { copy(); });
  }

 private:
  void copy() {
    std::vector<std::int64_t> ids;
    for (const Row row : list.selectedRows())
      ids.push_back(row.integer("id"));
    int copied = 0;
    {
      ui::Progress progress(QStringLiteral("正在复制客户资料..."), this);
      copied = copyCustomersToSuppliers(ids, progress.report(), prompt());
    }
    if (copied == 0) return;
    prompt().notice(QStringLiteral("成功复制：%1  个客户信息。").arg(copied));
    accept();
  }
};

const ui::Registered<TF_Ghsgl_Copy> kRegistered{"F_Ghsgl_Copy"};

}  // namespace copy_customers_detail
}  // namespace jxc
