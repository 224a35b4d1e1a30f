// 屏幕: the base of every screen: a modal dialog built from its description, with its keys, focus and activation.
#pragma once

#include "core/prompt.h"
#include "ui/field.h"
#include "ui/grid.h"
#include "ui/specs.h"

#include <QDialog>
#include <QPushButton>

#include <functional>
#include <initializer_list>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

class QStatusBar;
class QTabWidget;
class QVBoxLayout;
class QBoxLayout;

namespace jxc::ui {

class Screen;

/// An area of a screen that is filled from top to bottom: rows of inputs, grids, rows of buttons, tab pages.
class Panel {
 public:
  /// Rows of inputs in one raster: {"tghs dateCg comCk", "tnote"} are three in the first line and one, as wide as the
  /// rest, in the second.
  Panel& form(std::initializer_list<std::string_view> rows) { return form(std::span(rows.begin(), rows.size())); }
  Panel& form(std::span<const std::string_view> rows);
  Panel& grid(std::string_view name, int stretch = 1);
  /// Buttons, filled from the left; "|" takes up the free room, so that what follows stands at the right.
  Panel& buttons(std::string_view names);
  /// Inputs and buttons in one line: a search row above a list. "|" as above.
  Panel& row(std::string_view names);
  Panel& widget(QWidget* widget, int stretch = 0);
  Panel& text(const QString& text);     // a line of explanation, in grey
  Panel& warning(const QString& text);  // the same of what may go wrong: never in grey
  Panel& stretch();
  /// A framed area with a title, inside this one.
  Panel group(const QString& title);
  /// An area that comes and goes as a whole: `made` gets its widget.
  Panel area(QWidget*& made, int stretch = 1);
  enum PageKind { Fixed, Scrolls };
  /// An area of which a small display shows a part, while what stands around it stays in sight.
  Panel scrolled();
  /// A page of this area's tabs; the tabs come with the first page. `name` becomes the page's object name. One that
  /// scrolls may hold more than a small display shows, while the commands below stay in sight.
  Panel page(std::string_view name, const QString& title, PageKind kind = Fixed);
  /// Two areas side by side, their widths by the stretches.
  std::pair<Panel, Panel> columns(int firstStretch = 1, int secondStretch = 1);
  QTabWidget* tabs() const { return tabs_ ? *tabs_ : nullptr; }

 private:
  friend class Screen;
  Panel& line(const QString& text, const char* look);
  Panel(Screen& screen, QBoxLayout* layout) : screen_(&screen), layout_(layout) {}
  Screen* screen_;
  QBoxLayout* layout_;
  std::shared_ptr<QTabWidget*> tabs_ = std::make_shared<QTabWidget*>(nullptr);
};

/// Base of all screens. One instance a class, made on first use and kept; see `registered` below. A subclass binds its
/// members to the described parts and places them:
///
///     class TF_Ckgl_Add : public ui::Screen {
///       ui::Field& tname = field("tname");
///       QPushButton& btnOK = command("btnOK");
///     …
///     TF_Ckgl_Add::TF_Ckgl_Add() : Screen(kScreen) {
///       panel().form({"tname tjm", "tnote"}).buttons("| btnOK btnCancel");
///       on(btnOK, [this] { saveValue(); });
///     }
///
/// What is not placed by hand is placed in the order of the description. A command with the key Esc leaves.
class Screen : public QDialog {
 public:
  explicit Screen(const ScreenSpec& spec);
  ~Screen() override;

  const ScreenSpec& spec() const { return spec_; }
  /// The part with this name; std::invalid_argument when the description has none.
  Field& field(std::string_view name);
  Grid& grid(std::string_view name);
  QPushButton& command(std::string_view name);
  bool hasField(std::string_view name) const;
  std::vector<Field*> fields() const;
  std::vector<Grid*> grids() const;

  /// Runs the activation and shows the screen until it is left. Whether it was accepted (`accept()`). With `searched`
  /// that stands in its search box tkey, as if it had been typed there and confirmed.
  bool showModal(const QString& searched = {});

  /// Activates and shows without waiting: pictures and sweeps of all screens, and a screen that stands in another.
  void present();
  /// Becomes a part of another screen's page: without a window of its own, it is left with the screen around it.
  void standIn(QWidget& page);

  /// The list that the operator is in, or else the first one in sight; null without.
  Grid* gridInSight() const;
  /// What the inputs in sight say: "仓库：门店　日期：2026-05-01", for lists in files and on paper.
  QString inputsInWords() const;

  /// Notices and questions of this screen, for the rules that it calls. A refusal leads to what it is about.
  Prompt& prompt();
  /// What was done, in a quiet line at the bottom; a screen reader reads it out. Empty: the line stands there for
  /// later.
  void say(const QString& text);
  QString said() const;

  /// A key on its way to an input of this screen: true when it was a command's, and the input must not have it.
  bool takeCommandKey(const QKeyEvent& key);

  /// Closing by Esc, by the window's box and by btnCancel ends here; accept() does not ask.
  void reject() override;

 protected:
  /// At each showing, before the screen is seen: fill lists, reset inputs, load grids.
  virtual void activate() {}
  /// Whether the operator may leave. A dialog with a command btnOK or btnSave asks when something was typed; documents
  /// ask for more.
  virtual bool mayLeave();
  /// Whether something was typed or chosen that leaving would lose: in any input but those that only search.
  bool isTouched() const;
  /// Enter in an input, after its own hook: moves to the next one, past lists and trees, and from the last to btnOK or
  /// btnSave.
  virtual void enterPressed(Field& field);
  /// Something was chosen from the list behind this input.
  virtual void pickedIn(Field& field) { enterPressed(field); }
  /// Whether a command only looks: it is offered too while a copy of the account set is read.
  virtual bool onlyLooks(const CommandSpec& command) const;
  /// A key that no command has; true when it was for this screen.
  virtual bool keyPressed(QKeyEvent&) { return false; }

  Panel panel();
  void on(QPushButton& command, std::function<void()> action);
  /// Another key for a command (F5 also on Enter in the list …).
  void addKey(QPushButton& command, const char* key);
  /// Shows what is wrong with the first input that has a problem, focuses it, and returns false.
  bool checkFields();

  void keyPressEvent(QKeyEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  friend class Panel;
  struct CommandPart;
  void addGrid(const GridSpec& spec);
  void exportInSight();
  void placeRest();
  void orderTabs();
  void closeWhatWrites();
  void scrollWhenTooLarge(const QSize& room);
  void focusFirst();
  void leadTo(const Refusal& refusal);
  QPushButton* mainCommand() const;  // in sight and to be given now; null without
  bool runKey(const QKeySequence& key);

  ScreenSpec spec_;
  std::vector<std::unique_ptr<Field>> fields_;
  std::vector<Grid*> grids_;
  std::vector<std::unique_ptr<CommandPart>> commands_;
  std::vector<QWidget*> placed_;
  class OwnPrompt;
  std::unique_ptr<Prompt> prompt_;
  QStatusBar* said_ = nullptr;
  QVBoxLayout* outer_;
  bool complete_ = false;
};

// --- The registry: screens are known by name, so that nobody has to include them. ---

using ScreenFactory = std::function<Screen*()>;
void registerScreen(std::string_view name, ScreenFactory factory);
bool isScreenRegistered(std::string_view name);
std::vector<std::string> registeredScreens();  // sorted by name
/// The one instance of "F_Cgjh", made on first use. std::invalid_argument for an unknown name.
Screen& screenNamed(std::string_view name);
/// One more of the kind, for a screen that stands in another. The caller gives it a place.
Screen* newScreen(std::string_view name);
/// The one instance as its class, for a screen that sets something before it opens another:
/// `screenAs<TF_Cgjh_Sele>("F_Cgjh_Sele")`.
template <class T>
T& screenAs(std::string_view name) {
  return dynamic_cast<T&>(screenNamed(name));
}
/// Opens a screen by name and returns when it is left; whether it was accepted. One that is not there yet says so.
bool openScreen(std::string_view name, const QString& searched = {});
/// Forgets all instances (tests: each starts with screens of its own).
void dropScreens();

/// At namespace scope of the screen's .cpp, in the namespace of the file: `const ui::Registered<TF_Cgjh>
/// kRegistered{"F_Cgjh"};`
template <class T>
struct Registered {
  explicit Registered(std::string_view name) {
    registerScreen(name, [] { return static_cast<Screen*>(new T); });
  }
};

}  // namespace jxc::ui
