#include "stock/line_import.h"

#include "core/asked_once.h"
#include "core/statements.h"
#include "core/text.h"

#include <QDate>

#include <algorithm>
#include <cmath>
#include <set>

namespace jxc {
namespace line_import_detail {

constexpr char16_t kCode[] = u"商品编号";
constexpr char16_t kBarcode[] = u"商品条码";
constexpr char16_t kName[] = u"商品名称";
constexpr char16_t kQuantity[] = u"数量";
constexpr char16_t kProduced[] = u"生产日期";
constexpr char16_t kNote[] = u"备注";

/// The columns of a sheet by their names; blanks and marks around a name do not count.
class Columns {
 public:
  explicit Columns(const RowSet& sheet) : sheet_(sheet) {
    for (const std::string& name : sheet.columns())
      names_ << plain(QString::fromStdString(name));
  }
  bool has(QStringView name) const { return names_.contains(name.toString()); }
  QString text(const Row& row, QStringView name) const {
    const qsizetype at = names_.indexOf(name.toString());
    return at < 0 ? QString() : sheet_.text(row.index(), static_cast<int>(at)).trimmed();
  }

 private:
  static QString plain(const QString& name) {
    QString letters;
    for (const QChar c : name)
      if (c.isLetterOrNumber()) letters += c;
    return letters;
  }
  const RowSet& sheet_;
  QStringList names_;
};

/// Takes down what a rule would say.
class Listening final : public Prompt {
 public:
  QStringList refusals;
  QString question;
  void notice(const QString& text) override { refusals << text; }
  bool ask(const QString& text) override {
    question = text;
    return true;
  }
  Answer askOrCancel(const QString&) override { return Answer::Cancel; }
};

std::optional<double> plainNumber(QString text) {
  bool isNumber = false;
  const double number = text.remove(u',').toDouble(&isNumber);
  return isNumber && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

/// yyyy-MM-dd; nothing when it is no date.
std::optional<QString> dateOf(QString text) {
  text.replace(u'/', u'-');
  const QDate date = QDate::fromString(text.section(u' ', 0, 0), u"yyyy-M-d"_qs);
  return date.isValid() ? std::optional(date.toString(u"yyyy-MM-dd"_qs)) : std::nullopt;
}

struct Judging {
  const LineImport& wanted;
  const ManyLines& rules;
  const LinePlace& place;
  const Lines target;
  std::set<QString> passed = {};  // goods, where each stands on the document once

  void judge(ImportLine& line, const QString& barcode) {
    QStringList faults, warnings;
    const RowSet goods = findGoods(line.code, barcode);
    if (goods.isEmpty()) {
      faults << words(wanted.unknownGoods);
    } else {
      line.code = goods.front().text("g_sn");
      judgeGoods(line, goods.front(), faults, warnings);
    }
    const double quantity = wanted.priceAlone ? 0 : judgeQuantity(line.quantity, faults);
    const auto price = plainNumber(line.price);
    const bool mustHavePrice = wanted.priceAlone || !line.price.isEmpty();
    if (mustHavePrice && (!price || *price < 0 || *price >= kDearest)) faults << words(wanted.price) + u"不正确"_qs;
    if (wanted.priceAlone && price && *price == 0) faults << words(wanted.price) + u"必须大于0"_qs;
    judgeDate(line, faults);
    if (faults.isEmpty() && isRepeated(line.code)) faults << words(wanted.repeated);
    if (faults.isEmpty()) write(line, quantity, price, faults, warnings);
    if (faults.isEmpty()) passed.insert(line.code);  // a row that is refused stands in nobody's way
    using enum ImportLine::Verdict;
    line.verdict = !faults.isEmpty() ? Refused : warnings.isEmpty() ? Fine : PassesWithWarning;
    line.words = line.verdict == Fine ? u"可顺利导入"_qs : (faults + warnings).join(u"；"_qs);
  }

 private:
  bool isRepeated(const QString& goods) {
    if (wanted.repeated.empty()) return false;
    PickingMemory memory;
    Listening nobody;
    return passed.contains(goods) || !rules.mayStage(goods, place, target, memory, nobody);
  }

  double judgeQuantity(const QString& typed, QStringList& faults) const {
    const auto quantity = plainNumber(typed);
    if (typed.isEmpty())
      faults << u"数量不能为空"_qs;
    else if (!quantity)
      faults << u"数量不是数字"_qs;
    else if (const QuantityRange range = rules.quantities(); !range.has(roundedQuantity(*quantity)))
      faults << (range.minus ? u"数量不能为零"_qs : range.zero ? u"数量不能为负数"_qs : u"数量不能为零或负数"_qs);
    return quantity.value_or(0);
  }

  static RowSet findGoods(const QString& code, const QString& barcode) {
    if (code.isEmpty() && !barcode.isEmpty())
      return openSelect("select top 1 g_sn,g_name,g_jy from jxc_goods where g_sptm=? order by g_jy,g_sn",
                        sanitizeText(barcode));
    return openSelect("select g_sn,g_name,g_jy from jxc_goods where g_sn=? and g_sn<>'00000000'", sanitizeText(code));
  }

  void judgeGoods(ImportLine& line, const Row& goods, QStringList& faults, QStringList& warnings) const {
    if (line.name.isEmpty())
      line.name = goods.text("g_name");  // a sheet of codes is looked through by names
    else if (line.name != goods.text("g_name"))
      warnings << u"商品名称和编号不一致"_qs;
    if (goods.integer("g_jy") != 0) {
      faults << u"商品已停用"_qs;
    } else {
      const Sql list = rules.goodsToPick(place, {.goods = line.code});
      if (!exists(list)) faults << words(wanted.notOffered);
    }
  }

  void judgeDate(ImportLine& line, QStringList& faults) const {
    if (line.produced.isEmpty()) {
      if (wanted.needsProduced) faults << u"生产日期不能为空"_qs;
      return;
    }
    const auto date = dateOf(line.produced);
    if (date)
      line.produced = *date;
    else
      faults << u"日期格式不正确"_qs;
  }

  void write(ImportLine& line, double quantity, std::optional<double> price, QStringList& faults,
             QStringList& warnings) const {
    line.draft = rules.newLine(line.code, place, true);
    if (price && !line.price.isEmpty()) {
      const SheetPrice taken = rules.takeSheetPrice(line.draft, *price);
      if (taken.fault) faults << *taken.fault;
      if (taken.warning) warnings << *taken.warning;
    }
    line.draft.amounts.setQuantity(quantity);
    line.draft.produced = line.produced;
    line.draft.note = line.note;
    Listening rule;
    if (!rules.stockAllows(line.code, line.draft.amounts.quantity(), place, rule)) faults << rule.refusals;
    if (!rule.question.isEmpty())
      warnings << (rule.question.contains(u"不寻常"_qs) ? u"数量不寻常"_qs : u"库存不足"_qs);
  }
};

}  // namespace line_import_detail

std::vector<QString> importColumns(const LineImport& wanted) {
  using namespace line_import_detail;
  std::vector<QString> columns;
  for (const char16_t* name : {kCode, kName})
    columns.push_back(QString::fromUtf16(name));
  if (!wanted.priceAlone) columns.push_back(QString::fromUtf16(kQuantity));
  if (wanted.hasPrice) columns.push_back(words(wanted.price));
  if (wanted.needsProduced) columns.push_back(QString::fromUtf16(kProduced));
  if (wanted.hasNote) columns.push_back(QString::fromUtf16(kNote));
  return columns;
}

std::optional<std::vector<ImportLine>> judgeLines(const RowSet& sheet, const LineImport& wanted, const ManyLines& rules,
                                                  const LinePlace& place, Prompt& prompt, Lines target,
                                                  const LineProgress& progress) {
  using namespace line_import_detail;
  const Columns columns(sheet);
  const QString needed = wanted.priceAlone ? words(wanted.price) : QString::fromUtf16(kQuantity);
  if (refused({{sheet.isEmpty(), u"模板中没有数据，不能进行导入操作！"_qs},
               {!columns.has(kCode) && !columns.has(kBarcode), u"表格中没有“商品编号”这一列，请按模板填写！"_qs},
               {!columns.has(needed), u"表格中没有“%1”这一列，请按模板填写！"_qs.arg(needed)}},
              prompt))
    return std::nullopt;
  std::vector<ImportLine> lines;
  Judging judging{wanted, rules, place, target};
  for (const Row row : sheet) {
    if (!goesOn(progress, static_cast<std::size_t>(row.index()) + 1, static_cast<std::size_t>(sheet.rowCount())))
      return std::nullopt;
    ImportLine line;
    line.code = columns.text(row, kCode);
    line.name = columns.text(row, kName);
    if (!wanted.priceAlone) line.quantity = columns.text(row, kQuantity);
    if (wanted.hasPrice) line.price = columns.text(row, words(wanted.price));
    line.produced = columns.text(row, kProduced);
    if (wanted.hasNote) line.note = columns.text(row, kNote);
    const QString barcode = columns.text(row, kBarcode);
    if ((line.code + barcode + line.name + line.quantity + line.price).isEmpty()) continue;
    judging.judge(line, barcode);
    lines.push_back(std::move(line));
  }
  if (refused({{lines.empty(), u"模板中没有数据，不能进行导入操作！"_qs}}, prompt)) return std::nullopt;
  return lines;
}

QString ImportResult::text() const {
  const QString text =
      u"导入完毕\r\n\r\n共%1条记录\r\n\r\n成功导入%2条\r\n\r\n失败%3条"_qs.arg(rows).arg(taken).arg(rows - taken);
  return passedOver.isEmpty() ? text : text + u"\r\n\r\n单据中已有，未重复添加："_qs + passedOver.join(u'，');
}

std::optional<ImportResult> importLines(std::span<const ImportLine> lines, const ManyLines& rules,
                                        const LinePlace& place, Lines target, Prompt& asked,
                                        const LineProgress& progress) {
  const bool nothing = std::none_of(lines.begin(), lines.end(), [](const ImportLine& line) { return line.passes(); });
  if (refused({{nothing, u"没有可以导入的商品！"_qs}}, asked)) return std::nullopt;
  AskedOnce prompt(asked);
  PickingMemory memory;
  std::set<QString> once;
  std::vector<LineDraft> taken;
  for (const ImportLine& line : lines) {
    if (!line.passes() || !rules.mayStage(line.code, place, target, memory, prompt)) continue;
    if (rules.goodsStandOnce() && !once.insert(line.code).second) {
      memory.passedOver << line.code;
      continue;
    }
    if (!rules.stockAllows(line.code, line.draft.amounts.quantity(), place, prompt, &memory)) return std::nullopt;
    taken.push_back(line.draft);
  }
  const auto added = rules.addLines(target, place, taken, progress);
  if (!added) return std::nullopt;
  isRefused(added->closed, asked);
  return ImportResult{.rows = static_cast<int>(lines.size()),
                      .taken = added->lines,
                      .number = added->number,
                      .passedOver = memory.passedOver};
}

}  // namespace jxc
