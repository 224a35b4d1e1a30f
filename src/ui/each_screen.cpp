#include "ui/each_screen.h"

#include "core/text.h"
#include "ui/display.h"

namespace jxc::ui {
namespace each_screen_detail {

std::string column(qsizetype at) {
  return "c" + std::to_string(at);
}

}  // namespace each_screen_detail

EachParts::EachParts(const EachQuestion& question) {
  using each_screen_detail::column;
  // The descriptions below point into these: none is added later.
  const auto count = question.headings.size();
  for (qsizetype i = 0; i < count; ++i) {
    texts.push_back(column(i));
    texts.push_back(question.headings[i].toStdString());
  }
  const std::size_t all = texts.size();
  texts.push_back((u"全部“"_qs + question.first + u"”"_qs).toStdString());
  texts.push_back((u"全部“"_qs + question.second + u"”"_qs).toStdString());
  for (std::size_t i = 0; i < all; i += 2)
    columnSpecs.push_back({texts[i], texts[i + 1], ColumnKind::Text, i == 2 ? 26 : 10});
  columnSpecs.push_back({"answer", "回答", ColumnKind::Text, 12});
  gridSpecs.push_back({"gridEach", "逐项回答", columnSpecs});
  commandSpecs = {{"btnTurn", "改变回答", "F3", "当前行的另一个回答；按回车也可以"},
                  {"btnFirst", texts[all], "F6"},
                  {"btnSecond", texts[all + 1], "F7"},
                  {"btnOK", "确定", "F5"},
                  {"btnCancel", "取消", "Esc"}};
}

EachScreen::EachScreen(const EachQuestion& question)
    : EachParts(question),
      Screen(
          {.name = "F_Each", .title = "信息提醒", .grids = gridSpecs, .commands = commandSpecs, .focus = "gridEach"}),
      question_(question),
      answers_(question.items.size(), EachAnswer::First) {
  QString text = question.text;
  panel()
      .text(text.replace(u"\r\n"_qs, u"\n"_qs))
      .grid("gridEach")
      .buttons("btnTurn btnFirst btnSecond | btnOK btnCancel");
  gridEach.onActivated([this] { turnCurrent(); });
  on(command("btnTurn"), [this] { turnCurrent(); });
  on(command("btnFirst"), [this] { answerAll(EachAnswer::First); });
  on(command("btnSecond"), [this] { answerAll(EachAnswer::Second); });
  on(command("btnOK"), [this] { accept(); });
}

std::optional<std::vector<EachAnswer>> EachScreen::ask() {
  return showModal() ? std::optional(answers_) : std::nullopt;
}

void EachScreen::activate() {
  showAnswers(1);
}

void EachScreen::showAnswers(std::int64_t current) {
  std::vector<std::string> names{"id"};
  for (qsizetype i = 0; i < question_.headings.size(); ++i)
    names.push_back(each_screen_detail::column(i));
  names.emplace_back("answer");
  RowSet rows(names);
  for (std::size_t i = 0; i < question_.items.size(); ++i) {
    rows.addInteger(static_cast<std::int64_t>(i) + 1);
    for (const QString& cell : question_.items[i])
      rows.addText(cell.toStdString());
    rows.addText((answers_[i] == EachAnswer::First ? question_.first : question_.second).toStdString());
  }
  gridEach.setRows(rows);
  gridEach.selectId(current);
}

void EachScreen::answerAll(EachAnswer answer) {
  answers_.assign(answers_.size(), answer);
  showAnswers(gridEach.currentId());
}

void EachScreen::turnCurrent() {
  const std::int64_t current = gridEach.currentId();
  if (current == 0) return;
  EachAnswer& answer = answers_[static_cast<std::size_t>(current - 1)];
  answer = answer == EachAnswer::First ? EachAnswer::Second : EachAnswer::First;
  showAnswers(current);
}

}  // namespace jxc::ui
