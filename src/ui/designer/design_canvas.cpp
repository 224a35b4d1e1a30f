#include "ui/designer/design_canvas.h"

#include "ui/designer/canvas_sizes.h"

#include <QContextMenuEvent>
#include <QDragEnterEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QScrollBar>

#include <algorithm>
#include <array>
#include <cmath>

namespace jxc::ui {

namespace design_canvas_detail {

Qt::CursorShape handleCursor(int handle) {
  constexpr std::array shapes{Qt::SizeFDiagCursor, Qt::SizeVerCursor, Qt::SizeBDiagCursor, Qt::SizeHorCursor};
  return shapes[handle % 4];
}

}  // namespace design_canvas_detail

DesignCanvas::DesignCanvas(DesignDocument& document, QWidget* parent)
    : QAbstractScrollArea(parent), document_(document) {
  setObjectName(QStringLiteral("canvas"));
  setAccessibleName(QStringLiteral("报表画布"));
  setFocusPolicy(Qt::StrongFocus);
  viewport()->setMouseTracking(true);
  viewport()->setAcceptDrops(true);
  document_.onChanged([this] { fits_ ? fitWidth() : rebuild(); });
  rebuild();
}

void DesignCanvas::setZoom(double zoom) {
  fits_ = false;
  takeZoom(zoom);
}

void DesignCanvas::takeZoom(double zoom) {
  zoom_ = std::clamp(zoom, 0.25, 8.0);
  rebuild();
  if (zoomed_) zoomed_();
}

void DesignCanvas::fitWidth() {
  const double room = viewport()->width() - canvas::kRuler - 2 * canvas::kGap;
  fits_ = true;
  takeZoom(std::min(2.0, room / (document_.current().page.pageWidth() * logicalDpiX() / 25.4)));
}

void DesignCanvas::setGridStep(double millimetres) {
  step_ = millimetres;
  viewport()->update();
}

void DesignCanvas::beginInsert(report::Item pattern) {
  pattern_ = std::move(pattern);
  setFocus();
  viewport()->setCursor(Qt::CrossCursor);
}

report::Item DesignCanvas::textFor(const QString& content) {
  return report::textItem(0, 0, std::clamp(8.0 + 2.0 * static_cast<double>(content.size()), 20.0, 60.0), 6, content);
}

void DesignCanvas::rebuild() {
  scale_ = zoom_ * logicalDpiX() / 25.4;
  const auto& t = document_.current();
  const double strip = fontMetrics().height() + 4;
  const double left = canvas::kGap + t.page.left * scale_;
  double y = canvas::kGap;
  places_.clear();
  for (const int band : document_.bandsInOrder()) {
    const auto& b = t.bands[band];
    const double width = bandWidth(t, b) * scale_;
    places_.push_back(
        {band, QRectF(left, y, t.page.bodyWidth() * scale_, strip), QRectF(left, y + strip, width, b.height * scale_)});
    y += strip + b.height * scale_ + 4;
  }
  const QSizeF content(t.page.pageWidth() * scale_ + 2 * canvas::kGap, y + canvas::kGap);
  const QSize room = viewport()->size() - QSize(canvas::kRuler, canvas::kRuler);
  horizontalScrollBar()->setRange(0, std::max(0, static_cast<int>(content.width()) - room.width()));
  horizontalScrollBar()->setPageStep(room.width());
  horizontalScrollBar()->setSingleStep(20);
  verticalScrollBar()->setRange(0, std::max(0, static_cast<int>(content.height()) - room.height()));
  verticalScrollBar()->setPageStep(room.height());
  verticalScrollBar()->setSingleStep(20);
  viewport()->update();
}

QPointF DesignCanvas::toContent(const QPointF& viewport) const {
  return viewport +
         QPointF(horizontalScrollBar()->value() - canvas::kRuler, verticalScrollBar()->value() - canvas::kRuler);
}

QRectF DesignCanvas::toViewport(const QRectF& content) const {
  return content.translated(canvas::kRuler - horizontalScrollBar()->value(),
                            canvas::kRuler - verticalScrollBar()->value());
}

const DesignCanvas::Place* DesignCanvas::placeAt(const QPointF& content) const {
  for (const Place& place : places_)
    if (content.y() >= place.strip.top() && content.y() < place.ground.bottom() + 4) return &place;
  return nullptr;
}

const DesignCanvas::Place* DesignCanvas::placeOf(int band) const {
  const auto found = std::ranges::find(places_, band, &Place::band);
  return found == places_.end() ? nullptr : &*found;
}

QRectF DesignCanvas::contentRect(ItemRef ref) const {
  const Place* place = placeOf(ref.band);
  if (!place) return {};
  const auto& item = document_.item(ref);
  return {place->ground.x() + item.x * scale_, place->ground.y() + item.y * scale_, item.width * scale_,
          item.height * scale_};
}

QRect DesignCanvas::itemRect(ItemRef ref) const {
  return toViewport(contentRect(ref)).toRect();
}

QRect DesignCanvas::bandRect(int band) const {
  const Place* place = placeOf(band);
  return place ? toViewport(place->ground).toRect() : QRect();
}

void DesignCanvas::scrollTo(ItemRef ref) {
  const QRectF at = contentRect(ref);
  const auto into = [](QScrollBar* bar, double low, double high) {
    if (low < bar->value() + canvas::kGap) bar->setValue(static_cast<int>(low) - canvas::kGap);
    if (high > bar->value() + bar->pageStep() - canvas::kGap)
      bar->setValue(static_cast<int>(high) - bar->pageStep() + canvas::kGap);
  };
  into(horizontalScrollBar(), at.left(), at.right());
  into(verticalScrollBar(), at.top(), at.bottom());
}

std::optional<ItemRef> DesignCanvas::itemAt(const QPointF& content) const {
  // Within a band the later objects lie on top; lines are thin, so they get a little more room.
  for (const Place& place : places_) {
    const auto& items = document_.current().bands[place.band].items;
    for (int i = static_cast<int>(items.size()) - 1; i >= 0; --i) {
      const QRectF at = contentRect({place.band, i});
      const bool thin = at.width() < 6 || at.height() < 6;
      if ((thin ? at.adjusted(-3, -3, 3, 3) : at).contains(content)) return ItemRef{place.band, i};
    }
  }
  return std::nullopt;
}

int DesignCanvas::handleAt(const QPointF& content) const {
  if (document_.chosen().empty()) return -1;
  const QRectF at = contentRect(document_.chosen().back());
  constexpr std::array order{4, 2, 6, 0, 3, 5, 1, 7};  // corners first: on a small object they lie over the middles
  for (const int handle : order)
    if (canvas::handleRect(at, handle).adjusted(-1, -1, 1, 1).contains(content)) return handle;
  return -1;
}

int DesignCanvas::edgeAt(const QPointF& content) const {
  for (const Place& place : places_)
    if (std::abs(content.y() - place.ground.bottom()) < 4 && content.x() > place.strip.left() - canvas::kGap)
      return place.band;
  return -1;
}

double DesignCanvas::snap(double millimetres) const {
  return toHundredth(step_ > 0 && !free_ ? std::round(millimetres / step_) * step_ : millimetres);
}

// --- Mouse ---

bool DesignCanvas::viewportEvent(QEvent* event) {
  switch (event->type()) {
    case QEvent::Paint:
      paintCanvas();
      return true;
    case QEvent::MouseButtonPress:
      pressed(static_cast<QMouseEvent&>(*event));
      return true;
    case QEvent::MouseMove:
      moved(static_cast<QMouseEvent&>(*event));
      return true;
    case QEvent::MouseButtonRelease:
      released(static_cast<QMouseEvent&>(*event));
      return true;
    case QEvent::MouseButtonDblClick:
      if (itemAt(toContent(static_cast<QMouseEvent*>(event)->position())) && editContent_) editContent_();
      return true;
    case QEvent::Wheel:
      if (auto& wheel = static_cast<QWheelEvent&>(*event); wheel.modifiers() & Qt::ControlModifier) {
        setZoom(zoom_ * std::pow(1.1, wheel.angleDelta().y() / 120.0));
        return true;
      }
      break;
    case QEvent::DragEnter:
    case QEvent::DragMove: {
      auto& drag = static_cast<QDragMoveEvent&>(*event);
      if (drag.mimeData()->hasText()) drag.acceptProposedAction();
      return true;
    }
    case QEvent::Drop: {
      auto& drop = static_cast<QDropEvent&>(*event);
      dropped(drop.mimeData()->text(), toContent(drop.position()));
      drop.acceptProposedAction();
      return true;
    }
    default:
      break;
  }
  return QAbstractScrollArea::viewportEvent(event);
}

void DesignCanvas::pressed(QMouseEvent& event) {
  setFocus();
  const QPointF at = toContent(event.position());
  from_ = to_ = at;
  free_ = event.modifiers() & Qt::AltModifier;
  if (event.button() == Qt::RightButton) {
    if (const auto item = itemAt(at); item && !document_.isChosen(*item)) document_.choose({*item});
    return;
  }
  if (event.button() != Qt::LeftButton) return;
  if (pattern_) {
    drag_ = Drag::Insert;
    return;
  }
  if (handle_ = handleAt(at); handle_ >= 0) {
    document_.beginGesture();
    drag_ = Drag::Resize;
    return;
  }
  const bool adds = event.modifiers() & (Qt::ControlModifier | Qt::ShiftModifier);
  if (const auto item = itemAt(at)) {
    if (adds)
      document_.toggle(*item);
    else if (!document_.isChosen(*item))
      document_.choose({*item});
    else if (document_.chosen().back() != *item) {
      auto chosen = document_.chosen();  // the one that is taken hold of leads
      std::erase(chosen, *item);
      chosen.push_back(*item);
      document_.choose(std::move(chosen));
    }
    drag_ = Drag::Pending;
    return;
  }
  if (dragBand_ = edgeAt(at); dragBand_ >= 0) {
    document_.chooseBand(dragBand_);
    document_.beginGesture();
    drag_ = Drag::Band;
    return;
  }
  before_ = adds ? document_.chosen() : std::vector<ItemRef>();
  if (const Place* place = placeAt(at); place && at.x() >= place->strip.left()) {
    if (!adds) document_.chooseBand(place->band);
  } else if (!adds) {
    document_.choosePage();
  }
  drag_ = Drag::Rubber;
}

void DesignCanvas::moved(QMouseEvent& event) {
  const QPointF at = toContent(event.position());
  to_ = at;
  free_ = event.modifiers() & Qt::AltModifier;
  if (drag_ == Drag::Pending && (to_ - from_).manhattanLength() >= 4 && !document_.chosen().empty()) {
    document_.beginGesture();
    drag_ = Drag::Move;
  }
  const double dx = (to_.x() - from_.x()) / scale_, dy = (to_.y() - from_.y()) / scale_;
  switch (drag_) {
    case Drag::None:
      showCursor(at);
      break;
    case Drag::Pending:
      break;
    case Drag::Move: {
      const auto chosen = document_.chosen();
      document_.gesture([&](report::Template& t) {
        // The leading object comes to the grid, the others keep their distance to it.
        const auto& lead = t.bands[chosen.back().band].items[chosen.back().item];
        const double sx = snap(lead.x + dx) - lead.x, sy = snap(lead.y + dy) - lead.y;
        for (const ItemRef ref : chosen) {
          auto& item = t.bands[ref.band].items[ref.item];
          item.x = toHundredth(std::max(0.0, item.x + sx));
          item.y = toHundredth(item.y + sy);
        }
      });
      break;
    }
    case Drag::Resize: {
      const ItemRef ref = document_.chosen().back();
      document_.gesture([&](report::Template& t) {
        auto& item = t.bands[ref.band].items[ref.item];
        const auto [fx, fy] = canvas::kHandles[handle_];
        const double right = item.x + item.width, bottom = item.y + item.height;
        if (fx == 0) item.x = std::clamp(snap(item.x + dx), 0.0, right);
        if (fy == 0) item.y = std::clamp(snap(item.y + dy), 0.0, bottom);
        item.width = toHundredth(fx == 1   ? std::max(0.0, snap(right + dx) - item.x)
                                 : fx == 0 ? right - item.x
                                           : item.width);
        item.height = toHundredth(fy == 1   ? std::max(0.0, snap(bottom + dy) - item.y)
                                  : fy == 0 ? bottom - item.y
                                            : item.height);
      });
      break;
    }
    case Drag::Band:
      document_.gesture([&](report::Template& t) {
        auto& band = t.bands[dragBand_];
        band.height = std::max(0.0, snap(band.height + dy));
      });
      break;
    case Drag::Rubber: {
      const QRectF area = QRectF(from_, to_).normalized();
      if ((to_ - from_).manhattanLength() < 4) break;
      auto chosen = before_;
      for (const Place& place : places_)
        for (int i = 0; i < static_cast<int>(document_.current().bands[place.band].items.size()); ++i)
          if (const ItemRef ref{place.band, i};
              area.intersects(contentRect(ref).adjusted(0, 0, 1, 1)) && std::ranges::find(chosen, ref) == chosen.end())
            chosen.push_back(ref);
      document_.choose(std::move(chosen));
      break;
    }
    case Drag::Insert:
      break;
  }
  viewport()->update();
}

void DesignCanvas::released(QMouseEvent& event) {
  if (event.button() != Qt::LeftButton) return;
  switch (std::exchange(drag_, Drag::None)) {
    case Drag::Move: {
      std::vector<double> tops(document_.current().bands.size());
      for (const Place& place : places_)
        tops[place.band] = place.ground.y() / scale_;
      document_.settle(tops);
      document_.endGesture(QStringLiteral("移动"));
      break;
    }
    case Drag::Resize:
      document_.endGesture(QStringLiteral("改变大小"));
      break;
    case Drag::Band:
      document_.endGesture(QStringLiteral("带区高度"));
      break;
    case Drag::Insert:
      insertAt(QRectF(from_, to_).normalized());
      break;
    default:
      break;
  }
  viewport()->update();
}

report::Item DesignCanvas::takePattern() {
  viewport()->unsetCursor();
  return *std::exchange(pattern_, std::nullopt);
}

void DesignCanvas::insertAt(const QRectF& area) {
  const Place* place = placeAt(area.topLeft());
  report::Item item = takePattern();
  if (!place) return;
  item.x = std::max(0.0, snap((area.x() - place->ground.x()) / scale_));
  item.y = std::max(0.0, snap((area.y() - place->ground.y()) / scale_));
  if (area.width() > 4 || area.height() > 4) {
    item.width = snap(area.width() / scale_);
    item.height = snap(area.height() / scale_);
  }
  document_.add(place->band, std::move(item));
}

void DesignCanvas::dropped(const QString& content, const QPointF& at) {
  const Place* place = placeAt(at);
  if (!place || content.isEmpty()) return;
  report::Item item = textFor(content);
  item.x = std::max(0.0, snap((at.x() - place->ground.x()) / scale_));
  item.y = std::max(0.0, snap((at.y() - place->ground.y()) / scale_));
  document_.add(place->band, std::move(item));
}

void DesignCanvas::showCursor(const QPointF& at) {
  using namespace design_canvas_detail;
  if (pattern_) return viewport()->setCursor(Qt::CrossCursor);
  if (const int handle = handleAt(at); handle >= 0) return viewport()->setCursor(handleCursor(handle));
  if (itemAt(at)) return viewport()->setCursor(Qt::SizeAllCursor);
  if (edgeAt(at) >= 0) return viewport()->setCursor(Qt::SizeVerCursor);
  viewport()->unsetCursor();
}

void DesignCanvas::drawBack() {
  if (drag_ != Drag::None) document_.cancelGesture();
  drag_ = Drag::None;
  pattern_.reset();
  viewport()->unsetCursor();
  viewport()->update();
}

// --- Keys ---

void DesignCanvas::keyPressEvent(QKeyEvent* event) {
  const bool control = event->modifiers() & Qt::ControlModifier, shift = event->modifiers() & Qt::ShiftModifier;
  const double step = control || step_ == 0 ? 0.1 : step_;
  const auto arrow = [&](double dx, double dy) {
    if (shift)
      document_.growBy(dx, dy, QStringLiteral("grow"));
    else
      document_.moveBy(dx, dy, QStringLiteral("move"));
    if (!document_.chosen().empty()) scrollTo(document_.chosen().back());
  };
  switch (event->key()) {
    case Qt::Key_Left:
      return arrow(-step, 0);
    case Qt::Key_Right:
      return arrow(step, 0);
    case Qt::Key_Up:
      return arrow(0, -step);
    case Qt::Key_Down:
      return arrow(0, step);
    case Qt::Key_Delete:
      return document_.removeChosen();
    case Qt::Key_F2:
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (pattern_ && drag_ == Drag::None) {
        const int band = document_.bandForNew();
        return document_.add(band, takePattern());
      }
      if (editContent_ && !document_.chosen().empty()) editContent_();
      return;
    case Qt::Key_Escape:
      // One thing at a time: what is under way, then the choice, then the window.
      if (drag_ != Drag::None || pattern_) return drawBack();
      if (!document_.chosen().empty()) return document_.chooseBand(document_.chosenBand());
      break;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown: {
      QScrollBar* bar = verticalScrollBar();
      return bar->setValue(bar->value() + (event->key() == Qt::Key_PageUp ? -1 : 1) * bar->pageStep());
    }
    default:
      break;
  }
  event->ignore();  // the screen's commands
}

bool DesignCanvas::focusNextPrevChild(bool next) {
  // Tab walks through the objects, and leaves behind the last one.
  const auto before = document_.chosen();
  document_.chooseNext(next ? 1 : -1);
  const auto& now = document_.chosen();
  if (!now.empty() && (before.empty() || (next ? before.back() < now.back() : now.back() < before.back()))) {
    scrollTo(now.back());
    return true;
  }
  return QAbstractScrollArea::focusNextPrevChild(next);
}

void DesignCanvas::resizeEvent(QResizeEvent*) {
  fits_ ? fitWidth() : rebuild();
}

}  // namespace jxc::ui
