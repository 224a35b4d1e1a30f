#include "ui/period_menu.h"

#include "core/periods.h"
#include "ui/display.h"

#include <QMenu>

namespace jxc::ui {

void addPeriodMenu(QPushButton& button, Field& from, Field& to, std::function<void()> chosen) {
  auto* menu = new QMenu(&button);
  menu->setObjectName(QStringLiteral("PopupMenu_") + button.objectName());
  const auto take = [&from, &to, chosen](const Period& days) {
    from.setText(days.from);
    to.setText(days.to);
    if (chosen) chosen();
  };
  // Behind the named months their last twelve, which are not made before somebody looks: today moves on.
  auto* months = new QMenu(QStringLiteral("按月(&M)"), menu);
  QObject::connect(months, &QMenu::aboutToShow, months, [months, take] {
    constexpr int kMonths = 12;
    months->clear();
    for (int ago = 0; ago < kMonths; ++ago) {
      const Period month = monthAgo(ago);
      months->addAction(month.from.left(7), months, [take, month] { take(month); });
    }
  });
  for (const auto& choice : periodChoices()) {
    if (&choice == &periodChoices().back()) menu->addMenu(months);
    menu->addAction(qs(choice.caption), &button, [take, period = choice.period] { take(period()); });
  }
  button.setMenu(menu);
}

}  // namespace jxc::ui
