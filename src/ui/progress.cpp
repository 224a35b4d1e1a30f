#include "ui/progress.h"

#include <QApplication>
#include <QProgressDialog>

namespace jxc::ui {

Progress::Progress(const QString& title, QWidget* parent, bool mayCancel)
    : dialog_(std::make_unique<QProgressDialog>(title, mayCancel ? QStringLiteral("取消") : QString(), 0, 100,
                                                parent ? parent : QApplication::activeWindow())) {
  dialog_->setObjectName(QStringLiteral("progress"));
  dialog_->setWindowTitle(QStringLiteral("请稍候"));
  dialog_->setWindowModality(Qt::ApplicationModal);
  dialog_->setMinimumDuration(300);
  dialog_->setAutoReset(false);
  dialog_->setAutoClose(false);
  dialog_->setValue(0);
}

Progress::~Progress() = default;

bool Progress::step(int percent) {
  if (percent != dialog_->value()) dialog_->setValue(percent);  // shows itself and runs the event loop
  // Until the bar is there nothing stands before the window: a second F5 would begin the command once more.
  const auto heard = dialog_->isVisible() ? QEventLoop::AllEvents : QEventLoop::ExcludeUserInputEvents;
  QApplication::processEvents(heard, 5);
  return !dialog_->wasCanceled();
}

void Progress::setText(const QString& text) {
  dialog_->setLabelText(text);
}

std::function<bool(int)> progressOnDemand(const QString& title, QWidget* parent) {
  return [title, bar = progressInWords(title, parent)](int percent) { return bar(percent, title); };
}

std::function<bool(int, const QString&)> progressInWords(const QString& title, QWidget* parent) {
  return [title, parent, bar = std::shared_ptr<Progress>()](int percent, const QString& doing) mutable {
    if (!bar) bar = std::make_shared<Progress>(title, parent);
    bar->setText(doing);
    const bool goOn = bar->step(percent);
    if (percent >= 100 || !goOn) bar.reset();
    return goOn;
  };
}

}  // namespace jxc::ui
