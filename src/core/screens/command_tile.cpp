#include "core/screens/command_tile.h"

#include "ui/display.h"
#include "ui/icons.h"

#include <QPainter>

namespace jxc {

CommandTile::CommandTile(const ui::CommandDefinition& command, QWidget* parent)
    : QToolButton(parent), command_(command) {
  const QString caption = ui::qs(command.caption);
  setObjectName(ui::qs(command.name));
  setText(caption);
  setAccessibleName(QString(caption).remove(QStringLiteral("(&Y)")).remove(QStringLiteral("(&Z)")));
  setIcon(ui::icon(command.icon));
  setIconSize(QSize(44, 44));
  setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  setMinimumSize(132, 100);
  setMaximumSize(260, 136);
  setFocusPolicy(Qt::StrongFocus);
  setProperty("tile", true);
}

void CommandTile::setDigit(int digit) {
  digit_ = digit;
  setToolTip(digit > 0 ? QStringLiteral("按 %1 打开").arg(digit) : QString());
  update();
}

void CommandTile::paintEvent(QPaintEvent* event) {
  QToolButton::paintEvent(event);
  if (digit_ == 0) return;
  QPainter painter(this);
  painter.setPen(palette().color(QPalette::PlaceholderText));
  painter.drawText(rect().adjusted(8, 6, -8, -6), Qt::AlignTop | Qt::AlignLeft, QString::number(digit_));
}

}  // namespace jxc
