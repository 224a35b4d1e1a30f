#include "ui/list_screen.h"

#include <QAction>

#include <algorithm>

namespace jxc::ui {
namespace list_screen_detail {

/// "| btnAdd btnModi btnCancel": commands stand at the right in the order of the description.
std::string commandRow(const ScreenSpec& spec) {
  std::string row = "|";
  for (const auto& command : spec.commands)
    row += ' ' + std::string(command.name);
  return row;
}

/// Search box and switches of the list, in one line above it.
std::string inputRow(const ScreenSpec& spec) {
  std::string row;
  for (const auto& field : spec.fields)
    row += std::string(field.name) + ' ';
  return row + '|';
}

}  // namespace list_screen_detail

ListScreen::ListScreen(const ScreenSpec& spec, Query query)
    : Screen(spec), list(grid(spec.grids.front().name)), query_(std::move(query)) {
  auto area = panel();
  if (!spec.fields.empty()) area.row(list_screen_detail::inputRow(spec));
  if (hasField("tkey")) {
    tkey_ = &field("tkey");
    list.followKeysOf(tkey_->widget());
    tkey_->onChanged([this] { refresh(); });
    tkey_->onEnter([this] {
      list.focusRows();
      return true;
    });
  }
  resize(1080, 640);
  area.grid(list.spec().name).buttons(list_screen_detail::commandRow(spec));
}

void ListScreen::activate() {
  if (tkey_) tkey_->clear();
  refresh();
}

void ListScreen::refresh() {
  const std::int64_t id = list.currentId();
  list.loadQuery(query_(tkey_ ? tkey_->trimmed() : QString()));
  if (id != 0) list.selectId(id);
}

void ListScreen::whole(std::string_view name, std::function<bool()> action) {
  on(command(name), [this, action = std::move(action)] {
    if (action()) refresh();
  });
}

void ListScreen::adding(std::string_view name, std::function<bool()> action) {
  whole(name, [this, action = std::move(action)] {
    const std::int64_t newest = newestId();
    if (!action()) return false;
    refresh();
    if (newestId() > newest) list.selectId(newestId());
    return true;
  });
}

std::int64_t ListScreen::newestId() const {
  std::int64_t newest = 0;
  for (const Row& row : list.shownRows())
    newest = std::max(newest, row.integer(list.spec().idField));
  return newest;
}

void ListScreen::row(std::string_view name, std::function<bool(std::int64_t)> action) {
  QPushButton& button = command(name);
  on(button, [this, action = std::move(action)] {
    const std::int64_t id = list.currentId();
    if (id != 0 && action(id)) refresh();
  });
  list.addMenuCommand(button.text(), [&button] { button.click(); });
}

void ListScreen::rowActivated(std::string_view name) {
  QPushButton& button = command(name);
  list.onActivated([&button] { button.click(); });
}

void ListScreen::editedBy(std::function<bool(std::int64_t)> edit) {
  adding("btnAdd", [edit] { return edit(0); });
  row("btnModi", std::move(edit));
  rowActivated("btnModi");
}

bool RowScreen::edit(std::int64_t id) {
  id_ = id;
  const bool done = showModal();
  id_ = 0;
  return done;
}

}  // namespace jxc::ui
