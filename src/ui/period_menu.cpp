#include "ui/period_menu.h"

#include "core/periods.h"
#include "ui/display.h"

#include <QMenu>

namespace jxc::ui {

void addPeriodMenu(QPushButton& button, Field& from, Field& to, std::function<void()> chosen) {
  auto* menu = new QMenu(&button);
  menu->setObjectName(QStringLiteral("PopupMenu_") + button.objectName());
  for (const auto& choice : periodChoices()) {
    menu->addAction(qs(choice.caption), &button, [&from, &to, chosen, period = choice.period] {
      const Period days = period();
      from.setText(days.from);
      to.setText(days.to);
      if (chosen) chosen();
    });
  }
  button.setMenu(menu);
}

}  // namespace jxc::ui
