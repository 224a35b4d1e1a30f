// 报表设计: one button for each template of the program; it opens the template's design.
#include "core/text.h"
#include "output/printed_documents.h"
#include "output/screens/template_designer.h"
#include "output/templates.h"
#include "stock/document_family.h"
#include "ui/screen.h"

#include <QFileInfo>

#include <string>
#include <vector>

namespace jxc {
namespace bbsj_detail {

/// The commands by the list of templates; their texts must outlive the screen.
struct Buttons {
  Buttons() {
    texts.reserve(knownTemplates().size() * 2);
    for (const KnownTemplate& each : knownTemplates()) {
      texts.push_back("btn_" + words(each.name).toStdString());
      texts.push_back(words(each.caption).toStdString());
      commands.push_back({.name = texts[texts.size() - 2], .caption = texts.back()});
    }
    commands.push_back({"btnCancel", "退出", "Esc"});
  }
  std::vector<std::string> texts;
  std::vector<ui::CommandSpec> commands;
};

const Buttons& buttons() {
  static const Buttons all;
  return all;
}

ui::ScreenSpec description() {
  return {.name = "F_Bbsj", .title = "报表设计", .commands = buttons().commands};
}

constexpr int kInRow = 3;

/// What a document's template prints is looked at best on the document that the shop saved last; other templates, and
/// those of a shop that has none yet, show their samples.
ui::LivePreview::Maker makerOf(const KnownTemplate& which) {
  const std::u16string_view stem = which.name.substr(0, which.name.find_last_not_of(u"0123456789") + 1);
  for (const DocumentFamily& each : documentFamilies()) {
    const std::u16string_view plain = each.paper.plain;
    if (plain.substr(0, plain.find(u'.')) != stem) continue;
    const QString number = lastSavedDocument(each);
    if (number.isEmpty()) continue;
    return [&each, number](const report::Template& design) {
      report::Report report = reportOver(design);
      fillSavedDocument(report, each, number);
      return report.prepare();
    };
  }
  return [](const report::Template& design) { return sampleOf(design).prepare(); };
}

}  // namespace bbsj_detail

class TF_Bbsj : public ui::Screen {
 public:
  TF_Bbsj();

 protected:
  void activate() override;

 private:
  void addGroup(ui::Panel area, std::u16string_view group);
  void design(const KnownTemplate& which);
};

TF_Bbsj::TF_Bbsj() : Screen(bbsj_detail::description()) {
  auto [left, right] = panel().columns();
  // Two columns of groups, about as long as each other.
  std::vector<std::u16string_view> groups;
  for (const KnownTemplate& each : knownTemplates())
    if (groups.empty() || groups.back() != each.group) groups.push_back(each.group);
  for (std::size_t i = 0; i < groups.size(); ++i)
    addGroup(i % 2 == 0 ? left : right, groups[i]);
  left.stretch();
  right.stretch();
  panel()
      .text(
          QStringLiteral("模板是程序目录report文件夹中的文件，保存前会保留原文件；删除一个模板文件后，下次启动时恢复为"
                         "随程序提供的样式。"))
      .buttons("| btnCancel");
}

void TF_Bbsj::addGroup(ui::Panel area, std::u16string_view group) {
  ui::Panel frame = area.group(words(group));
  std::string row;
  int inRow = 0;
  for (const KnownTemplate& each : knownTemplates()) {
    if (each.group != group) continue;
    const std::string name = "btn_" + words(each.name).toStdString();
    QPushButton& button = command(name);
    button.setToolTip(words(each.name) + u".fr3"_qs);
    button.setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    on(button, [this, &each] { design(each); });
    row += (row.empty() ? "" : " ") + name;
    if (++inRow % bbsj_detail::kInRow == 0) {
      frame.buttons(row);
      row.clear();
    }
  }
  if (!row.empty()) frame.buttons(row);
}

void TF_Bbsj::activate() {
  for (const KnownTemplate& each : knownTemplates())
    command("btn_" + words(each.name).toStdString())
        .setEnabled(QFileInfo::exists(templatePath(QStringView(each.name))));
}

void TF_Bbsj::design(const KnownTemplate& which) {
  ui::screenAs<TF_Bbsj_Edit>("F_Bbsj_Edit").design(templatePath(QStringView(which.name)), bbsj_detail::makerOf(which));
}

namespace bbsj_detail {
const ui::Registered<TF_Bbsj> kRegistered{"F_Bbsj"};
}

}  // namespace jxc
