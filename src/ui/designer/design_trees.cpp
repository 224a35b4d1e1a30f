#include "ui/designer/design_trees.h"

#include <QKeyEvent>
#include <QMimeData>
#include <QSignalBlocker>

#include <algorithm>

namespace jxc::ui {

namespace design_trees_detail {

constexpr int kBandRole = Qt::UserRole, kItemRole = Qt::UserRole + 1, kContentRole = Qt::UserRole + 2;

struct Term {
  const char16_t *content, *label;
};
/// What every template can print beside its own variables and fields.
constexpr Term kTerms[]{
    {u"[Page]", u"第几页"},     {u"[Pages]", u"共几页"},    {u"[Line]", u"行号"},
    {u"[date()]", u"打印日期"}, {u"[time()]", u"打印时间"}, {u"[sum(字段)]", u"合计，换成字段名"},
    {u"[count(*)]", u"行数"},
};

QTreeWidgetItem* section(QTreeWidget& tree, const QString& title) {
  auto* item = new QTreeWidgetItem(&tree, {title});
  item->setFlags(Qt::ItemIsEnabled);
  item->setExpanded(true);
  return item;
}

void addTerm(QTreeWidgetItem* parent, const QString& label, const QString& content, const QString& sample) {
  auto* item = new QTreeWidgetItem(parent, {label, content, sample});
  item->setData(0, kContentRole, content);
  item->setToolTip(0, content + u'\n' + sample);
}

}  // namespace design_trees_detail

StructureTree::StructureTree(DesignDocument& document, QWidget* parent) : QTreeWidget(parent), document_(document) {
  setObjectName(u"structure"_qs);
  setAccessibleName(u"模板结构"_qs);
  setHeaderHidden(true);
  connect(this, &QTreeWidget::itemSelectionChanged, this, [this] { chosenHere(); });
  setSelectionMode(ExtendedSelection);
  document_.onChanged([this] { refresh(); });
  refresh();
}

void StructureTree::refresh() {
  using namespace design_trees_detail;
  if (quiet_) return;
  const auto& t = document_.current();
  QStringList now{t.title};
  for (const int band : document_.bandsInOrder()) {
    now << u"%1 %2"_qs.arg(band).arg(report::bandKindLabel(t.bands[band].kind));
    for (const auto& item : t.bands[band].items)
      now << u"  %1 %2 %3"_qs.arg(report::itemKindLabel(item.kind), item.name, item.content.left(24));
  }
  const QSignalBlocker blocker(this);
  if (now != shown_) {
    shown_ = now;
    clear();
    auto* page = new QTreeWidgetItem(this, {u"页面　"_qs + t.title});
    page->setData(0, kBandRole, -1);
    page->setData(0, kItemRole, -1);
    for (const int band : document_.bandsInOrder()) {
      auto* node = new QTreeWidgetItem(page, {report::bandKindLabel(t.bands[band].kind).toString()});
      node->setData(0, kBandRole, band);
      node->setData(0, kItemRole, -1);
      for (int i = 0; i < static_cast<int>(t.bands[band].items.size()); ++i) {
        const auto& item = t.bands[band].items[i];
        const QString words = item.content.isEmpty() ? item.name : item.content.simplified();
        auto* leaf = new QTreeWidgetItem(node, {report::itemKindLabel(item.kind).toString() + u"　"_qs + words});
        leaf->setData(0, kBandRole, band);
        leaf->setData(0, kItemRole, i);
        leaf->setToolTip(0, item.name + u'\n' + item.content);
      }
    }
    expandAll();
  }
  for (QTreeWidgetItemIterator it(this); *it; ++it) {
    const ItemRef ref{(*it)->data(0, kBandRole).toInt(), (*it)->data(0, kItemRole).toInt()};
    const bool isOn =
        ref.item >= 0 ? document_.isChosen(ref) : document_.chosen().empty() && ref.band == document_.chosenBand();
    (*it)->setSelected(isOn);
    if (isOn) scrollToItem(*it);
  }
}

void StructureTree::chosenHere() {
  using namespace design_trees_detail;
  std::vector<ItemRef> items;
  int band = -1;
  for (const auto* node : selectedItems()) {
    const ItemRef ref{node->data(0, kBandRole).toInt(), node->data(0, kItemRole).toInt()};
    if (ref.item >= 0)
      items.push_back(ref);
    else
      band = ref.band;
  }
  quiet_ = true;
  if (items.empty())
    document_.chooseBand(band);
  else
    document_.choose(std::move(items));
  quiet_ = false;
}

DataTree::DataTree(DesignDocument& document, QWidget* parent) : QTreeWidget(parent), document_(document) {
  using namespace design_trees_detail;
  setObjectName(u"data"_qs);
  setAccessibleName(u"变量与字段"_qs);
  setHeaderLabels({u"名称"_qs, u"写法"_qs, u"示例"_qs});
  setDragEnabled(true);
  setColumnWidth(0, 130);
  setColumnWidth(1, 90);
  connect(this, &QTreeWidget::itemDoubleClicked, this, [this](QTreeWidgetItem* item) {
    if (const QString content = item->data(0, kContentRole).toString(); !content.isEmpty() && picked_) picked_(content);
  });
  document_.onChanged([this] { refresh(); });
  refresh();
}

void DataTree::refresh() {
  using namespace design_trees_detail;
  const auto& t = document_.current();
  if (topLevelItemCount() > 0 && variables_ == t.variables && fields_ == t.fields) return;
  variables_ = t.variables;
  fields_ = t.fields;
  clear();
  auto* variables = section(*this, u"变量"_qs);
  for (const auto& v : variables_)
    addTerm(variables, v.label.isEmpty() ? v.name : v.label, u"[%1]"_qs.arg(v.name), v.sample);
  auto* fields = section(*this, u"明细字段"_qs);
  for (const auto& f : fields_)
    addTerm(fields, f.label.isEmpty() ? f.name : f.label, u"[%1]"_qs.arg(f.name), f.sample);
  auto* others = section(*this, u"页码与合计"_qs);
  for (const auto& [content, label] : kTerms)
    addTerm(others, QString::fromUtf16(label), QString::fromUtf16(content), {});
}

QMimeData* DataTree::mimeData(const QList<QTreeWidgetItem*>& items) const {
  using namespace design_trees_detail;
  auto* data = new QMimeData;
  if (!items.isEmpty()) data->setText(items.front()->data(0, kContentRole).toString());
  return data;
}

QStringList DataTree::mimeTypes() const {
  return {u"text/plain"_qs};
}

void DataTree::keyPressEvent(QKeyEvent* event) {
  using namespace design_trees_detail;
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (enter && currentItem()) {
    if (const QString content = currentItem()->data(0, kContentRole).toString(); !content.isEmpty() && picked_)
      picked_(content);
    return;
  }
  QTreeWidget::keyPressEvent(event);
}

}  // namespace jxc::ui
