// 屏幕驱动: opens screens, types, presses and reads as an operator does, and answers what opens on top.
#pragma once

#include "harness/account_set_fixture.h"
#include "ui/screen.h"

#include <QStringView>
#include <QTemporaryDir>

namespace jxc::test {

/// A test over a fresh account set in memory and an empty program directory that drives real screens off-screen. What
/// opens on top is expected in its order: message boxes by their text, screens by their name. A box or screen that was
/// not expected fails the test and is closed, so that nothing hangs; an expectation that was not met fails it too.
class ScreenTest : public AccountSetFixture {
 public:
  using Steps = std::function<void(ui::Screen&)>;

  ScreenTest();
  ~ScreenTest() override;

  // What will open on top, in this order.
  void expectNotice(const QString& text);
  void expectQuestion(const QString& text, Answer answer);
  void expectOffer(const QString& notice, Answer answer);  // a notice with something to do about it
  void expectScreen(std::string_view name, Steps steps);
  /// Fills in a screen and leaves it by this key.
  static Steps filled(std::initializer_list<std::pair<std::string_view, QStringView>> inputs, const char* key = "F5");
  /// Expectations that were not met yet.
  int expectationsLeft() const { return static_cast<int>(expected_.size()); }

  /// Shows a screen, runs the steps inside it, and closes it when they have left it open. Whether it was accepted.
  bool open(std::string_view name, Steps steps);
  /// The same for a screen that the test made or prepared itself.
  bool open(ui::Screen& screen, Steps steps);

  // What an operator does.
  static void type(ui::Screen& screen, std::string_view field, QStringView text);   // replaces what is there
  static void enter(ui::Screen& screen, std::string_view field, QStringView text);  // the same, and Return
  static void choose(ui::Screen& screen, std::string_view field, const QString& text);
  static void check(ui::Screen& screen, std::string_view field, bool on);
  static void press(ui::Screen& screen, const char* key);  // "F5", "Return", "Esc", "Ctrl+C"
  static void click(ui::Screen& screen, std::string_view command);
  // The same, and something opens on top: a notice, a question that is answered, a screen with what is done there.
  void press(ui::Screen& screen, const char* key, const QString& notice);
  void press(ui::Screen& screen, const char* key, const QString& question, Answer answer);
  void press(ui::Screen& screen, const char* key, std::string_view opens, Steps steps);
  void click(ui::Screen& screen, std::string_view command, const QString& notice);
  void click(ui::Screen& screen, std::string_view command, const QString& question, Answer answer);
  void click(ui::Screen& screen, std::string_view command, std::string_view opens, Steps steps);
  static void edit(ui::Screen& screen, std::string_view grid, int row, std::string_view field, QStringView text);
  /// The same up to the last character: the cell is still open.
  static void typeInCell(ui::Screen& screen, std::string_view grid, int row, std::string_view field, QStringView text);
  static void pressIn(QWidget& widget, const char* key);
  static void typeIn(QWidget& widget, QStringView text);
  static void settle();  // lets queued events run

  /// These rights of every group; and one of a group taken away, by its position from 1.
  void setAllRights(const QString& role, const QString& rights);
  void takeRight(const QString& role, std::string_view group, int position);

  /// A file in the program directory.
  QString file(const QString& name) const { return home_.filePath(name); }

 protected:
  /// Something opened that was not expected. A test that goes wherever a screen leads looks at it, leaves it, and says
  /// true.
  virtual bool meets(QDialog&) { return false; }

 private:
  class Watcher;
  struct Expected {
    enum class What { Notice, Question, Offer, Screen } what;
    QString text;
    Answer answer = Answer::No;
    Steps steps;
  };
  void opened(QDialog& dialog);
  void answer(QDialog& box, const Expected& expected);
  void runSteps(ui::Screen& screen, const Steps& steps);

  QTemporaryDir home_;
  std::deque<Expected> expected_;
  ui::Screen* opening_ = nullptr;
  Steps openingSteps_;
  std::unique_ptr<Watcher> watcher_;
};

}  // namespace jxc::test
