// 名称列表屏幕: the list of such words and the dialog of one.
#pragma once

#include "core/named_list.h"
#include "ui/list_screen.h"

#include <functional>

namespace jxc {

/// Asks for one name.
class NameScreen : public ui::Screen {
 public:
  /// Gets what was typed and tells whether that was all.
  using Save = std::function<bool(const QString& typed, Prompt& prompt)>;

  NameScreen();
  /// Shows `name` to be changed, at most `width` characters. Whether it was saved.
  bool edit(const QString& title, const QString& label, int width, const QString& name, Save save);

 private:
  Save save_;
};

/// A list of words with the commands btnAdd, btnModi and btnDele, as far as the description has them. `noun` is what
/// one of them is called: "部门".
class NamedListScreen : public ui::ListScreen {
 public:
  NamedListScreen(const ui::ScreenSpec& spec, const NamedList& list, const QString& noun);
  NamedListScreen(const ui::ScreenSpec& spec, const NamedList& list, const QString& noun, Query query);

 private:
  bool editWord(std::int64_t id);

  const NamedList& words_;
  QString noun_;
};

}  // namespace jxc
