#include "masterdata/lens_sheet.h"

#include "core/asked_once.h"
#include "core/rounding.h"
#include "core/statements.h"
#include "core/text.h"
#include "masterdata/goods_lenses.h"
#include "stock/goods_words.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace jxc {
namespace lens_sheet_detail {

int placeOf(const std::vector<double>& powers, double power) {
  const auto found =
      std::find_if(powers.begin(), powers.end(), [power](double each) { return std::abs(each - power) < kSamePower; });
  return found == powers.end() ? -1 : static_cast<int>(found - powers.begin());
}

/// Takes a power in where it belongs; its place.
int insertPower(std::vector<double>& powers, double power) {
  const auto at = std::lower_bound(powers.begin(), powers.end(), power);
  return static_cast<int>(powers.insert(at, roundEps(power, 3)) - powers.begin());
}

std::vector<double> ascending(std::vector<double> powers) {
  std::sort(powers.begin(), powers.end());
  powers.erase(std::unique(powers.begin(), powers.end(), [](double a, double b) { return b - a < kSamePower; }),
               powers.end());
  return powers;
}

/// Articles for the cells that have a quantity and no article. False: the operator would rather not.
bool makeMissing(LensSheet& sheet, Prompt& prompt) {
  std::vector<PowerPair> powers;
  std::vector<LensSheet::Cell*> cells;
  for (int row = 0; row < static_cast<int>(sheet.spheres.size()); ++row)
    for (int column = 0; column < static_cast<int>(sheet.cylinders.size()); ++column) {
      LensSheet::Cell& cell = sheet.at(row, column);
      if (!sheet.holds(cell) || !cell.goods.isEmpty()) continue;
      powers.push_back(
          {sheet.spheres[static_cast<std::size_t>(row)], sheet.cylinders[static_cast<std::size_t>(column)]});
      cells.push_back(&cell);
    }
  if (powers.empty()) return true;
  if (!prompt.ask(u"“%1”有 %2 个光度还没有商品资料，\r\n\r\n确认按该商品的价格建立吗？"_qs.arg(sheet.product)
                      .arg(powers.size())))
    return false;
  Transaction transaction(accountDb());
  const QStringList numbers = addLensPowers(sheet.product, powers);
  transaction.commit();
  for (std::size_t i = 0; i < cells.size(); ++i) {
    cells[i]->goods = numbers[static_cast<qsizetype>(i)];
    cells[i]->offered = true;
  }
  return true;
}

}  // namespace lens_sheet_detail

double LensSheet::total() const {
  double sum = 0;
  for (const Cell& cell : cells)
    sum += cell.quantity;
  return sum;
}

bool LensSheet::isEmpty() const {
  return std::none_of(cells.begin(), cells.end(), [this](const Cell& cell) { return holds(cell); });
}

int LensSheet::rowOf(double sphere) const {
  return lens_sheet_detail::placeOf(spheres, sphere);
}

int LensSheet::columnOf(double cylinder) const {
  return lens_sheet_detail::placeOf(cylinders, cylinder);
}

void LensSheet::addSphere(double sphere) {
  if (rowOf(sphere) >= 0) return;
  const int row = lens_sheet_detail::insertPower(spheres, sphere);
  cells.insert(cells.begin() + row * static_cast<std::ptrdiff_t>(cylinders.size()), cylinders.size(), Cell());
}

void LensSheet::addCylinder(double cylinder) {
  if (columnOf(cylinder) >= 0) return;
  const std::size_t before = cylinders.size();
  const int column = lens_sheet_detail::insertPower(cylinders, cylinder);
  for (std::size_t row = spheres.size(); row-- > 0;)
    cells.insert(cells.begin() + static_cast<std::ptrdiff_t>(row * before) + column, Cell());
}

Sql lensSheetProducts(const QString& typed) {
  Filter filter;
  filter.add("g_isjp<>0").add("g_jy=0").add("g_qc<>''");
  if (const QString key = sanitizeKeyword(typed.trimmed()); !key.isEmpty()) {
    const QString like = u'%' + key + u'%';
    filter.add("(g_qc like ? or g_jm like ?)", like, like);
  }
  return Sql("select g_qc,count(*) as gs,min(id) as id from jxc_goods")
      .where(filter)
      .add(" group by g_qc order by g_qc");
}

LensSheet readLensSheet(const QString& product, const ManyLines& rules, const LinePlace& place) {
  using namespace lens_sheet_detail;
  LensSheet sheet;
  sheet.product = product;
  sheet.zeroCounts = rules.quantities().zero;
  const std::vector<LensArticle> articles = lensArticles(product);
  for (const LensArticle& article : articles) {
    sheet.spheres.push_back(article.powers.sphere);
    sheet.cylinders.push_back(article.powers.cylinder);
  }
  sheet.spheres = ascending(std::move(sheet.spheres));
  sheet.cylinders = ascending(std::move(sheet.cylinders));
  sheet.cells.resize(sheet.spheres.size() * sheet.cylinders.size());

  const Sql list = rules.goodsToPick(place, {.lensProduct = product});
  std::map<QString, double> offered;
  const RowSet rows = openSelect(list);
  for (const Row row : rows)
    offered.emplace(row.text("g_sn"), row.number("kc_sl"));
  for (const LensArticle& article : articles) {
    LensSheet::Cell& cell = sheet.at(sheet.rowOf(article.powers.sphere), sheet.columnOf(article.powers.cylinder));
    const auto found = offered.find(article.number);
    if (cell.offered || (found == offered.end() && !cell.goods.isEmpty())) continue;
    cell.goods = article.number;
    cell.offered = found != offered.end();
    cell.stock = cell.offered ? found->second : 0;
  }
  return sheet;
}

std::optional<CopyResult> takeLensSheets(std::vector<LensSheet>& sheets, const ManyLines& rules, const LinePlace& place,
                                         Lines target, Prompt& asked) {
  using namespace lens_sheet_detail;
  const bool nothing = std::all_of(sheets.begin(), sheets.end(), [](const LensSheet& each) { return each.isEmpty(); });
  if (refused({{nothing, u"请在光度表中输入数量！"_qs}}, asked)) return std::nullopt;
  AskedOnce prompt(asked);
  for (LensSheet& sheet : sheets)
    if (!makeMissing(sheet, prompt)) return std::nullopt;

  // All is asked before anything is written: other stations must not wait for an answer.
  PickingMemory memory;
  std::vector<LineDraft> drafts;
  bool goesShort = false;
  for (LensSheet& sheet : sheets)
    for (LensSheet::Cell& cell : sheet.cells) {
      cell.goesShort = false;
      if (!sheet.holds(cell) || !rules.mayStage(cell.goods, place, target, memory, prompt)) continue;
      cell.goesShort = !rules.stockAllows(cell.goods, cell.quantity, place, prompt, &memory);
      goesShort = goesShort || cell.goesShort;
      if (goesShort) continue;
      drafts.push_back(rules.newLine(cell.goods, place, true));
      LineAmounts& amounts = drafts.back().amounts;
      amounts.setQuantity(cell.quantity);
      if (!sheet.price) continue;
      // A price that was typed is looked at as in the line dialog, the same question once for all.
      amounts.setPrice(*sheet.price);
      if (!rules.mayPrice(drafts.back(), prompt)) return std::nullopt;
    }
  if (goesShort) return std::nullopt;
  tellPassedOver(memory, asked);

  const AddedLines added = *rules.addLines(target, place, drafts);
  isRefused(added.closed, asked);
  return CopyResult{.lines = added.lines, .number = added.number};
}

}  // namespace jxc
