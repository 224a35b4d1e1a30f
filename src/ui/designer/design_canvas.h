// 画布: the template to see and to touch: bands below each other, rulers, grid, zoom; choose, move, resize by mouse and
// keys.
#pragma once

#include "ui/designer/design_document.h"

#include <QAbstractScrollArea>

#include <functional>
#include <optional>

namespace jxc::ui {

class DesignCanvas : public QAbstractScrollArea {
 public:
  explicit DesignCanvas(DesignDocument& document, QWidget* parent = nullptr);

  /// 0.25 to 8; 1 is the size of the paper. Until it is set, the paper fills the width there is.
  void setZoom(double zoom);
  double zoom() const { return zoom_; }
  void fitWidth();
  /// Distance of the dots in millimetres; 0 lets objects stand anywhere.
  void setGridStep(double millimetres);
  double gridStep() const { return step_; }

  /// The next press or drag makes this object, Enter puts it into the chosen band. Esc takes it back.
  void beginInsert(report::Item pattern);
  bool isInserting() const { return pattern_.has_value(); }

  /// Where an object, a band, one of its handles is seen, in the viewport: for tests and for drivers of the window.
  QRect itemRect(ItemRef ref) const;
  QRect bandRect(int band) const;
  void scrollTo(ItemRef ref);

  /// Double click, Enter and F2 on an object: its words are to be edited.
  void onEditContent(std::function<void()> hook) { editContent_ = std::move(hook); }
  void onZoomed(std::function<void()> hook) { zoomed_ = std::move(hook); }
  /// Words dropped from the list of fields and variables: "[khName]".
  static report::Item textFor(const QString& content);

 protected:
  bool viewportEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool focusNextPrevChild(bool next) override;

 private:
  struct Place {
    int band;
    QRectF strip, ground;  // content pixels, unscrolled
  };
  enum class Drag : std::uint8_t { None, Pending, Move, Resize, Band, Rubber, Insert };

  void rebuild();
  void takeZoom(double zoom);
  void paintCanvas();
  void paintBand(QPainter& painter, const Place& place) const;
  void paintItem(QPainter& painter, const report::Item& item, const QRectF& at) const;
  void paintText(QPainter& painter, const report::Item& item, const QRectF& at) const;
  void paintChosen(QPainter& painter) const;
  void paintRulers(QPainter& painter) const;
  void pressed(QMouseEvent& event);
  void moved(QMouseEvent& event);
  void released(QMouseEvent& event);
  void dropped(const QString& content, const QPointF& at);
  void drawBack();
  void showCursor(const QPointF& at);
  report::Item takePattern();
  void insertAt(const QRectF& area);

  QPointF toContent(const QPointF& viewport) const;
  QRectF toViewport(const QRectF& content) const;
  const Place* placeAt(const QPointF& content) const;
  const Place* placeOf(int band) const;
  QRectF contentRect(ItemRef ref) const;
  std::optional<ItemRef> itemAt(const QPointF& content) const;
  int handleAt(const QPointF& content) const;  // -1: none; else one of eight of the leading object
  int edgeAt(const QPointF& content) const;    // band whose lower border is there; -1
  double snap(double millimetres) const;

  DesignDocument& document_;
  std::vector<Place> places_;
  double zoom_ = 1, scale_ = 4, step_ = 1;
  bool fits_ = true;  // the width of the paper follows that of the window
  std::optional<report::Item> pattern_;

  Drag drag_ = Drag::None;
  QPointF from_, to_;  // of a drag, content pixels
  int handle_ = -1, dragBand_ = -1;
  bool copies_ = false, free_ = false;
  std::vector<ItemRef> before_;
  std::vector<report::Item> beforeItems_;
  std::function<void()> editContent_, zoomed_;
};

}  // namespace jxc::ui
