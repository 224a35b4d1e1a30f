#include "core/screens/skin.h"

#include "core/login.h"
#include "core/look.h"
#include "ui/skin.h"

namespace jxc {
namespace skin_screen_detail {

constexpr ui::FieldSpec kFields[] = {{"comSkin", "皮肤：", ui::FieldKind::Combo}};
constexpr ui::CommandSpec kCommands[] = {{"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};
constexpr ui::ScreenSpec kScreen = {
    .name = "F_Skin", .title = "更换皮肤", .fields = kFields, .commands = kCommands, .focus = "comSkin"};

const ui::Registered<TF_Skin> kRegistered{"F_Skin"};

}  // namespace skin_screen_detail

TF_Skin::TF_Skin() : Screen(skin_screen_detail::kScreen) {
  panel()
      .text(QStringLiteral("选择后立即生效，按“确定”保存为您自己的界面外观。"))
      .form({"comSkin"})
      .stretch()
      .buttons("| btnOK btnCancel");
  comSkin.onChanged([this] { ui::applySkin(comSkin.text()); });
  on(btnOK, [this] {
    saveOperatorSkin(comSkin.text());
    accept();
  });
}

void TF_Skin::activate() {
  before_ = operatorSkin();
  std::vector<ListItem> items;
  for (const auto& name : ui::skinNames())
    items.push_back({name, name});
  comSkin.setItems(items);
  comSkin.setKey(before_);
  ui::applySkin(before_);
}

// What was only tried does not stay.
bool TF_Skin::mayLeave() {
  ui::applySkin(before_);
  return true;
}

}  // namespace jxc
