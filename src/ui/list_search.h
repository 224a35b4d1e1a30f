// 边输边查: a search box above a list: type, arrows, Enter, without leaving the box.
#pragma once

#include "ui/field.h"
#include "ui/grid.h"

#include <QString>

#include <functional>

namespace jxc::ui {

/// Binds a text input to a grid: the search runs while the operator types (or on Enter only, when the parameter cs_hcj
/// says so); arrows and page keys move in the list from within the box.
class ListSearch {
 public:
  /// Makes the statement for what stands in the box (already trimmed; empty at first).
  using Query = std::function<Sql(const QString& typed)>;
  ListSearch(Field& box, Grid& list, Query query);

  /// Searches for what stands in the box.
  void search();
  /// Starts anew with this text in the box.
  void begin(const QString& typed = {});
  /// Enter in the box. True: it searched for something new; false: the answer is there, and the row is meant.
  bool enterSearches();

 private:
  Field& box_;
  Grid& list_;
  Query query_;
  QString searched_;
};

}  // namespace jxc::ui
