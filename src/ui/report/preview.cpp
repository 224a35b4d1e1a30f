#include "ui/report/preview.h"

#include "ui/display.h"
#include "ui/file_dialogs.h"
#include "ui/report/print.h"
#include "ui/skin.h"

#include <QAbstractListModel>
#include <QBoxLayout>
#include <QCache>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QListView>
#include <QPainter>

#include <array>
#include <cmath>
#include <exception>

namespace jxc::ui {

namespace preview_detail {

constexpr FieldSpec kFields[] = {
    {.name = "tfind", .label = "查找(Ctrl+F)：", .width = 60},
    {.name = "comZoom", .label = "缩放(Ctrl+加减)：", .kind = FieldKind::Combo},
    {.name = "tpage",
     .label = "页(Ctrl+G)：",
     .kind = FieldKind::Integer,
     .width = 5,
     .flags = NoMinus,
     .suffix = "/ 0"},
};
constexpr CommandSpec kCommands[] = {
    {"btnNext", "下一处", "F3"},
    {"btnPrev", "上一处", "Shift+F3"},
    {"btnFaults", "模板有误", "F8", "模板里不能打印的内容"},
    {"btnPdf", "存为PDF", "Ctrl+S"},
    {"btnPng", "存为图片", "Ctrl+E"},
    {"btnDirect", "直接打印", "F5", "用默认打印机，不再询问"},
    {"btnPrint", "打印", "Ctrl+P", "选择打印机、页码和份数"},
    {"btnClose", "关闭", "Esc"},
};
constexpr ScreenSpec kScreen{.name = "F_Preview", .title = "打印预览", .fields = kFields, .commands = kCommands};

constexpr std::array kPercents{50, 75, 100, 125, 150, 200, 300, 400};
constexpr QSize kThumbnail(104, 132);

const Registered<TF_Preview> kRegistered{"F_Preview"};

}  // namespace preview_detail

/// Small pictures of the pages, made when they come into sight.
class TF_Preview::Thumbnails : public QAbstractListModel {
 public:
  explicit Thumbnails(QWidget* owner) : QAbstractListModel(owner), owner_(*owner) {}
  void setPages(const report::Pages& pages) {
    beginResetModel();
    pages_ = pages;
    ratio_ = owner_.devicePixelRatioF();
    drawn_.clear();
    endResetModel();
  }
  int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : pages_.count(); }
  QVariant data(const QModelIndex& index, int role) const override {
    if (role == Qt::DisplayRole || role == Qt::AccessibleTextRole) return QStringLiteral("第%1页").arg(index.row() + 1);
    if (role == Qt::TextAlignmentRole) return static_cast<int>(Qt::AlignCenter);
    if (role != Qt::DecorationRole) return {};
    if (const QPixmap* known = drawn_.object(index.row())) return *known;
    const QPixmap fresh = draw(index.row());
    drawn_.insert(index.row(), new QPixmap(fresh));
    return fresh;
  }

 private:
  QPixmap draw(int page) const {
    // Only the beginning of a long slip: all of it would be a hair.
    QSizeF size = pages_.size(page);
    size.setHeight(std::min(size.height(), 2 * size.width()));
    const QSizeF shown = size.scaled(preview_detail::kThumbnail, Qt::KeepAspectRatio);
    const QSize place = shown.toSize().expandedTo(QSize(8, 8));
    QPixmap picture(place * ratio_);
    picture.setDevicePixelRatio(ratio_);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    pages_.paint(painter, page, shown.width() / size.width());
    painter.setPen(skinColour(QStringLiteral("line")));
    painter.drawRect(QRectF(QPointF(), place).adjusted(0, 0, -1, -1));
    return picture;
  }

  const QWidget& owner_;
  report::Pages pages_;
  double ratio_ = 1;  // of the display that they were drawn for
  mutable QCache<int, QPixmap> drawn_{200};
};

TF_Preview::TF_Preview() : Screen(preview_detail::kScreen) {
  thumbnails_ = new Thumbnails(this);
  list_ = new QListView(this);
  list_->setObjectName(QStringLiteral("listPages"));
  list_->setAccessibleName(QStringLiteral("页列表"));
  list_->setModel(thumbnails_);
  list_->setViewMode(QListView::IconMode);
  list_->setFlow(QListView::TopToBottom);
  list_->setWrapping(false);
  list_->setMovement(QListView::Static);
  list_->setUniformItemSizes(true);
  list_->setIconSize(preview_detail::kThumbnail);
  list_->setGridSize(preview_detail::kThumbnail + QSize(16, fontMetrics().height() + 12));
  list_->setVerticalScrollMode(QListView::ScrollPerPixel);
  list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  list_->setFixedWidth(list_->gridSize().width() + 24);
  view_ = new PageView(this);

  auto* paper = new QWidget(this);
  auto* beside = new QHBoxLayout(paper);
  beside->setContentsMargins(0, 0, 0, 0);
  beside->addWidget(list_);
  beside->addWidget(view_, 1);
  panel()
      .row("tfind btnNext btnPrev | comZoom tpage")
      .widget(paper, 1)
      .buttons("btnFaults | btnPdf btnPng btnDirect btnPrint btnClose");
  field("tpage").widget()->setMaximumWidth(fontMetrics().horizontalAdvance(QLatin1Char('0')) * 8);

  std::vector<ListItem> zooms{{QStringLiteral("页宽"), QStringLiteral("w")},
                              {QStringLiteral("整页"), QStringLiteral("p")}};
  for (const int percent : preview_detail::kPercents)
    zooms.push_back({QStringLiteral("%1%").arg(percent), QString::number(percent)});
  zooms.push_back({QStringLiteral("其他"), QStringLiteral("x")});
  field("comZoom").setItems(zooms);
  field("comZoom").onChanged([this] { takeZoom(); });
  field("tpage").onEnter([this] {
    takePage();
    return true;
  });
  field("tpage").onLeft([this] { takePage(); });
  field("tfind").onChanged([this] { search(); });
  field("tfind").onEnter([this] {
    nextHit(1);
    return true;
  });
  view_->onPageChanged([this] { showPosition(); });
  view_->onZoomChanged([this] { showZoom(); });
  connect(list_->selectionModel(), &QItemSelectionModel::currentChanged, this, [this](const QModelIndex& index) {
    if (index.isValid() && index.row() != view_->currentPage()) view_->goToPage(index.row());
  });

  on(command("btnNext"), [this] { nextHit(1); });
  on(command("btnPrev"), [this] { nextHit(-1); });
  on(command("btnFaults"), [this] { showFaults(); });
  on(command("btnPrint"), [this] { print(true); });
  on(command("btnDirect"), [this] { print(false); });
  on(command("btnPdf"), [this] { save(true); });
  on(command("btnPng"), [this] { save(false); });
}

TF_Preview::~TF_Preview() = default;

void TF_Preview::setPages(const report::Pages& pages) {
  view_->setPages(pages);
  thumbnails_->setPages(pages);
  field("tfind").clear();
  list_->setVisible(pages.count() > 1);
  const QString title = pages.title();
  setWindowTitle(title.isEmpty() ? qs(spec().title) : qs(spec().title) + QStringLiteral(" - ") + title);
  const bool any = !pages.isEmpty();
  for (const char* name : {"btnPdf", "btnPng", "btnDirect", "btnPrint"})
    command(name).setEnabled(any);
  command("btnFaults").setVisible(!pages.faults().empty());
  if (field("tpage").suffix()) field("tpage").suffix()->setText(QStringLiteral("/ %1").arg(pages.count()));
  showPosition();
}

void TF_Preview::activate() {
  if (view_->pages().isEmpty()) setPages({});
  view_->setFit(PageView::Fit::Width);
  search();
}

void TF_Preview::showEvent(QShowEvent* event) {
  // As much of the paper as the display has room for.
  if (!testAttribute(Qt::WA_Resized) && screen())
    resize(screen()->availableSize().boundedTo({1180, 860}) - QSize(16, 48));
  Screen::showEvent(event);
  view_->setFocus();
}

void TF_Preview::showPosition() {
  const int page = view_->currentPage();
  field("tpage").setNumber(view_->pages().isEmpty() ? 0 : page + 1);
  const QModelIndex index = thumbnails_->index(page);
  list_->setCurrentIndex(index);
  list_->scrollTo(index);
}

void TF_Preview::showZoom() {
  QString key = QStringLiteral("x");
  if (view_->fit() == PageView::Fit::Width) key = QStringLiteral("w");
  if (view_->fit() == PageView::Fit::Page) key = QStringLiteral("p");
  const int percent = static_cast<int>(std::lround(view_->zoom() * 100));
  const bool known = std::find(preview_detail::kPercents.begin(), preview_detail::kPercents.end(), percent) !=
                     preview_detail::kPercents.end();
  if (view_->fit() == PageView::Fit::Fixed && known) key = QString::number(percent);
  field("comZoom").setKey(key);
}

void TF_Preview::takeZoom() {
  const QString key = field("comZoom").key();
  if (key == u"w") return view_->setFit(PageView::Fit::Width);
  if (key == u"p") return view_->setFit(PageView::Fit::Page);
  if (const int percent = key.toInt(); percent > 0) view_->setZoom(percent / 100.0);
}

void TF_Preview::takePage() {
  view_->goToPage(field("tpage").integer() - 1);
  showPosition();
}

void TF_Preview::search() {
  const QString text = field("tfind").text();
  view_->setHits(view_->pages().find(text));
  const bool found = !view_->hits().empty();
  command("btnNext").setEnabled(found);
  command("btnPrev").setEnabled(found);
  if (found) view_->showHit(0);
  auto* input = field("tfind").widget();
  input->setToolTip(text.isEmpty() ? QString() : QStringLiteral("找到%1处").arg(view_->hits().size()));
}

void TF_Preview::nextHit(int step) {
  const int count = static_cast<int>(view_->hits().size());
  if (count == 0) {
    if (!field("tfind").isEmpty()) prompt().notice(QStringLiteral("没有找到“%1”。").arg(field("tfind").text()));
    return;
  }
  view_->showHit((view_->shownHit() + step + count) % count);
}

bool TF_Preview::keyPressed(QKeyEvent& event) {
  const auto modifiers = event.modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier);
  if (modifiers == Qt::ControlModifier) {
    switch (event.key()) {
      case Qt::Key_F:
        field("tfind").focus();
        return true;
      case Qt::Key_G:
        field("tpage").focus();
        return true;
      case Qt::Key_Plus:
      case Qt::Key_Equal:
        view_->zoomStep(true);
        return true;
      case Qt::Key_Minus:
        view_->zoomStep(false);
        return true;
      case Qt::Key_0:
        view_->setZoom(1);
        return true;
      case Qt::Key_1:
        view_->setFit(PageView::Fit::Width);
        return true;
      case Qt::Key_2:
        view_->setFit(PageView::Fit::Page);
        return true;
      case Qt::Key_PageDown:
        view_->goToPage(view_->currentPage() + 1);
        return true;
      case Qt::Key_PageUp:
        view_->goToPage(view_->currentPage() - 1);
        return true;
      default:
        return false;
    }
  }
  // The keys that an input has no use for move the paper.
  return modifiers == Qt::NoModifier && view_->scrollByKey(event.key());
}

void TF_Preview::print(bool ask) {
  try {
    if (ask)
      printWithDialog(view_->pages(), this);
    else
      printPages(view_->pages());
  } catch (const std::exception& error) {
    prompt().notice(QString::fromUtf8(error.what()));
  }
}

void TF_Preview::save(bool asPdf) {
  const QString name = view_->pages().name();
  const QString path = chooseSaveFile(this, asPdf ? QStringLiteral("存为PDF") : QStringLiteral("存为图片"),
                                      name.isEmpty() ? QStringLiteral("报表") : name,
                                      asPdf ? QStringLiteral("PDF文件 (*.pdf)") : QStringLiteral("图片 (*.png)"));
  if (path.isEmpty()) return;
  try {
    if (asPdf) {
      view_->pages().writePdf(path);
      return prompt().notice(QStringLiteral("已存为“%1”。").arg(path));
    }
    const QStringList files = view_->pages().writePng(path);
    prompt().notice(files.size() == 1
                        ? QStringLiteral("已存为“%1”。").arg(files.front())
                        : QStringLiteral("已存为%1个文件，从“%2”到“%3”。")
                              .arg(files.size())
                              .arg(QFileInfo(files.front()).fileName(), QFileInfo(files.back()).fileName()));
  } catch (const std::exception& error) {
    prompt().notice(QString::fromUtf8(error.what()));
  }
}

void TF_Preview::showFaults() {
  QStringList lines;
  const auto& faults = view_->pages().faults();
  for (const auto& fault : faults) {
    if (lines.size() == 12) {
      lines << QStringLiteral("……共%1条").arg(faults.size());
      break;
    }
    lines << QStringLiteral("%1：%2").arg(fault.where, fault.message) +
                 (fault.content.isEmpty() ? QString() : QStringLiteral("（%1）").arg(fault.content.left(40)));
  }
  prompt().notice(lines.join(u'\n'));
}

void showPreview(const report::Pages& pages) {
  auto& preview = screenAs<TF_Preview>("F_Preview");
  preview.setPages(pages);
  preview.showModal();
  preview.setPages({});  // the screen is kept, ten thousand lines need not be
}

}  // namespace jxc::ui
