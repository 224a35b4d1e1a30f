// 功能查找: finds a command by its Chinese name or its pinyin initials.
#pragma once

#include "masterdata/record_search.h"
#include "ui/commands.h"
#include "ui/list_loader.h"

#include <QLineEdit>
#include <QTimer>

#include <functional>
#include <map>
#include <optional>
#include <vector>

class QListWidget;

namespace jxc {

/// Shown commands that match what is typed, the best first: caption begins with it, initials begin with it, either
/// holds it. "cgjh", "进货" and "采购" all find 采购进货.
std::vector<const ui::CommandDefinition*> matchingCommands(const QString& typed);

/// The search box of the main window, with its list below: type, arrows, Enter; Esc goes back. Below the commands stand
/// goods, partners and documents that the text means by number or name. A command that the operator has no right to
/// stands in grey and says why; pressed it tells its refusal. Records that only its screen would show are not told.
class CommandSearch : public QLineEdit {
 public:
  /// `searched`: what stands in the search box of the command's screen; empty for the command by itself.
  using Run = std::function<void(const ui::CommandDefinition&, const QString& searched)>;
  CommandSearch(QWidget* parent, Run run);
  void begin();  // Ctrl+K

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  struct Entry {
    const ui::CommandDefinition* command;
    QString searched = {};
  };
  void refill();
  void readRecords();
  void addRecords();
  bool isAllowedNow(const ui::CommandDefinition& command);
  void add(const Entry& entry, const QString& text, const QString& place);
  void showList();
  void take();
  Run run_;
  QListWidget* list_;
  std::vector<Entry> found_;
  std::map<const ui::CommandDefinition*, bool> allowed_;  // since the box was entered
  QTimer pause_;                                          // records are looked for when the typing stops
  ui::ListLoader reading_{this};
  std::optional<GoodsToFind> goods_;  // read when they are first looked for, until the box is left
};

}  // namespace jxc
