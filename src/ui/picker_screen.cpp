#include "ui/picker_screen.h"

#include <map>

namespace jxc::ui {
namespace picker_screen_detail {

constexpr FieldSpec kFields[] = {{"tkey", "查找：", FieldKind::Text, "", 50}};
constexpr CommandSpec kCommands[] = {
    {"btnSearch", "查询", "F2"}, {"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};

/// The picker's own commands and those of its description. Screens live as long as the process, and so do these.
std::span<const CommandSpec> allCommands(std::span<const CommandSpec> more) {
  if (more.empty()) return kCommands;
  static std::map<const CommandSpec*, std::vector<CommandSpec>> joined;
  auto& all = joined[more.data()];
  if (all.empty()) {
    all.assign(std::begin(kCommands), std::end(kCommands));
    all.insert(all.end(), more.begin(), more.end());
  }
  return all;
}

ScreenSpec withOwnParts(const PickerSpec& picker) {
  ScreenSpec spec = picker.screen;
  spec.fields = kFields;
  spec.commands = allCommands(picker.more);
  spec.focus = "tkey";
  return spec;
}

std::string buttonRow(const PickerSpec& picker) {
  std::string names;
  for (const auto& command : picker.more)
    names += std::string(command.name) + ' ';
  return names + "| btnOK btnCancel";
}

}  // namespace picker_screen_detail

PickerScreen::PickerScreen(PickerSpec spec)
    : Screen(picker_screen_detail::withOwnParts(spec)),
      list(grid(spec.screen.grids.front().name)),
      picker_(std::move(spec)),
      search_(tkey, list, picker_.query) {
  panel().row("tkey btnSearch |").grid(list.spec().name).buttons(picker_screen_detail::buttonRow(picker_));
  list.setMultiSelect(picker_.multiple);
  on(btnSearch, [this] { search(); });
  on(btnOK, [this] {
    if (list.current()) accept();
  });
  list.onActivated([this] { accept(); });
}

void PickerScreen::activate() {
  search_.begin(first_);
}

void PickerScreen::enterPressed(Field&) {
  if (!search_.enterSearches() && list.current()) accept();
}

std::optional<Row> PickerScreen::pick(const QString& typed) {
  first_ = typed;
  return showModal() ? list.current() : std::nullopt;
}

}  // namespace jxc::ui
