#include "masterdata/screens/goods_class_tree.h"

#include "masterdata/goods_class_move.h"
#include "ui/field.h"

#include <QAction>
#include <QCoreApplication>
#include <QDropEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <set>

namespace jxc {
namespace goods_class_tree_detail {

std::int64_t keyOf(const QTreeWidgetItem* item) {
  return item ? item->data(0, Qt::UserRole).toLongLong() : 0;
}

std::vector<GoodsClass> read(GoodsClassTree::Show show) {
  std::vector<GoodsClass> classes = goodsClasses(show != GoodsClassTree::Show::Ordinary);
  if (show == GoodsClassTree::Show::Lenses) {
    std::erase_if(classes, [](const GoodsClass& one) { return !one.isRoot() && !one.isLens(); });
  }
  return classes;
}

}  // namespace goods_class_tree_detail

GoodsClassTree::GoodsClassTree(Show show, Prompt& prompt, QWidget* parent)
    : QWidget(parent), show_(show), prompt_(prompt), tname_(new QLineEdit(this)), tree_(new QTreeWidget(this)) {
  tname_->setObjectName(QStringLiteral("tname"));
  tname_->setPlaceholderText(QStringLiteral("类别名称或简码"));
  tname_->setMaxLength(64);
  tname_->setClearButtonEnabled(true);
  auto* label = new QLabel(QStringLiteral("查找类别："), this);
  label->setBuddy(tname_);
  tree_->setObjectName(QStringLiteral("treeLb"));
  tree_->setAccessibleName(QStringLiteral("商品类别"));
  tree_->setHeaderHidden(true);
  tree_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  tree_->setUniformRowHeights(true);
  tree_->setMinimumWidth(tree_->fontMetrics().averageCharWidth() * 22);
  tree_->setContextMenuPolicy(Qt::CustomContextMenu);
  tree_->installEventFilter(this);
  tname_->installEventFilter(this);

  auto* line = new QHBoxLayout;
  line->addWidget(label);
  line->addWidget(tname_, 1);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addLayout(line);
  layout->addWidget(tree_, 1);

  connect(tname_, &QLineEdit::textEdited, this, [this](const QString& text) {
    if (!text.trimmed().isEmpty()) find(text);
  });
  connect(tree_, &QTreeWidget::currentItemChanged, this, [this] {
    if (!quiet_ && currentChanged_) currentChanged_();
  });
  connect(tree_, &QTreeWidget::itemDoubleClicked, this, [this] {
    if (activated_) activated_();
  });
  connect(tree_, &QTreeWidget::itemChanged, this, [this](QTreeWidgetItem* item) {
    if (!quiet_) renamed(item);
  });
  connect(tree_, &QWidget::customContextMenuRequested, this, [this](const QPoint& place) {
    const auto chosen = current();
    QMenu menu(this);
    for (const auto& [action, notForRoot] : commands_) {
      action->setEnabled(chosen && !(notForRoot && chosen->isRoot()));
      menu.addAction(action);
    }
    if (!menu.isEmpty()) menu.exec(tree_->viewport()->mapToGlobal(place));
  });
}

void GoodsClassTree::reload() {
  using namespace goods_class_tree_detail;
  const bool first = items_.empty();
  const std::int64_t chosen = keyOf(tree_->currentItem());
  std::set<std::int64_t> open;
  for (const auto& [key, item] : items_) {
    if (item->isExpanded()) open.insert(key);
  }
  quiet_ = true;
  tree_->clear();
  items_.clear();
  classes_ = read(show_);
  for (const GoodsClass& one : classes_) {
    auto* item = new QTreeWidgetItem(QStringList(one.name));
    item->setData(0, Qt::UserRole, QVariant::fromValue<qlonglong>(one.key));
    item->setFlags(item->flags() | Qt::ItemIsEditable);
    items_[one.key] = item;
  }
  // Parents may stand behind their children once classes were moved: items are hung up when all are there.
  for (const GoodsClass& one : classes_) {
    const auto parent = items_.find(one.parentKey);
    if (parent != items_.end() && parent->second != items_[one.key]) {
      parent->second->addChild(items_[one.key]);
    } else {
      tree_->addTopLevelItem(items_[one.key]);
    }
  }
  for (const auto& [key, item] : items_)
    item->setExpanded(open.contains(key) || (first && !item->parent()));
  selectKey(items_.contains(chosen) || classes_.empty() ? chosen : classes_.front().key);
  quiet_ = false;
}

std::optional<GoodsClass> GoodsClassTree::current() const {
  const std::int64_t key = goods_class_tree_detail::keyOf(tree_->currentItem());
  const auto found =
      std::find_if(classes_.begin(), classes_.end(), [key](const GoodsClass& one) { return one.key == key; });
  return found == classes_.end() ? std::nullopt : std::optional(*found);
}

void GoodsClassTree::selectKey(std::int64_t key) {
  const auto found = items_.find(key);
  if (found == items_.end()) return;
  tree_->setCurrentItem(found->second);
  tree_->scrollToItem(found->second);
}

bool GoodsClassTree::select(const QString& number) {
  const auto found =
      std::find_if(classes_.begin(), classes_.end(), [&](const GoodsClass& one) { return one.number == number; });
  if (found == classes_.end()) return false;
  selectKey(found->key);
  return true;
}

bool GoodsClassTree::find(const QString& text) {
  const auto name = findGoodsClass(text);
  if (!name) return false;
  const auto found = std::find_if(classes_.begin(), classes_.end(),
                                  [&](const GoodsClass& one) { return !one.isRoot() && one.name == *name; });
  if (found == classes_.end()) return false;
  selectKey(found->key);
  return true;
}

QAction* GoodsClassTree::addMenuCommand(const char* name, const QString& text, bool notForRoot,
                                        std::function<void()> action) {
  auto* entry = new QAction(text, this);
  entry->setObjectName(QString::fromLatin1(name));
  connect(entry, &QAction::triggered, this, std::move(action));
  commands_.emplace_back(entry, notForRoot);
  return entry;
}

void GoodsClassTree::offerEditing() {
  addMenuCommand("btnAdd", QStringLiteral("增加下级类别(Ins)"), false, [this] { create(); });
  addMenuCommand("btnRename", QStringLiteral("类别改名(Ctrl+R)"), true, [this] { rename(); });
  addMenuCommand("btnDel", QStringLiteral("删除类别(Del)"), true, [this] { remove(); });
  addMenuCommand("btnUpLevel", QStringLiteral("上升一级(Ctrl+←)"), true, [this] { changeLevel(raiseGoodsClass); });
  addMenuCommand("btnDownLevel", QStringLiteral("下降一级(Ctrl+→)"), true, [this] { changeLevel(lowerGoodsClass); });
  auto* drag = addMenuCommand("btnDrag", QStringLiteral("允许拖动类别"), true, [] {});
  drag->setCheckable(true);
  connect(drag, &QAction::toggled, this, [this](bool on) { allowDragging(on); });
  tree_->setDropIndicatorShown(true);
  tree_->setDragDropOverwriteMode(true);
  tree_->viewport()->installEventFilter(this);
}

void GoodsClassTree::changeLevel(bool (*change)(std::int64_t id, Prompt& prompt)) {
  const auto chosen = current();
  if (!chosen || chosen->isRoot() || !change(chosen->id, prompt_)) return;
  reload();
  selectKey(chosen->key);
}

void GoodsClassTree::allowDragging(bool on) {
  tree_->setDragEnabled(on);
  tree_->setAcceptDrops(on);
  tree_->setDragDropMode(on ? QAbstractItemView::InternalMove : QAbstractItemView::NoDragDrop);
}

// The rule moves the class; the tree is read anew afterwards and never moves items by itself.
bool GoodsClassTree::dropped(QEvent& event) {
  auto& drop = static_cast<QDropEvent&>(event);
  drop.setDropAction(Qt::IgnoreAction);
  drop.accept();
  const std::int64_t parent = goods_class_tree_detail::keyOf(tree_->itemAt(drop.position().toPoint()));
  // After the drag has ended: the rule may have something to say.
  QMetaObject::invokeMethod(
      this, [this, parent] { hangBelow(parent); }, Qt::QueuedConnection);
  return true;
}

void GoodsClassTree::hangBelow(std::int64_t parentKey) {
  const auto moved = current();
  const auto parent =
      std::find_if(classes_.begin(), classes_.end(), [&](const GoodsClass& one) { return one.key == parentKey; });
  if (!moved || parent == classes_.end() || !hangGoodsClass(moved->id, parent->id, prompt_)) return;
  reload();
  selectKey(moved->key);
}

void GoodsClassTree::create() {
  const auto parent = current();
  if (!parent) return;
  const auto added = addGoodsClass(parent->key, QStringLiteral("新类别"), prompt_);
  if (!added) return;
  reload();
  selectKey(added->key);
  tree_->editItem(tree_->currentItem());
}

void GoodsClassTree::rename() {
  if (const auto chosen = current(); chosen && !chosen->isRoot()) tree_->editItem(tree_->currentItem());
}

void GoodsClassTree::renamed(QTreeWidgetItem* item) {
  const auto key = goods_class_tree_detail::keyOf(item);
  const auto found =
      std::find_if(classes_.begin(), classes_.end(), [key](const GoodsClass& one) { return one.key == key; });
  if (found == classes_.end() || found->name == item->text(0)) return;
  // The list is read anew once the editor has closed, also when the rule refused: the old name comes back then.
  QMetaObject::invokeMethod(
      this, [this] { reload(); }, Qt::QueuedConnection);
  renameGoodsClass(found->id, item->text(0), prompt_);
}

void GoodsClassTree::remove() {
  const auto chosen = current();
  if (!chosen || !deleteGoodsClass(chosen->id, prompt_)) return;
  if (auto* above = tree_->currentItem()->parent()) {
    quiet_ = true;
    tree_->setCurrentItem(above);
    quiet_ = false;
  }
  reload();
  if (currentChanged_) currentChanged_();
}

bool GoodsClassTree::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Drop && watched == tree_->viewport()) return dropped(*event);
  if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
  const auto& key = static_cast<QKeyEvent&>(*event);
  const bool enter = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
  if (watched == tname_) {
    if (enter) find(tname_->text());
    if (enter || key.key() == Qt::Key_Down) {
      tree_->setFocus();
      return true;
    }
  } else if (watched == tree_) {
    if (enter && activated_) {
      activated_();
      return true;
    }
    const bool control = key.modifiers() == Qt::ControlModifier;
    const char* wanted = key.key() == Qt::Key_Insert             ? "btnAdd"
                         : key.key() == Qt::Key_Delete           ? "btnDel"
                         : control && key.key() == Qt::Key_R     ? "btnRename"
                         : control && key.key() == Qt::Key_Left  ? "btnUpLevel"
                         : control && key.key() == Qt::Key_Right ? "btnDownLevel"
                                                                 : "";
    for (const auto& [action, notForRoot] : commands_) {
      if (action->objectName() != QLatin1String(wanted)) continue;
      if (const auto chosen = current(); chosen && !(notForRoot && chosen->isRoot())) action->trigger();
      return true;
    }
    // The tree itself would look at names alone, in which nobody types Chinese by letters.
    if (ui::isTypedLetter(key)) {
      tname_->setFocus();
      tname_->selectAll();
      return QCoreApplication::sendEvent(tname_, event);
    }
  }
  return QWidget::eventFilter(watched, event);
}

}  // namespace jxc
