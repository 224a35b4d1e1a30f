// 边输边找: rows that match what is typed drop down below an input; the input keeps the keys.
#pragma once

#include "ui/field.h"
#include "ui/grid.h"

#include <QObject>
#include <QString>
#include <QTimer>

#include <functional>
#include <optional>

class QFrame;

namespace jxc::ui {

/// Searches while one types (or on Enter only, when the parameter cs_hcj says so), a moment behind the last key, so
/// that a scanner never starts a search. Arrows and page keys move in the rows, a click takes one, Esc closes them.
class SearchDrop : public QObject {
 public:
  /// Makes the statement for what stands in the input (trimmed, not empty).
  using Query = std::function<Sql(const QString& typed)>;
  SearchDrop(Field& box, const GridSpec& rows, Query query);

  /// A row was clicked on.
  void onTaken(std::function<void(const Row&)> hook) { taken_ = std::move(hook); }
  /// What Enter means: the row that stands out, when the rows of what was typed are in sight, or the only one that
  /// there is. Otherwise nothing: the rows are in sight now, or there are none.
  std::optional<Row> enter();
  bool isOpen() const;
  void close();
  Grid& rows() { return *grid_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void search();
  void open();

  Field& box_;
  QFrame* frame_;
  Grid* grid_;
  Query query_;
  QTimer pause_;
  QString searched_;
  std::function<void(const Row&)> taken_;
};

}  // namespace jxc::ui
