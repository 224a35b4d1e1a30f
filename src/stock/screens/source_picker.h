// 选择原单: the list of audited documents from which one is returned as a whole.
#pragma once

#include "core/sql.h"
#include "ui/picker_screen.h"

#include <QString>

namespace jxc {

/// A list over audited documents; `number` is the column of their number.
class SourcePicker : public ui::PickerScreen {
 public:
  struct Description {
    std::string_view name, title;
    std::span<const ui::GridSpec> grids;
    Sql (*query)(const QString& typed);
  };
  explicit SourcePicker(const Description& description)
      : PickerScreen({.screen = {.name = description.name, .title = description.title, .grids = description.grids},
                      .query = description.query}) {}
};

/// Number of the document that was picked from such a list; empty when none was.
inline QString pickSource(std::string_view screen, std::string_view number) {
  const auto row = ui::screenAs<SourcePicker>(screen).pick();
  return row ? row->text(number) : QString();
}

}  // namespace jxc
