#include "app/measurement.h"

#include "ui/grid.h"
#include "ui/screen.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QTimer>

#include <chrono>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

namespace jxc {
namespace measurement_detail {

long residentKilobytes() {
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;)
    if (word == "VmRSS:") {
      long kilobytes = 0;
      status >> kilobytes;
      return kilobytes;
    }
  return 0;
}

/// Sees each window of the start painted for the first time, and acts as an impatient operator would.
class Watch final : public QObject {
 public:
  Watch(long long started, bool catalogue) : QObject(qApp), started_(started), catalogue_(catalogue) {
    tell("application");
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint && next_ < kWindows.size() && watched->isWidgetType()) {
      auto* window = static_cast<QWidget*>(watched);
      if (window->isWindow() && window->objectName() == QLatin1String(kWindows[next_].object)) {
        const Step& step = kWindows[next_++];
        // Behind this paint and what else is due: then the window stands and takes the next key.
        QTimer::singleShot(0, this, [this, &step, window] {
          tell(step.name);
          (this->*step.act)(window);
        });
      }
    }
    return false;
  }

 private:
  struct Step {
    const char* object;
    const char* name;
    void (Watch::*act)(QWidget* window);
  };
  static const std::vector<Step> kWindows;

  void tell(const char* milestone) const {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    const auto passed = std::chrono::duration_cast<std::chrono::nanoseconds>(now).count() - started_;
    std::printf("%s\t%.1f\t%ld\n", milestone, static_cast<double>(passed) / 1e6, residentKilobytes());
    std::fflush(stdout);
  }

  void endSplash(QWidget* window) {
    QCoreApplication::postEvent(window, new QKeyEvent(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier));
  }

  void logIn(QWidget* window) {
    tell("confirmed");
    if (auto* button = window->findChild<QAbstractButton*>(QStringLiteral("btnOK"))) button->click();
  }

  void finish(QWidget*) {
    if (catalogue_) {
      ui::Screen& list = ui::screenNamed("F_Spxxgl");
      list.present();
      for (auto* grid : list.grids())
        grid->waitLoaded();
      list.repaint();  // and nothing else: reminders of the start may be due
      tell("catalogue");
    }
    std::fflush(stdout);
    // Not the way out of the program, which would ask: everything was only looked at.
    std::_Exit(0);
  }

  const long long started_;
  const bool catalogue_;
  std::size_t next_ = 0;
};

const std::vector<Watch::Step> Watch::kWindows = {{"F_Loading", "splash", &Watch::endSplash},
                                                  {"F_Login", "login", &Watch::logIn},
                                                  {"F_MainForm", "window", &Watch::finish}};

}  // namespace measurement_detail

void measureStart() {
  const QByteArray wanted = qgetenv("JXC_MEASURE");
  if (wanted.isEmpty()) return;
  const QList<QByteArray> words = wanted.split(',');
  qApp->installEventFilter(
      new measurement_detail::Watch(words.first().toLongLong(), words.contains(QByteArray("catalogue"))));
}

}  // namespace jxc
