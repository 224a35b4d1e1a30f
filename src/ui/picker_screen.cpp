#include "ui/picker_screen.h"

#include "core/session.h"
#include "core/text.h"

#include <QKeyEvent>
#include <QTableView>
#include <QTimer>

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
  tkey.widget()->installEventFilter(this);
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

bool PickerScreen::eventFilter(QObject* watched, QEvent* event) {
  if (watched == tkey.widget() && event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    const int page = 15;
    const int step = key == Qt::Key_Down       ? 1
                     : key == Qt::Key_Up       ? -1
                     : key == Qt::Key_PageDown ? page
                     : key == Qt::Key_PageUp   ? -page
                                               : 0;
    if (step != 0) {
      list.selectRow(std::clamp(list.currentRow() + step, 0, std::max(0, list.rowCount() - 1)));
      return true;
    }
  }
  return Screen::eventFilter(watched, event);
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
