#include "core/screens/loading.h"

#include "core/build_info.h"
#include "ui/icons.h"
#include "ui/skin.h"

#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

namespace jxc {
namespace loading_detail {

constexpr ui::ScreenSpec kScreen = {.name = "F_Loading", .title = "启动"};

}  // namespace loading_detail

TF_Loading::TF_Loading(std::function<void()> prepare) : Screen(loading_detail::kScreen), prepare_(std::move(prepare)) {
  setWindowFlag(Qt::FramelessWindowHint);
  setWindowTitle(QString::fromUtf16(build::programName));
  setMinimumSize(460, 240);
  auto* inside = new QWidget(this);
  auto* layout = new QVBoxLayout(inside);
  layout->setContentsMargins(36, 28, 36, 20);
  auto* picture = new QLabel(inside);
  picture->setPixmap(ui::icon("glasses").pixmap(72, 72));
  auto* title = new QLabel(QString::fromUtf16(build::programName), inside);
  title->setProperty("title", true);
  auto* version = new QLabel(QString::fromUtf16(build::version), inside);
  lMsg = new QLabel(inside);
  lMsg->setObjectName(QStringLiteral("lMsg"));
  layout->addWidget(picture);
  layout->addWidget(title);
  layout->addWidget(version);
  layout->addStretch(1);
  layout->addWidget(lMsg);
  panel().widget(inside, 1);
  Timer1.setInterval(1000);
  connect(&Timer1, &QTimer::timeout, this, [this] { tick(); });
}

void TF_Loading::activate() {
  phase_ = 1;
  prepared_ = wantedEarly_ = false;
  lMsg->setText(QStringLiteral("正在装载系统......"));
  Timer1.start();
  // Behind the first picture: the operator shall see the splash before the work begins.
  QTimer::singleShot(30, this, [this] {
    if (prepare_) prepare_();
    prepared_ = true;
    if (wantedEarly_) endEarly();
  });
}

void TF_Loading::tick() {
  if (phase_ == 1) {
    lMsg->setText(QStringLiteral("正在设置环境参数......"));
  } else if (phase_ == 2) {
    lMsg->setText(QStringLiteral("系统即将启动......"));
  } else if (prepared_) {
    Timer1.stop();
    accept();
  }
  ++phase_;
}

void TF_Loading::endEarly() {
  wantedEarly_ = true;
  if (!prepared_) return;
  Timer1.stop();
  accept();
}

bool TF_Loading::mayLeave() {
  endEarly();
  return false;
}

void TF_Loading::keyPressEvent(QKeyEvent*) {
  endEarly();
}
void TF_Loading::mousePressEvent(QMouseEvent*) {
  endEarly();
}

void TF_Loading::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), palette().color(QPalette::Base));
  painter.fillRect(0, 0, 6, height(), ui::skinColour(QStringLiteral("accent")));
  painter.setPen(palette().color(QPalette::Mid));
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

}  // namespace jxc
