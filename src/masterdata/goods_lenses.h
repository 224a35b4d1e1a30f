// 镜片: one article per pair of powers: their names, whole ranges at once, the library of products, the power table.
#pragma once

#include "core/enquiry.h"
#include "masterdata/goods.h"

#include <QStringList>

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace jxc {

/// A power as the lens dialogs write it: "+1.5", "-0.75", "+0"; at most three decimals.
QString powerText(double power);
/// "product:屈光度-1.25:散光度-0.5"
QString lensName(const QString& product, const QString& sphere, const QString& cylinder);

/// Both ends belong to the range; the lower bound first in plain numeric order (-2.00 to -1.00).
struct PowerRange {
  double from = 0, to = 0, step = 0.25;
};

struct PowerPair {
  double sphere = 0, cylinder = 0;
};

/// Pairs of powers of which the product has an article already.
enum class PairsThere : char { AreSkipped, AreMadeAgain };
/// How many pairs a range has, and of how many of them the product has an article; nothing for a range that is none.
struct RangeCount {
  int pairs = 0, there = 0;
};
std::optional<RangeCount> countLensRange(const QString& product, const PowerRange& sphere, const PowerRange& cylinder);

/// Adds one article for each pair of powers, with the prices and the commission of the draft, no stock, and numbers in
/// a row behind the highest of the class. `common.name` is the product. Refusals in the order of the form; the number
/// in the draft is checked but not used. More than 5,000 are asked first. Returns how many were added, nothing when
/// refused or cancelled.
std::optional<int> addLensRange(const GoodsDraft& common, const PowerRange& sphere, const PowerRange& cylinder,
                                Prompt& prompt, const std::function<bool(int percent)>& progress = {},
                                PairsThere there = PairsThere::AreSkipped);

/// The articles of a product (`g_qc`), by number: disabled ones too, but none whose powers are no numbers.
struct LensArticle {
  QString number;
  PowerPair powers;
};
std::vector<LensArticle> lensArticles(const QString& product);
/// Makes the articles of these pairs of powers for a product that has some already: class, unit, prices and commission
/// are those of its newest one, stock none. Their numbers, in the same order. Inside the caller's transaction; throws
/// DbError when the product has no article to go by or the numbers are taken.
QStringList addLensPowers(const QString& product, const std::vector<PowerPair>& powers);

/// One product of the library that feeds product names: an ordinary lens (coating, index) or a contact lens (base
/// curve, water content).
struct LensProduct {
  std::int64_t id = 0;  // 0: new
  QString brand, item1, item2, note;
  bool contact = false;
};
LensProduct readLensProduct(std::int64_t id);
bool saveLensProduct(const LensProduct& product, Prompt& prompt);
bool deleteLensProduct(std::int64_t id, Prompt& prompt);
Sql lensProductsStatement(const QString& typed);

/// Stock of a lens by its powers: rows are spheres, columns cylinders; a cell without an article is empty.
struct PowerTable {
  QStringList spheres, cylinders;
  std::vector<std::vector<std::optional<double>>> cells;
};
/// Products of lenses that match (`g_qc`), for the choice of the table. Powers that are searched for narrow them to
/// those that have such an article.
Sql lensProducts(const Criteria& criteria, const Warehouses& warehouses);
/// All articles of a product: powers ascend as numbers and are one however they are written. Several articles of one
/// pair are added up.
PowerTable lensProductTable(const QString& product, const Criteria& criteria);
/// The same by the full name (`g_name`), as it was before lenses had a product: each article of a range has a name of
/// its own there. Powers stand and meet by their text.
Sql lensNames(const Criteria& criteria, const Warehouses& warehouses);
PowerTable lensPowerTable(const QString& name, const Criteria& criteria);

}  // namespace jxc
