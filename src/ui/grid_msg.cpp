#include "ui/grid_msg.h"

namespace jxc::ui {
namespace grid_msg_detail {

constexpr CommandSpec kCommands[] = {{"btnOK", "确定", "F5"}, {"btnCancel", "退出", "Esc"}};
constexpr ScreenSpec kScreen = {.name = kGridMsg, .title = "列表信息界面布局调整操作提示", .commands = kCommands};

const Registered<TF_GridMsg> kRegistered{kGridMsg};

}  // namespace grid_msg_detail

TF_GridMsg::TF_GridMsg() : Screen(grid_msg_detail::kScreen) {
  panel()
      .text(QStringLiteral("一、把鼠标移到列标题之间的分隔线上，按住左键左右拖动，可以调整列的宽度。\n\n"
                           "二、在列标题上按住左键拖动，可以调整列的位置。\n\n"
                           "三、在列表中单击鼠标右键，在“显示的列”中选择需要显示的列。\n\n"
                           "四、调整完成后，在列表中单击鼠标右键，选择“保存列表布局”。"))
      .stretch()
      .buttons("| btnOK btnCancel");
  on(btnOK, [this] {
    flag = 1;
    accept();
  });
}

bool layoutHintConfirmed() {
  return screenAs<TF_GridMsg>(kGridMsg).flag == 1;
}

}  // namespace jxc::ui
