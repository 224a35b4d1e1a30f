// 类别树: the tree of goods classes with its search box and menu, as the catalogue and its dialogs show it.
#pragma once

#include "masterdata/goods_classes.h"

#include <QWidget>

#include <functional>
#include <map>
#include <optional>

class QAction;
class QLineEdit;
class QTreeWidget;
class QTreeWidgetItem;

namespace jxc {

/// Classes as a tree. It reads them from the rules and writes through them; the screen only hears which one is chosen.
class GoodsClassTree : public QWidget {
 public:
  enum class Show { All, Ordinary, Lenses };

  GoodsClassTree(Show show, Prompt& prompt, QWidget* parent = nullptr);

  /// Reads the classes anew and comes back to the current one; what was open stays open.
  void reload();
  void setShow(Show show) { show_ = show; }
  std::optional<GoodsClass> current() const;
  /// Goes to the class with this number; false when the tree has none.
  bool select(const QString& number);
  /// Goes to the first class whose name or mnemonic begins with the text.
  bool find(const QString& text);

  void onCurrentChanged(std::function<void()> hook) { currentChanged_ = std::move(hook); }
  void onActivated(std::function<void()> hook) { activated_ = std::move(hook); }  // Enter, double click
  /// Create, rename and delete, a level up and down, dragging: in the menu, and by Ins, Ctrl+R, Del, Ctrl+Left and
  /// Ctrl+Right in the tree. Dragging must be switched on in the menu: nobody moves a class by a slip of the hand.
  void offerEditing();
  /// Hangs the current class below the one with this key: what dragging ends in.
  void hangBelow(std::int64_t parentKey);
  /// An entry of the pop-up menu; not for the root when `notForRoot`.
  QAction* addMenuCommand(const char* name, const QString& text, bool notForRoot, std::function<void()> action);

  QTreeWidget& view() { return *tree_; }
  QLineEdit& search() { return *tname_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void create();
  void rename();
  void remove();
  void changeLevel(bool (*change)(std::int64_t id, Prompt& prompt));
  void allowDragging(bool on);
  bool dropped(QEvent& event);
  void renamed(QTreeWidgetItem* item);
  void selectKey(std::int64_t key);

  Show show_;
  Prompt& prompt_;
  QLineEdit* tname_;
  QTreeWidget* tree_;
  std::vector<GoodsClass> classes_;
  std::map<std::int64_t, QTreeWidgetItem*> items_;   // by key
  std::vector<std::pair<QAction*, bool>> commands_;  // with notForRoot
  bool quiet_ = false;
  std::function<void()> currentChanged_, activated_;
};

}  // namespace jxc
