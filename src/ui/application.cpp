#include "ui/application.h"

#include "core/startup.h"
#include "ui/command_keys.h"
#include "ui/message_box_prompt.h"
#include "ui/skin.h"
#include "ui/typed_ahead.h"
#include "ui/waiting_notice.h"

#include <QEvent>
#include <QLibraryInfo>
#include <QLocale>
#include <QTimer>
#include <QTranslator>
#include <QWidget>

namespace jxc::ui {
namespace application_detail {

/// Copies object names into accessible descriptions.
class TestIds : public QObject {
 public:
  using QObject::QObject;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Show && watched->isWidgetType()) {
      auto* widget = static_cast<QWidget*>(watched);
      const QString name = widget->objectName();
      if (!name.isEmpty() && !name.startsWith(u"qt_") && widget->accessibleDescription().isEmpty()) {
        widget->setAccessibleDescription(u'#' + name);
      }
    }
    return false;
  }
};

void loadTexts(QApplication& application, const QString& name) {
  auto* texts = new QTranslator(&application);
  if (texts->load(name, QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
    application.installTranslator(texts);
  } else {
    delete texts;
  }
}

}  // namespace application_detail

std::function<void(int)>& processEnd() {
  static std::function<void(int)> end = [](int code) {
    // Out of every modal loop at once: nothing of a process without its account file may go on.
    QCoreApplication::exit(code);
    std::_Exit(code);
  };
  return end;
}

void tellFailure(const std::exception& failure) {
  const auto told = friendlyFailure(failure);
  MessageBoxPrompt().notice(told.text);
  if (told.fatal) processEnd()(1);
}

void doOrTell(const std::function<void()>& work) {
  try {
    work();
  } catch (const std::exception& failure) {
    tellFailure(failure);
  }
}

void doOrEnd(const std::function<void()>& work) {
  try {
    work();
  } catch (const std::exception& failure) {
    tellFailure(failure);
    processEnd()(1);
  }
}

Application::Application(int& argc, char** argv) : QApplication(argc, argv) {
  setUpLook(*this);
  showWaits();
  // The first filter is the last that is asked: whoever catches a scanner's keys comes before.
  installEventFilter(new CommandKeys(this));
  installNativeEventFilter(new TypedAhead(this));
}

bool Application::notify(QObject* receiver, QEvent* event) {
  try {
    return QApplication::notify(receiver, event);
  } catch (const std::exception& failure) {
    tellFailure(failure);
  }
  return true;
}

void raiseProgram() {
  QWidget* front = QApplication::activeModalWidget();
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (!window->isVisible() || !window->isWindow()) continue;
    if (window->isMinimized()) window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
    if (!front && (window->windowType() == Qt::Window || window->windowType() == Qt::Dialog)) front = window;
  }
  if (!front) return;
  front->raise();
  front->activateWindow();
}

void setUpLook(QApplication& application) {
  QLocale::setDefault(QLocale(QLocale::Chinese, QLocale::China));
  application_detail::loadTexts(application, QStringLiteral("qtbase_zh_CN"));
  setUpTestIds(application);
  applySkin(QString::fromUtf16(usualSkin));
}

void setUpTestIds(QApplication& application) {
  if (qEnvironmentVariable("JXC_TEST_IDS") != u"1") return;
  application.setAttribute(Qt::AA_DontUseNativeDialogs);
  application.installEventFilter(new application_detail::TestIds(&application));
}

}  // namespace jxc::ui
