// 系统维护: the commands that keep the system in order, each guarded by a right or by the administrator's role.
#include "core/screens/command_runner.h"
#include "core/screens/command_tile.h"
#include "ui/application.h"
#include "ui/display.h"
#include "ui/screen.h"

#include <QGridLayout>
#include <QKeyEvent>

namespace jxc {
namespace xtwh_detail {

constexpr int kColumns = 5;
constexpr ui::CommandSpec kCommands[] = {{"btnCancel", "退出", "Esc"}};
constexpr ui::ScreenSpec kScreen = {.name = "F_Xtwh", .title = "系统维护", .commands = kCommands};

}  // namespace xtwh_detail

class TF_Xtwh : public ui::Screen {
 public:
  TF_Xtwh() : Screen(xtwh_detail::kScreen) {
    auto* area = new QWidget(this);
    auto* raster = new QGridLayout(area);
    raster->setContentsMargins(6, 6, 6, 6);
    raster->setSpacing(12);
    for (const auto& command : ui::commands()) {
      if (command.page != ui::Page::Maintenance) continue;
      auto* tile = new CommandTile(command, area);
      connect(tile, &QToolButton::clicked, this,
              [this, name = command.name] { ui::doOrTell([&] { runCommand(name, prompt()); }); });
      const int place = static_cast<int>(tiles_.size());
      raster->addWidget(tile, place / xtwh_detail::kColumns, place % xtwh_detail::kColumns);
      tiles_.push_back(tile);
      if (place < 9) tile->setDigit(place + 1);
    }
    panel().widget(area).stretch().buttons("| btnCancel");
  }

 protected:
  void activate() override { tiles_.front()->setFocus(); }

  bool keyPressed(QKeyEvent& key) override {
    const auto found = std::find(tiles_.begin(), tiles_.end(), focusWidget());
    const int place = found == tiles_.end() ? -1 : static_cast<int>(found - tiles_.begin());
    int next = -1;
    switch (key.key()) {
      case Qt::Key_Left:
        next = place - 1;
        break;
      case Qt::Key_Right:
        next = place + 1;
        break;
      case Qt::Key_Up:
        next = place - xtwh_detail::kColumns;
        break;
      case Qt::Key_Down:
        next = place + xtwh_detail::kColumns;
        break;
      case Qt::Key_Return:
      case Qt::Key_Enter:
        if (place >= 0) tiles_[static_cast<std::size_t>(place)]->click();
        return place >= 0;
      default:
        if (key.key() < Qt::Key_1 || key.key() > Qt::Key_9) return false;
        tiles_[static_cast<std::size_t>(key.key() - Qt::Key_1)]->click();
        return true;
    }
    if (next >= 0 && next < static_cast<int>(tiles_.size())) {
      tiles_[static_cast<std::size_t>(next)]->setFocus(Qt::TabFocusReason);
    }
    return true;
  }

 private:
  std::vector<CommandTile*> tiles_;
};

namespace xtwh_detail {
const ui::Registered<TF_Xtwh> kRegistered{"F_Xtwh"};
}

}  // namespace jxc
