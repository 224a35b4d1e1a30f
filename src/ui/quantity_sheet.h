// 数量表: a sheet of quantities by two headings: arrows, typing, pasted blocks, sums at the edges, stock in each cell.
#pragma once

#include <QStringList>
#include <QWidget>

#include <functional>
#include <optional>

class QLabel;
class QTableView;

namespace jxc::ui {

/// Shows and changes cells that somebody else keeps: it asks for each cell when it paints it.
class QuantitySheet : public QWidget {
 public:
  struct Cell {
    enum class Kind : char { Open, New /* may be typed; there is nothing of it yet */, Locked } kind = Kind::Open;
    double stock = 0;
    double quantity = 0;
    bool marked = false;  // stands out: what was typed was refused
    bool zero = false;    // nothing, but typed: where that is a quantity, too, it is shown as 0
    bool hidesStock = false;
  };
  struct Source {
    QString corner;             // "屈/散"
    QStringList rows, columns;  // headings; numbers, by which pasted headings are found
    std::function<Cell(int row, int column)> cell;
    std::function<void(int row, int column, std::optional<double> quantity)> change;  // nothing: it was emptied
  };
  /// What a pasted block came to.
  struct Pasted {
    int taken = 0;
    int unreadable = 0, locked = 0, outside = 0;  // cells with something in them that were passed over
  };

  explicit QuantitySheet(QWidget* parent);
  ~QuantitySheet() override;

  void show(Source source);
  /// The cells were changed by others.
  void refresh();
  void focusCells();
  double total() const;
  /// A block as a spreadsheet copies it, from the current cell on. With a first row and a first column of headings (the
  /// corner worded, or empty above powers) each quantity goes to its headings, wherever the cursor stands.
  Pasted paste(const QString& text);
  QString copied() const;  // the marked cells, tab-separated

  /// After each change by the operator.
  void onChanged(std::function<void()> hook) { changed_ = std::move(hook); }
  void onPasted(std::function<void(const Pasted&)> hook) { pasted_ = std::move(hook); }

  QTableView* view() const { return view_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  class Model;
  class Table;
  class Delegate;
  class Sums;
  void set(int row, int column, std::optional<double> quantity);
  void fitToCells();
  double sumOf(Qt::Orientation along, int place) const;  // a column below, a row beside
  void changedByHand();

  Source source_;
  Model* model_;
  QTableView* view_;
  Sums* below_;
  Sums* beside_;
  QLabel* all_;
  std::function<void()> changed_;
  std::function<void(const Pasted&)> pasted_;
};

}  // namespace jxc::ui
