#include "ui/designer/live_preview.h"

#include "platform/report/report.h"
#include "ui/skin.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace jxc::ui {

namespace live_preview_detail {
constexpr int kPause = 250;  // milliseconds after the last edit: typing stays quick
}  // namespace live_preview_detail

/// One page, as wide as there is room.
class LivePreview::Paper : public QWidget {
 public:
  explicit Paper(LivePreview& owner) : owner_(owner) {
    setObjectName(u"livePage"_qs);
    setAccessibleName(u"预览页"_qs);
  }
  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override {
    if (owner_.pages_.isEmpty()) return 60;
    const QSizeF size = owner_.pages_.size(std::min(owner_.page_, owner_.pages_.count() - 1));
    return static_cast<int>(width * size.height() / size.width());
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.fillRect(rect(), Qt::white);
    if (owner_.pages_.isEmpty()) return;
    painter.setRenderHint(QPainter::Antialiasing);
    owner_.pages_.paint(painter, owner_.page_, width() / owner_.pages_.size(owner_.page_).width());
  }

 private:
  LivePreview& owner_;
};

LivePreview::LivePreview(DesignDocument& document, QWidget* parent) : QWidget(parent), document_(document) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(2);
  auto* line = new QHBoxLayout;
  auto* title = new QLabel(u"即时预览"_qs);
  title->setProperty("heading", true);
  place_ = new QLabel;
  back_ = new QToolButton;
  back_->setArrowType(Qt::LeftArrow);
  back_->setAccessibleName(u"上一页"_qs);
  on_ = new QToolButton;
  on_->setArrowType(Qt::RightArrow);
  on_->setAccessibleName(u"下一页"_qs);
  line->addWidget(title);
  line->addStretch();
  line->addWidget(back_);
  line->addWidget(place_);
  line->addWidget(on_);
  paper_ = new Paper(*this);
  auto* area = new QScrollArea;
  area->setWidgetResizable(true);
  area->setFocusPolicy(Qt::NoFocus);
  auto* holder = new QWidget;
  auto* column = new QVBoxLayout(holder);
  column->setContentsMargins(6, 6, 6, 6);
  column->addWidget(paper_);
  column->addStretch();
  area->setWidget(holder);
  faults_ = new QLabel;
  faults_->setObjectName(u"faults"_qs);
  faults_->setWordWrap(true);
  faults_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  faults_->hide();
  layout->addLayout(line);
  layout->addWidget(area, 1);
  layout->addWidget(faults_);
  connect(back_, &QToolButton::clicked, this, [this] { turn(-1); });
  connect(on_, &QToolButton::clicked, this, [this] { turn(1); });
  timer_.setSingleShot(true);
  connect(&timer_, &QTimer::timeout, this, [this] { refresh(); });
  document_.onChanged([this] { later(); });
  setMaker({});
}

void LivePreview::setMaker(Maker maker) {
  maker_ = maker ? std::move(maker) : [](const report::Template& t) { return report::sampleReport(t).prepare(); };
  stale_ = true;
  timer_.start(0);
}

const report::Pages& LivePreview::pages() {
  if (stale_ || !(shown_ == document_.current())) refresh();
  return pages_;
}

void LivePreview::later() {
  if (!stale_ && shown_ == document_.current()) return;  // only another choice
  stale_ = true;
  timer_.start(live_preview_detail::kPause);
}

void LivePreview::refresh() {
  timer_.stop();
  stale_ = false;
  shown_ = document_.current();
  pages_ = maker_(shown_);
  page_ = std::clamp(page_, 0, std::max(0, pages_.count() - 1));
  turn(0);
  QStringList lines;
  for (const auto& fault : pages_.faults()) {
    if (lines.size() == 4) {
      lines << u"……还有 %1 处"_qs.arg(pages_.faults().size() - 4);
      break;
    }
    lines << u"%1：%2　%3"_qs.arg(fault.where, fault.content, fault.message);
  }
  faults_->setText(lines.join(u'\n'));
  faults_->setStyleSheet(u"color:%1"_qs.arg(skinColour(u"bad"_qs).name()));
  faults_->setVisible(!lines.isEmpty());
}

void LivePreview::turn(int step) {
  const int count = std::max(1, pages_.count());
  page_ = std::clamp(page_ + step, 0, count - 1);
  place_->setText(u"%1 / %2"_qs.arg(page_ + 1).arg(count));
  back_->setEnabled(page_ > 0);
  on_->setEnabled(page_ + 1 < count);
  paper_->updateGeometry();
  paper_->update();
}

}  // namespace jxc::ui
