#include "ui/report/page_view.h"

#include "ui/skin.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>
#include <cmath>

namespace jxc::ui {

namespace page_view_detail {

constexpr int kGap = 12;  // around pages
constexpr double kSteps[] = {0.1, 0.25, 0.5, 0.75, 1, 1.25, 1.5, 2, 3, 4, 6, 8};
constexpr qint64 kMostPixels = 8 << 20;  // a larger page is painted as far as it is seen

}  // namespace page_view_detail

PageView::PageView(QWidget* parent) : QAbstractScrollArea(parent) {
  setObjectName(QStringLiteral("pageView"));
  setAccessibleName(QStringLiteral("页面"));
  setFocusPolicy(Qt::StrongFocus);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  verticalScrollBar()->setSingleStep(40);
  horizontalScrollBar()->setSingleStep(40);
}

void PageView::setPages(const report::Pages& pages) {
  pages_ = pages;
  hits_.clear();
  hit_ = -1;
  current_ = 0;
  drawn_.clear();
  fitZoom();
  arrange();
  verticalScrollBar()->setValue(0);
  followScroll();
  viewport()->update();
}

double PageView::scale() const {
  return zoom_ * logicalDpiX() / 25.4;
}

void PageView::setZoom(double zoom) {
  fit_ = Fit::Fixed;
  zoom_ = std::clamp(zoom, 0.1, 8.0);
  drawn_.clear();
  const int page = current_;
  arrange();
  goToPage(page);
  if (zoomChanged_) zoomChanged_();
}

void PageView::setFit(Fit fit) {
  fit_ = fit;
  const int page = current_;
  fitZoom();
  arrange();
  goToPage(page);
  if (zoomChanged_) zoomChanged_();
}

void PageView::zoomStep(bool in) {
  using page_view_detail::kSteps;
  if (in) {
    const auto next = std::upper_bound(std::begin(kSteps), std::end(kSteps), zoom_ * 1.01);
    setZoom(next == std::end(kSteps) ? kSteps[std::size(kSteps) - 1] : *next);
  } else {
    const auto next = std::lower_bound(std::begin(kSteps), std::end(kSteps), zoom_ * 0.99);
    setZoom(next == std::begin(kSteps) ? kSteps[0] : *(next - 1));
  }
}

void PageView::fitZoom() {
  if (fit_ == Fit::Fixed || pages_.isEmpty()) return;
  const QSizeF size = pages_.size(std::min(current_, pages_.count() - 1));
  const double unit = logicalDpiX() / 25.4;
  const double width = (viewport()->width() - 2 * page_view_detail::kGap) / (size.width() * unit);
  const double height = (viewport()->height() - 2 * page_view_detail::kGap) / (size.height() * unit);
  // A slip as wide as the window would be all too large.
  const double wanted = fit_ == Fit::Width ? std::min(width, 2.0) : std::min(width, height);
  const double zoom = std::clamp(wanted, 0.1, 8.0);
  if (zoom != zoom_) drawn_.clear();
  zoom_ = zoom;
}

void PageView::arrange() {
  using page_view_detail::kGap;
  tops_.clear();
  widest_ = 0;
  int y = kGap;
  for (int page = 0; page < pages_.count(); ++page) {
    const QSizeF size = pages_.size(page) * scale();
    tops_.push_back(y);
    y += static_cast<int>(std::lround(size.height())) + kGap;
    widest_ = std::max(widest_, static_cast<int>(std::lround(size.width())));
  }
  tops_.push_back(y);
  const QSize room = viewport()->size();
  verticalScrollBar()->setPageStep(std::max(1, room.height() - 40));
  verticalScrollBar()->setRange(0, std::max(0, y - room.height()));
  horizontalScrollBar()->setPageStep(room.width());
  horizontalScrollBar()->setRange(0, std::max(0, widest_ + 2 * kGap - room.width()));
  viewport()->update();
}

QRect PageView::pageRect(int page) const {
  const auto at = static_cast<std::size_t>(page);
  const QSizeF size = pages_.size(page) * scale();
  const int width = static_cast<int>(std::lround(size.width())), height = static_cast<int>(std::lround(size.height()));
  const int across = std::max(viewport()->width(), widest_ + 2 * page_view_detail::kGap);
  return {(across - width) / 2 - horizontalScrollBar()->value(), tops_[at] - verticalScrollBar()->value(), width,
          height};
}

void PageView::goToPage(int page) {
  if (pages_.isEmpty()) return;
  const auto at = static_cast<std::size_t>(std::clamp(page, 0, pages_.count() - 1));
  verticalScrollBar()->setValue(tops_[at] - page_view_detail::kGap);
  // The last pages may be too short to come to the top.
  if (current_ != static_cast<int>(at)) {
    current_ = static_cast<int>(at);
    if (pageChanged_) pageChanged_();
  }
  viewport()->update();
}

/// The page that has the upper third of the window.
void PageView::followScroll() {
  if (pages_.isEmpty()) return;
  const int line = verticalScrollBar()->value() + viewport()->height() / 3;
  const auto behind = std::upper_bound(tops_.begin(), tops_.end() - 1, line);
  const int page = std::max(0, static_cast<int>(behind - tops_.begin()) - 1);
  if (page == current_) return;
  current_ = page;
  if (pageChanged_) pageChanged_();
}

void PageView::setHits(std::vector<report::Pages::Hit> hits) {
  hits_ = std::move(hits);
  hit_ = -1;
  viewport()->update();
}

void PageView::showHit(int index) {
  hit_ = index;
  viewport()->update();
  if (index < 0 || index >= static_cast<int>(hits_.size())) return;
  const auto& hit = hits_[static_cast<std::size_t>(index)];
  const QRect page = pageRect(hit.page);
  const QRectF area(page.topLeft() + hit.area.topLeft() * scale(), hit.area.size() * scale());
  const QRectF seen = QRectF(viewport()->rect()).adjusted(20, 20, -20, -20);
  if (area.top() < seen.top() || area.bottom() > seen.bottom()) {
    verticalScrollBar()->setValue(verticalScrollBar()->value() +
                                  static_cast<int>(area.center().y() - seen.height() / 3));
  }
  if (area.left() < seen.left() || area.right() > seen.right()) {
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() +
                                    static_cast<int>(area.center().x() - seen.width() / 2));
  }
  if (current_ != hit.page) {
    current_ = hit.page;
    if (pageChanged_) pageChanged_();
  }
}

void PageView::paintPage(QPainter& painter, int page, const QRect& place) {
  const double ratio = devicePixelRatioF();
  const QSize size = (QSizeF(place.size()) * ratio).toSize();
  const auto paint = [&](QPainter& to) { pages_.paint(to, page, scale()); };
  if (static_cast<qint64>(size.width()) * size.height() > page_view_detail::kMostPixels) {
    painter.save();
    painter.fillRect(place, Qt::white);
    painter.setClipRect(place);
    painter.translate(place.topLeft());
    paint(painter);
    painter.restore();
    return;
  }
  QPixmap* drawn = drawn_.object(page);
  if (!drawn || drawn->size() != size) {
    QPixmap fresh(size);
    fresh.setDevicePixelRatio(ratio);
    fresh.fill(Qt::white);
    QPainter to(&fresh);
    paint(to);
    to.end();
    painter.drawPixmap(place.topLeft(), fresh);
    drawn_.insert(page, new QPixmap(std::move(fresh)), size.width() * size.height() / 256 + 1);
    return;
  }
  painter.drawPixmap(place.topLeft(), *drawn);
}

void PageView::paintEvent(QPaintEvent* event) {
  QPainter painter(viewport());
  painter.fillRect(event->rect(), skinColour(QStringLiteral("bar")));
  if (pages_.isEmpty()) {
    painter.setPen(skinColour(QStringLiteral("muted")));
    painter.drawText(viewport()->rect(), Qt::AlignCenter, QStringLiteral("没有可以预览的页面，请先选择要打印的单据"));
    return;
  }
  for (int page = 0; page < pages_.count(); ++page) {
    const QRect place = pageRect(page);
    if (place.bottom() < event->rect().top()) continue;
    if (place.top() > event->rect().bottom()) break;
    paintPage(painter, page, place);
    painter.setPen(skinColour(page == current_ ? QStringLiteral("accent") : QStringLiteral("line")));
    painter.drawRect(place.adjusted(-1, -1, 0, 0));
    for (std::size_t i = 0; i < hits_.size(); ++i) {
      if (hits_[i].page != page) continue;
      QColor colour = skinColour(static_cast<int>(i) == hit_ ? QStringLiteral("warning") : QStringLiteral("accent"));
      colour.setAlpha(static_cast<int>(i) == hit_ ? 120 : 50);
      painter.fillRect(QRectF(place.topLeft() + hits_[i].area.topLeft() * scale(), hits_[i].area.size() * scale()),
                       colour);
    }
  }
}

void PageView::resizeEvent(QResizeEvent*) {
  fitZoom();
  arrange();
  if (fit_ != Fit::Fixed && zoomChanged_) zoomChanged_();
}

void PageView::scrollContentsBy(int, int) {
  followScroll();
  viewport()->update();
}

bool PageView::scrollByKey(int key) {
  auto* down = verticalScrollBar();
  auto* across = horizontalScrollBar();
  switch (key) {
    case Qt::Key_Down:
      down->triggerAction(QScrollBar::SliderSingleStepAdd);
      return true;
    case Qt::Key_Up:
      down->triggerAction(QScrollBar::SliderSingleStepSub);
      return true;
    case Qt::Key_Right:
      across->triggerAction(QScrollBar::SliderSingleStepAdd);
      return true;
    case Qt::Key_Left:
      across->triggerAction(QScrollBar::SliderSingleStepSub);
      return true;
    case Qt::Key_PageDown:
      down->triggerAction(QScrollBar::SliderPageStepAdd);
      return true;
    case Qt::Key_PageUp:
      down->triggerAction(QScrollBar::SliderPageStepSub);
      return true;
    case Qt::Key_Home:
      goToPage(0);
      return true;
    case Qt::Key_End:
      goToPage(pages_.count() - 1);
      return true;
    default:
      return false;
  }
}

void PageView::keyPressEvent(QKeyEvent* event) {
  if ((event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier && scrollByKey(event->key())) return;
  event->ignore();  // the screen's own keys
}

void PageView::wheelEvent(QWheelEvent* event) {
  if (event->modifiers() & Qt::ControlModifier) return zoomStep(event->angleDelta().y() > 0);
  QAbstractScrollArea::wheelEvent(event);
}

void PageView::mousePressEvent(QMouseEvent* event) {
  grabbed_ = event->pos();
}

void PageView::mouseMoveEvent(QMouseEvent* event) {
  if (!(event->buttons() & Qt::LeftButton)) return;
  const QPoint moved = event->pos() - grabbed_;
  grabbed_ = event->pos();
  horizontalScrollBar()->setValue(horizontalScrollBar()->value() - moved.x());
  verticalScrollBar()->setValue(verticalScrollBar()->value() - moved.y());
}

}  // namespace jxc::ui
