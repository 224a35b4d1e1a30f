#include "app/screenshots.h"

#include "app/demonstration.h"
#include "core/look.h"
#include "core/screens/loading.h"
#include "core/screens/login.h"
#include "core/screens/main_form.h"
#include "ui/screen.h"
#include "ui/skin.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QPixmap>
#include <QTimer>

#include <cstdio>
#include <string>

namespace jxc {
namespace screenshots_detail {

void settle(int milliseconds = 60) {
  QElapsedTimer passed;
  passed.start();
  do
    QApplication::processEvents(QEventLoop::AllEvents, 10);
  while (passed.elapsed() < milliseconds);
}

bool save(QWidget& window, const QDir& folder, const QString& name) {
  settle();
  const QString file = folder.filePath(name + QStringLiteral(".png"));
  if (window.grab().save(file)) return true;
  std::fprintf(stderr, "cannot write %s\n", qPrintable(file));
  return false;
}

// A screen that has something to say at its activation must not stop the pictures.
void closeBoxes() {
  if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
    std::fprintf(stderr, "closed: %s\n", qPrintable(box->text()));
    box->reject();
  }
}

}  // namespace screenshots_detail

int takeScreenshots(const QString& folderName, const QString& skin) {
  using namespace screenshots_detail;
  const QDir folder(folderName);
  if (!folder.mkpath(QStringLiteral("."))) {
    std::fprintf(stderr, "cannot make %s\n", qPrintable(folderName));
    return 1;
  }
  openDemonstration();
  if (!ui::applySkin(skin)) {
    std::fprintf(stderr, "no skin %s\n", qPrintable(skin));
    return 1;
  }
  saveOperatorSkin(skin);  // the screen of looks shows and applies the operator's own
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, [] { closeBoxes(); });
  watch.start(100);
  bool fine = true;
  {
    TF_Loading splash;
    splash.present();
    fine = save(splash, folder, QStringLiteral("F_Loading")) && fine;
    splash.hide();
    TF_Login login;
    login.present();
    fine = save(login, folder, QStringLiteral("F_Login")) && fine;
    login.hide();
    TF_MainForm mainForm;
    mainForm.resize(1280, 720);
    mainForm.formActivate();
    for (const auto& page : ui::pages()) {
      mainForm.showPage(page.page);
      fine = save(mainForm, folder,
                  QStringLiteral("F_MainForm_") +
                      QString::fromUtf8(page.tab.data(), static_cast<qsizetype>(page.tab.size()))) &&
             fine;
    }
    mainForm.hide();
  }
  for (const auto& name : ui::registeredScreens()) {
    try {
      auto& screen = ui::screenNamed(name);
      screen.present();
      // What a usual small display shows: the off-screen one is smaller still.
      if (!screen.grids().empty()) screen.resize(1264, 680);
      for (auto* grid : screen.grids()) {
        grid->waitLoaded();
      }
      fine = save(screen, folder, QString::fromStdString(name)) && fine;
      screen.hide();
    } catch (const std::exception& failure) {
      std::fprintf(stderr, "%s: %s\n", name.c_str(), failure.what());
      fine = false;
    }
  }
  ui::dropScreens();
  return fine ? 0 : 1;
}

}  // namespace jxc
