#include "stock/screens/line_import_screen.h"

#include "core/program_directory.h"
#include "core/text.h"
#include "platform/sheet/sheet_reader.h"
#include "platform/sheet/sheet_writer.h"
#include "ui/display.h"
#include "ui/file_dialogs.h"
#include "ui/progress.h"

#include <QApplication>
#include <QFile>

#include <algorithm>

namespace jxc {
namespace line_import_screen_detail {

using ui::ColumnKind;

constexpr ui::FieldSpec kFields[] = {{"tfile", "表格文件：", ui::FieldKind::Text, "", 0, ui::ReadOnly}};
constexpr ui::ColumnSpec kLines[] = {
    {"row", "行", ColumnKind::Number, 5},         {"g_sn", "商品编号", ColumnKind::Text, 12},
    {"g_name", "商品名称", ColumnKind::Text, 26}, {"sl", "数量", ColumnKind::Text, 9},
    {"dj", "单价", ColumnKind::Text, 10},         {"scrq", "生产日期", ColumnKind::Date, 11},
    {"bz", "备注", ColumnKind::Text, 10},         {"status", "检查结果", ColumnKind::Text, 30},
};
constexpr ui::GridSpec kGrids[] = {{"gridLines", "表格中的商品", kLines,
                                    "按F2打开表格文件（.xlsx、.xls），第一张表的列名与模板相同，次序不限", "row"}};
constexpr ui::CommandSpec kCommands[] = {{"btnOpen", "打开表格", "F2"},
                                         {"btnMb", "保存模板", "F7", "保存一份空的模板，填写后再导入"},
                                         {"btnOK", "导入", "F5"},
                                         {"btnCancel", "取消", "Esc"}};

ui::ScreenSpec screenOf(std::string_view name, const LineImport& wanted) {
  return {.name = name,
          .title = wanted.title,
          .fields = kFields,
          .grids = kGrids,
          .commands = kCommands,
          .focus = "gridLines"};
}

constexpr char kFilter[] = "表格 (*.xlsx *.xls)";

}  // namespace line_import_screen_detail

LineImportScreen::LineImportScreen(std::string_view name, const LineImport& wanted, LinesOf lines)
    : Screen(line_import_screen_detail::screenOf(name, wanted)), wanted_(wanted), linesOf_(std::move(lines)) {
  panel().form({"tfile"}).row("btnOpen btnMb").grid("gridLines").buttons("| btnOK btnCancel");
  grid("gridLines").setColumnVisible("sl", !wanted_.priceAlone);
  grid("gridLines").setCaption("dj", words(wanted_.price));
  grid("gridLines").setColumnVisible("scrq", wanted_.needsProduced);
  grid("gridLines").setColumnVisible("dj", wanted_.hasPrice);
  grid("gridLines").setColumnVisible("bz", wanted_.hasNote);
  grid("gridLines").setRowLook([this](const Row& row) {
    const ImportLine& line = lines_[static_cast<std::size_t>(row.integer("row") - 1)];
    if (!line.passes()) return ui::RowLook::Bad;
    return line.verdict == ImportLine::Verdict::Fine ? ui::RowLook::Normal : ui::RowLook::Warning;
  });
  on(command("btnOpen"), [this] { btnOpenClick(); });
  on(command("btnMb"), [this] { btnMbClick(); });
  on(command("btnOK"), [this] { btnOKClick(); });
}

CopyResult LineImportScreen::importInto(const LinePlace& place, Lines target) {
  place_ = place;
  target_ = target;
  result_ = {.lines = 0, .number = place.number};
  showModal();
  return result_;
}

void LineImportScreen::activate() {
  lines_.clear();
  field("tfile").clear();
  showLines();
}

void LineImportScreen::btnOpenClick() {
  const QString path =
      ui::chooseOpenFile(this, QStringLiteral("打开表格"), QString::fromUtf8(line_import_screen_detail::kFilter));
  if (!path.isEmpty()) openFile(path);
}

void LineImportScreen::openFile(const QString& path) {
  lines_.clear();
  field("tfile").setText(path);
  try {
    const RowSet sheet = openExcel(path)->rows();
    lines_ = judgeLines(sheet, wanted_, linesOf_(place_.number), place_, prompt(), target_,
                        ui::progressOnDemand(u"正在检查表格中的商品……"_qs, this))
                 .value_or(std::vector<ImportLine>());
  } catch (const SheetError& error) {
    prompt().notice(error.message());
  }
  showLines();
}

void LineImportScreen::showLines() {
  RowSet rows({"row", "g_sn", "g_name", "sl", "dj", "scrq", "bz", "status"});
  std::int64_t number = 0;
  for (const ImportLine& line : lines_) {
    rows.addInteger(++number);
    for (const QString* text :
         {&line.code, &line.name, &line.quantity, &line.price, &line.produced, &line.note, &line.words})
      rows.addText(text->toStdString());
  }
  auto& shown = grid("gridLines");
  shown.setRows(std::move(rows));
  command("btnOK").setEnabled(
      std::any_of(lines_.begin(), lines_.end(), [](const ImportLine& line) { return line.passes(); }));
}

void LineImportScreen::btnMbClick() {
  const QString name = ui::qs(wanted_.templateFile);
  // From the document's own menu this dialog is not there to stand below.
  const QString path = ui::chooseSaveFile(QApplication::activeWindow(), QStringLiteral("保存模板"), name,
                                          QStringLiteral("表格 (*.xlsx)"));
  if (!path.isEmpty()) saveTemplate(path);
}

void LineImportScreen::saveTemplate(const QString& path) {
  try {
    // A shop may have put its own template in the place of ours.
    const QString supplied = suppliedPath(u"模板文件/"_qs + ui::qs(wanted_.templateFile));
    if (QFile::exists(supplied) && (!QFile::exists(path) || QFile::remove(path)) && QFile::copy(supplied, path)) {
      QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther);
      return;
    }
    Sheet sheet;
    for (const QString& caption : importColumns(wanted_))
      sheet.columns.push_back({.caption = caption, .width = 16});
    writeSheet(path, sheet);
  } catch (const SheetError& error) {
    prompt().notice(error.message());
  }
}

void LineImportScreen::btnOKClick() {
  const auto imported = importLines(lines_, linesOf_(place_.number), place_, target_, prompt(),
                                    ui::progressOnDemand(u"正在导入商品……"_qs, this));
  if (!imported) return;
  result_ = {.lines = imported->taken, .number = imported->number};
  prompt().notice(imported->text());
  accept();
}

}  // namespace jxc
