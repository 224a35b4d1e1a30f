// 今日看板: the day on the empty room of the main window; every figure opens the screen that it comes from.
#pragma once

#include "engine/row_set.h"
#include "ui/list_loader.h"

#include <QWidget>

#include <functional>
#include <string_view>
#include <vector>

class QGridLayout;
class QLabel;

namespace jxc {

/// Sales, returns, profit, cash by account, waiting documents, goods below their limit, debts: each for who may see it
/// and may open its screen, and none of them without the right to 营业分析. Read behind the window.
class DayBoard : public QWidget {
 public:
  /// `run` runs a command of the main window by its name.
  DayBoard(QWidget* parent, std::function<void(std::string_view command)> run);
  ~DayBoard() override;

  /// Reads the day anew; what is there stays until it has come. Not while a command runs.
  void refresh();
  /// A command begins: what is being read is dropped.
  void stop();
  /// Waits for the answer (tests, pictures).
  void waitLoaded(int milliseconds = 60000);

  /// Whether there is anything that this operator may see, be it that the day could not be read.
  bool hasFigures() const { return failed_ || !figures_.empty(); }
  /// Called when figures have come or gone: they may need more room, or less.
  void onShown(std::function<void()> hook) { shown_ = std::move(hook); }
  /// Puts them into as few lines as that width allows; the height that they take then.
  int arrangeIn(int width);
  /// Moves the focus among the figures by an arrow key; false where the key leads out of them.
  bool moveFocus(int key);
  void focusFirst();

 private:
  class Figure;
  void show(const RowSet& rows);
  void tellFailure();

  std::function<void(std::string_view)> run_;
  std::function<void()> shown_;
  QLabel* title_;
  QGridLayout* raster_;
  std::vector<Figure*> figures_;
  int columns_ = 1;
  QString operator_;  // whose figures they are
  bool failed_ = false;
  ui::ListLoader loader_;
};

}  // namespace jxc
