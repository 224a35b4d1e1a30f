#include "masterdata/goods_lenses.h"

#include "core/deletion.h"
#include "core/pinyin.h"
#include "core/rounding.h"
#include "core/statements.h"
#include "core/text.h"
#include "masterdata/goods_change.h"
#include "stock/goods_words.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <utility>

namespace jxc {
namespace goods_lenses_detail {

constexpr double kMostPairs = 9'999'999;  // more have no numbers of eight digits
constexpr double kManyPairs = 5'000;      // a whole catalogue of one product; beyond it a bound is likely mistyped

double countOf(const PowerRange& range) {
  return std::floor((range.to - range.from) / range.step + 1e-9) + 1;
}

/// The powers of a range. They are counted, not added up: a hundred steps of 0.1 must not drift past the end.
std::vector<double> powersOf(const PowerRange& range) {
  std::vector<double> powers;
  for (double i = 0; i < countOf(range); ++i)
    powers.push_back(roundEps(range.from + i * range.step, 3));
  return powers;
}

/// Pairs as they are told apart: powers have three decimals.
using PairKey = std::pair<std::int64_t, std::int64_t>;
PairKey keyOf(const PowerPair& pair) {
  return {std::llround(pair.sphere * 1000), std::llround(pair.cylinder * 1000)};
}

std::set<PairKey> pairsThere(const QString& product) {
  std::set<PairKey> pairs;
  for (const LensArticle& article : lensArticles(product))
    pairs.insert(keyOf(article.powers));
  return pairs;
}

std::vector<PowerPair> pairsOf(const PowerRange& sphere, const PowerRange& cylinder) {
  std::vector<PowerPair> pairs;
  const auto cylinders = powersOf(cylinder);
  for (const double q : powersOf(sphere))
    for (const double c : cylinders)
      pairs.push_back({q, c});
  return pairs;
}

bool isRange(const PowerRange& range) {
  return range.to >= range.from && range.step > 0;
}

bool mayAddRange(const GoodsDraft& common, const PowerRange& sphere, const PowerRange& cylinder, Prompt& prompt) {
  if (refused({missingIn(common),
               {!isRange(sphere), u"屈光度范围不正确！"_qs, Subject::Sphere},
               {!isRange(cylinder), u"散光度范围不正确！"_qs, Subject::Cylinder}},
              prompt) ||
      !mayKeepGoods(common, 0, prompt))
    return false;
  const double pairs = countOf(sphere) * countOf(cylinder);
  if (refused({{pairs > kMostPairs, u"范围太大：最多可以增加 9999999 个商品！"_qs, Subject::Sphere}}, prompt))
    return false;
  return pairs <= kManyPairs ||
         prompt.ask(QStringLiteral("将增加 %1 个商品，确定增加吗？").arg(static_cast<qint64>(pairs)));
}

bool anyNumberTaken(std::int64_t first, std::int64_t last) {
  return !lookupValue("select top 1 g_sn from jxc_goods where len(g_sn)=? and g_sn>=? and g_sn<=?",
                      static_cast<int>(QString::number(first).size()), QString::number(first), QString::number(last))
              .isEmpty();
}

std::int64_t identityOf(const QString& goodsClass) {
  return static_cast<std::int64_t>(lookupNumber("select gc_cid from jxc_goodsclass where gc_sn=?", goodsClass));
}

/// The first of `count` numbers in a row. Looked up once: within the caller's transaction nobody else takes one.
std::int64_t firstNumber(const QString& goodsClass, int count) {
  const std::int64_t first = nextGoodsSn(identityOf(goodsClass)).toLongLong();
  if (anyNumberTaken(first, first + count - 1))
    throw DbError(DbError::Kind::Other, QStringLiteral("商品编号已经存在，请重新输入！"));
  return first;
}

/// Appends the article of one pair of powers; `draft` has everything that the product's articles share.
void insertLens(GoodsDraft& draft, const QString& product, const QString& sphere, const QString& cylinder,
                std::int64_t number) {
  draft.lens = LensPowers{product, sphere, cylinder};
  draft.number = QString::number(number);
  draft.name = lensName(product, sphere, cylinder);
  const auto id = insertGoods(draft);
  // All rows of a product are found by the product's letters.
  updateRow("jxc_goods", id, {{"g_jm", makeJm(product).left(32)}});
}

}  // namespace goods_lenses_detail

QString powerText(double power) {
  const double rounded = roundEps(power, 3);
  return rounded < 0 ? numberText(rounded) : u'+' + numberText(rounded);
}

QString lensName(const QString& product, const QString& sphere, const QString& cylinder) {
  return product.trimmed() + QStringLiteral(":屈光度") + sphere.trimmed() + QStringLiteral(":散光度") +
         cylinder.trimmed();
}

std::vector<LensArticle> lensArticles(const QString& product) {
  std::vector<LensArticle> articles;
  for (const Row row :
       openSelect("select g_sn,g_qgd,g_sgd from jxc_goods where g_qc=? and g_isjp<>0 order by g_sn", product)) {
    bool isSphere = false, isCylinder = false;
    const LensArticle article{
        row.text("g_sn"),
        {roundEps(row.text("g_qgd").toDouble(&isSphere), 3), roundEps(row.text("g_sgd").toDouble(&isCylinder), 3)}};
    if (isSphere && isCylinder) articles.push_back(article);
  }
  return articles;
}

std::optional<RangeCount> countLensRange(const QString& product, const PowerRange& sphere, const PowerRange& cylinder) {
  using namespace goods_lenses_detail;
  if (!isRange(sphere) || !isRange(cylinder) || countOf(sphere) * countOf(cylinder) > kMostPairs) return {};
  RangeCount count{.pairs = static_cast<int>(countOf(sphere) * countOf(cylinder))};
  const auto isOf = [](std::int64_t power, const PowerRange& range) {
    const double steps = (static_cast<double>(power) / 1000 - range.from) / range.step;
    const double nearest = std::round(steps);
    return nearest >= 0 && nearest < countOf(range) &&
           std::llround(roundEps(range.from + nearest * range.step, 3) * 1000) == power;
  };
  // Both sides are told apart by thousandths, and nothing is laid out: the range may be one that nobody means.
  for (const PairKey& pair : pairsThere(cleanGoodsDraft({.name = product}).name))
    if (isOf(pair.first, sphere) && isOf(pair.second, cylinder)) ++count.there;
  return count;
}

std::optional<int> addLensRange(const GoodsDraft& typed, const PowerRange& sphere, const PowerRange& cylinder,
                                Prompt& prompt, const std::function<bool(int)>& progress, PairsThere there) {
  using namespace goods_lenses_detail;
  GoodsDraft draft = cleanGoodsDraft(typed);
  draft.warnSameName = false;
  draft.barcode.clear();
  draft.openingStock = 0;
  if (!mayAddRange(draft, sphere, cylinder, prompt)) return {};

  const QString product = draft.name;
  std::vector<PowerPair> pairs = pairsOf(sphere, cylinder);

  Transaction transaction(accountDb());
  if (there == PairsThere::AreSkipped) {
    const auto known = pairsThere(product);
    std::erase_if(pairs, [&](const PowerPair& pair) { return known.contains(keyOf(pair)); });
  }
  const int count = static_cast<int>(pairs.size());
  if (count == 0) {
    isRefused({u"这个范围的光度都已存在，没有需要增加的商品！"_qs, Subject::Sphere}, prompt);
    return {};
  }
  const std::int64_t first = firstNumber(*draft.classNumber, count);
  int done = 0;
  for (const PowerPair& pair : pairs) {
    insertLens(draft, product, powerText(pair.sphere), powerText(pair.cylinder), first + done);
    ++done;
    if (progress && done % 16 == 0 && !progress(done * 100 / count)) return {};
  }
  transaction.commit();
  if (progress) progress(100);
  return done;
}

QStringList addLensPowers(const QString& product, const std::vector<PowerPair>& powers) {
  using namespace goods_lenses_detail;
  const RowSet newest =
      openSelect("select top 1 id from jxc_goods where g_qc=? and g_isjp<>0 order by id desc", product);
  if (newest.isEmpty()) throw DbError(DbError::Kind::Other, QStringLiteral("没有这种镜片的商品资料：") + product);
  GoodsDraft draft = readGoods(newest.front().integer("id"));
  draft.barcode.clear();
  draft.openingStock = 0;
  std::int64_t number = firstNumber(*draft.classNumber, static_cast<int>(powers.size()));
  QStringList numbers;
  for (const PowerPair& pair : powers) {
    insertLens(draft, product, powerText(pair.sphere), powerText(pair.cylinder), number++);
    numbers << draft.number;
  }
  return numbers;
}

LensProduct readLensProduct(std::int64_t id) {
  const RowSet rows = openSelect("select * from jxc_jplx where id=?", id);
  if (rows.isEmpty()) return {};
  const Row row = rows.front();
  const bool contact = row.text("jp_lx") == u"1";
  return {.id = id,
          .brand = row.text("jp_lxmc"),
          .item1 = row.text("jp_mcqc"),
          .item2 = contact ? row.text("jp_hsl") : row.text("jp_zsl"),
          .note = row.text("jp_bz"),
          .contact = contact};
}

bool saveLensProduct(const LensProduct& typed, Prompt& prompt) {
  const QString brand = sanitizeText(typed.brand.trimmed());
  if (refused({{brand.isEmpty(), u"品牌名称不能为空！"_qs, Subject::Brand}}, prompt)) return false;
  const QString item1 = sanitizeText(typed.item1.trimmed());
  const QString item2 = sanitizeText(typed.item2.trimmed());
  const QString name = brand + item1 + (typed.contact ? QStringLiteral("含水") : QStringLiteral("折射")) + item2;

  Transaction transaction(accountDb());
  const auto id = typed.id != 0 ? typed.id : insertRow("jxc_jplx", {{"jp_lxmc", brand}});
  updateRow("jxc_jplx", id,
            {{"jp_lxmc", brand},
             {"jp_mcqc", item1},
             {"jp_zsl", typed.contact ? QString() : item2},
             {"jp_hsl", typed.contact ? item2 : QString()},
             {"jp_spmc", name},
             {"jp_lx", typed.contact ? "1" : "0"},
             {"jp_bz", sanitizeText(typed.note.trimmed())},
             {"jp_jm", makeJm(name)}});
  transaction.commit();
  return true;
}

bool deleteLensProduct(std::int64_t id, Prompt& prompt) {
  return deleteAsking({.table = "jxc_jplx", .question = QStringLiteral("您确定要删除当前商品吗！")}, id, prompt);
}

Sql lensProductsStatement(const QString& typed) {
  const QString like = QLatin1Char('%') + sanitizeText(typed.trimmed()) + QLatin1Char('%');
  return {"select * from jxc_jplx where jp_spmc like ? or jp_jm like ? order by jp_lx,id desc", like, like};
}

namespace goods_lenses_detail {

/// Words of one column over the lenses that match.
Sql lensWords(std::string_view column, const Criteria& criteria, const Warehouses& warehouses) {
  Filter filter;
  filter.add("a.g_isjp<>0");
  addGoodsKey(filter, criteria, {"a.g_sn", "a.g_name", "a.g_jm"});
  std::string tables = " from jxc_goods a";
  if (!warehouses.areAll()) {
    tables += ",jxc_kcsp b";
    filter.add("a.g_sn=b.g_sn");
    warehouses.restrict(filter, "b.ck_sn");
  }
  return Sql(compose("select distinct {}", {column}) + tables).where(filter).add(compose(" order by {}", {column}));
}

Sql lensStock(Filter filter, const Warehouses& warehouses) {
  if (warehouses.areAll())
    return Sql("select a.g_kc,a.g_qgd,a.g_sgd from jxc_goods a").where(filter).add(" order by a.g_sn");
  filter.add("a.g_sn=b.g_sn");
  warehouses.restrict(filter, "b.ck_sn");
  return Sql("select sum(b.kc_sl) as g_kc,a.g_qgd,a.g_sgd from jxc_goods a,jxc_kcsp b")
      .where(filter)
      .add(" group by a.g_sn,a.g_qgd,a.g_sgd order by a.g_sn");
}

Sql stockByName(const Criteria& criteria, const Warehouses& warehouses) {
  Filter filter;
  addChoice(filter, "a.g_name", criteria.goods);
  return lensStock(filter, warehouses);
}

Sql stockByProduct(const Criteria& criteria, const Warehouses& warehouses) {
  Filter filter;
  filter.add("a.g_isjp<>0");
  addChoice(filter, "a.g_qc", criteria.goods);
  return lensStock(filter, warehouses);
}

PowerTable emptyTable(QStringList spheres, QStringList cylinders) {
  PowerTable table{.spheres = std::move(spheres), .cylinders = std::move(cylinders), .cells = {}};
  table.cells.assign(static_cast<std::size_t>(table.spheres.size()),
                     std::vector<std::optional<double>>(static_cast<std::size_t>(table.cylinders.size())));
  return table;
}

}  // namespace goods_lenses_detail

Sql lensProducts(const Criteria& criteria, const Warehouses& warehouses) {
  return goods_lenses_detail::lensWords("a.g_qc", criteria, warehouses);
}

Sql lensNames(const Criteria& criteria, const Warehouses& warehouses) {
  return goods_lenses_detail::lensWords("a.g_name", criteria, warehouses);
}

PowerTable lensProductTable(const QString& product, const Criteria& criteria) {
  using namespace goods_lenses_detail;
  if (product.isEmpty()) return {};
  Criteria one = criteria;
  one.goods = product;
  const RowSet rows = answer(stockByProduct, one);
  std::map<std::int64_t, int> spheres, cylinders;  // thousandths: place
  std::vector<std::pair<PairKey, double>> stocks;
  for (const Row row : rows) {
    bool isSphere = false, isCylinder = false;
    const PairKey key = keyOf({row.text("g_qgd").toDouble(&isSphere), row.text("g_sgd").toDouble(&isCylinder)});
    if (!isSphere || !isCylinder) continue;
    spheres[key.first] = cylinders[key.second] = 0;
    stocks.emplace_back(key, row.number("g_kc"));
  }
  const auto headings = [](std::map<std::int64_t, int>& powers) {
    QStringList texts;
    for (auto& [power, place] : powers) {
      place = static_cast<int>(texts.size());
      texts << powerText(static_cast<double>(power) / 1000);
    }
    return texts;
  };
  QStringList down = headings(spheres), across = headings(cylinders);
  PowerTable table = emptyTable(std::move(down), std::move(across));
  for (const auto& [key, stock] : stocks) {
    auto& cell =
        table.cells[static_cast<std::size_t>(spheres[key.first])][static_cast<std::size_t>(cylinders[key.second])];
    cell = cell.value_or(0) + stock;
  }
  return table;
}

PowerTable lensPowerTable(const QString& name, const Criteria& criteria) {
  if (name.isEmpty()) return {};
  Criteria one = criteria;
  one.goods = name;
  const RowSet rows = answer(goods_lenses_detail::stockByName, one);
  PowerTable table;
  for (const Row row : rows) {
    table.spheres << row.text("g_qgd");
    table.cylinders << row.text("g_sgd");
  }
  // Headings stand in the order of their text, and a power meets its heading by its text.
  for (QStringList* heading : {&table.spheres, &table.cylinders}) {
    std::sort(heading->begin(), heading->end());
    heading->erase(std::unique(heading->begin(), heading->end()), heading->end());
  }
  table = goods_lenses_detail::emptyTable(table.spheres, table.cylinders);
  for (const Row row : rows) {
    const auto sphere = static_cast<std::size_t>(table.spheres.indexOf(row.text("g_qgd")));
    const auto cylinder = static_cast<std::size_t>(table.cylinders.indexOf(row.text("g_sgd")));
    table.cells[sphere][cylinder] = row.number("g_kc");
  }
  return table;
}

}  // namespace jxc
