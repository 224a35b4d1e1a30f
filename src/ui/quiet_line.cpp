#include "ui/quiet_line.h"

#include <QAccessible>
#include <QAccessibleWidget>

namespace jxc::ui {
namespace quiet_line_detail {

/// What readers speak whenever it shows.
class Notification : public QAccessibleWidget {
 public:
  explicit Notification(QuietLine* line) : QAccessibleWidget(line, QAccessible::Notification) {}
  QString text(QAccessible::Text which) const override {
    const auto* line = static_cast<const QuietLine*>(object());
    return which == QAccessible::Name ? line->currentMessage() : QAccessibleWidget::text(which);
  }
};

QAccessibleInterface* notificationOf(const QString& /*className*/, QObject* object) {
  auto* line = qobject_cast<QuietLine*>(object);
  return line ? new Notification(line) : nullptr;
}

}  // namespace quiet_line_detail

QuietLine::QuietLine(QWidget* parent) : QStatusBar(parent) {
  QAccessible::installFactory(quiet_line_detail::notificationOf);  // a second time changes nothing
  setSizeGripEnabled(false);
  connect(this, &QStatusBar::messageChanged, this, [this](const QString& text) {
    if (text.isEmpty()) return;
    QAccessibleEvent shows(this, QAccessible::ObjectShow);
    QAccessible::updateAccessibility(&shows);
  });
}

}  // namespace jxc::ui
