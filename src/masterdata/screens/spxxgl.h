// 商品信息管理: the goods catalogue: class tree, goods list, search and commands.
#pragma once

#include "masterdata/goods_change.h"
#include "masterdata/goods_search.h"
#include "masterdata/screens/goods_class_tree.h"
#include "ui/screen.h"

#include <QTimer>

class QAction;
class QLabel;
class QMenu;

namespace jxc {

class TF_Spxxgl : public ui::Screen {
 public:
  TF_Spxxgl();
  ui::Field& tkey = field("tkey");
  ui::Field& chkDisp = field("chkDisp");
  ui::Field& chkPic = field("chkPic");
  ui::Grid& gridSp = grid("gridSp");

  GoodsClassTree& classes() { return *tree_; }
  /// Reads the list anew when another station has written; a timer asks while the screen stands open.
  void followOtherStations();

 protected:
  void activate() override;
  bool keyPressed(QKeyEvent& event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  /// Reads the list anew.
  void load();
  /// What the search box or the tree says has changed.
  void narrow();
  QString classNumber() const;
  void showColumns();
  void showPicture();
  bool warehouseIsMissing();
  void addCommands();
  /// A command of the list: in its pop-up menu and under "更多操作". The hook tells whether something changed.
  QAction* listCommand(const char* name, const QString& caption, std::function<bool()> action);
  GoodsIds marked() const;
  GoodsIds shown() const;  // as the list stands
  bool printLabels(const GoodsIds& ids);
  bool modify();
  bool copy();
  bool deleteOne();
  bool deleteMarked();
  bool disableOne();
  bool disableMarked();
  bool changeClass();
  bool fixCost(bool on);
  void showThisClass();
  void moveClass();

  GoodsClassTree* tree_;
  QLabel* picture_;
  QMenu* more_;
  QAction* commission_ = nullptr;
  GoodsIndex index_;
  bool onEnter_ = false;  // the parameter cs_hcj: the query runs on Enter
  QTimer watch_;
  std::optional<std::int64_t> written_;  // what others had written when the list was read
  int looks_ = 0;
};

}  // namespace jxc
