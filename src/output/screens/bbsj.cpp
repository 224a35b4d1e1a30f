// 报表设计: one button for each template of the program; it opens the template's design.
#include "core/fillers.h"
#include "core/pinyin.h"
#include "core/text.h"
#include "output/printed_documents.h"
#include "output/screens/template_designer.h"
#include "output/templates.h"
#include "platform/report/template_file.h"
#include "stock/document_family.h"
#include "ui/screen.h"

#include <QFileInfo>

#include <algorithm>
#include <set>
#include <string>
#include <utility>
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
    commands.push_back({"btnOwn", "设计"});
    commands.push_back({"btnCancel", "退出", "Esc"});
  }
  std::vector<std::string> texts;
  std::vector<ui::CommandSpec> commands;
};

const Buttons& buttons() {
  static const Buttons all;
  return all;
}

constexpr ui::FieldSpec kFields[] = {
    {.name = "tkey", .label = "查找：", .width = 30},
    {"chkInUse", "只看在用的模板", ui::FieldKind::Check},
    {"comOwn", "本店自己的模板：", ui::FieldKind::Combo},
};

ui::ScreenSpec description() {
  return {.name = "F_Bbsj", .title = "报表设计", .fields = kFields, .commands = buttons().commands, .focus = "tkey"};
}

/// By name of the paper, its first letters, or name of the file.
bool answers(const KnownTemplate& which, const QString& key) {
  const QString caption = words(which.caption);
  return key.isEmpty() || caption.contains(key, Qt::CaseInsensitive) ||
         words(which.name).contains(key, Qt::CaseInsensitive) || makeJm(caption).contains(key, Qt::CaseInsensitive);
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
  ui::Field& tkey = field("tkey");
  ui::Field& chkInUse = field("chkInUse");
  ui::Field& comOwn = field("comOwn");

 protected:
  void activate() override;

 private:
  QPushButton& buttonOf(const KnownTemplate& which) { return command("btn_" + words(which.name).toStdString()); }
  void addGroup(ui::Panel area, std::u16string_view group);
  void showUse();
  void search();
  void openFirst();
  void design(const QString& file, const KnownTemplate* kind);

  std::vector<QWidget*> groups_;
  std::set<QString> inUse_;
};

TF_Bbsj::TF_Bbsj() : Screen(bbsj_detail::description()) {
  panel().row("tkey chkInUse | comOwn btnOwn");
  auto [left, right] = panel().scrolled().columns();
  // Two columns of groups, about as long as each other.
  std::vector<std::pair<std::u16string_view, int>> groups;  // with the number of their templates
  for (const KnownTemplate& each : knownTemplates()) {
    if (groups.empty() || groups.back().first != each.group) groups.emplace_back(each.group, 0);
    ++groups.back().second;
  }
  int longer = 0;  // rows that the left column has more than the right one, titles counted
  for (const auto& [group, count] : groups) {
    const bool isLeft = longer <= 0;
    longer += (isLeft ? 1 : -1) * (1 + (count + bbsj_detail::kInRow - 1) / bbsj_detail::kInRow);
    addGroup(isLeft ? left : right, group);
  }
  left.stretch();
  right.stretch();
  panel()
      .text(QStringLiteral(
          "●：现在打印用的就是它。模板是程序目录report文件夹中的文件，保存时原来的样式留作备份；删除一个模板"
          "文件后，下次启动时恢复为随程序提供的样式。"))
      .buttons("| btnCancel");
  tkey.onChanged([this] { search(); });
  tkey.onEnter([this] {
    openFirst();
    return true;
  });
  chkInUse.onChanged([this] { search(); });
  on(command("btnOwn"), [this] {
    for (const OwnTemplate& own : ownTemplates())
      if (own.file == comOwn.key()) return design(own.file, own.kind);
  });
}

void TF_Bbsj::addGroup(ui::Panel area, std::u16string_view group) {
  ui::Panel frame = area.area(groups_.emplace_back(), 0).group(words(group));
  // Those of a column are as wide as each other, with room for the mark.
  int widest = 0;
  for (const KnownTemplate& each : knownTemplates()) {
    const QPushButton& button = buttonOf(each);
    widest = std::max(widest, button.sizeHint().width() + button.fontMetrics().horizontalAdvance(u"● "_qs));
  }
  std::string row;
  int inRow = 0;
  for (const KnownTemplate& each : knownTemplates()) {
    if (each.group != group) continue;
    QPushButton& button = buttonOf(each);
    button.setFixedWidth(widest);
    on(button, [this, &each] { design(words(each.name) + u".fr3"_qs, &each); });
    row += (row.empty() ? "" : " ") + ("btn_" + words(each.name).toStdString());
    if (++inRow % bbsj_detail::kInRow == 0) {
      frame.buttons(row);
      row.clear();
    }
  }
  if (!row.empty()) frame.buttons(row);
}

void TF_Bbsj::activate() {
  tkey.clear();
  showUse();
  search();
}

void TF_Bbsj::showUse() {
  inUse_ = templatesInUse();
  for (const KnownTemplate& each : knownTemplates()) {
    const QString file = words(each.name) + u".fr3"_qs;
    const QString stands = templateInUse(each.name);
    const bool isUsed = inUse_.contains(file);
    QPushButton& button = buttonOf(each);
    button.setText((isUsed ? u"● "_qs : QString()) + words(each.caption));
    button.setEnabled(QFileInfo::exists(templatePath(file)));
    button.setToolTip(file + (isUsed           ? u"，打印用的就是它"_qs
                              : stands != file ? u"，打印用的是本店的“%1”"_qs.arg(stands.chopped(4))
                              : each.isAwaited ? u"，使用它的功能还没有提供"_qs
                                               : u"，按现在的参数和权限不使用"_qs));
  }
  std::vector<ListItem> own;
  for (const OwnTemplate& each : ownTemplates())
    own.push_back({(inUse_.contains(each.file) ? u"● "_qs : QString()) + each.caption() +
                       (each.kind ? u"（%1）"_qs.arg(words(each.kind->caption)) : QString()),
                   each.file});
  comOwn.setItems(own, true);
  comOwn.setVisible(!own.empty());
  command("btnOwn").setVisible(!own.empty());
}

void TF_Bbsj::search() {
  for (const KnownTemplate& each : knownTemplates()) {
    const bool isWanted = !chkInUse.isChecked() || inUse_.contains(words(each.name) + u".fr3"_qs);
    buttonOf(each).setVisible(isWanted && bbsj_detail::answers(each, tkey.trimmed()));
  }
  for (QWidget* group : groups_) {
    const auto buttons = group->findChildren<QPushButton*>();
    group->setVisible(std::ranges::any_of(buttons, [](const QPushButton* each) { return !each->isHidden(); }));
  }
}

void TF_Bbsj::openFirst() {
  for (const KnownTemplate& each : knownTemplates())
    if (!tkey.isEmpty() && !buttonOf(each).isHidden()) return buttonOf(each).click();
}

void TF_Bbsj::design(const QString& file, const KnownTemplate* kind) {
  const QString path = templatePath(file);
  try {
    report::loadTemplate(path);
  } catch (const report::TemplateError& failure) {
    const bool mayRestore = failure.kind() == report::TemplateError::Kind::Damaged && kind;
    if (!mayRestore) return prompt().notice(failure.message());
    if (!prompt().ask(failure.message() + u"\r\n\r\n要恢复为随程序提供的样式吗？损坏的文件留作备份。"_qs)) return;
    const QByteArray delivered = deliveredTemplate(QStringView(kind->name));
    report::saveTemplate(report::parseTemplate(delivered), path, report::SaveMode::Force);
  }
  ui::screenAs<TF_Bbsj_Edit>("F_Bbsj_Edit").design(path, kind ? bbsj_detail::makerOf(*kind) : ui::LivePreview::Maker());
  showUse();
  search();
}

namespace bbsj_detail {
const ui::Registered<TF_Bbsj> kRegistered{"F_Bbsj"};
}

}  // namespace jxc
