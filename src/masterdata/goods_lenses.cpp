#include "masterdata/goods_lenses.h"

#include "core/deletion.h"
#include "core/pinyin.h"
#include "core/rounding.h"
#include "core/statements.h"
#include "core/text.h"
#include "masterdata/goods_change.h"

#include <algorithm>
#include <cmath>

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

bool mayAddRange(const GoodsDraft& common, const PowerRange& sphere, const PowerRange& cylinder, Prompt& prompt) {
  const auto refuse = [&](const QString& text) {
    prompt.notice(text);
    return false;
  };
  if (!common.classNumber) return refuse(QStringLiteral("类别名称必须填写！"));
  if (common.number.isEmpty()) return refuse(QStringLiteral("商品编号必须填写！"));
  if (common.name.isEmpty()) return refuse(QStringLiteral("商品名称必须填写！"));
  if (common.unit.isEmpty()) return refuse(QStringLiteral("商品单位必须填写！"));
  if (sphere.to < sphere.from || sphere.step <= 0) return refuse(QStringLiteral("屈光度范围不正确！"));
  if (cylinder.to < cylinder.from || cylinder.step <= 0) return refuse(QStringLiteral("散光度范围不正确！"));
  if (!mayKeepGoods(common, 0, prompt)) return false;
  const double pairs = countOf(sphere) * countOf(cylinder);
  if (pairs > kMostPairs) return refuse(QStringLiteral("范围太大：最多可以增加 9999999 个商品！"));
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

std::optional<int> addLensRange(const GoodsDraft& typed, const PowerRange& sphere, const PowerRange& cylinder,
                                Prompt& prompt, const std::function<bool(int)>& progress) {
  using namespace goods_lenses_detail;
  GoodsDraft draft = cleanGoodsDraft(typed);
  draft.warnSameName = false;
  draft.barcode.clear();
  draft.openingStock = 0;
  if (!mayAddRange(draft, sphere, cylinder, prompt)) return {};

  const QString product = draft.name;
  const auto spheres = powersOf(sphere);
  const auto cylinders = powersOf(cylinder);
  const int count = static_cast<int>(spheres.size() * cylinders.size());

  Transaction transaction(accountDb());
  const std::int64_t first = firstNumber(*draft.classNumber, count);
  int done = 0;
  for (const double q : spheres) {
    for (const double c : cylinders) {
      insertLens(draft, product, numberText(q), numberText(c), first + done);
      ++done;
      if (progress && done % 16 == 0 && !progress(done * 100 / count)) return {};
    }
  }
  transaction.commit();
  if (progress) progress(100);
  return done;
}

QStringList addLensPowers(const QString& product, const std::vector<PowerPair>& powers) {
  using namespace goods_lenses_detail;
  const RowSet newest =
      openSelect("select top 1 id,g_qgd,g_sgd from jxc_goods where g_qc=? and g_isjp<>0 order by id desc", product);
  if (newest.isEmpty()) throw DbError(DbError::Kind::Other, QStringLiteral("没有这种镜片的商品资料：") + product);
  GoodsDraft draft = readGoods(newest.front().integer("id"));
  draft.barcode.clear();
  draft.openingStock = 0;
  // Articles made singly write "+1.5", ranges "1.5": the product goes on as it is.
  const auto written = [signs = newest.front().text("g_qgd").startsWith(u'+') ||
                                newest.front().text("g_sgd").startsWith(u'+')](double power) {
    return signs ? powerText(power) : numberText(roundEps(power, 3));
  };
  std::int64_t number = firstNumber(*draft.classNumber, static_cast<int>(powers.size()));
  QStringList numbers;
  for (const PowerPair& pair : powers) {
    insertLens(draft, product, written(pair.sphere), written(pair.cylinder), number++);
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
  if (brand.isEmpty()) {
    prompt.notice(QStringLiteral("品牌名称不能为空！"));
    return false;
  }
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

Sql lensNames(const Criteria& criteria, const Warehouses& warehouses) {
  Filter filter;
  filter.add("a.g_isjp<>0");
  addKey(filter, criteria, {"a.g_sn", "a.g_name", "a.g_jm"});
  std::string tables = " from jxc_goods a";
  if (!warehouses.areAll()) {
    tables += ",jxc_kcsp b";
    filter.add("a.g_sn=b.g_sn");
    warehouses.restrict(filter, "b.ck_sn");
  }
  return Sql("select distinct a.g_name" + tables).where(filter).add(" order by a.g_name");
}

namespace goods_lenses_detail {

Sql lensStock(const Criteria& criteria, const Warehouses& warehouses) {
  Filter filter;
  addChoice(filter, "a.g_name", criteria.goods);
  if (warehouses.areAll())
    return Sql("select a.g_kc,a.g_qgd,a.g_sgd from jxc_goods a").where(filter).add(" order by a.g_sn");
  filter.add("a.g_sn=b.g_sn");
  warehouses.restrict(filter, "b.ck_sn");
  return Sql("select sum(b.kc_sl) as g_kc,a.g_qgd,a.g_sgd from jxc_goods a,jxc_kcsp b")
      .where(filter)
      .add(" group by a.g_sn,a.g_qgd,a.g_sgd order by a.g_sn");
}

}  // namespace goods_lenses_detail

PowerTable lensPowerTable(const QString& name, const Criteria& criteria) {
  if (name.isEmpty()) return {};
  Criteria one = criteria;
  one.goods = name;
  const RowSet rows = answer(goods_lenses_detail::lensStock, one);
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
  table.cells.assign(static_cast<std::size_t>(table.spheres.size()),
                     std::vector<std::optional<double>>(static_cast<std::size_t>(table.cylinders.size())));
  for (const Row row : rows) {
    const auto sphere = static_cast<std::size_t>(table.spheres.indexOf(row.text("g_qgd")));
    const auto cylinder = static_cast<std::size_t>(table.cylinders.indexOf(row.text("g_sgd")));
    table.cells[sphere][cylinder] = row.number("g_kc");
  }
  return table;
}

}  // namespace jxc
