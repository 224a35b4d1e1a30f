#include "app/screenshots.h"

#include "core/clock.h"
#include "core/data_module.h"
#include "core/look.h"
#include "core/screens/loading.h"
#include "core/screens/login.h"
#include "core/screens/main_form.h"
#include "core/session.h"
#include "ui/display.h"
#include "ui/enquiry_screen.h"
#include "ui/field.h"
#include "ui/grid.h"
#include "ui/skin.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QLabel>
#include <QMessageBox>
#include <QPixmap>
#include <QPushButton>
#include <QRegularExpression>
#include <QScreen>
#include <QTabWidget>
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

/// What stands in a button, a box or a label and is wider than it.
void tellCutWords(QWidget& window) {
  const auto tell = [&](const QWidget& part, const QString& words, int room) {
    const int wanted = part.fontMetrics().horizontalAdvance(QString(words).remove(u'&'));
    if (wanted > room)
      std::fprintf(stderr, "%s: %s is cut (%d of %d)\n", qPrintable(window.objectName()), qPrintable(words), room,
                   wanted);
  };
  for (const QAbstractButton* button : window.findChildren<QAbstractButton*>())
    // What shows an icon alone keeps its words for who cannot see it.
    if (button->isVisible() && !button->text().isEmpty() && button->icon().isNull())
      tell(*button, button->text(), button->width());
  for (const QLabel* label : window.findChildren<QLabel*>())
    if (label->isVisible() && !label->wordWrap() && label->textFormat() != Qt::RichText)
      for (const QString& line : label->text().split(u'\n'))
        tell(*label, line, label->width());
}

/// A screen as it opens, and the further panels that it has.
bool saveWithPanels(ui::Screen& screen, const QDir& folder, const QString& name) {
  bool fine = true;
  auto* tabs = screen.findChild<QTabWidget*>();
  const int panels = tabs ? tabs->count() : 1;
  for (int panel = 0; panel < panels; ++panel) {
    if (tabs && !tabs->isTabVisible(panel)) continue;  // not offered by the parameters
    if (panel > 0) tabs->setCurrentIndex(panel);
    settle();
    for (QWidget* part : screen.findChildren<QWidget*>())  // also those of a list that stands in a panel
      if (auto* grid = dynamic_cast<ui::Grid*>(part)) grid->waitLoaded();
    fine = save(screen, folder, panel == 0 ? name : name + u'_' + QString::number(panel + 1)) && fine;
    tellCutWords(screen);
  }
  return fine;
}

// A screen that has something to say at its activation must not stop the pictures.
void closeBoxes() {
  if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
    std::fprintf(stderr, "closed: %s\n", qPrintable(box->text()));
    box->reject();
  }
}

void openAccount(const Pictures& pictures) {
  if (pictures.account.isEmpty()) return openDemonstration(pictures.size);
  dataModule().installAccountDb(openSqlite(pictures.account));
  session() = Session{};
  session().a_name = QStringLiteral("admin");
  session().a_sn = session().r_sn = QString::fromUtf16(builtInSn);
  loadSession();
}

void askForAYear(ui::EnquiryScreen& screen, const ui::EnquiryTab& tab) {
  const QDate first = clock::now().date().addYears(-1).addDays(1);
  for (const ui::Criterion& each : tab.criteria)
    if (each.asks == ui::Asks::From)
      screen.field(each.name).setText(
          first.toString(each.months ? QStringLiteral("yyyy-MM") : QStringLiteral("yyyy-MM-dd")));
}

/// Each list, and its chart.
bool saveViews(ui::EnquiryScreen& screen, const QDir& folder, const Pictures& pictures) {
  bool fine = true;
  for (const ui::EnquiryTab& tab : screen.enquiry().tabs) {
    if (!pictures.account.isEmpty()) askForAYear(screen, tab);
    for (const ui::EnquiryView& view : tab.views) {
      screen.showView(view.grid.name);
      screen.search();
      for (ui::Grid* grid : screen.grids())
        grid->waitLoaded();
      for (const bool turn : {false, true}) {
        if (turn && view.chart.label.empty()) break;
        if (turn) screen.command("btn_Chart").click();
        const bool isDrawn = !view.page && screen.shown().isHidden();
        fine = save(screen, folder,
                    ui::qs(screen.enquiry().name) + u'.' + ui::qs(view.grid.name) +
                        (isDrawn ? QStringLiteral(".chart") : QString())) &&
               fine;
      }
    }
  }
  return fine;
}

}  // namespace screenshots_detail

int takeScreenshots(const Pictures& pictures) {
  using namespace screenshots_detail;
  const QDir folder(pictures.folder);
  if (!folder.mkpath(QStringLiteral("."))) {
    std::fprintf(stderr, "cannot make %s\n", qPrintable(pictures.folder));
    return 1;
  }
  openAccount(pictures);
  if (!ui::applySkin(pictures.skin)) {
    std::fprintf(stderr, "no skin %s\n", qPrintable(pictures.skin));
    return 1;
  }
  saveOperatorSkin(pictures.skin);  // the screen of looks shows and applies the operator's own
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, [] { closeBoxes(); });
  watch.start(100);
  bool fine = true;
  const QSize display = QGuiApplication::primaryScreen()->availableSize();
  if (pictures.screens.isEmpty()) {
    TF_Loading splash;
    splash.present();
    fine = save(splash, folder, QStringLiteral("F_Loading")) && fine;
    splash.hide();
    TF_Login login;
    login.present();
    fine = save(login, folder, QStringLiteral("F_Login")) && fine;
    login.hide();
    TF_MainForm mainForm;
    mainForm.resize(display);
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
  const QRegularExpression wanted(QRegularExpression::anchoredPattern(pictures.screens));
  for (const auto& name : ui::registeredScreens()) {
    if (!pictures.screens.isEmpty() && !wanted.match(ui::qs(name)).hasMatch()) continue;
    try {
      auto& screen = ui::screenNamed(name);
      screen.present();
      if (!screen.grids().empty()) screen.resize(display - QSize(16, 40));  // its frame and title
      const QString picture = QString::fromStdString(name);
      if (auto* enquiry = dynamic_cast<ui::EnquiryScreen*>(&screen))
        fine = save(screen, folder, picture) && saveViews(*enquiry, folder, pictures) && fine;
      else
        fine = saveWithPanels(screen, folder, picture) && fine;
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
