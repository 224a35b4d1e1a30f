#include "screens/harness/screen_test.h"

#include "core/data_module.h"
#include "core/program_directory.h"
#include "output/screens/print_outlet.h"
#include "ui/application.h"
#include "ui/file_dialogs.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDeadlineTimer>
#include <QHeaderView>
#include <QKeyEvent>
#include <QKeySequence>
#include <QLineEdit>
#include <QLoggingCategory>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPointer>
#include <QProgressDialog>
#include <QTableView>
#include <QThread>
#include <QTimer>
#include <QWindow>

#include <chrono>

namespace jxc::test {
namespace screen_test_detail {

/// One application for all tests of the executable.
class ApplicationEnvironment : public ::testing::Environment {
 public:
  void SetUp() override {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    // Off-screen windows have no size hints; one line a window says so.
    QLoggingCategory::setFilterRules(QStringLiteral("qt.qpa.*=false"));
    static char name[] = "test_screens";
    static char* argv[] = {name, nullptr};
    application_ = std::make_unique<ui::Application>(argc, argv);
    application_->setQuitOnLastWindowClosed(false);
  }
  void TearDown() override {
    ui::dropScreens();
    application_.reset();
  }

 private:
  std::unique_ptr<ui::Application> application_;
};

const auto* const kEnvironment = ::testing::AddGlobalTestEnvironment(new ApplicationEnvironment);

void sendKey(QWidget* target, int key, Qt::KeyboardModifiers modifiers, const QString& text) {
  const QPointer<QWidget> alive(target);
  QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
  QApplication::sendEvent(target, &press);
  if (!alive) return;
  QKeyEvent release(QEvent::KeyRelease, key, modifiers, text);
  QApplication::sendEvent(target, &release);
}

QWidget* focusOf(QWidget& window) {
  return window.focusWidget() ? window.focusWidget() : &window;
}

// The text box that takes the keys of an input.
QWidget* typingPlace(QWidget* widget) {
  if (auto* combo = qobject_cast<QComboBox*>(widget); combo && combo->lineEdit()) return combo->lineEdit();
  return widget;
}

/// On a display a window manager brings windows forward in its own time. An operator waits for that; keys that are sent
/// from here would find a window without focus. Ends with the window too, and when it takes too long.
template <typename Reached>
void waitWhileShown(QWidget& window, Reached reached) {
  if (QGuiApplication::platformName() != QStringLiteral("xcb")) return;
  constexpr std::chrono::seconds kPatience(5);
  const QPointer<QWidget> alive(&window);
  for (QDeadlineTimer end(kPatience); alive && alive->isVisible() && !reached() && !end.hasExpired();) {
    QApplication::processEvents();
    QThread::msleep(1);
  }
}

void waitInFront(QWidget& window) {
  waitWhileShown(window, [&] { return QGuiApplication::focusWindow() == window.windowHandle(); });
}

/// After a command: whatever had come on top of the window is gone, or stands in front itself.
void waitForOneInFront(QWidget& window) {
  waitWhileShown(window, [] {
    const auto* front = QGuiApplication::focusWindow();
    return front && front->isVisible();
  });
}

QString nameOf(const QDialog& dialog) {
  if (const auto* box = qobject_cast<const QMessageBox*>(&dialog)) return QStringLiteral("box: ") + box->text();
  return QStringLiteral("screen: ") + dialog.objectName() + u' ' + dialog.windowTitle();
}

}  // namespace screen_test_detail

/// Notices every dialog that comes up, and deals with it once its own event loop runs.
class ScreenTest::Watcher : public QObject {
 public:
  explicit Watcher(ScreenTest& test) : test_(test) { qApp->installEventFilter(this); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Show && watched->isWidgetType()) {
      auto* dialog = qobject_cast<QDialog*>(watched);
      if (dialog && (dialog->isModal() || qobject_cast<QMessageBox*>(dialog)) &&
          !qobject_cast<QProgressDialog*>(dialog)) {
        QTimer::singleShot(0, this, [this, alive = QPointer<QDialog>(dialog)] {
          if (alive && alive->isVisible()) test_.opened(*alive);
        });
      }
    }
    return false;
  }

 private:
  ScreenTest& test_;
};

ScreenTest::ScreenTest() : watcher_(std::make_unique<Watcher>(*this)) {
  setProgramDirectory(home_.path());
}

void ScreenTest::setAllRights(const QString& role, const QString& rights) {
  for (const char* group : {"cggl", "xsgl", "kcgl", "wlzk", "tjgl", "rcgl", "qtcz"})
    setRights(role, group, rights);
}

void ScreenTest::takeRight(const QString& role, std::string_view group, int position) {
  QString rights = lookupValue(compose("select {} from jxc_role where r_sn=?", {group}), role);
  rights[position - 1] = u'0';
  setRights(role, group, rights);
}

ScreenTest::~ScreenTest() {
  for (const auto& left : expected_)
    ADD_FAILURE() << "never opened: " << left.text.toStdString();
  watcher_.reset();
  ui::dropScreens();
  ui::setFileAnswer({});
  restorePrintOutlet();
  dataModule().closeAccountDb();  // before its file goes
  setProgramDirectory({});
}

void ScreenTest::expectNotice(const QString& text) {
  expected_.push_back({Expected::What::Notice, text, {}, {}});
}

void ScreenTest::expectQuestion(const QString& text, Answer answer) {
  expected_.push_back({Expected::What::Question, text, answer, {}});
}

void ScreenTest::expectOffer(const QString& notice, Answer answer) {
  expected_.push_back({Expected::What::Offer, notice, answer, {}});
}

void ScreenTest::expectScreen(std::string_view name, Steps steps) {
  expected_.push_back({Expected::What::Screen, QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())),
                       Answer::No, std::move(steps)});
}

ScreenTest::Steps ScreenTest::filled(std::initializer_list<std::pair<std::string_view, QStringView>> inputs,
                                     const char* key) {
  std::vector<std::pair<std::string, QString>> typed;
  for (const auto& [field, text] : inputs)
    typed.emplace_back(field, text.toString());
  return [typed, key](ui::Screen& screen) {
    for (const auto& [field, text] : typed)
      type(screen, field, text);
    press(screen, key);
  };
}

bool ScreenTest::open(std::string_view name, Steps steps) {
  return open(ui::screenNamed(name), std::move(steps));
}

bool ScreenTest::open(ui::Screen& screen, Steps steps) {
  opening_ = &screen;
  openingSteps_ = std::move(steps);
  const bool accepted = screen.showModal();
  EXPECT_EQ(opening_, nullptr) << screen.objectName().toStdString() << " never came up";
  opening_ = nullptr;
  return accepted;
}

void ScreenTest::opened(QDialog& dialog) {
  // The others leave the keys to the window below.
  if (dialog.isModal()) screen_test_detail::waitInFront(dialog);
  if (&dialog == opening_) {
    opening_ = nullptr;
    const Steps steps = std::move(openingSteps_);
    return runSteps(static_cast<ui::Screen&>(dialog), steps);
  }
  if (expected_.empty()) {
    if (meets(dialog)) return;
    ADD_FAILURE() << "unexpected " << screen_test_detail::nameOf(dialog).toStdString();
    return dialog.done(QDialog::Rejected);
  }
  const Expected next = expected_.front();
  expected_.pop_front();
  if (next.what == Expected::What::Screen) {
    auto* screen = dynamic_cast<ui::Screen*>(&dialog);
    if (screen && screen->objectName() == next.text) return runSteps(*screen, next.steps);
  } else if (qobject_cast<QMessageBox*>(&dialog)) {
    return answer(dialog, next);
  }
  ADD_FAILURE() << "expected " << next.text.toStdString() << ", came "
                << screen_test_detail::nameOf(dialog).toStdString();
  dialog.done(QDialog::Rejected);
}

void ScreenTest::answer(QDialog& box, const Expected& expected) {
  const auto& message = static_cast<QMessageBox&>(box);
  EXPECT_EQ(message.text().toStdString(), QString(expected.text).replace(u"\r\n"_qs, u"\n"_qs).toStdString());
  const bool question = expected.what == Expected::What::Question;
  EXPECT_EQ(message.windowTitle(), question ? QStringLiteral("信息提醒") : QStringLiteral("系统提示"));
  const bool takes = expected.what == Expected::What::Offer && expected.answer == Answer::Yes;
  const QString wanted = takes                            ? QStringLiteral("btnOffer")
                         : !question                      ? QStringLiteral("btnOK")
                         : expected.answer == Answer::Yes ? QStringLiteral("btnYes")
                         : expected.answer == Answer::No  ? QStringLiteral("btnNo")
                                                          : QStringLiteral("btnCancel");
  for (auto* button : message.buttons()) {
    if (button->objectName() == wanted) return button->click();
  }
  ADD_FAILURE() << "the box has no " << wanted.toStdString() << ": " << message.text().toStdString();
  box.done(QDialog::Rejected);
}

void ScreenTest::runSteps(ui::Screen& screen, const Steps& steps) {
  const QPointer<QDialog> alive(&screen);
  // Off-screen windows become active late, and focus events come to active windows only.
  QApplication::setActiveWindow(&screen);
  for (auto* grid : screen.grids())
    grid->waitLoaded();
  try {
    if (steps) steps(screen);
  } catch (const std::exception& failure) {
    ADD_FAILURE() << screen.objectName().toStdString() << ": " << failure.what();
  }
  settle();
  if (alive && alive->isVisible()) alive->done(QDialog::Rejected);
}

void ScreenTest::settle() {
  QApplication::processEvents();
}

void ScreenTest::typeIn(QWidget& widget, QStringView text) {
  for (const QChar c : text) {
    const int key = c.unicode() < 128 ? c.toUpper().unicode() : int(Qt::Key_unknown);
    screen_test_detail::sendKey(&widget, key, Qt::NoModifier, QString(c));
  }
}

void ScreenTest::pressIn(QWidget& widget, const char* key) {
  const QKeySequence sequence(QString::fromLatin1(key));
  const auto combination = sequence[0];
  ASSERT_NE(combination.key(), Qt::Key_unknown) << key;
  const QPointer<QWidget> window(widget.window());
  const bool wasInFront = window->isActiveWindow();
  screen_test_detail::sendKey(&widget, combination.key(), combination.keyboardModifiers(), {});
  settle();
  if (window && wasInFront) screen_test_detail::waitForOneInFront(*window);
}

void ScreenTest::type(ui::Screen& screen, std::string_view name, QStringView text) {
  auto& field = screen.field(name);
  ASSERT_TRUE(field.isVisible() && field.isEnabled()) << name << " cannot be typed in";
  field.focus();
  auto* place = screen_test_detail::typingPlace(field.widget());
  if (auto* edit = qobject_cast<QLineEdit*>(place)) {
    ASSERT_FALSE(edit->isReadOnly()) << name << " is read-only";
    edit->selectAll();
    if (text.isEmpty()) screen_test_detail::sendKey(edit, Qt::Key_Delete, Qt::NoModifier, {});
  } else if (auto* memo = qobject_cast<QPlainTextEdit*>(place)) {
    memo->selectAll();
    if (text.isEmpty()) screen_test_detail::sendKey(memo, Qt::Key_Delete, Qt::NoModifier, {});
  }
  typeIn(*place, text);
}

void ScreenTest::enter(ui::Screen& screen, std::string_view field, QStringView text) {
  type(screen, field, text);
  press(screen, "Return");
}

void ScreenTest::choose(ui::Screen& screen, std::string_view name, const QString& text) {
  auto& field = screen.field(name);
  auto* combo = qobject_cast<QComboBox*>(field.widget());
  ASSERT_NE(combo, nullptr) << name << " is no list";
  ASSERT_TRUE(field.isVisible() && field.isEnabled()) << name << " cannot be chosen from";
  const int index = combo->findText(text);
  ASSERT_GE(index, 0) << name << " has no \"" << text.toStdString() << '"';
  field.focus();
  combo->setCurrentIndex(index);
}

void ScreenTest::check(ui::Screen& screen, std::string_view name, bool on) {
  auto& field = screen.field(name);
  ASSERT_TRUE(field.isVisible() && field.isEnabled()) << name << " cannot be ticked";
  if (field.isChecked() != on) static_cast<QAbstractButton*>(field.widget())->click();
}

void ScreenTest::press(ui::Screen& screen, const char* key) {
  pressIn(*screen_test_detail::focusOf(screen), key);
}

void ScreenTest::press(ui::Screen& screen, const char* key, const QString& notice) {
  expectNotice(notice);
  press(screen, key);
}

void ScreenTest::press(ui::Screen& screen, const char* key, const QString& question, Answer answer) {
  expectQuestion(question, answer);
  press(screen, key);
}

void ScreenTest::press(ui::Screen& screen, const char* key, std::string_view opens, Steps steps) {
  expectScreen(opens, std::move(steps));
  press(screen, key);
}

void ScreenTest::click(ui::Screen& screen, std::string_view command, std::string_view opens, Steps steps) {
  expectScreen(opens, std::move(steps));
  click(screen, command);
}

void ScreenTest::click(ui::Screen& screen, std::string_view command, const QString& notice) {
  expectNotice(notice);
  click(screen, command);
}

void ScreenTest::click(ui::Screen& screen, std::string_view command, const QString& question, Answer answer) {
  expectQuestion(question, answer);
  click(screen, command);
}

void ScreenTest::click(ui::Screen& screen, std::string_view name) {
  auto& button = screen.command(name);
  ASSERT_TRUE(button.isVisible() && button.isEnabled()) << name << " cannot be pressed";
  const QPointer<QWidget> window(&screen);
  button.click();
  settle();
  if (window) screen_test_detail::waitForOneInFront(*window);
}

void ScreenTest::edit(ui::Screen& screen, std::string_view grid, int row, std::string_view field, QStringView text) {
  typeInCell(screen, grid, row, field, text);
  press(screen, "Return");
  settle();
}

void ScreenTest::typeInCell(ui::Screen& screen, std::string_view name, int row, std::string_view field,
                            QStringView text) {
  auto& grid = screen.grid(name);
  auto* view = grid.view();
  const auto* model = static_cast<const ui::GridModel*>(view->model());
  const int column = model->columnOf(field);
  ASSERT_GE(column, 0) << name << " has no column " << field;
  ASSERT_LT(row, grid.rowCount()) << name << " has no such row";
  ASSERT_FALSE(view->isColumnHidden(column)) << field << " is hidden";
  const auto index = model->index(row, column);
  ASSERT_TRUE(model->flags(index) & Qt::ItemIsEditable) << field << " cannot be edited";
  view->setFocus();
  view->setCurrentIndex(index);
  pressIn(*view, "Return");
  auto* editor = view->viewport()->findChild<QLineEdit*>();
  ASSERT_NE(editor, nullptr) << "no editor came up";
  editor->selectAll();
  typeIn(*editor, text);
  if (text.isEmpty()) screen_test_detail::sendKey(editor, Qt::Key_Delete, Qt::NoModifier, {});
}

}  // namespace jxc::test
