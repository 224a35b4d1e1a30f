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

/// Adds one article for each pair of powers, with the prices and the commission of the draft, no stock, and numbers in
/// a row behind the highest of the class. `common.name` is the product. Refusals in the order of the form; the number
/// in the draft is checked but not used. More than 5,000 are asked first. Returns how many were added, nothing when
/// refused or cancelled.
std::optional<int> addLensRange(const GoodsDraft& common, const PowerRange& sphere, const PowerRange& cylinder,
                                Prompt& prompt, const std::function<bool(int percent)>& progress = {});

struct PowerPair {
  double sphere = 0, cylinder = 0;
};
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
/// Names of lenses that match (`g_name`), for the choice of the table.
Sql lensNames(const Criteria& criteria, const Warehouses& warehouses);
PowerTable lensPowerTable(const QString& name, const Criteria& criteria);

}  // namespace jxc
