// 页面视图: prepared pages one below the other: zoom, scrolling, places that a search has found.
#pragma once

#include "platform/report/pages.h"

#include <QAbstractScrollArea>
#include <QCache>
#include <QPixmap>

#include <functional>
#include <vector>

namespace jxc::ui {

class PageView : public QAbstractScrollArea {
 public:
  /// Fixed: as `setZoom` says.
  enum class Fit { Page, Width, Fixed };

  explicit PageView(QWidget* parent = nullptr);

  void setPages(const report::Pages& pages);
  const report::Pages& pages() const { return pages_; }

  /// 1 is as large as on paper; 0.1 to 8.
  void setZoom(double zoom);
  void setFit(Fit fit);
  Fit fit() const { return fit_; }
  double zoom() const { return zoom_; }
  /// To the next of the usual steps.
  void zoomStep(bool in);

  /// From 0.
  int currentPage() const { return current_; }
  void goToPage(int page);
  /// The arrows, page and end keys; false for other keys.
  bool scrollByKey(int key);

  void setHits(std::vector<report::Pages::Hit> hits);
  const std::vector<report::Pages::Hit>& hits() const { return hits_; }
  /// Brings one of them into sight; -1: none is the one.
  void showHit(int index);
  int shownHit() const { return hit_; }

  void onPageChanged(std::function<void()> hook) { pageChanged_ = std::move(hook); }
  void onZoomChanged(std::function<void()> hook) { zoomChanged_ = std::move(hook); }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;

 private:
  double scale() const;            // pixels a millimetre
  QRect pageRect(int page) const;  // in the viewport
  void arrange();
  void fitZoom();
  void followScroll();
  void paintPage(QPainter& painter, int page, const QRect& place);

  report::Pages pages_;
  Fit fit_ = Fit::Width;
  double zoom_ = 1;
  int current_ = 0;
  std::vector<int> tops_;  // of each page, and behind the last one
  int widest_ = 0;
  QCache<int, QPixmap> drawn_{64 << 10};  // kilobytes
  std::vector<report::Pages::Hit> hits_;
  int hit_ = -1;
  QPoint grabbed_;
  std::function<void()> pageChanged_, zoomChanged_;
};

}  // namespace jxc::ui
