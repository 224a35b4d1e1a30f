#include "ui/picker_screen.h"

#include "core/session.h"
#include "core/text.h"

namespace jxc::ui {
namespace picker_screen_detail {

constexpr FieldSpec kFields[] = {{"tkey", "查找：", FieldKind::Text, "", 50}};
constexpr CommandSpec kCommands[] = {
    {"btnSearch", "查询", "F2"}, {"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};

ScreenSpec withOwnParts(ScreenSpec spec) {
  spec.fields = kFields;
  spec.commands = kCommands;
  spec.focus = "tkey";
  return spec;
}

}  // namespace picker_screen_detail

PickerScreen::PickerScreen(PickerSpec spec)
    : Screen(picker_screen_detail::withOwnParts(spec.screen)),
      list(grid(spec.screen.grids.front().name)),
      picker_(std::move(spec)) {
  panel().row("tkey btnSearch |").grid(list.spec().name).buttons("| btnOK btnCancel");
  list.setMultiSelect(picker_.multiple);
  on(btnSearch, [this] { search(); });
  on(btnOK, [this] {
    if (list.current()) accept();
  });
  list.onActivated([this] { accept(); });
  tkey.onChanged([this] {
    if (!strIsTrue(session().cs_hcj)) search();
  });
  list.followKeysOf(tkey.widget());
}

void PickerScreen::activate() {
  tkey.setText(first_);
  searched_.clear();
  search();
}

void PickerScreen::search() {
  searched_ = tkey.trimmed();
  list.loadQuery(picker_.query(searched_));
}

void PickerScreen::enterPressed(Field&) {
  if (tkey.trimmed() != searched_) return search();
  list.waitLoaded();
  if (list.current()) accept();
}

std::optional<Row> PickerScreen::pick(const QString& typed) {
  first_ = typed;
  return showModal() ? list.current() : std::nullopt;
}

std::vector<Row> PickerScreen::pickAll(const QString& typed) {
  first_ = typed;
  return showModal() ? list.selectedRows() : std::vector<Row>();
}

}  // namespace jxc::ui
