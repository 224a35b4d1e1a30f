// 选择列表: a list with a search box on top: type, arrows, Enter.
#pragma once

#include "ui/list_search.h"
#include "ui/screen.h"

#include <functional>
#include <optional>
#include <span>

namespace jxc::ui {

/// What a picker shows and how it searches. `query` makes the statement for what stands in the search box (already
/// trimmed; empty at first).
struct PickerSpec {
  ScreenSpec screen;  // name, title and one grid; inputs and commands are the picker's own
  std::function<Sql(const QString& typed)> query;
  bool multiple = false;  // several rows may be taken at once
  /// Commands besides the picker's own ("新增", F8), at the left below the list. Constant data.
  std::span<const CommandSpec> more = {};
};

/// A list to choose from. The search runs while the operator types (or on Enter only, when the parameter cs_hcj says
/// so); arrows move in the list from within the box; Enter and double click take the row; Esc takes none.
class PickerScreen : public Screen {
 public:
  explicit PickerScreen(PickerSpec spec);

  Field& tkey = field("tkey");
  QPushButton& btnSearch = command("btnSearch");
  QPushButton& btnOK = command("btnOK");
  QPushButton& btnCancel = command("btnCancel");
  Grid& list;

  /// Shows the list; the row that was taken, or nothing. The row is valid until the next search.
  std::optional<Row> pick(const QString& typed = {});

 protected:
  void activate() override;
  void enterPressed(Field& field) override;
  /// Searches anew for what stands in the box.
  void search() { search_.search(); }

 private:
  PickerSpec picker_;
  ListSearch search_;
  QString first_;
};

}  // namespace jxc::ui
