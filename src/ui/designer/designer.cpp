#include "ui/designer/designer.h"

#include "ui/designer/design_canvas.h"
#include "ui/designer/design_trees.h"
#include "ui/designer/property_panel.h"

#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QScreen>
#include <QSplitter>
#include <QTabWidget>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

namespace jxc::ui {

namespace designer_detail {

struct Named {
  const char16_t* text;
  const char* key;
};

/// A button of the tool bar that opens a menu.
QMenu* menuButton(QToolBar& tools, const QString& text, const QString& name) {
  auto* button = new QToolButton;
  button->setText(text);
  button->setObjectName(name);
  button->setPopupMode(QToolButton::InstantPopup);
  button->setToolButtonStyle(Qt::ToolButtonTextOnly);
  auto* menu = new QMenu(button);
  button->setMenu(menu);
  tools.addWidget(button);
  return menu;
}

constexpr std::array kZooms{50, 75, 100, 125, 150, 200, 300, 400};
constexpr std::array kSteps{0.0, 0.5, 1.0, 2.0, 5.0};

}  // namespace designer_detail

Designer::Designer(QWidget* parent) : QWidget(parent) {
  setObjectName(u"designer"_qs);
  canvas_ = new DesignCanvas(document_);
  properties_ = new PropertyPanel(document_);
  data_ = new DataTree(document_);
  preview_ = new LivePreview(document_);

  auto* lists = new QTabWidget;
  lists->setObjectName(u"designLists"_qs);
  lists->addTab(data_, u"数据"_qs);
  lists->addTab(new StructureTree(document_), u"结构"_qs);

  auto* middle = new QSplitter(Qt::Vertical);
  middle->addWidget(canvas_);
  middle->addWidget(preview_);
  middle->setStretchFactor(0, 3);
  middle->setStretchFactor(1, 2);
  auto* all = new QSplitter;
  all->addWidget(lists);
  all->addWidget(middle);
  all->addWidget(properties_);
  all->setStretchFactor(0, 0);
  all->setStretchFactor(1, 1);
  all->setStretchFactor(2, 0);
  const int unit = fontMetrics().averageCharWidth();
  all->setSizes({unit * 32, unit * 100, unit * 36});
  all->setChildrenCollapsible(false);

  auto* tools = new QToolBar;
  tools->setObjectName(u"designTools"_qs);
  makeTools(*tools);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(4);
  layout->addWidget(tools);
  layout->addWidget(all, 1);

  canvas_->onEditContent([this] { properties_->focusOn(u"内容"_qs); });
  data_->onPicked([this](const QString& content) {
    document_.add(document_.bandForNew(), DesignCanvas::textFor(content));
    canvas_->setFocus();
  });
}

Designer::~Designer() = default;

QSize Designer::sizeHint() const {
  const QSize room = screen()->availableSize() - QSize(100, 170);  // frame, title and commands of the window around it
  return room.boundedTo(QSize(1400, 860));
}

void Designer::addInsert(QToolBar& tools, const QString& text, const QString& key, const report::Item& pattern) {
  QAction* action = tools.addAction(text);
  action->setShortcut(QKeySequence(key));
  action->setShortcutContext(Qt::WindowShortcut);
  action->setToolTip(u"%1（%2）：在画布上按下并拖出大小，或按回车放入当前带区"_qs.arg(text, key));
  connect(action, &QAction::triggered, this, [this, pattern] { canvas_->beginInsert(pattern); });
}

void Designer::addColumnMenu(QToolBar& tools) {
  using namespace designer_detail;
  QMenu* columns = menuButton(tools, u"列"_qs, u"columnMenu"_qs);
  QMenu* insert = columns->addMenu(u"插入列（Ctrl+Insert）"_qs);
  insert->setObjectName(u"insertColumn"_qs);
  QAction* remove = columns->addAction(u"删除列（Ctrl+Delete）"_qs, this, [this] { document_.removeColumn(); });
  remove->setObjectName(u"removeColumn"_qs);
  const auto fill = [this, insert, remove] {
    insert->clear();
    const auto fields = document_.current().fields;
    for (const report::DetailField& field : fields) {
      const QString label = field.label.isEmpty() ? field.name : field.label;
      // A & in a label of the shop is no key.
      insert->addAction(QString(label).replace(u'&', u"&&"_qs) + u"　["_qs + field.name + u']', this, [this, field] {
        document_.insertColumn(field);
        canvas_->setFocus();
      });
    }
    insert->menuAction()->setEnabled(document_.isList() && !fields.empty());
    remove->setEnabled(document_.chosenColumn() >= 0);
  };
  connect(columns, &QMenu::aboutToShow, this, fill);
  // By keys on the canvas: the list of fields opens where the columns are.
  const auto onCanvas = [this](const char* key, std::function<void()> run) {
    auto* action = new QAction(canvas_);
    action->setShortcut(QKeySequence(QLatin1String(key)));
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(action, &QAction::triggered, this, std::move(run));
    canvas_->addAction(action);
  };
  onCanvas("Ctrl+Ins", [this, insert, fill] {
    fill();
    if (insert->menuAction()->isEnabled()) insert->popup(canvas_->mapToGlobal(QPoint(40, 40)));
  });
  onCanvas("Ctrl+Del", [this] { document_.removeColumn(); });
}

void Designer::makeTools(QToolBar& tools) {
  using namespace designer_detail;
  tools.setToolButtonStyle(Qt::ToolButtonTextOnly);
  addInsert(tools, u"文本"_qs, u"Alt+1"_qs, report::textItem(0, 0, 30, 6, u"文本"_qs));
  addInsert(tools, u"直线"_qs, u"Alt+2"_qs, report::lineItem(0, 0, 30, 0));
  addInsert(tools, u"形状"_qs, u"Alt+3"_qs, report::shapeItem(0, 0, 20, 10));
  addInsert(tools, u"图片"_qs, u"Alt+4"_qs, report::pictureItem(0, 0, 20, 20, {}));
  addInsert(tools, u"条码"_qs, u"Alt+5"_qs,
            report::barcodeItem(0, 0, 40, 12, u"12345678"_qs, report::Symbology::Code128));

  addColumnMenu(tools);
  using report::BandKind;
  QMenu* bands = menuButton(tools, u"带区"_qs, u"bandMenu"_qs);
  for (const BandKind kind :
       {BandKind::ReportTitle, BandKind::PageHeader, BandKind::ColumnHeader, BandKind::GroupHeader,
        BandKind::MasterData, BandKind::Summary, BandKind::PageFooter, BandKind::Overlay}) {
    const QString label =
        kind == BandKind::GroupHeader ? u"分组（组头和组尾）"_qs : report::bandKindLabel(kind).toString();
    bands->addAction(u"添加"_qs + label, this, [this, kind] { document_.addBand(kind); });
  }
  bands->addSeparator();
  bands->addAction(u"上移"_qs, this, [this] { document_.moveBand(document_.chosenBand(), -1); });
  bands->addAction(u"下移"_qs, this, [this] { document_.moveBand(document_.chosenBand(), 1); });
  bands->addAction(u"删除带区"_qs, this, [this] { document_.removeBand(document_.chosenBand()); });
  tools.addSeparator();

  const auto command = [this](QMenu* menu, const QString& text, const char* key, std::function<void()> run) {
    QAction* action = menu->addAction(text, this, std::move(run));
    if (!key) return;
    // On the canvas only: inputs have their own Ctrl+C, Ctrl+A and Delete.
    action->setShortcut(QKeySequence(QLatin1String(key)));
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    canvas_->addAction(action);
  };
  QMenu* edit = menuButton(tools, u"编辑"_qs, u"editMenu"_qs);
  command(edit, u"复制"_qs, "Ctrl+C", [this] { copy(); });
  command(edit, u"剪切"_qs, "Ctrl+X", [this] {
    copy();
    if (!document_.chosen().empty()) document_.removeChosen();
  });
  command(edit, u"粘贴"_qs, "Ctrl+V", [this] { document_.paste(QGuiApplication::clipboard()->text().toUtf8()); });
  command(edit, u"再制"_qs, "Ctrl+D", [this] { document_.duplicate(); });
  command(edit, u"全选"_qs, "Ctrl+A", [this] { document_.chooseAll(); });
  edit->addAction(u"删除（Delete）"_qs, this, [this] { document_.removeChosen(); });
  edit->addSeparator();
  command(edit, u"移到最前"_qs, "Ctrl+PgUp", [this] { document_.reorder(Order::Front); });
  command(edit, u"移到最后"_qs, "Ctrl+PgDown", [this] { document_.reorder(Order::Back); });

  QMenu* align = menuButton(tools, u"对齐"_qs, u"alignMenu"_qs);
  struct Side {
    const char16_t* text;
    const char* key;
    Edge edge;
  };
  for (const auto& [text, key, edge] :
       {Side{u"左边对齐", "Ctrl+Alt+L", Edge::Left}, Side{u"水平居中", "Ctrl+Alt+C", Edge::Center},
        Side{u"右边对齐", "Ctrl+Alt+R", Edge::Right}, Side{u"上边对齐", "Ctrl+Alt+T", Edge::Top},
        Side{u"垂直居中", "Ctrl+Alt+M", Edge::Middle}, Side{u"下边对齐", "Ctrl+Alt+B", Edge::Bottom}})
    command(align, QString::fromUtf16(text), key, [this, edge = edge] { document_.align(edge); });
  align->addSeparator();
  command(align, u"等宽"_qs, nullptr, [this] { document_.sameWidth(); });
  command(align, u"等高"_qs, nullptr, [this] { document_.sameHeight(); });
  command(align, u"水平等距"_qs, nullptr, [this] { document_.spread(Qt::Horizontal); });
  command(align, u"垂直等距"_qs, nullptr, [this] { document_.spread(Qt::Vertical); });
  tools.addSeparator();

  tools.addWidget(new QLabel(u" 网格 "_qs));
  auto* grid = new QComboBox;
  grid->setObjectName(u"gridStep"_qs);
  grid->setAccessibleName(u"网格"_qs);
  for (const double step : kSteps)
    grid->addItem(step == 0 ? u"无"_qs : u"%1 毫米"_qs.arg(step));
  grid->setCurrentIndex(2);
  connect(grid, &QComboBox::activated, this, [this](int at) { canvas_->setGridStep(kSteps[at]); });
  tools.addWidget(grid);

  tools.addWidget(new QLabel(u" 缩放 "_qs));
  zoom_ = new QComboBox;
  zoom_->setObjectName(u"zoom"_qs);
  zoom_->setAccessibleName(u"缩放"_qs);
  zoom_->setEditable(true);
  zoom_->setInsertPolicy(QComboBox::NoInsert);
  for (const int percent : kZooms)
    zoom_->addItem(u"%1%"_qs.arg(percent));
  zoom_->addItem(u"适合宽度"_qs);
  const auto takeZoom = [this] {
    if (zoom_->currentText() == u"适合宽度"_qs) return canvas_->fitWidth();
    if (const double percent = zoom_->currentText().remove(u'%').trimmed().toDouble(); percent > 0)
      canvas_->setZoom(percent / 100);
  };
  connect(zoom_, &QComboBox::activated, this, takeZoom);
  connect(zoom_->lineEdit(), &QLineEdit::returnPressed, this, takeZoom);
  canvas_->onZoomed([this] { zoom_->setEditText(u"%1%"_qs.arg(std::lround(canvas_->zoom() * 100))); });
  zoom_->setEditText(u"100%"_qs);
  tools.addWidget(zoom_);
}

void Designer::copy() {
  // As text, so that it reaches another window of the program, and a mail to a colleague.
  if (const QByteArray parcel = document_.copyChosen(); !parcel.isEmpty())
    QGuiApplication::clipboard()->setText(QString::fromUtf8(parcel));
}

}  // namespace jxc::ui
