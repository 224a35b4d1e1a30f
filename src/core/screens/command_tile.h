// 命令按钮: a large button of a page, drawn from the command table.
#pragma once

#include "ui/commands.h"

#include <QToolButton>

namespace jxc {

/// Picture above the caption, the digit that presses it in the corner.
class CommandTile : public QToolButton {
 public:
  CommandTile(const ui::CommandDefinition& command, QWidget* parent);
  const ui::CommandDefinition& command() const { return command_; }
  void setDigit(int digit);  // 1 to 9; 0 for none

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const ui::CommandDefinition& command_;
  int digit_ = 0;
};

}  // namespace jxc
