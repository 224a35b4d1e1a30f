// 程序入口: options, one instance a machine, splash, main window, event loop.
#include "app/screenshots.h"
#include "core/build_info.h"
#include "core/data_module.h"
#include "core/screens/loading.h"
#include "core/screens/main_form.h"
#include "core/startup.h"
#include "ui/application.h"
#include "ui/screen.h"

#include <QCommandLineParser>
#include <QDir>
#include <QLockFile>
#include <QTimer>

#include <cstdio>

namespace {

int showProgram(jxc::ui::Application& application) {
  jxc::TF_Loading([] { jxc::createFirstAccountSet(); }).showModal();
  jxc::TF_MainForm mainForm;
  // From here on failures end in the application's handler: the loop runs.
  QTimer::singleShot(0, &mainForm, [&] {
    jxc::dataModule().openAccountDb(QStringLiteral("jxc.mdb"));
    if (!mainForm.formShow()) QCoreApplication::quit();
  });
  const int code = application.exec();
  jxc::ui::dropScreens();
  return code;
}

}  // namespace

int main(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    if (std::string_view(argv[i]) == "--screenshot" && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
      qputenv("QT_QPA_PLATFORM", "offscreen");
    }
  }
  QCoreApplication::setApplicationName(QStringLiteral("jxc"));
  QCoreApplication::setApplicationVersion(QString::fromUtf16(jxc::build::version));
  jxc::ui::Application application(argc, argv);
  application.setQuitOnLastWindowClosed(false);

  QCommandLineParser options;
  options.setApplicationDescription(QString::fromUtf16(jxc::build::programName));
  options.addHelpOption();
  options.addVersionOption();
  options.addOption(
      {QStringLiteral("home"), QStringLiteral("program directory: data, report, Layout …"), QStringLiteral("DIR")});
  options.addOption({QStringLiteral("screenshot"),
                     QStringLiteral("no window: pictures of the screens with demonstration data into DIR"),
                     QStringLiteral("DIR")});
  options.process(application);

  jxc::setProgramDirectory(jxc::findProgramDirectory(application.arguments(), QCoreApplication::applicationDirPath()));
  if (options.isSet(QStringLiteral("screenshot"))) {
    return jxc::takeScreenshots(options.value(QStringLiteral("screenshot")));
  }

  // A second start while one runs shows nothing and changes nothing.
  QLockFile instance(QDir::temp().filePath(QStringLiteral("qcqcjxc.lock")));
  instance.setStaleLockTime(0);
  if (!instance.tryLock(0)) return 0;
  return showProgram(application);
}
