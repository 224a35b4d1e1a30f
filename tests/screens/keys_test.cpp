// One table of the keys of all screens, made from the screens as an operator sees them: page by page.
#include "screens/harness/screen_test.h"
#include "ui/display.h"

#include <QDialog>
#include <QMap>
#include <QPushButton>
#include <QRegularExpression>
#include <QTabWidget>

#include <algorithm>
#include <functional>
#include <vector>

namespace jxc::test {
namespace keys_test {

/// Turns every page of every tab that is in sight, and calls `seen` with what stands there then.
void eachPage(ui::Screen& screen, const std::function<void(const QString& page)>& seen) {
  QTabWidget* first = nullptr;
  for (auto* each : screen.findChildren<QTabWidget*>())
    if (each->isVisible() && !first) first = each;
  if (!first) return seen({});
  for (int page = 0; page < first->count(); ++page) {
    if (!first->isTabEnabled(page) || !first->isTabVisible(page)) continue;
    first->setCurrentIndex(page);
    ScreenTest::settle();
    seen(first->tabText(page));
  }
}

QRect placeOf(const QWidget& widget, const ui::Screen& screen) {
  return {widget.mapTo(&screen, QPoint()), widget.size()};
}

/// Keys of the commands in sight, by the description: what stands behind the caption. A list that stands in a page
/// brings its own.
void expectOneCommandAKey(ui::Screen& screen, const QString& page) {
  QMap<QString, QString> owners;
  auto screens = screen.findChildren<QDialog*>();
  screens.prepend(&screen);
  for (auto* each : screens) {
    auto* part = dynamic_cast<ui::Screen*>(each);
    if (!part || !part->isVisible()) continue;
    for (const auto& spec : part->spec().commands) {
      const QPushButton& button = part->command(spec.name);
      if (!button.isVisible() || spec.key.empty()) continue;
      const QString key = ui::qs(spec.key);
      EXPECT_FALSE(owners.contains(key)) << page.toStdString() << ": " << spec.name << " and "
                                         << owners.value(key).toStdString() << " have " << spec.key;
      owners.insert(key, ui::qs(spec.name));
      // What is done with documents has the same keys on all of them.
      for (const auto& [caption, its] : {std::pair("查看单据", "F8"), std::pair("打印单据", "Ctrl+P")})
        EXPECT_TRUE(spec.caption != caption || spec.key == its) << spec.name << ' ' << spec.key;
      EXPECT_TRUE(button.text().contains(u'(' + key + u')')) << button.text().toStdString() << " hides " << spec.key;
    }
  }
  // A key on a button is one that it has.
  static const QRegularExpression named(QStringLiteral("\\((F\\d+|Ctrl\\+[^)]+|Esc)\\)$"));
  for (const auto* button : screen.findChildren<QPushButton*>()) {
    const auto match = named.match(button->text());
    if (!button->isVisible() || !match.hasMatch()) continue;
    EXPECT_EQ(owners.value(match.captured(1)), button->objectName())
        << page.toStdString() << ": " << button->text().toStdString();
  }
}

/// The way out stands behind the others of its row, and what a dialog is for is marked.
void expectEnds(ui::Screen& screen) {
  for (const auto& spec : screen.spec().commands) {
    const QPushButton& button = screen.command(spec.name);
    if (!button.isVisible() || spec.key != "Esc") continue;
    const QRect out = placeOf(button, screen);
    for (const auto& other : screen.spec().commands) {
      const QPushButton& beside = screen.command(other.name);
      if (!beside.isVisible() || &beside == &button) continue;
      const QRect place = placeOf(beside, screen);
      EXPECT_FALSE(place.top() == out.top() && place.left() > out.left())
          << other.name << " stands behind " << spec.name;
    }
  }
}

/// Tab goes down and to the right: never up within a column, but for the way back to the first.
void expectTabsAsRead(ui::Screen& screen, const QString& page) {
  const QWidget* start = screen.focusWidget();
  if (!start) return;
  std::vector<const QWidget*> stops;
  for (const QWidget* each = start;;) {
    if (each->isVisible() && each->isEnabled() && (each->focusPolicy() & Qt::TabFocus) && each->window() == &screen)
      stops.push_back(each);
    each = each->nextInFocusChain();
    if (each == start) break;
  }
  int turns = 0;
  QString back;
  for (std::size_t i = 0; i + 1 < stops.size(); ++i) {
    const QRect from = placeOf(*stops[i], screen), to = placeOf(*stops[i + 1], screen);
    const bool isUp = to.bottom() <= from.top() && to.left() < from.right() && from.left() < to.right();
    if (!isUp) continue;
    ++turns;
    back += stops[i]->objectName() + QStringLiteral(" -> ") + stops[i + 1]->objectName() + QStringLiteral("; ");
  }
  EXPECT_LE(turns, 1) << page.toStdString() << ": " << back.toStdString();
}

/// Enter from the first input comes to btnOK.
void expectEnterEnds(ui::Screen& screen) {
  const auto hasOk = std::ranges::any_of(screen.spec().commands, [](const auto& c) { return c.name == "btnOK"; });
  if (!hasOk || !screen.command("btnOK").isVisible() || !screen.command("btnOK").isEnabled()) return;
  for (int presses = 0; presses < 80; ++presses) {
    auto* now = screen.focusWidget();
    const bool isInput = std::ranges::any_of(screen.fields(), [](const auto* field) { return field->hasFocus(); });
    if (!isInput) return;  // btnOK, or where the screen has led
    ScreenTest::press(screen, "Return");
    if (screen.focusWidget() == now) return;  // its Enter means something else
    EXPECT_TRUE(std::ranges::any_of(screen.fields(), [](const auto* field) { return field->hasFocus(); }) ||
                screen.focusWidget() == &screen.command("btnOK"))
        << "from " << now->objectName().toStdString();
  }
  ADD_FAILURE() << "Enter never comes to btnOK";
}

}  // namespace keys_test

TEST_F(ScreenTest, EveryScreenHasItsKeysInOrder) {
  using namespace keys_test;
  for (const auto& name : ui::registeredScreens()) {
    if (name == "F_Xtsd" || name == "F_Loading") continue;
    SCOPED_TRACE(name);
    open(name, [&](ui::Screen& screen) {
      eachPage(screen, [&](const QString& page) {
        expectOneCommandAKey(screen, page);
        expectEnds(screen);
        expectTabsAsRead(screen, page);
      });
      // Enter confirms the remark of a line and the end of an audit, and leads from a search into its list.
      const bool confirms = name.ends_with("_Sele") || name.ends_with("_Sele2") || name.ends_with("_Check");
      if (!confirms && screen.grids().empty()) expectEnterEnds(screen);
    });
  }
}

}  // namespace jxc::test
