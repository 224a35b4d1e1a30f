// 主窗口: seven pages of large buttons, the status panes, the global commands and the timers of the program.
#pragma once

#include "core/screens/idle_lock.h"
#include "ui/commands.h"
#include "ui/message_box_prompt.h"

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <optional>
#include <vector>

class QGridLayout;
class QLabel;
class QPushButton;
class QStackedWidget;

namespace jxc {

class BackupPane;
class CommandSearch;
class CommandTile;
class DayBoard;

/// What other subsystems do on the window's timers and on its way out; empty until they are there.
struct MainFormHooks {
  std::function<void()> backupDatabase;  // every back_sj hours, behind the window; waits itself
  std::function<bool()> backupOnWayOut;  // when back_exit says so; false: the operator stays
  std::function<void()> sendMail;        // the day's mail digest
};
MainFormHooks& mainFormHooks();

/// After a command that has put other data under the running program: all screens close without a question, and the
/// window stands at the login. `then` goes on behind it when somebody has logged in.
void endAtLogin(std::function<void()> then = {});
/// The timer of the backups follows the session at once.
void followBackupTimer();

/// The desktop of the program. Everything opens from here, modally, after a test of rights.
class TF_MainForm : public QWidget {
 public:
  TF_MainForm();
  ~TF_MainForm() override;

  /// First showing: look, login, status panes, reminders. False when nobody logged in: the program ends.
  bool formShow();
  /// After the login and whenever the window is active again: session, stock rows, title, timers. Page and focus stay
  /// where the operator left them.
  void formActivate();

  void showPage(ui::Page page);
  ui::Page currentPage() const;
  /// `searched` stands in the search box of the screen that the command opens.
  void run(std::string_view command, const QString& searched = {});
  /// Tiles of the page that is shown, in their order.
  std::vector<CommandTile*> visibleTiles() const;
  DayBoard& day() { return *day_; }
  /// See `endAtLogin` and `followBackupTimer`.
  void wantLogin(std::function<void()> then = {});
  void followTimer();

  IdleLock idle;       // locks the screen
  QTimer Timer1;       // reminders at start
  QTimer TimerBackUp;  // backups
  QTimer Timeremail;   // mail digest

 protected:
  bool event(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  struct PagePart;
  QWidget* makeSideBar();
  QWidget* makeHeader();
  QWidget* makeStatusBar();
  QWidget* makePage(const ui::PageDefinition& page);
  int tileColumns() const;
  void arrangeTiles();
  void giveRoom();
  void shapePages();
  void showFirstUsablePage();
  void focusFirstTile();
  void showStatus();
  void reminders();
  void loginAnew();
  void lookAtWork();
  void changeOperatorClick();
  void lockScreen();  // over whatever is open, which is there again as it was left
  void moveFocus(int key);
  void openTile(CommandTile* tile);
  bool typeAhead(const QString& text);

  ui::MessageBoxPrompt prompt_;
  std::vector<PagePart> pages_;
  QStackedWidget* stack_ = nullptr;
  QLabel* title_ = nullptr;
  QLabel* operatorPane_ = nullptr;
  QLabel* accountPane_ = nullptr;
  BackupPane* backupPane_ = nullptr;
  QLabel* clockPane_ = nullptr;
  QPushButton* helpPane_ = nullptr;
  CommandSearch* search_ = nullptr;
  DayBoard* day_ = nullptr;  // below the tiles, where they leave room
  QTimer clockTimer_;
  QString typed_;  // initials typed so far
  QTimer typedTimer_;
  bool loggedIn_ = false;
  bool locked_ = false;         // the screen lock is up: no timer may show a window
  bool busy_ = false;           // a command is running: its screens come and go, and the window is not "active again"
  QElapsedTimer sinceCommand_;  // the desktop tells of the window's return a little after the command has ended
  bool leaving_ = false;
  bool loginDue_ = false;              // a command has put other data under the program
  std::function<void()> afterLogin_;   // what it goes on with
  int secondsToLook_ = 0;              // whether this station is still seen by the others
  std::optional<QString> wasLeftOut_;  // it was not, and somebody took the set for himself
};

}  // namespace jxc
