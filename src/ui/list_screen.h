// 列表屏幕: a list with a search box and commands on its rows: add, modify, delete, and what a list has besides.
#pragma once

#include "ui/screen.h"

#include <functional>
#include <string>
#include <string_view>

namespace jxc::ui {

/// A screen around one grid. The description names one grid, a field "tkey" where the list can be searched, and the
/// commands; the subclass (or a few lines of a factory) binds the commands to rules:
///
///     ListScreen::ListScreen(kScreen, query);
///     editedBy([](std::int64_t id) { return screenAs<TF_Ckgl_Add>("F_Ckgl_Add").edit(id); });
///     row("btnDele", [this](std::int64_t id) { return deleteWarehouse(id, prompt()); });
///
/// A command that returns true changed something: the list is read anew and comes back to its row.
class ListScreen : public Screen {
 public:
  /// Statement for what stands in the search box (trimmed; empty at first).
  using Query = std::function<Sql(const QString& typed)>;

  ListScreen(const ScreenSpec& spec, Query query);

  Grid& list;
  /// Reads the list anew.
  void refresh();

 protected:
  void activate() override;
  /// A command that needs no row.
  void whole(std::string_view command, std::function<bool()> action);
  /// One that may add rows: the list comes to the newest.
  void adding(std::string_view command, std::function<bool()> action);
  /// A command on the current row; without a row it does nothing. Also in the list's pop-up menu.
  void row(std::string_view command, std::function<bool(std::int64_t id)> action);
  /// What Enter and a double click on a row do.
  void rowActivated(std::string_view command);
  /// btnAdd, and btnModi or Enter on a row, by the dialog of one: `edit` gets the row, or 0 for a new one.
  void editedBy(std::function<bool(std::int64_t id)> edit);

 private:
  std::int64_t newestId() const;

  Query query_;
  Field* tkey_ = nullptr;
};

/// The dialog of one row of such a list.
class RowScreen : public Screen {
 public:
  using Screen::Screen;
  /// Shows the row, or with 0 a form for a new one. Whether it was saved.
  bool edit(std::int64_t id);

 protected:
  std::int64_t id_ = 0;  // while it is shown
};

}  // namespace jxc::ui
