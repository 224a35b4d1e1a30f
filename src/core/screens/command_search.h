// 功能查找: finds a command by its Chinese name or its pinyin initials.
#pragma once

#include "ui/commands.h"

#include <QLineEdit>

#include <functional>
#include <vector>

class QListWidget;

namespace jxc {

/// Shown commands that match what is typed, the best first: caption begins with it, initials begin with it, either
/// holds it. "cgjh", "进货" and "采购" all find 采购进货.
std::vector<const ui::CommandDefinition*> matchingCommands(const QString& typed);

/// The search box of the main window, with its list below: type, arrows, Enter; Esc goes back.
class CommandSearch : public QLineEdit {
 public:
  CommandSearch(QWidget* parent, std::function<void(const ui::CommandDefinition&)> run);
  void begin();  // Ctrl+K

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  void refill();
  void take();
  std::function<void(const ui::CommandDefinition&)> run_;
  QListWidget* list_;
  std::vector<const ui::CommandDefinition*> found_;
};

}  // namespace jxc
