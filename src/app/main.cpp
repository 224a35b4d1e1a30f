// 程序入口: options, one instance a machine, splash, main window, event loop.
#include "app/measurement.h"
#include "app/screenshots.h"
#include "core/build_info.h"
#include "core/data_module.h"
#include "core/screens/loading.h"
#include "core/screens/main_form.h"
#include "core/startup.h"
#include "engine/sheet_export.h"
#include "output/templates.h"
#include "platform/sheet/row_export.h"
#include "platform/single_instance.h"
#include "ui/application.h"
#include "ui/message_box_prompt.h"
#include "ui/screen.h"
#include "ui/skin.h"

#include <QCommandLineParser>
#include <QDir>
#include <QTemporaryFile>
#include <QTimer>

#include <algorithm>
#include <span>
#include <string_view>

namespace {

bool onlyTells(int argc, char** argv) {
  return std::any_of(argv + 1, argv + argc, [](std::string_view option) {
    return option == "--help" || option == "-h" || option == "--version" || option == "-v";
  });
}

/// Pictures are taken on a display in memory: of the smallest size that the program is made for, or of that of
/// `--display`, seen through QT_SCALE_FACTOR where that is set. Another one can be asked for by QT_QPA_PLATFORM.
void useDisplayOfPictures(std::span<char*> words) {
  if (const QByteArray wanted = qgetenv("QT_QPA_PLATFORM"); !wanted.isEmpty() && wanted != "offscreen") return;
  static QTemporaryFile description(QDir::temp().filePath(QStringLiteral("jxc-display-XXXXXX.json")));
  if (!description.open()) return;
  QSize display(1280, 720);
  const auto option =
      std::ranges::find(words, std::string_view("--display"), [](char* word) { return std::string_view(word); });
  if (option != words.end() && option + 1 != words.end()) {
    const QStringList sides = QString::fromLocal8Bit(*(option + 1)).split(u'x');
    const QSize wanted(sides.value(0).toInt(), sides.value(1).toInt());
    if (wanted.width() >= 640 && wanted.height() >= 480) display = wanted;
  }
  display *= std::max(1.0, qgetenv("QT_SCALE_FACTOR").toDouble());
  description.write(QStringLiteral(R"({"screens":[{"name":"picture","x":0,"y":0,"width":%1,"height":%2,)"
                                   R"("logicalDpi":96,"logicalBaseDpi":96,"dpr":1}]})")
                        .arg(display.width())
                        .arg(display.height())
                        .toUtf8());
  description.flush();
  qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + description.fileName().toLocal8Bit());
}

int showProgram(jxc::ui::Application& application) {
  jxc::measureStart();
  jxc::TF_Loading([] { jxc::ui::doOrEnd([] { jxc::createFirstAccountSet(); }); }).showModal();
  jxc::TF_MainForm mainForm;
  QTimer::singleShot(0, &mainForm, [&] {
    jxc::ui::doOrEnd([&] {
      jxc::dataModule().openAccountDb(QStringLiteral("jxc.mdb"));
      for (const QString& remark : jxc::accountDb().openingRemarks())
        jxc::ui::MessageBoxPrompt().notice(remark);
      if (!mainForm.formShow()) QCoreApplication::quit();
    });
  });
  const int code = application.exec();
  jxc::ui::dropScreens();
  return code;
}

}  // namespace

int main(int argc, char** argv) {
  const std::span<char*> words(argv, static_cast<std::size_t>(argc));
  if (std::ranges::find(words, std::string_view("--screenshot"), [](char* word) { return std::string_view(word); }) !=
      words.end()) {
    useDisplayOfPictures(words);
  }
  QCoreApplication::setApplicationName(QStringLiteral("jxc"));
  QCoreApplication::setApplicationVersion(QString::fromUtf16(jxc::build::version));
  QCommandLineParser options;
  options.setApplicationDescription(QString::fromUtf16(jxc::build::programName));
  options.addHelpOption();
  options.addVersionOption();
  options.addOption(
      {QStringLiteral("home"), QStringLiteral("program directory: data, report, Layout …"), QStringLiteral("DIR")});
  options.addOption({QStringLiteral("screenshot"),
                     QStringLiteral("no window: pictures of the screens with demonstration data into DIR"),
                     QStringLiteral("DIR")});
  options.addOption({QStringLiteral("display"), QStringLiteral("size of the display of the pictures (1280x720)"),
                     QStringLiteral("SIZE")});
  options.addOption({QStringLiteral("large"),
                     QStringLiteral("pictures of a shop with twenty thousand goods, long names and documents begun")});
  options.addOption({QStringLiteral("skin"), QStringLiteral("look of the pictures"), QStringLiteral("NAME"),
                     QString::fromUtf16(jxc::ui::usualSkin)});
  options.addOption({QStringLiteral("account"), QStringLiteral("account set of the pictures, asked for a year"),
                     QStringLiteral("FILE")});
  options.addOption({QStringLiteral("screens"), QStringLiteral("only pictures of these: 'F_Sp.*|F_Rbyb'"),
                     QStringLiteral("PATTERN")});
  if (onlyTells(argc, argv)) {  // needs no display
    const QCoreApplication teller(argc, argv);
    options.process(teller);
    return 0;
  }
  jxc::ui::Application application(argc, argv);
  application.setQuitOnLastWindowClosed(false);
  options.process(application);

  jxc::setProgramDirectory(jxc::findProgramDirectory(application.arguments(), QCoreApplication::applicationDirPath()));
  jxc::bringTemplates();
  if (options.isSet(QStringLiteral("screenshot"))) {
    const auto size = options.isSet(QStringLiteral("large")) ? jxc::Demonstration::Large : jxc::Demonstration::Usual;
    return jxc::takeScreenshots({.folder = options.value(QStringLiteral("screenshot")),
                                 .skin = options.value(QStringLiteral("skin")),
                                 .account = options.value(QStringLiteral("account")),
                                 .size = size,
                                 .screens = options.value(QStringLiteral("screens"))});
  }

  jxc::setSheetExporter(jxc::sheetFiles());
  // A second start while one runs changes nothing, and brings that one to the front.
  jxc::SingleInstance instance(jxc::programPath(QStringLiteral("data/jxc.mdb")));
  if (!instance.isFirst()) {
    instance.callFirst();
    return 0;
  }
  instance.onSecondStart(jxc::ui::raiseProgram);
  return showProgram(application);
}
