// Every registered screen: opens, is described rightly, takes long and short texts, and closes.
#include "core/schema/schema.h"
#include "screens/harness/screen_test.h"
#include "ui/commands.h"
#include "ui/display.h"
#include "ui/icons.h"
#include "ui/schema_width.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QSet>
#include <QTableView>

#include <algorithm>
#include <iterator>
#include <string_view>

namespace jxc::test {

/// Rent and deposit are neither cost nor price: whoever lends takes them.
constexpr std::string_view kOfLoans[] = {"jh_zj", "jh_yj", "jh_zzj", "jh_thyj", "bsje", "rent", "deposit"};
constexpr int kMostTyped = 1000;
constexpr std::string_view kOfGoods[] = {"gridLines",   "gridWaitingLines", "gridStaging", "gridGoods",
                                         "gridHistory", "gridQuotes",       "gridSp"};

TEST_F(ScreenTest, EveryScreenIsDescribedRightly) {
  QSet<QString> titles;
  for (const auto& name : ui::registeredScreens()) {
    SCOPED_TRACE(name);
    auto& screen = ui::screenNamed(name);
    EXPECT_EQ(screen.objectName().toStdString(), name);
    EXPECT_FALSE(titles.contains(screen.windowTitle())) << screen.windowTitle().toStdString() << " stands twice";
    titles.insert(screen.windowTitle());
    // A display of 1366×768 less a panel and a frame holds it without a scroll bar around it all.
    const QSize least = screen.minimumSizeHint();
    EXPECT_LE(least.width(), 1350) << screen.windowTitle().toStdString();
    // Where a display is narrow, inputs take more lines.
    EXPECT_LE(least.height(), screen.screen()->availableSize().width() < 1280 ? 730 : 690)
        << screen.windowTitle().toStdString();
    for (const auto* field : screen.fields()) {
      const auto& spec = field->spec();
      if (!spec.column.empty()) {
        EXPECT_GE(ui::columnWidth(spec.column), 0) << spec.column << " is not in the schema";
      }
      // Somebody who cannot see the screen hears what an input is for.
      const bool named = !spec.label.empty() || !field->widget()->accessibleName().isEmpty() || [&] {
        for (const auto* label : screen.findChildren<QLabel*>()) {
          if (label->buddy() == field->widget()) return true;
        }
        return false;
      }();
      EXPECT_TRUE(named) << spec.name << " has neither label nor accessible name";
    }
    // What is pasted into an input, a search most of all, has an end. Numbers and fonts have their own, and so have the
    // expressions of a report.
    for (const auto* input : screen.findChildren<QLineEdit*>()) {
      const QWidget* const above = input->parentWidget();
      if (name == "F_Bbsj_Edit" || qobject_cast<const QAbstractSpinBox*>(above) ||
          qobject_cast<const QComboBox*>(above))
        continue;
      EXPECT_TRUE(input->isReadOnly() || input->maxLength() <= kMostTyped)
          << input->objectName().toStdString() << " takes " << input->maxLength() << " characters";
    }
    for (const auto* grid : screen.grids()) {
      const std::string_view list = grid->spec().name;
      EXPECT_FALSE(grid->view()->accessibleName().isEmpty()) << list;
      // What goods cost or are sold for is seen by right, wherever goods or lines of them are listed.
      if (std::ranges::find(kOfGoods, list) == std::end(kOfGoods)) continue;
      for (const ui::ColumnSpec& column : grid->spec().columns)
        EXPECT_TRUE(column.right.isGuarded() || std::ranges::find(kOfLoans, column.field) != std::end(kOfLoans) ||
                    (column.kind != ui::ColumnKind::Money && column.kind != ui::ColumnKind::Total))
            << list << ' ' << column.field;
    }
    QSet<QString> names;
    for (const auto* widget : screen.findChildren<QWidget*>()) {
      const QString object = widget->objectName();
      if (object.isEmpty() || object.startsWith(u"qt_") || !object.at(0).isLower()) continue;
      if (!object.startsWith(u"t") && !object.startsWith(u"com") && !object.startsWith(u"btn")) continue;
      EXPECT_FALSE(names.contains(object)) << object.toStdString() << " stands twice";
      names.insert(object);
    }
  }
}

/// Any screen may be opened by its name alone, with nothing chosen before, and takes whatever is typed: a text as long
/// as its input allows, then a short one, then none. What does not fit was refused at the keyboard.
TEST_F(ScreenTest, EveryScreenOpensAndTakesTextsOfAnyLength) {
  const QString marks = QStringLiteral("长文本'\"%_;-- 😀 O‘Neil (2) ");
  for (const auto& name : ui::registeredScreens()) {
    if (name == "F_Xtsd" || name == "F_Loading") continue;  // the lock opens by its password, the splash by itself
    SCOPED_TRACE(name);
    open(name, [&](ui::Screen& screen) {
      for (auto* field : screen.fields()) {
        const auto kind = field->spec().kind;
        const bool typed = kind == ui::FieldKind::Text || kind == ui::FieldKind::Password ||
                           kind == ui::FieldKind::Secret || kind == ui::FieldKind::Memo;
        if (!typed || !field->isVisible() || !field->isEnabled() || field->isReadOnly()) continue;
        field->setText(marks.repeated(40));
        const int most = field->spec().width > 0 ? field->spec().width : ui::columnWidth(field->spec().column);
        if (most > 0) {
          EXPECT_LE(field->text().size(), most) << field->spec().name;
        }
        field->setText(QStringLiteral("短"));
        field->setText(QString());
      }
      for (auto* grid : screen.grids()) {
        grid->waitLoaded();
        grid->selectRow(0);
      }
      // What F5 does is what the screen is for, and looks like it.
      const auto shown = screen.findChildren<QPushButton*>();
      const auto isF5 = [](auto* button) { return button->isVisible() && button->text().contains(u"F5"_qs); };
      const auto isMain = [](auto* button) { return button->isVisible() && button->property("main").toBool(); };
      EXPECT_EQ(std::ranges::any_of(shown, isF5), std::ranges::count_if(shown, isMain) == 1);
      EXPECT_LE(screen.width(), 1280) << screen.windowTitle().toStdString();
      // Where a display is narrow, inputs take more lines.
      EXPECT_LE(screen.height(), std::max(720, screen.screen()->availableSize().height()))
          << screen.windowTitle().toStdString();
    });
  }
}

TEST(CommandTable, NamesStandOnceRightsExistAndDrawingsToo) {
  QSet<QString> names;
  for (const auto& command : ui::commands()) {
    const QString name = ui::qs(command.name);
    EXPECT_FALSE(names.contains(name)) << command.name;
    names.insert(name);
    EXPECT_TRUE(ui::hasIcon(command.icon)) << command.name << " has no drawing " << command.icon;
    if (command.guard == ui::Guard::Rights) {
      EXPECT_GE(ui::columnWidth("jxc_role." + std::string(command.group)), 1) << command.name;
      EXPECT_GT(command.positions[0], 0) << command.name;
      EXPECT_TRUE(command.refusal.ends_with("！")) << command.name;
    }
  }
  for (const auto& repeat : ui::repeats()) {
    EXPECT_FALSE(names.contains(ui::qs(repeat.name))) << repeat.name;
    names.insert(ui::qs(repeat.name));
    EXPECT_NE(ui::findCommand(repeat.runs), nullptr) << repeat.name;
  }
}

}  // namespace jxc::test
