#include "masterdata/goods_classes.h"

#include "core/deletion.h"
#include "core/log.h"
#include "core/mentions.h"
#include "core/pinyin.h"
#include "core/refusal.h"
#include "core/statements.h"
#include "core/text.h"

#include <algorithm>

namespace jxc {
namespace goods_classes_detail {

constexpr int deepestNumber = 16;  // digits of a class on the fifth level
constexpr auto lensNumber = "1000";

GoodsClass fromRow(const Row& row) {
  return {.id = row.integer("id"),
          .number = row.text("gc_sn"),
          .name = row.text("gc_name"),
          .mnemonic = row.text("gc_jm"),
          .key = row.integer("gc_key"),
          .parentKey = row.integer("gc_pid"),
          .identity = row.integer("gc_cid")};
}

QString plusOne(const QString& digits) {
  return QString::number(digits.toLongLong() + 1);
}

std::int64_t nextKey() {
  const auto key = static_cast<std::int64_t>(lookupNumber("select max(gc_key) from jxc_goodsclass")) + 1;
  return key > 10 && key % 10 == 0 ? key + 1 : key;
}

QString cleanName(const QString& typed) {
  return sanitizeKeyword(typed.trimmed());
}

bool nameIsMissing(const QString& name, Prompt& prompt) {
  return refused({{name.isEmpty(), u"类别名称必须填写！"_qs, Subject::Name}}, prompt);
}

/// One of the goods of a class, in words; empty when it has none.
QString firstGoodsOf(const QString& number) {
  const RowSet goods =
      openSelect("select top 1 g_sn,g_name from jxc_goods where gc_sn like ?", number + QLatin1Char('%'));
  return goods.isEmpty() ? QString() : rowInWords("jxc_goods", goods.front());
}

/// A class and all that hang below it in the tree, whatever their numbers.
std::vector<GoodsClass> branchOf(const GoodsClass& top) {
  const std::vector<GoodsClass> all = goodsClasses();
  std::vector<GoodsClass> branch{top};
  for (std::size_t i = 0; i < branch.size() && branch.size() <= all.size(); ++i) {
    for (const GoodsClass& one : all) {
      if (one.parentKey == branch[i].key && one.key != top.key) branch.push_back(one);
    }
  }
  return branch;
}

QString firstGoodsOf(const std::vector<GoodsClass>& classes) {
  for (const GoodsClass& one : classes)
    if (QString goods = firstGoodsOf(one.number); !goods.isEmpty()) return goods;
  return {};
}

}  // namespace goods_classes_detail

std::vector<GoodsClass> goodsClasses(bool withLenses) {
  const char* sql = withLenses
                        ? "select * from jxc_goodsclass order by gc_key"
                        : "select * from jxc_goodsclass where gc_sn is null or gc_sn not like '1000%' order by gc_key";
  std::vector<GoodsClass> classes;
  for (const Row row : openSelect(sql))
    classes.push_back(goods_classes_detail::fromRow(row));
  return classes;
}

std::vector<GoodsClass> goodsClassesDownward() {
  const std::vector<GoodsClass> all = goodsClasses();
  std::vector<GoodsClass> downward;
  const auto takeBelow = [&](const auto& self, std::int64_t parent) -> void {
    for (const GoodsClass& each : all) {
      if (each.parentKey != parent || downward.size() == all.size()) continue;
      downward.push_back(each);
      self(self, each.key);
    }
  };
  takeBelow(takeBelow, 0);
  return downward;
}

std::vector<ListItem> goodsClassItems() {
  std::vector<ListItem> items{{QStringLiteral("所有类别"), QString::fromUtf16(allKey)}};
  for (const GoodsClass& each : goodsClassesDownward()) {
    if (each.isRoot()) continue;
    const auto level = (each.number.size() - 4) / 3;
    items.push_back({QString(level * 2, QChar(u'　')) + each.name, each.number});
  }
  return items;
}

QString nextClassSn(std::int64_t key) {
  using goods_classes_detail::plusOne;
  const QString parentKey = lookupValue("select gc_pid from jxc_goodsclass where gc_key=?", key);
  if (parentKey == QLatin1String("1")) {
    const QString highest = lookupValue("select max(gc_sn) as gcsn from jxc_goodsclass where len(gc_sn)=4");
    return highest.isEmpty() ? QString::fromLatin1(goods_classes_detail::lensNumber) : plusOne(highest);
  }
  const QString parent = lookupValue("select gc_sn from jxc_goodsclass where gc_key=?", parentKey);
  const QString highest =
      lookupValue("select max(gc_sn) as gcsn from jxc_goodsclass where gc_sn like ? and len(gc_sn)=?",
                  parent + QLatin1Char('%'), static_cast<int>(parent.size()) + 3);
  if (highest.isEmpty()) return parent + QStringLiteral("100");
  return highest.chopped(3) + plusOne(highest.right(3));
}

std::optional<GoodsClass> addGoodsClass(std::int64_t parentKey, const QString& typed, Prompt& prompt) {
  using namespace goods_classes_detail;
  const QString parentNumber = lookupValue("select gc_sn from jxc_goodsclass where gc_key=?", parentKey);
  if (parentNumber.size() >= deepestNumber) {
    prompt.notice(QStringLiteral("该类别层数已到底层，不能添加下级类别！"));
    return {};
  }
  const QString name = cleanName(typed);
  if (nameIsMissing(name, prompt)) return {};

  Transaction transaction(accountDb());
  const std::int64_t key = nextKey();
  const auto id = insertRow(
      "jxc_goodsclass",
      {{"gc_name", name}, {"gc_jm", makeJm(name).left(32)}, {"gc_key", key}, {"gc_pid", parentKey}, {"gc_cid", key}});
  updateRow("jxc_goodsclass", id, {{"gc_sn", nextClassSn(key)}});
  logChange("jxc_goodsclass", {}, name);
  transaction.commit();
  return fromRow(openSelect("select * from jxc_goodsclass where id=?", id).front());
}

bool renameGoodsClass(std::int64_t id, const QString& typed, Prompt& prompt) {
  const QString name = goods_classes_detail::cleanName(typed);
  if (goods_classes_detail::nameIsMissing(name, prompt)) return false;
  Transaction transaction(accountDb());
  logChange("jxc_goodsclass", lookupValue("select gc_name from jxc_goodsclass where id=?", id), name);
  updateRow("jxc_goodsclass", id, {{"gc_name", name}, {"gc_jm", makeJm(name).left(32)}});
  transaction.commit();
  return true;
}

bool deleteGoodsClass(std::int64_t id, Prompt& prompt) {
  using namespace goods_classes_detail;
  std::vector<GoodsClass> branch;
  return deleteAsking(
      {.table = "jxc_goodsclass",
       .question = QStringLiteral("您确定要删除当前类别吗?"),
       .hindrance = [&](const Row& row) -> std::optional<Hindrance> {
         const GoodsClass goodsClass = fromRow(row);
         if (goodsClass.isRoot() || goodsClass.number == QLatin1String(lensNumber))
           return Hindrance{u"该类别是系统内置类别，不能删除！"_qs, {}, orRename()};
         branch = branchOf(goodsClass);
         const QString holder = firstGoodsOf(branch);
         if (holder.isEmpty()) return {};
         return Hindrance{u"该类别下有商品信息，不能删除！"_qs, holder, u"请先把这些商品改为其他类别，再删除。"_qs};
       },
       .alsoDelete =
           [&](const Row& row) {
             for (const GoodsClass& one : branch)
               execSql("delete from jxc_goodsclass where id=?", one.id);
             logChange("jxc_goodsclass", row.text("gc_name"), {});
           }},
      id, prompt);
}

std::optional<QString> findGoodsClass(const QString& text) {
  const QString like = sanitizeKeyword(text).toUpper() + QLatin1Char('%');
  const QString found = lookupValue(
      "select top 1 gc_name from jxc_goodsclass where (gc_jm like ? or gc_name like ?) and gc_pid<>0 order by gc_key",
      like, like);
  return found.isEmpty() ? std::nullopt : std::optional(found);
}

}  // namespace jxc
