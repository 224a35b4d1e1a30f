#include "masterdata/goods_class_move.h"

#include "core/refusal.h"
#include "core/statements.h"
#include "masterdata/goods_classes.h"

#include <algorithm>
#include <optional>

namespace jxc {
namespace goods_class_move_detail {

constexpr std::int64_t kParked = -9999;  // a key that no class has, while the line closes up
constexpr int kDeepest = 15;

struct Move {
  GoodsClass moved, target;
  ClassPlacement placement = ClassPlacement::Below;
  bool changesParent() const { return placement == ClassPlacement::Below || moved.parentKey != target.parentKey; }
};

std::optional<GoodsClass> classWithId(std::int64_t id) {
  for (const GoodsClass& one : goodsClasses()) {
    if (one.id == id) return one;
  }
  return {};
}

bool isBelow(const GoodsClass& one, const GoodsClass& above) {
  const auto classes = goodsClasses();
  std::int64_t parent = one.parentKey;
  for (std::size_t depth = 0; parent != 0 && depth < classes.size(); ++depth) {
    if (parent == above.key) return true;
    const auto found = std::find_if(classes.begin(), classes.end(), [&](const auto& c) { return c.key == parent; });
    parent = found == classes.end() ? 0 : found->parentKey;
  }
  return false;
}

std::optional<QString> refusalOf(const Move& move) {
  if (move.moved.number == move.target.number || isBelow(move.target, move.moved)) {
    return QStringLiteral("移动的类别不能与目标类别相同，请选择其他类别！");
  }
  if (move.target.number.isEmpty() && move.placement != ClassPlacement::Below) {
    return QStringLiteral("当前类别是最高级类别，不能出现同级别的类别！");
  }
  if (move.moved.isRoot() || (move.moved.number == u"1000" && move.changesParent())) {
    return QStringLiteral("该类别是系统内置类别，不能移动！");
  }
  if (move.placement == ClassPlacement::Below) {
    // The whole length of each class below counts, its own way down included: stricter than the tree needs, and so it
    // has always been.
    const QString tooDeep =
        lookupValue("select top 1 gc_name from jxc_goodsclass where len(gc_sn)+?>? and gc_sn like ?",
                    static_cast<int>(move.target.number.size()), kDeepest, move.moved.number + QLatin1Char('%'));
    if (!tooDeep.isEmpty()) {
      return QStringLiteral("类别‘%1’ 层数移动之后超过底层，不能移动到下级类别！").arg(tooDeep);
    }
  }
  return {};
}

/// Closes up the line: each key one further, children following their parent.
void shift(const RowSet& line, int by) {
  for (const Row row : line) {
    const std::int64_t key = row.integer("gc_key");
    execSql("update jxc_goodsclass set gc_key=? where id=?", key + by, row.integer("id"));
    execSql("update jxc_goodsclass set gc_pid=? where gc_pid=?", key + by, key);
  }
}

/// The four walks: towards the front or the back, to the line after or before the target. Returns the new key.
std::int64_t makeRoom(const Move& move) {
  const std::int64_t from = move.moved.key;
  const std::int64_t to = move.target.key;
  const bool after = move.placement == ClassPlacement::NextLine;
  if (from >= to) {
    shift(after ? openSelect("select * from jxc_goodsclass where gc_key>? and gc_key<? order by gc_key desc,gc_pid", to,
                             from)
                : openSelect("select * from jxc_goodsclass where gc_key>=? and gc_key<? order by gc_key desc,gc_pid",
                             to, from),
          1);
    return after ? to + 1 : to;
  }
  shift(after ? openSelect("select * from jxc_goodsclass where gc_key>? and gc_key<=? order by gc_key,gc_pid", from, to)
              : openSelect("select * from jxc_goodsclass where gc_key>? and gc_key<? order by gc_key,gc_pid", from, to),
        -1);
  return after ? to : to - 1;
}

/// New numbers for a class and all below, and for their goods.
void renumber(const QString& before, const QString& after) {
  for (const Row row :
       openSelect("select * from jxc_goodsclass where gc_sn like ? order by id", before + QLatin1Char('%'))) {
    const QString old = row.text("gc_sn");
    const QString number = after + old.mid(before.size());
    updateRow("jxc_goodsclass", row.integer("id"), {{"gc_sn", number}});
    execSql("update jxc_goods set gc_sn=? where gc_sn=?", number, old);
  }
}

void moveBelow(const Move& move) {
  updateRow("jxc_goodsclass", move.moved.id, {{"gc_pid", move.target.key}});
  renumber(move.moved.number, nextClassSn(move.moved.key));
}

void moveBeside(const Move& move) {
  const std::int64_t id = move.moved.id;
  if (move.changesParent()) updateRow("jxc_goodsclass", id, {{"gc_pid", move.target.parentKey}});
  updateRow("jxc_goodsclass", id, {{"gc_key", kParked}});
  execSql("update jxc_goodsclass set gc_pid=? where gc_pid=?", kParked, move.moved.key);
  const std::int64_t key = makeRoom(move);
  updateRow("jxc_goodsclass", id, {{"gc_key", key}});
  execSql("update jxc_goodsclass set gc_pid=? where gc_pid=?", key, kParked);
  if (move.changesParent()) {
    renumber(move.moved.number, nextClassSn(key));
  } else {
    // The walk may have moved the key of the parent that both stand below.
    const auto parent = lookupValue("select gc_pid from jxc_goodsclass where id=?", id);
    updateRow("jxc_goodsclass", move.target.id, {{"gc_pid", parent}});
  }
}

/// Hangs a class below another; its number stays.
bool hang(const std::optional<GoodsClass>& moved, const std::optional<GoodsClass>& parent, Prompt& prompt) {
  if (!moved || !parent || moved->isRoot() || moved->parentKey == parent->key) return false;
  if (moved->key == parent->key || isBelow(*parent, *moved)) return false;
  if (moved->number == u"1000") {
    prompt.notice(QStringLiteral("该类别是系统内置类别，不能移动！"));
    return false;
  }
  updateRow("jxc_goodsclass", moved->id, {{"gc_pid", parent->key}});
  return true;
}

std::optional<GoodsClass> classWithKey(std::int64_t key) {
  for (const GoodsClass& one : goodsClasses()) {
    if (one.key == key) return one;
  }
  return {};
}

}  // namespace goods_class_move_detail

bool raiseGoodsClass(std::int64_t id, Prompt& prompt) {
  using namespace goods_class_move_detail;
  const auto moved = classWithId(id);
  const auto parent = moved ? classWithKey(moved->parentKey) : std::nullopt;
  return parent && hang(moved, classWithKey(parent->parentKey), prompt);
}

bool lowerGoodsClass(std::int64_t id, Prompt& prompt) {
  using namespace goods_class_move_detail;
  const auto moved = classWithId(id);
  if (!moved) return false;
  std::optional<GoodsClass> before, after;
  for (const GoodsClass& one : goodsClasses()) {
    if (one.parentKey != moved->parentKey || one.id == id) continue;
    if (one.key < moved->key) before = one;
    if (one.key > moved->key && !after) after = one;
  }
  return hang(moved, after ? after : before, prompt);
}

bool hangGoodsClass(std::int64_t id, std::int64_t parent, Prompt& prompt) {
  using namespace goods_class_move_detail;
  return hang(classWithId(id), classWithId(parent), prompt);
}

bool moveGoodsClass(std::int64_t id, std::int64_t target, ClassPlacement placement, Prompt& prompt) {
  using namespace goods_class_move_detail;
  const auto moved = classWithId(id);
  const auto to = classWithId(target);
  if (!moved || !to) return false;
  const Move move{*moved, *to, placement};
  if (isRefused(refusalOf(move), prompt)) return false;
  Transaction transaction(accountDb());
  if (placement == ClassPlacement::Below) {
    moveBelow(move);
  } else {
    moveBeside(move);
  }
  transaction.commit();
  prompt.notice(QStringLiteral("类别移动成功！"));
  return true;
}

}  // namespace jxc
