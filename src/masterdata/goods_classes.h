// 商品类别: the class tree, its numbers and keys.
#pragma once

#include "core/fillers.h"
#include "core/prompt.h"
#include "core/sql.h"

#include <QString>

#include <cstdint>
#include <optional>

namespace jxc {

/// One class as the tree shows it. `number` is its place in the tree as digits (4, 7, 10, 13, 16 of them), `key` its
/// order and identity in the tree, `identity` (gc_cid) never changes and leads the numbers of its goods.
struct GoodsClass {
  std::int64_t id = 0;
  QString number, name, mnemonic;
  std::int64_t key = 0, parentKey = 0, identity = 0;
  bool isRoot() const { return parentKey == 0; }
  bool isLens() const { return number.startsWith(QLatin1String("1000")); }
};

/// All classes in display order; the ordinary ones only when lens classes are of no use to the caller.
std::vector<GoodsClass> goodsClasses(bool withLenses = true);
/// All classes, each right below the one that it belongs to: for lists that set them in.
std::vector<GoodsClass> goodsClassesDownward();

/// For a list: "所有类别", then all in tree order, indented by their level.
std::vector<ListItem> goodsClassItems();

/// Number of a class whose row already stands under its parent: four digits on the first level (from "1000"), three
/// more a level (from "100"). Behind 999 a group grows to four digits, as it always has.
QString nextClassSn(std::int64_t key);

/// Adds a class under a parent and returns it. Refuses a sixth level. Keys above 10 that end in 0 are skipped, since
/// the key leads the goods numbers of the class and 2 and 20 would lead the same ones.
std::optional<GoodsClass> addGoodsClass(std::int64_t parentKey, const QString& name, Prompt& prompt);

bool renameGoodsClass(std::int64_t id, const QString& name, Prompt& prompt);

/// Deletes an empty class with its subclasses. Asks; refuses the built-in ones and those with goods below.
bool deleteGoodsClass(std::int64_t id, Prompt& prompt);

/// First class by order whose name or mnemonic begins with the text; nothing when there is none.
std::optional<QString> findGoodsClass(const QString& text);

}  // namespace jxc
