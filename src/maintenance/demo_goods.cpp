#include "maintenance/demo_goods.h"

#include "core/text.h"
#include "maintenance/demo_names.h"
#include "masterdata/goods.h"
#include "masterdata/goods_classes.h"
#include "masterdata/goods_lenses.h"
#include "masterdata/units.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <stdexcept>

namespace jxc::demo {
namespace demo_goods_detail {

/// 13 digits with their check digit.
QString barcodeOf(int serial) {
  const QString digits = QStringLiteral("690") + QString::number(serial).rightJustified(9, u'0');
  int sum = 0;
  for (int i = 0; i < 12; ++i)
    sum += digits[i].digitValue() * (i % 2 == 0 ? 1 : 3);
  return digits + QString::number((10 - sum % 10) % 10);
}

/// A price that stands on a label: 398, 1280; small ones to the half yuan.
double labelPrice(double yuan) {
  if (yuan < 20) return std::max(0.5, static_cast<int>(yuan * 2) / 2.0);
  return static_cast<int>(yuan / 10) * 10 + 8;
}

class Maker {
 public:
  Maker(QString warehouse, Random& random, Prompt& prompt)
      : warehouse_(std::move(warehouse)), random_(random), prompt_(prompt) {}

  Catalogue make(int count) {
    for (const auto* unit : {u"瓶", u"盒", u"个", u"张", u"根", u"套"})
      addUnit(words(unit), prompt_);
    const auto classes = goodsClasses();
    const std::int64_t root = classes.front().key;
    const std::int64_t lenses =
        std::find_if(classes.begin(), classes.end(), [](const GoodsClass& each) { return each.isLens(); })->key;
    catalogue_.lensPowers.resize(std::size(kLensLines));
    const GoodsClass sundries = addClass(root, u"护理与配件");
    addSundries(sundries, std::min<int>(std::size(kSundries), std::max(4, count / 8)));
    addSet(sundries);
    addContacts(addClass(root, u"隐形眼镜"), std::max(2, count / 12));
    const std::array<GoodsClass, 2> lensClasses{addClass(lenses, u"单光镜片"), addClass(lenses, u"渐进镜片")};
    addLenses(lensClasses, std::max(6, count * 2 / 5));
    const GoodsClass frames = addClass(root, u"镜架");
    const std::array<GoodsClass, 2> frameClasses{addClass(frames.key, u"光学镜架"), addClass(root, u"太阳镜")};
    addFrames(frameClasses, std::max(8, count - static_cast<int>(catalogue_.articles.size())));
    for (std::size_t i = 0; i < catalogue_.articles.size(); ++i) {
      const Article& article = catalogue_.articles[i];
      catalogue_.byKind[static_cast<std::size_t>(article.kind)].add(static_cast<int>(i), article.popularity);
      if (article.gift) catalogue_.gifts.push_back(static_cast<int>(i));
    }
    return std::move(catalogue_);
  }

 private:
  GoodsClass addClass(std::int64_t parent, Word name) {
    const auto added = addGoodsClass(parent, words(name), prompt_);
    if (!added) throw std::logic_error("class not added");
    return *added;
  }

  /// Numbers of a class go up one by one: asked for once, then counted.
  QString nextNumber(const GoodsClass& of) {
    const auto known = numbers_.find(of.id);
    const qlonglong number = known == numbers_.end() ? proposedGoodsSn(of.number).toLongLong() : known->second + 1;
    numbers_[of.id] = number;
    return QString::number(number);
  }

  GoodsDraft draftOf(const GoodsClass& of, const QString& name, Word unit, double buy, double sell) {
    GoodsDraft draft;
    draft.number = nextNumber(of);
    draft.classNumber = of.number;
    draft.name = name;
    draft.unit = words(unit);
    draft.warehouse = warehouse_;
    draft.purchasePrice = buy;
    draft.salePrice = draft.retailPrice = sell;
    for (std::size_t level = 0; level < draft.levelPrices.size(); ++level)
      draft.levelPrices[level] = labelPrice(sell * static_cast<double>(88 - 8 * level) / 100);
    draft.warnSameName = false;
    return draft;
  }

  static void setCommission(GoodsDraft& draft, const OwnCommission& own) {
    draft.commissionKind = own.kind;
    draft.commission = own.amount;
  }

  void add(GoodsDraft draft, Article article) {
    draft.barcode = barcodeOf(static_cast<int>(catalogue_.articles.size()) + 1);
    draft.lowestStock = article.reorder;
    if (!addGoods(draft, prompt_)) throw std::logic_error("goods not added");
    article.number = draft.number;
    article.buy = draft.purchasePrice;
    article.sell = draft.salePrice;
    article.stock[0] = static_cast<int>(draft.openingStock);
    catalogue_.articles.push_back(std::move(article));
  }

  void addSundries(const GoodsClass& of, int count) {
    for (int i = 0; i < count; ++i) {
      const Sundry& each = kSundries[i];
      GoodsDraft draft = draftOf(of, words(each.name), each.unit, each.buyFen / 100.0, each.sellFen / 100.0);
      draft.model = words(each.model);
      draft.mayBeGift = each.gift;
      setCommission(draft, each.commission);
      draft.openingStock = random_.between(120, 360);
      add(draft, {.kind = Kind::Sundry,
                  .supplier = kSundrySupplier,
                  .reorder = 80,
                  .batch = 240,
                  .popularity = each.popularity,
                  .gift = each.gift});
    }
  }

  /// Of the first sundries; the shop orders none, it bundles them.
  void addSet(const GoodsClass& of) {
    catalogue_.setParts = {0, 1, 3};
    double buy = 0;
    for (const int part : catalogue_.setParts)
      buy += catalogue_.articles[static_cast<std::size_t>(part)].buy;
    catalogue_.set = static_cast<int>(catalogue_.articles.size());
    add(draftOf(of, QStringLiteral("隐形眼镜护理套装"), u"套", buy, 68),
        {.kind = Kind::Sundry, .supplier = kSundrySupplier, .popularity = 4});
  }

  void addContacts(const GoodsClass& of, int count) {
    for (int i = 0; i < count; ++i) {
      const ContactLine& line = kContactLines[static_cast<std::size_t>(i) % std::size(kContactLines)];
      const int quarters = 4 + i / static_cast<int>(std::size(kContactLines)) * 2;  // -1.00, -1.50 …
      const QString power = powerText(-0.25 * quarters);
      GoodsDraft draft = draftOf(of, words(line.name) + u' ' + power, u"盒", line.buy, line.sell);
      draft.model = words(line.model);
      setCommission(draft, line.commission);
      draft.openingStock = random_.between(10, 30);
      add(draft, {.kind = Kind::Contact,
                  .supplier = kContactSupplier,
                  .reorder = 8,
                  .batch = 24,
                  .popularity = line.popularity * (400 / (10 + (quarters - 14) * (quarters - 14)) + 1)});
    }
  }

  /// Ranges of powers, the better known product first, until there are about so many lenses.
  void addLenses(std::span<const GoodsClass> classes, int count) {
    const int products = std::clamp(count / 60, 1, static_cast<int>(std::size(kLensLines)));
    const int each = std::max(6, count / products);
    // The more articles a product may have, the finer its grid: at most 0 to -10.00 by 0 to -4.00 in quarters.
    for (int i = 0, made = 0; made < count; ++i) {
      const std::size_t product = static_cast<std::size_t>(i) % std::size(kLensLines);
      const int series = i / static_cast<int>(std::size(kLensLines));
      made += addLensProduct(classes, product, series, std::min(each, count - made));
    }
  }

  int addLensProduct(std::span<const GoodsClass> classes, std::size_t product, int series, int wanted) {
    const LensProductLine& line = kLensLines[product];
    const GoodsClass& of = classes[line.progressive ? 1 : 0];
    const bool fine = wanted > 200;
    const int columns = fine ? 17 : std::clamp(wanted / 9, 1, 5);
    const int rows = std::clamp(wanted / columns, 1, 41);
    const double step = fine ? 0.25 : 0.5;
    const PowerRange sphere{-step * (rows - 1), 0, step};
    const PowerRange cylinder{-step * (columns - 1), 0, step};
    QString name = words(line.name);
    if (series > 0) name += QStringLiteral("%1型").arg(series + 1);
    GoodsDraft draft = draftOf(of, name, u"片", line.buy, line.sell);
    draft.model = name.contains(u"1.6") || name.contains(u"1.7") ? QStringLiteral("70mm") : QStringLiteral("65mm");
    draft.lowestStock = 4;
    setCommission(draft, line.commission);
    const auto added = addLensRange(draft, sphere, cylinder, prompt_);
    if (!added || *added != rows * columns) throw std::logic_error("lenses not added");
    if (catalogue_.lensPowers[product].isEmpty())
      catalogue_.lensProducts.add(static_cast<int>(product), line.popularity);
    qlonglong number = draft.number.toLongLong();
    for (int row = 0; row < rows; ++row)
      for (int column = 0; column < columns; ++column) {
        const int fromUsual =
            static_cast<int>(-sphere.from * 4) - row * (fine ? 1 : 2) - 11;  // -2.75 is the most usual
        const int astigmatism = static_cast<int>(-cylinder.from * 4) - column * (fine ? 1 : 2);
        const int weight = (600 / (12 + fromUsual * fromUsual) + 1) * (60 / (3 + astigmatism * astigmatism) + 1);
        catalogue_.lensPowers[product].add(static_cast<int>(catalogue_.articles.size()), weight);
        const int batch = weight > 400 ? 40 : weight > 80 ? 20 : 8;
        catalogue_.articles.push_back({.number = QString::number(number++),
                                       .kind = Kind::Lens,
                                       .supplier = line.supplier,
                                       .product = static_cast<int>(product),
                                       .buy = static_cast<double>(line.buy),
                                       .sell = static_cast<double>(line.sell),
                                       .reorder = batch / 4,
                                       .batch = batch,
                                       .popularity = weight});
      }
    numbers_[of.id] = number - 1;
    return rows * columns;
  }

  void addFrames(std::span<const GoodsClass> classes, int count) {
    for (int i = 0; i < count; ++i) {
      const Brand& brand = kBrands[static_cast<std::size_t>(i) % std::size(kBrands)];
      const int model = i / static_cast<int>(std::size(kBrands) * 2);  // two colours of a model
      const bool child = words(brand.name).contains(u"少年") || words(brand.name).contains(u"树苗");
      const QString style = words(brand.sun ? kSunStyles[model % 5]
                                  : child   ? kChildStyles[model % 3]
                                            : kFrameStyles[(model * 3 + i) % 10]);
      const int buy = brand.price * (70 + random_.below(80)) / 100;
      GoodsDraft draft =
          draftOf(classes[brand.sun ? 1 : 0], words(brand.name) + style, u"付", buy, labelPrice(buy * 3.1));
      draft.model = QStringLiteral("%1%2 %3□%4-%5")
                        .arg(QChar(u'A' + i % 7))
                        .arg(1000 + model)
                        .arg(child ? 44 + model % 4 : 50 + model % 7)
                        .arg(16 + model % 5)
                        .arg(child ? 125 : 140 + model % 3 * 4);
      draft.colour = words(random_.oneOf(kColours));
      draft.openingStock = random_.between(3, 9);
      add(draft, {.kind = brand.sun ? Kind::Sun : Kind::Frame,
                  .supplier = brand.supplier,
                  .reorder = 2,
                  .batch = random_.between(4, 8),
                  .popularity = 1 + 60 / (1 + i / 12)});
    }
  }

  const QString warehouse_;
  Random& random_;
  Prompt& prompt_;
  Catalogue catalogue_;
  std::map<std::int64_t, qlonglong> numbers_;  // the last one of a class
};

}  // namespace demo_goods_detail

Catalogue makeCatalogue(int count, const QString& warehouse, Random& random, Prompt& prompt) {
  return demo_goods_detail::Maker(warehouse, random, prompt).make(count);
}

}  // namespace jxc::demo
