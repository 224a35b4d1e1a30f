// 主窗口的键: digits, arrows and the initials of a caption.
#include "core/pinyin.h"
#include "core/screens/command_search.h"
#include "core/screens/command_tile.h"
#include "core/screens/help.h"
#include "core/screens/main_form.h"
#include "statistics/screens/day_board.h"

#include <QAbstractButton>
#include <QKeyEvent>
#include <QStackedWidget>

#include <algorithm>

namespace jxc {

void TF_MainForm::moveFocus(int key) {
  if (day_->isVisible() && day_->moveFocus(key)) return;
  const auto tiles = visibleTiles();
  auto* now = dynamic_cast<CommandTile*>(focusWidget());
  const auto found = std::find(tiles.begin(), tiles.end(), now);
  if (tiles.empty()) return;
  if (found == tiles.end()) return tiles.front()->setFocus(Qt::TabFocusReason);
  const int columns = tileColumns();
  const int step = key == Qt::Key_Left ? -1 : key == Qt::Key_Right ? 1 : key == Qt::Key_Up ? -columns : columns;
  const int place = static_cast<int>(found - tiles.begin()) + step;
  if (place >= 0 && place < static_cast<int>(tiles.size())) {
    tiles[static_cast<std::size_t>(place)]->setFocus(Qt::TabFocusReason);
  } else if (key == Qt::Key_Down && day_->isVisible()) {
    day_->focusFirst();
  }
}

// Initials of a caption: one that is left alone opens, of several the first takes the focus.
bool TF_MainForm::typeAhead(const QString& text) {
  if (text.isEmpty() || !text.at(0).isLetter()) return false;
  typed_ += text.toUpper();
  typedTimer_.start();
  std::vector<CommandTile*> matches;
  for (auto* tile : visibleTiles()) {
    if (makeJm(tile->accessibleName()).startsWith(typed_) || tile->accessibleName().startsWith(typed_)) {
      matches.push_back(tile);
    }
  }
  if (matches.empty()) {
    typed_.clear();
    return true;
  }
  matches.front()->setFocus(Qt::TabFocusReason);
  if (matches.size() == 1 && typed_.size() > 1) {
    typed_.clear();
    openTile(matches.front());
  }
  return true;
}

void TF_MainForm::keyPressEvent(QKeyEvent* event) {
  if (busy_) return;  // a screen or the lock stands over the window
  const int key = event->key();
  const auto modifiers = event->modifiers() & ~Qt::KeypadModifier;
  if (modifiers == Qt::ControlModifier) {
    if (key == Qt::Key_K) return search_->begin();
    if (key >= Qt::Key_1 && key < Qt::Key_1 + static_cast<int>(ui::pages().size())) {
      showPage(ui::pages()[static_cast<std::size_t>(key - Qt::Key_1)].page);
      return focusFirstTile();
    }
  }
  if (modifiers != Qt::NoModifier && modifiers != Qt::ShiftModifier) return QWidget::keyPressEvent(event);
  switch (key) {
    case Qt::Key_F1:
      return openHelp(prompt_);
    case Qt::Key_F2:
      return lockScreen();
    case Qt::Key_Escape:
      close();
      return;
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
      return moveFocus(key);
    case Qt::Key_PageDown:
    case Qt::Key_PageUp: {
      const int step = key == Qt::Key_PageDown ? 1 : static_cast<int>(ui::pages().size()) - 1;
      return showPage(ui::pages()[static_cast<std::size_t>((stack_->currentIndex() + step) % stack_->count())].page);
    }
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (auto* tile = dynamic_cast<CommandTile*>(focusWidget())) return openTile(tile);
      if (auto* button = qobject_cast<QAbstractButton*>(focusWidget())) return button->click();
      return;
    default:
      break;
  }
  if (key >= Qt::Key_1 && key <= Qt::Key_9) {
    const auto tiles = visibleTiles();
    const auto place = static_cast<std::size_t>(key - Qt::Key_1);
    if (place < tiles.size()) openTile(tiles[place]);
    return;
  }
  if (!typeAhead(event->text())) QWidget::keyPressEvent(event);
}

}  // namespace jxc
