#include "core/screens/main_form.h"

#include "core/archive_look.h"
#include "core/at_work.h"
#include "core/build_info.h"
#include "core/clock.h"
#include "core/log.h"
#include "core/login.h"
#include "core/reading.h"
#include "core/screens/command_runner.h"
#include "core/screens/command_search.h"
#include "core/screens/command_tile.h"
#include "core/screens/login.h"
#include "core/screens/not_yet.h"
#include "core/session.h"
#include "core/start_reminders.h"
#include "maintenance/screens/backup_pane.h"
#include "statistics/screens/day_board.h"
#include "stock/ledger.h"
#include "ui/application.h"
#include "ui/display.h"
#include "ui/icons.h"
#include "ui/screen.h"
#include "ui/skin.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QDialog>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QStackedWidget>
#include <QUrl>
#include <QVBoxLayout>

namespace jxc {
namespace main_form_detail {

constexpr int kEcho = 500;        // ms
constexpr int kTypeAhead = 1200;  // ms until the next letter begins a new word

QPushButton* sideCommand(std::string_view name, const ui::CommandDefinition& command, QWidget* parent) {
  auto* button = new QPushButton(ui::icon(command.icon), ui::qs(command.caption), parent);
  button->setObjectName(ui::qs(name));
  button->setAutoDefault(false);
  button->setProperty("sideCommand", true);
  return button;
}

/// What the operator has no right to stands in grey and says why; pressed, it tells its refusal.
void showRight(QWidget& button, const ui::CommandDefinition& command) {
  const bool allowed = isAllowed(command);
  if (!allowed) button.setToolTip(refusalOf(command));
  button.setAccessibleDescription(allowed ? QString() : refusalOf(command));
  ui::setLook(button, "noRight", !allowed);
}

/// While one lives, the window's own screens come and go: it is not "active again" in between.
struct Busy {
  explicit Busy(bool& on) : flag(on), before(on) { flag = true; }
  ~Busy() { flag = before; }
  bool& flag;
  const bool before;  // the lock comes up over a screen, too
};

TF_MainForm*& theForm() {
  static TF_MainForm* form = nullptr;
  return form;
}

}  // namespace main_form_detail

void endAtLogin(std::function<void()> then) {
  if (TF_MainForm* const form = main_form_detail::theForm()) form->wantLogin(std::move(then));
}

void followBackupTimer() {
  if (TF_MainForm* const form = main_form_detail::theForm()) form->followTimer();
}

struct TF_MainForm::PagePart {
  ui::Page page;
  QPushButton* tab;
  QWidget* panel;
  QGridLayout* raster;
  std::vector<CommandTile*> tiles;
  std::vector<std::pair<QPushButton*, const ui::CommandDefinition*>> side;
};

MainFormHooks& mainFormHooks() {
  static MainFormHooks hooks;
  return hooks;
}

TF_MainForm::TF_MainForm() : idle([this] { lockScreen(); }), prompt_(this) {
  main_form_detail::theForm() = this;
  setObjectName(QStringLiteral("F_MainForm"));
  setWindowTitle(build::windowTitle());
  setMinimumSize(560, 320);
  // Whole on a small display too, with the frame and a task bar around it.
  const QSize room = screen() ? screen()->availableSize() - QSize(16, 48) : QSize(1180, 680);
  resize(QSize(1180, 680).boundedTo(room));

  auto* outer = new QVBoxLayout(this);
  outer->setContentsMargins(0, 0, 0, 0);
  outer->setSpacing(0);
  auto* middle = new QHBoxLayout;
  middle->setSpacing(0);
  stack_ = new QStackedWidget(this);
  auto* right = new QVBoxLayout;
  right->setContentsMargins(18, 12, 18, 12);
  auto* side = makeSideBar();
  day_ = new DayBoard(this, [this](std::string_view command) { run(command); });
  day_->onShown([this] { giveRoom(); });
  right->addWidget(makeHeader());
  right->addWidget(stack_, 1);
  right->addWidget(day_);
  middle->addWidget(side);
  middle->addLayout(right, 1);
  outer->addLayout(middle, 1);
  outer->addWidget(makeStatusBar());

  setCommandAction("btn_Hbgl", [this] { changeOperatorClick(); });
  setCommandAction("btn_Tcxt", [this] { close(); });

  Timer1.setSingleShot(true);
  Timer1.setInterval(200);
  connect(&Timer1, &QTimer::timeout, this, [this] { reminders(); });
  connect(&TimerBackUp, &QTimer::timeout, this, [] {
    if (mainFormHooks().backupDatabase) mainFormHooks().backupDatabase();
  });
  Timeremail.setSingleShot(true);
  Timeremail.setInterval(120000);
  connect(&Timeremail, &QTimer::timeout, this, [this] {
    if (locked_ || isArchiveInUse()) return Timeremail.start();  // sending shows a window: not over the lock
    if (mainFormHooks().sendMail) mainFormHooks().sendMail();
  });
  clockTimer_.setInterval(1000);
  connect(&clockTimer_, &QTimer::timeout, this, [this] {
    clockPane_->setText(clock::now().toString(QStringLiteral("yyyy-MM-dd HH:mm")));
    lookAtWork();
  });
  typedTimer_.setSingleShot(true);
  typedTimer_.setInterval(main_form_detail::kTypeAhead);
  connect(&typedTimer_, &QTimer::timeout, this, [this] { typed_.clear(); });
  showPage(ui::Page::Purchasing);
}

TF_MainForm::~TF_MainForm() {
  if (main_form_detail::theForm() == this) main_form_detail::theForm() = nullptr;
}

QWidget* TF_MainForm::makeSideBar() {
  auto* bar = new QWidget(this);
  bar->setObjectName(QStringLiteral("sideBar"));
  bar->setAttribute(Qt::WA_StyledBackground);
  auto* layout = new QVBoxLayout(bar);
  layout->setContentsMargins(0, 10, 0, 8);
  layout->setSpacing(0);
  auto* tabs = new QWidget(bar);
  tabs->setObjectName(QStringLiteral("pageTabs"));
  auto* tabLayout = new QVBoxLayout(tabs);
  tabLayout->setContentsMargins(0, 0, 0, 0);
  tabLayout->setSpacing(1);
  for (const auto& page : ui::pages()) {
    auto* tab = new QPushButton(ui::qs(page.caption), tabs);
    tab->setObjectName(ui::qs(page.tab));
    tab->setToolTip(ui::qs(page.shortcut));
    tab->setCheckable(true);
    tab->setAutoExclusive(true);
    tab->setAutoDefault(false);
    // Not clicked: a screen reader and the arrow keys turn the mark without a click.
    connect(tab, &QPushButton::toggled, this, [this, which = page.page](bool on) {
      if (on && currentPage() != which) showPage(which);
    });
    tabLayout->addWidget(tab);
    pages_.push_back({page.page, tab, nullptr, nullptr, {}, {}});
    stack_->addWidget(makePage(page));
  }
  layout->addWidget(tabs);
  layout->addStretch(1);
  for (const auto& command : ui::commands()) {
    if (command.place != ui::Place::Bar) continue;
    auto* button = main_form_detail::sideCommand(command.name, command, bar);
    connect(button, &QPushButton::clicked, this, [this, name = command.name] { run(name); });
    layout->addWidget(button);
  }
  bar->setMinimumWidth(150);
  return bar;
}

QWidget* TF_MainForm::makeHeader() {
  auto* header = new QWidget(this);
  auto* layout = new QHBoxLayout(header);
  layout->setContentsMargins(0, 0, 0, 6);
  title_ = new QLabel(header);
  title_->setObjectName(QStringLiteral("pageTitle"));
  title_->setProperty("title", true);
  search_ = new CommandSearch(
      header, [this](const ui::CommandDefinition& command, const QString& searched) { run(command.name, searched); });
  layout->addWidget(title_, 1);
  layout->addWidget(search_);
  return header;
}

QWidget* TF_MainForm::makeStatusBar() {
  auto* bar = new QWidget(this);
  bar->setObjectName(QStringLiteral("sideBar"));
  bar->setAttribute(Qt::WA_StyledBackground);
  auto* layout = new QHBoxLayout(bar);
  layout->setContentsMargins(12, 2, 12, 2);
  layout->setSpacing(24);
  operatorPane_ = new QLabel(bar);
  operatorPane_->setObjectName(QStringLiteral("RzStatusPane_Admin"));
  accountPane_ = new QLabel(bar);
  accountPane_->setObjectName(QStringLiteral("RzStatusPane_Zt"));
  helpPane_ = new QPushButton(bar);
  helpPane_->setObjectName(QStringLiteral("RzStatusPane_Help"));
  helpPane_->setProperty("sideCommand", true);
  helpPane_->setFocusPolicy(Qt::NoFocus);
  clockPane_ = new QLabel(bar);
  clockPane_->setObjectName(QStringLiteral("RzStatusPane_Time"));
  connect(helpPane_, &QPushButton::clicked, this, [] {
    const QString address = QString::fromUtf16(build::webAddress);
    if (!address.isEmpty()) QDesktopServices::openUrl(QUrl(address));
  });
  layout->addWidget(operatorPane_);
  layout->addWidget(accountPane_);
  backupPane_ = new BackupPane(bar);
  connect(backupPane_, &QPushButton::clicked, this, [this] { run("btnBackup"); });
  layout->addStretch(1);
  layout->addWidget(backupPane_);
  layout->addWidget(helpPane_);
  layout->addWidget(clockPane_);
  return bar;
}

QWidget* TF_MainForm::makePage(const ui::PageDefinition& page) {
  auto& part = pages_.back();
  auto* panel = new QWidget;
  part.panel = panel;
  panel->setObjectName(ui::qs(page.panel));
  panel->setAccessibleName(ui::qs(page.caption));
  auto* layout = new QHBoxLayout(panel);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* scroll = new QScrollArea(panel);
  scroll->setWidgetResizable(true);
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setFocusPolicy(Qt::NoFocus);
  auto* area = new QWidget;
  part.raster = new QGridLayout(area);
  part.raster->setContentsMargins(3, 3, 12, 3);
  part.raster->setSpacing(14);
  part.raster->setAlignment(Qt::AlignTop | Qt::AlignLeft);
  scroll->setWidget(area);
  layout->addWidget(scroll, 1);

  auto* sideArea = new QVBoxLayout;
  sideArea->setSpacing(2);
  const auto addSide = [&](std::string_view name, const ui::CommandDefinition& command) {
    auto* button = main_form_detail::sideCommand(name, command, panel);
    connect(button, &QPushButton::clicked, this, [this, name] { run(name); });
    sideArea->addWidget(button);
    part.side.emplace_back(button, &command);
    return button;
  };
  QMenu* posMenu = nullptr;
  for (const auto& command : ui::commands()) {
    if (command.page != page.page) continue;
    if (command.place == ui::Place::Large) {
      auto* tile = new CommandTile(command, area);
      connect(tile, &QToolButton::clicked, this, [this, name = command.name] { run(name); });
      part.tiles.push_back(tile);
    } else if (command.place == ui::Place::Side) {
      addSide(command.name, command);
    } else if (command.place == ui::Place::PosMenu) {
      if (!posMenu) {
        posMenu = new QMenu(panel);
        posMenu->setObjectName(QStringLiteral("PopupMenu_Pos"));
      }
      auto* action = posMenu->addAction(ui::icon(command.icon), ui::qs(command.caption), this,
                                        [this, name = command.name] { run(name); });
      action->setObjectName(ui::qs(command.name));
    }
  }
  if (posMenu) {
    auto* drop = new QPushButton(ui::icon("till"), QStringLiteral("POS统计"), panel);
    drop->setObjectName(QStringLiteral("btn_Menu4_BtnB"));
    drop->setProperty("sideCommand", true);
    drop->setAutoDefault(false);
    drop->setMenu(posMenu);
    sideArea->addWidget(drop);
  }
  for (const auto& repeat : ui::repeats()) {
    if (repeat.page != page.page) continue;
    const auto* command = ui::findCommand(repeat.runs);
    // The warehouse picture and the second way into an analysis stand apart from the commands of other pages.
    auto* button = addSide(repeat.name, *command);
    if (repeat.name.substr(0, 4) == "img_") button->setToolTip(QStringLiteral("仓库"));
  }
  sideArea->addStretch(1);
  layout->addLayout(sideArea);
  return panel;
}

void TF_MainForm::showPage(ui::Page page) {
  for (std::size_t i = 0; i < pages_.size(); ++i) {
    if (pages_[i].page != page) continue;
    stack_->setCurrentWidget(pages_[i].panel);
    pages_[i].tab->setChecked(true);
    title_->setText(pages_[i].tab->text());
  }
  shapePages();
}

ui::Page TF_MainForm::currentPage() const {
  for (const auto& part : pages_) {
    if (part.panel == stack_->currentWidget()) return part.page;
  }
  return ui::Page::Purchasing;
}

std::vector<CommandTile*> TF_MainForm::visibleTiles() const {
  std::vector<CommandTile*> result;
  for (const auto& part : pages_) {
    if (part.panel != stack_->currentWidget()) continue;
    for (auto* tile : part.tiles) {
      if (!tile->isHidden()) result.push_back(tile);
    }
  }
  return result;
}

// Parameters take commands off their pages; what is left closes up.
void TF_MainForm::shapePages() {
  for (auto& part : pages_) {
    const bool mayAsk = loggedIn_ && part.panel == stack_->currentWidget();  // rights are read anew each time
    int digit = 0;
    for (auto* tile : part.tiles) {
      const bool shown = isShown(tile->command());
      tile->setVisible(shown);
      tile->setDigit(shown && digit < 9 ? ++digit : 0);
      if (shown && mayAsk) main_form_detail::showRight(*tile, tile->command());
    }
    for (auto& [button, command] : part.side)
      if (button->setVisible(isShown(*command)); mayAsk) main_form_detail::showRight(*button, *command);
  }
  arrangeTiles();
}

/// A page's tiles stand in as many columns as there is room for.
int TF_MainForm::tileColumns() const {
  constexpr int tileWidth = 176, besideTiles = 190;
  return std::clamp(std::max(stack_->width() - besideTiles, tileWidth) / tileWidth, 1, 5);
}

void TF_MainForm::arrangeTiles() {
  const int columns = tileColumns();
  for (auto& part : pages_) {
    int place = 0;
    for (auto* tile : part.tiles) {
      if (tile->isHidden()) continue;
      part.raster->addWidget(tile, place / columns, place % columns);
      ++place;
    }
  }
  giveRoom();
}

// The day stands below the tiles of the page, and only where all of both can be seen.
void TF_MainForm::giveRoom() {
  if (!day_) return;
  const int height = day_->arrangeIn(stack_->width());
  for (const auto& part : pages_) {
    if (part.panel != stack_->currentWidget()) continue;
    const int room = stack_->height() + (day_->isHidden() ? 0 : day_->height());
    day_->setVisible(day_->hasFigures() && room >= part.raster->sizeHint().height() + height);
  }
}

void TF_MainForm::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  arrangeTiles();
}

bool TF_MainForm::formShow() {
  setWindowTitle(build::windowTitle());
  showPage(ui::Page::Purchasing);
  ui::applySkin(startupSkin());
  session().editMode.clear();
  TF_Login form;
  form.showModal();
  if (!form.loginOk) return false;
  loggedIn_ = true;
  idle.start();
  showStatus();
  Timer1.start();
  clockTimer_.start();
  formActivate();
  showFirstUsablePage();
  return true;
}

/// Where the work of whoever logged in begins.
void TF_MainForm::showFirstUsablePage() {
  ui::Page first = ui::Page::Purchasing;
  const auto isUsable = [](ui::Page page) {
    return std::ranges::any_of(ui::commands(), [&](const ui::CommandDefinition& command) {
      return command.page == page && command.place != ui::Place::Bar && isShown(command) && isAllowed(command);
    });
  };
  for (const auto& page : ui::pages()) {
    if (!isUsable(page.page)) continue;
    first = page.page;
    break;
  }
  showPage(first);
  focusFirstTile();
}

void TF_MainForm::focusFirstTile() {
  if (const auto tiles = visibleTiles(); !tiles.empty()) tiles.front()->setFocus(Qt::OtherFocusReason);
}

void TF_MainForm::showStatus() {
  operatorPane_->setText(QStringLiteral("操作员：") + session().a_name);
  accountPane_->setText(QStringLiteral("当前帐套:") + session().accountName);
}

void TF_MainForm::formActivate() {
  loadSession();
  shapePages();
  showStatus();
  helpPane_->setText(QStringLiteral("按F1键查看帮助文档  ") + QString::fromUtf16(build::webAddress));
  ensureStockRows(clock::month());
  setWindowTitle(build::windowTitle(lookupValue("select c_jc from jxc_company ")));
  followTimer();
  backupPane_->refresh();
  if (session().mailDue == u"1" && mainFormHooks().sendMail && !Timeremail.isActive()) Timeremail.start();
  if (!isVisible()) show();
  if (!focusWidget() || !focusWidget()->isVisible()) focusFirstTile();
  day_->refresh();
}

void TF_MainForm::followTimer() {
  if (session().back_auto != u"1" || session().back_sj <= 0 || !mainFormHooks().backupDatabase)
    return TimerBackUp.stop();
  // A timer counts milliseconds in 32 bits; nobody waits longer than that for a backup.
  const auto interval = static_cast<int>(std::min<qint64>(qint64(session().back_sj) * 3600000, 0x7fffffff));
  // One that runs already goes on: each look at the window would otherwise put the backup off by hours.
  if (!TimerBackUp.isActive() || TimerBackUp.interval() != interval) TimerBackUp.start(interval);
}

void TF_MainForm::wantLogin(std::function<void()> then) {
  loginDue_ = true;
  afterLogin_ = std::move(then);
  backupPane_->stop();
  // From the innermost one outwards; each of their loops ends.
  while (auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
    dialog->done(QDialog::Rejected);
    if (QApplication::activeModalWidget() == dialog) break;
  }
}

void TF_MainForm::loginAnew() {
  for (QTimer* const timer : {&Timer1, &TimerBackUp, &Timeremail, &clockTimer_})
    timer->stop();
  loggedIn_ = false;
  wasLeftOut_.reset();  // whoever logs in anew reads what is there
  day_->stop();
  hide();
  ui::dropScreens();
  leaveWork();
  session() = Session{};
  const std::function<void()> then = std::exchange(afterLogin_, {});
  if (!formShow()) {
    leaving_ = true;
    return QApplication::quit();
  }
  if (!then) return;
  {
    const main_form_detail::Busy busy(busy_);
    then();
  }
  if (std::exchange(loginDue_, false)) loginAnew();
}

/// A connection that broke while nobody looked took this station out of sight: it comes back, and where somebody has
/// taken the set for himself by then, what stands in the session may not be true any more.
void TF_MainForm::lookAtWork() {
  if (!loggedIn_ || leaving_ || isCommandAtWork()) return;
  if (!wasLeftOut_ && ++secondsToLook_ >= 10) {  // not each second: the server is asked
    secondsToLook_ = 0;
    try {
      wasLeftOut_ = stayAtWork();
    } catch (const DbError&) {
      // A server that does not answer is told about by the next command.
    }
  }
  if (!wasLeftOut_ || busy_ || locked_) return;
  {
    const main_form_detail::Busy busy(busy_);
    prompt_.notice(
        QStringLiteral("和服务器的连接断开过，这时%1\r\n\r\n请重新登录。").arg(*std::exchange(wasLeftOut_, {})));
  }
  loginAnew();
}

bool TF_MainForm::event(QEvent* event) {
  const bool result = QWidget::event(event);
  const bool echo = sinceCommand_.isValid() && sinceCommand_.elapsed() < main_form_detail::kEcho;
  if (event->type() == QEvent::WindowActivate && loggedIn_ && !busy_ && !leaving_ && !echo && isVisible()) {
    formActivate();
  }
  return result;
}

void TF_MainForm::run(std::string_view command, const QString& searched) {
  if (busy_) return;
  // What was searched for is found: behind its screen the keys are those of the page again.
  if (focusWidget() == search_) focusFirstTile();
  {
    const main_form_detail::Busy busy(busy_);
    day_->stop();
    ui::doOrTell([&] { runCommand(command, prompt_, searched); });
  }
  if (std::exchange(loginDue_, false)) return loginAnew();
  sinceCommand_.start();
  // The screen is gone and the window has the focus again.
  if (!leaving_ && ui::findCommand(command) && !ui::findCommand(command)->screen.empty()) formActivate();
}

void TF_MainForm::openTile(CommandTile* tile) {
  run(tile->command().name);
}

void TF_MainForm::changeOperatorClick() {
  // The search box and the side bar come here too, not only through run().
  const bool wasBusy = std::exchange(busy_, true);
  day_->stop();
  session().editMode = QStringLiteral("hb");
  const QString before = session().a_sn;
  TF_Login form;
  form.showModal();
  session().editMode.clear();
  busy_ = wasBusy;
  formActivate();
  if (session().a_sn != before) showFirstUsablePage();
}

void TF_MainForm::reminders() {
  // Who locks the screen, or opens one, before they have come: they wait, nothing comes up over either.
  if (busy_) return Timer1.start();
  Timer1.stop();
  const main_form_detail::Busy busy(busy_);
  if (showsDailyTip()) ui::openScreen("F_Mryt");
  // While the screen of reminders is not there yet, its page that says so comes up for reminders that are due, not
  // every morning for a list without any; and what nobody has seen is not marked as shown.
  const bool canShow = ui::isScreenRegistered("F_Sjtx");
  if (canShow && showsReminderList()) {
    ui::openScreen("F_Sjtx");
  } else if (hasDueReminders()) {
    openOrTell("F_Sjtx", QStringLiteral("今日事件提醒"));
    if (canShow) markDueReminders();
  }
}

void TF_MainForm::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (leaving_ || !loggedIn_) return event->accept();
  if (!prompt_.ask(QStringLiteral("是否要退出系统？"))) return;
  leaving_ = true;
  if (session().back_exit == u"1" && mainFormHooks().backupOnWayOut && !mainFormHooks().backupOnWayOut()) {
    leaving_ = false;
    return;
  }
  writeLog(QStringLiteral("退出系统"));
  backupPane_->stop();
  event->accept();
  QApplication::quit();
}

void TF_MainForm::lockScreen() {
  if (locked_ || leaving_) return;
  {
    const main_form_detail::Busy busy(busy_), locked(locked_);
    day_->stop();
    ui::openScreen("F_Xtsd");
  }
  if (!busy_) formActivate();
}

}  // namespace jxc
