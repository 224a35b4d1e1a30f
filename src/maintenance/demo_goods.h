// 演示账套的商品: what the demonstration shop has on its shelves, in the catalogue by the real rules and in memory for
// drawing from.
#pragma once

#include "core/prompt.h"
#include "maintenance/demo_random.h"

#include <QString>

#include <array>
#include <vector>

namespace jxc::demo {

enum class Kind : char { Frame, Sun, Lens, Contact, Sundry };
inline constexpr int kKinds = 5;
inline constexpr int kWarehouses = 2;

struct Article {
  QString number;
  Kind kind = Kind::Frame;
  int supplier = 0;            // index of kSuppliers
  int product = -1;            // lenses: index of kLensLines
  double buy = 0, sell = 0;    // yuan
  int reorder = 0, batch = 0;  // pieces in the first warehouse: below the one, the other is ordered
  int popularity = 1;
  bool gift = false;
  /// What may still be promised in each warehouse: the stock without what today's documents have taken.
  std::array<int, kWarehouses> stock{};
  /// Sets are put together in the shop.
  bool isOrdered() const { return batch > 0; }
};

/// The catalogue and how its articles are drawn.
struct Catalogue {
  std::vector<Article> articles;
  std::array<Weighted, kKinds> byKind;
  Weighted lensProducts;             // indexes of kLensLines
  std::vector<Weighted> lensPowers;  // by product: indexes of articles
  std::vector<int> gifts;
  int set = 0;                    // a sundry that the shop puts together itself …
  std::array<int, 3> setParts{};  // … of these, one each
};

/// Makes classes, units and about `count` articles with the opening stock of the first warehouse (`warehouse`).
/// Lenses have no opening stock: they come in ranges.
Catalogue makeCatalogue(int count, const QString& warehouse, Random& random, Prompt& prompt);

}  // namespace jxc::demo
