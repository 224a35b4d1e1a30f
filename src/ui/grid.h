// 表格: a list of rows with a footer of sums, sorting, copying, editing, and a layout that stays.
#pragma once

#include "core/enquiry.h"
#include "core/reading.h"
#include "ui/grid_model.h"
#include "ui/list_loader.h"
#include "ui/specs.h"

#include <QWidget>

#include <functional>
#include <optional>
#include <string>
#include <vector>

class QLabel;
class QMenu;
class QProgressBar;
class QPushButton;
class QTableView;

namespace jxc::ui {

/// What a list on paper or in a file is called, and what it was searched with.
struct GridHeading {
  QString title;
  QString filter;  // "仓库：门店　日期：2026-05-01"
};

/// A grid made from its GridSpec. It is given a query and keeps it: `reload()` runs it again and comes back to the row
/// where the operator was. Long queries run in the background and can be cancelled. Forbidden columns are left out of
/// all rows as they arrive: nobody finds them there, not even by name.
class Grid : public QWidget {
 public:
  Grid(const GridSpec& spec, std::string_view screenName, QWidget* parent);
  ~Grid() override;

  const GridSpec& spec() const { return spec_; }

  // Rows.
  template <class... Args>
  void load(std::string select, const Args&... args) {
    loadQuery(Sql(std::move(select), args...));
  }
  void loadQuery(Sql query);
  void loadQuestion(Question question);  // of an enquiry
  /// Stops what is loading; the list says so.
  void stopLoading();
  /// The same at once, for the few rows of a draft.
  void readNow(const Sql& query);
  /// Rows that came from elsewhere (a rule's answer, a filler).
  void setRows(RowSet rows);
  void reload();
  void clearRows();
  bool isLoading() const { return loader_.isRunning(); }
  /// It takes so long that the operator sees it.
  bool showsLoading() const;
  /// Waits for the answer of a running query (tests, screenshots, exports).
  void waitLoaded(int milliseconds = 60000);
  const RowSet& rows() const { return model_->rows(); }
  int rowCount() const { return model_->rowCount(); }  // those that are shown
  bool isEmpty() const { return rowCount() == 0; }
  /// Rows of the row set that are shown, in the order of the view.
  std::vector<int> shownOrder() const;

  /// Gives the numbers of the rows to show, ascending. `areNew`: asked because rows have arrived.
  using RowFilter = std::function<std::vector<int>(const RowSet& rows, bool areNew)>;
  /// Shows only some of the rows; the filter is asked at each arrival of rows, and by `refilter`, which keeps the
  /// current row where it can.
  void setRowFilter(RowFilter filter) { rowFilter_ = std::move(filter); }
  void refilter();
  /// Rows that the sums of the footer take in; without it all that are shown.
  void setCounts(std::function<bool(const Row&)> counts) { model_->counts = std::move(counts); }

  // The current row.
  std::optional<Row> current() const;
  std::int64_t currentId() const;  // by the grid's id field; 0 without a row
  QString currentKey() const;      // the same as text; empty without a row
  QString currentText(std::string_view field) const;
  double currentNumber(std::string_view field) const;
  bool selectId(std::int64_t id);
  bool selectKey(const QString& key) { return selectWhere(spec_.idField, key); }
  bool selectWhere(std::string_view field, const QString& text);
  void selectRow(int viewRow);
  int currentRow() const;  // place in the view; -1
  /// Rows that the operator has marked (all of them with Ctrl+A), in the order of the view.
  std::vector<Row> selectedRows() const;
  /// Rows that are shown, in the order of the view.
  std::vector<Row> shownRows() const;
  void setMultiSelect(bool on);

  // Columns.
  void setColumnVisible(std::string_view field, bool on);
  /// A column that the operator has no right to see: neither shown nor summed, exported or offered to be shown, and
  /// empty to a screen reader. Columns that carry their right are set by `applyRights`, which the screen calls at each
  /// activation.
  void setColumnAllowed(std::string_view field, bool on);
  void applyRights();
  bool isColumnVisible(std::string_view field) const;
  bool isColumnAllowed(std::string_view field) const;
  /// Fields that a statement for this list is not to be asked for.
  std::vector<std::string_view> forbidden() const;
  void setCaption(std::string_view field, const QString& caption);
  /// Sum of a column over all rows.
  double sum(std::string_view field) const;
  QString footerText(std::string_view field) const;  // as shown; empty for a column without a sum
  void setEmptyText(const QString& text);

  // Hooks.
  void onActivated(std::function<void()> hook) { activated_ = std::move(hook); }  // Enter, double click
  void onCurrentChanged(std::function<void()> hook) { currentChanged_ = std::move(hook); }
  void onLoaded(std::function<void()> hook) { loaded_ = std::move(hook); }
  /// A cell was edited: `text` as typed; in number columns a plain number, or empty when it was none.
  void onChanged(GridModel::Changed hook) { model_->changed = std::move(hook); }
  /// Locks cells of editable columns: Enter on one that does not open is Enter on its row.
  void setMayEdit(std::function<bool(const Row&, std::string_view field)> mayEdit) {
    model_->mayEdit = std::move(mayEdit);
  }
  void setRowLook(std::function<RowLook(const Row&)> look) { model_->rowLook = std::move(look); }
  void setCellLook(std::function<RowLook(const Row&, std::string_view field)> look) {
    model_->cellLook = std::move(look);
  }
  /// Commands of the pop-up menu, before copy and layout.
  QAction* addMenuCommand(const QString& text, std::function<void()> action);
  /// The pop-up menu as it is now.
  void fillMenu(QMenu& menu);

  // What export and print take: visible exported columns in their order, cells as shown.
  struct ExportColumn {
    QString caption;
    ColumnKind kind;
    int column;  // of cellText and of rows()
  };
  std::vector<ExportColumn> exportColumns() const;
  QString cellText(int viewRow, int column) const { return model_->cellText(viewRow, column); }
  Value cellValue(int viewRow, int column) const;
  /// Marked rows, or all, as tab-separated text with a header line.
  QString tabSeparated(bool onlySelected) const;
  void setHeading(std::function<GridHeading()> heading) { heading_ = std::move(heading); }
  /// Asked before rows leave the list for paper, a file or the clipboard; tells the operator when they must not.
  void setMayTakeOut(std::function<bool()> mayTakeOut) { mayTakeOut_ = std::move(mayTakeOut); }
  bool mayTakeOut() const { return !mayTakeOut_ || mayTakeOut_(); }
  GridHeading heading() const;

  void focusRows();
  /// Whether the keys of its window go to the rows; so also while the window is on its way to the front.
  bool rowsHaveFocus() const { return window()->focusWidget() == focusProxy(); }
  /// Arrows and page keys in this input move in the list, so that a search needs no change of focus.
  void followKeysOf(QWidget* input);
  bool followsKeysOf(const QWidget* input) const { return keyInput_ == input; }
  QTableView* view() const { return view_; }
  /// Shows this in place of the table: what loads and whether it failed is seen over it all the same.
  void standBehind(QWidget* face);

  // Layout: widths, places and hidden columns, in one file a list below Layout/ of the program directory.
  /// The name of that file: of the description, or made from screen and grid.
  const QString& layoutKey() const { return layoutKey_; }
  void setLayoutKey(const QString& key) { layoutKey_ = key; }
  void saveLayout();  // throws DbError(File)
  /// Takes the layout of the file, if there is one: then the widths are fixed. Without one a list that had a layout
  /// goes back to its design.
  void restoreLayout();
  /// Forgets the file; the list looks as it was designed.
  void dropLayout();
  /// Widths that follow the rows and the window; off once the operator arranges the columns.
  bool isAutoWidth() const { return autoWidth_; }
  void setAutoWidth(bool on) { autoWidth_ = on; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  class Footer;
  class Table;
  void start(Question question);
  void arrived(RowSet rows, bool complete);
  void take(RowSet rows);
  RowSet withoutForbidden(RowSet rows) const;
  void showState();
  void comeBack(const QString& key, int place, int column, int scrolled);
  void showColumn(int column);
  void showPowers();
  void designLayout();
  void defaultWidths();
  void fitToRows();
  void showMenu(const QPoint& place);
  void goOnAfterEdit();

  GridSpec spec_;
  QString layoutKey_;
  GridModel* model_;
  QTableView* view_;
  Footer* footer_ = nullptr;
  QLabel* hint_;
  QWidget* busy_;
  QProgressBar* progress_;
  QWidget* keyInput_ = nullptr;
  QMenu* menu_;
  ListLoader loader_;
  std::optional<Question> question_;
  QString emptyText_;
  bool failed_ = false, stopped_ = false;
  bool autoWidth_ = true;
  bool fromFile_ = false;  // places and widths are those of a layout file
  bool sizing_ = false;
  std::vector<int> fitted_;  // widths that the first rows ask for; empty before there are any
  bool inReload_ = false;
  bool replaces_ = true;  // the query under way is another one than what is shown
  // A column is seen when neither the program (a parameter, the mode of a list) nor the operator hides it, and powers
  // only when a row has one.
  std::vector<bool> hiddenByProgram_, hiddenByOperator_, hiddenByRows_;
  std::function<GridHeading()> heading_;
  std::function<bool()> mayTakeOut_;
  RowFilter rowFilter_;
  std::function<void()> activated_, currentChanged_, loaded_;
};

}  // namespace jxc::ui
