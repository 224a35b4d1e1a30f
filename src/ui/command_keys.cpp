#include "ui/command_keys.h"

#include "ui/screen.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QTextEdit>

namespace jxc::ui {
namespace command_keys_detail {

/// Keys that type nothing: the others never reach a command past an input.
bool mayBeOfACommand(const QKeyEvent& key) {
  return (key.key() >= Qt::Key_F1 && key.key() <= Qt::Key_F35) || key.key() == Qt::Key_Insert ||
         (key.modifiers() & (Qt::ControlModifier | Qt::AltModifier));
}

bool isInput(const QWidget& widget) {
  return qobject_cast<const QLineEdit*>(&widget) || qobject_cast<const QComboBox*>(&widget) ||
         qobject_cast<const QAbstractSpinBox*>(&widget) || qobject_cast<const QPlainTextEdit*>(&widget) ||
         qobject_cast<const QTextEdit*>(&widget);
}

struct Text {
  bool isThere = false, isSelected = false, canUndo = false, canRedo = false;
};

template <class Edit>
Text textOf(const Edit& edit) {
  return {.isThere = true,
          .isSelected = edit.textCursor().hasSelection(),
          .canUndo = edit.document()->isUndoAvailable(),
          .canRedo = edit.document()->isRedoAvailable()};
}

Text textIn(const QWidget& input) {
  if (const auto* memo = qobject_cast<const QPlainTextEdit*>(&input)) return textOf(*memo);
  if (const auto* text = qobject_cast<const QTextEdit*>(&input)) return textOf(*text);
  const auto* line = qobject_cast<const QLineEdit*>(&input);
  if (!line) line = input.findChild<QLineEdit*>();  // of a list that is typed in, of a number with arrows
  if (!line) return {};
  return {.isThere = true,
          .isSelected = line->hasSelectedText(),
          .canUndo = line->isUndoAvailable(),
          .canRedo = line->isRedoAvailable()};
}

/// The keys of texts by their names, not by what this desktop makes of them.
bool isForTheText(const QWidget& input, const QKeyEvent& key) {
  const Text text = textIn(input);
  if (!text.isThere) return false;
  switch (key.keyCombination().toCombined()) {
    case (Qt::CTRL | Qt::Key_C).toCombined():
    case (Qt::CTRL | Qt::Key_Insert).toCombined():
    case (Qt::CTRL | Qt::Key_X).toCombined():
      return text.isSelected;
    case (Qt::CTRL | Qt::Key_Z).toCombined():
      return text.canUndo;
    case (Qt::CTRL | Qt::Key_Y).toCombined():
    case (Qt::CTRL | Qt::SHIFT | Qt::Key_Z).toCombined():
      return text.canRedo;
    case (Qt::CTRL | Qt::Key_V).toCombined():
    case (Qt::CTRL | Qt::Key_A).toCombined():
      return true;
    default:
      return false;
  }
}

/// The pages around what has the focus, otherwise the outermost of its window; null: none are in sight.
QTabWidget* pagesAround(QWidget& focus) {
  for (QWidget* each = &focus; each && !each->isWindow(); each = each->parentWidget())
    if (auto* pages = qobject_cast<QTabWidget*>(each)) return pages;
  for (auto* pages : focus.window()->findChildren<QTabWidget*>())
    if (pages->isVisible()) return pages;
  return nullptr;
}

bool turnPages(QWidget& focus, const QKeyEvent& key) {
  const bool isTab = key.key() == Qt::Key_Tab || key.key() == Qt::Key_Backtab;
  if (!isTab || !key.modifiers().testFlag(Qt::ControlModifier)) return false;
  const int step = key.modifiers().testFlag(Qt::ShiftModifier) ? -1 : 1;
  QTabWidget* pages = pagesAround(focus);
  if (!pages) return false;
  int page = pages->currentIndex();
  do
    page = (page + step + pages->count()) % pages->count();
  while (page != pages->currentIndex() && !(pages->isTabEnabled(page) && pages->isTabVisible(page)));
  pages->setCurrentIndex(page);
  return true;
}

}  // namespace command_keys_detail

bool CommandKeys::eventFilter(QObject* watched, QEvent* event) {
  using namespace command_keys_detail;
  if (event->type() == QEvent::InputMethod) {
    composing_ = static_cast<QInputMethodEvent*>(event)->preeditString().isEmpty() ? nullptr : watched;
    return false;
  }
  if (event->type() != QEvent::KeyPress || !watched->isWidgetType()) return false;
  const auto& key = static_cast<QKeyEvent&>(*event);
  auto& input = static_cast<QWidget&>(*watched);
  if (turnPages(input, key)) return true;
  if (!mayBeOfACommand(key) || !isInput(input)) return false;
  if (watched == composing_) return true;  // half a word: neither a command nor a key of the text
  auto* screen = dynamic_cast<Screen*>(input.window());
  // Only what has the focus gets a key first; to others it comes on its way up to the window.
  if (!screen || screen->focusWidget() != &input || isForTheText(input, key)) return false;
  return screen->takeCommandKey(key);
}

}  // namespace jxc::ui
