#include "masterdata/goods_change.h"

#include "accounts/running_balance.h"
#include "core/deletion.h"
#include "core/log.h"
#include "core/period_lock.h"
#include "core/pinyin.h"
#include "core/rounding.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"

#include <algorithm>
#include <array>

namespace jxc {
namespace goods_change_detail {

constexpr const char16_t* kBalancing = u"00000000";  // carries the rebate of a whole document

/// Runs a change for each, in one transaction. False when it was cancelled: nothing has changed then.
template <class Change>
bool forAll(const GoodsIds& ids, const GoodsProgress& progress, Change change) {
  Transaction transaction(accountDb());
  const std::size_t step = std::max<std::size_t>(1, ids.size() / 100);
  for (std::size_t i = 0; i < ids.size(); ++i) {
    if (i % step == 0 && progress && !progress(static_cast<int>(i * 100 / ids.size()))) return false;
    change(ids[i]);
  }
  transaction.commit();
  if (progress) progress(100);
  return true;
}

/// The document that an article was last seen in first: receipts, sales, then anything in the ledger but its opening.
std::optional<QString> firstUse(const QString& number) {
  constexpr std::array statements = {
      "select top 1 j_sn from jxc_jhsp where g_sn=? order by id",
      "select top 1 gl_djh from jxc_lsxssp where g_sn=? order by id",
      "select top 1 gl_djh from jxc_goodslist where gl_flag<>'qc' and g_sn=? order by id",
  };
  for (const char* statement : statements) {
    if (const RowSet used = openSelect(statement, number); !used.isEmpty()) return used.text(0, 0);
  }
  // Its documents are gone with a closing, its stock is there.
  const QString carried = words(carriedWords);
  if (exists("select top 1 id from jxc_goodslist where g_sn=? and ghs_name=?", number, carried)) return carried;
  return {};
}

/// What the books hold of it behind the lock stays, and the article with it.
Refusal rowsLocked(const QString& number) {
  const QString first = lookupValue("select min(gl_kdrq) from jxc_goodslist where g_sn=?", number);
  return first.isEmpty() ? Refusal() : lockedOn(first, OnDay::Booked);
}

/// Opening stock goes with its article; a line of the log stays.
void eraseTraces(const QString& number, const QString& name) {
  execSql("delete from jxc_goodslist where g_sn=?", number);
  execSql("delete from jxc_kcsp where g_sn=?", number);
  writeLog(QStringLiteral("删除商品，商品编号：%1，商品名称：%2").arg(number, name));
}

QString countText(const QString& did, std::size_t count, const QString& what) {
  return did + QString::number(count) + QStringLiteral("  个商品") + what;
}

/// History follows the master: what stood in the ledger under the old word stands there under the new one.
void renameInLedger(const GoodsDraft& before, const GoodsDraft& after) {
  struct Follower {
    QString GoodsDraft::*text;
    const char* statement;
  };
  constexpr std::array followers = {
      Follower{&GoodsDraft::name, "update jxc_goodslist set g_name=? where g_name=? and g_sn=?"},
      Follower{&GoodsDraft::unit, "update jxc_goodslist set dw_name=? where dw_name=? and g_sn=?"},
      Follower{&GoodsDraft::model, "update jxc_goodslist set gg_name=? where gg_name=? and g_sn=?"},
      Follower{&GoodsDraft::colour, "update jxc_goodslist set color_name=? where color_name=? and g_sn=?"},
  };
  for (const auto& [text, statement] : followers) {
    if (before.*text != after.*text) execSql(statement, after.*text, before.*text, after.number);
  }
}

/// The opening stock of a lens goes along with a new number.
void renumberStock(const QString& before, const QString& after) {
  if (before == after) return;
  execSql("update jxc_kcsp set g_sn=? where g_sn=?", after, before);
  execSql("update jxc_goodslist set g_sn=? where g_sn=?", after, before);
}

/// Search letters that were set by hand stay as long as the name does. Lenses that came as a range have those of their
/// product, and keep them under other powers.
void writeLetters(std::int64_t id, const GoodsDraft& before, const GoodsDraft& after) {
  if (before.name == after.name) return;
  const auto letters = [](const QString& name) { return makeJm(name).left(32); };
  const bool ofProduct = before.lens && after.lens &&
                         lookupValue("select g_jm from jxc_goods where id=?", id) == letters(before.lens->product);
  updateRow("jxc_goods", id, {{"g_jm", letters(ofProduct ? after.lens->product : after.name)}});
}

void write(std::int64_t id, const GoodsDraft& before, const GoodsDraft& draft) {
  updateRow("jxc_goods", id,
            {{"g_sn", draft.number},
             {"g_name", draft.name},
             {"g_qc", (draft.lens ? draft.lens->product : draft.name).left(64)},
             {"g_sptm", draft.barcode},
             {"gg_name", draft.model},
             {"dw_name", draft.unit},
             {"color_name", draft.colour},
             {"gc_sn", *draft.classNumber},
             {"gc_cid", lookupValue("select gc_cid from jxc_goodsclass where gc_sn=?", *draft.classNumber)},
             {"g_zdkc", draft.lowestStock},
             {"g_sccs", draft.origin},
             {"g_bz", draft.note},
             {"g_gdcbj", draft.fixedCost},
             {"g_iszp", draft.mayBeGift},
             {"g_tclb", draft.commissionKind},
             {"g_tc", draft.commissionKind == 0 ? 0.0 : draft.commission}});
  writeLetters(id, before, draft);
  writeGoodsPrices(id, draft);
  // What was paid last, and on the average, is what the receipts made of it: saving another field leaves it alone.
  if (draft.purchasePrice != before.purchasePrice) startPurchasePrices(id, draft.purchasePrice);
}

/// Which prices of an article changed, from what to what.
void logPrices(const GoodsDraft& before, const GoodsDraft& now) {
  QStringList changes;
  const auto compare = [&](const QString& name, double was, double is) {
    if (was != is) changes << QStringLiteral("%1 %2 → %3").arg(name, numberText(was), numberText(is));
  };
  compare(QStringLiteral("预设进价"), before.purchasePrice, now.purchasePrice);
  compare(QStringLiteral("预设售价"), before.salePrice, now.salePrice);
  compare(QStringLiteral("零售价"), before.retailPrice, now.retailPrice);
  for (std::size_t i = 0; i < now.levelPrices.size(); ++i)
    compare(QStringLiteral("%1级批发价").arg(QStringView(u"一二三四五")[static_cast<qsizetype>(i)]),
            before.levelPrices[i], now.levelPrices[i]);
  if (changes.isEmpty()) return;
  writeLog(QStringLiteral("修改价格，商品编号：%1，%2").arg(now.number, changes.join(QStringLiteral("，"))));
}

}  // namespace goods_change_detail

GoodsDraft readGoods(std::int64_t id) {
  const RowSet rows = openSelect("select * from jxc_goods where id=?", id);
  if (rows.isEmpty()) throw DbError(DbError::Kind::Other, QStringLiteral("该商品已经不存在！"));
  const Row row = rows.front();
  GoodsDraft draft;
  draft.number = row.text("g_sn");
  draft.name = row.text("g_name");
  draft.barcode = row.text("g_sptm");
  draft.unit = row.text("dw_name");
  draft.model = row.text("gg_name");
  draft.colour = row.text("color_name");
  draft.origin = row.text("g_sccs");
  draft.note = row.text("g_bz");
  draft.classNumber = row.text("gc_sn");
  draft.purchasePrice = row.number("g_jj");
  draft.salePrice = row.number("g_sj");
  draft.retailPrice = row.number("g_lsj");
  draft.levelPrices = {row.number("g_sj1"), row.number("g_sj2"), row.number("g_sj3"), row.number("g_sj4"),
                       row.number("g_sj5")};
  draft.lowestStock = static_cast<int>(row.integer("g_zdkc"));
  draft.fixedCost = row.flag("g_gdcbj");
  draft.mayBeGift = row.flag("g_iszp");
  draft.commissionKind = static_cast<int>(row.integer("g_tclb"));
  draft.commission = row.number("g_tc");
  if (row.flag("g_isjp")) draft.lens = LensPowers{row.text("g_qc"), row.text("g_qgd"), row.text("g_sgd")};
  return draft;
}

bool mayRenumberGoods(const GoodsDraft& draft) {
  if (draft.number == goods_change_detail::kBalancing) return false;
  if (exists("select g_sn from jxc_jhsp where g_sn=?", draft.number)) return false;
  return draft.lens || !exists("select g_sn from jxc_kcsp where g_sn=?", draft.number);
}

void syncUnit2(const QString& number) {
  execSql("update jxc_goods set dw_name2=dw_name,g_zhxs=1 where g_sn=?", number);
}

bool changeGoods(std::int64_t id, const GoodsDraft& typed, bool commissionForClass, Prompt& prompt) {
  const GoodsDraft before = readGoods(id);
  GoodsDraft draft = cleanGoodsDraft(typed);
  if (!mayRenumberGoods(before)) draft.number = before.number;
  if (!mayKeepGoods(draft, id, prompt, before)) return false;

  Transaction transaction(accountDb());
  goods_change_detail::write(id, before, draft);
  syncUnit2(draft.number);
  if (draft.lens) {
    updateRow("jxc_goods", id, {{"g_qgd", draft.lens->sphere}, {"g_sgd", draft.lens->cylinder}});
    goods_change_detail::renumberStock(before.number, draft.number);
  } else {
    goods_change_detail::renameInLedger(before, draft);
  }
  if (commissionForClass) {
    execSql("update jxc_goods set g_tclb=?,g_tc=? where gc_sn=?", draft.commissionKind,
            draft.commissionKind == 0 ? 0.0 : draft.commission, *draft.classNumber);
  }
  goods_change_detail::logPrices(before, draft);
  transaction.commit();
  return true;
}

bool deleteGoods(std::int64_t id, Prompt& prompt) {
  using namespace goods_change_detail;
  return deleteAsking({.table = "jxc_goods",
                       .question = QStringLiteral("您确定要删除该商品信息吗！"),
                       .hindrance = [](const Row& row) -> std::optional<Hindrance> {
                         const QString number = row.text("g_sn");
                         if (number == kBalancing) return Hindrance{u"该商品为系统内置商品，不能删除！"_qs, {}, {}};
                         const auto use = firstUse(number);
                         const Refusal locked = use ? Refusal() : rowsLocked(number);
                         if (locked) return Hindrance{locked.text, {}, orDisable()};
                         if (!use) return {};
                         return Hindrance{u"该商品已发生过业务，单据号：%1 不能删除！"_qs.arg(*use), {}, orDisable()};
                       },
                       .alsoDelete = [](const Row& row) { eraseTraces(row.text("g_sn"), row.text("g_name")); }},
                      id, prompt);
}

std::optional<GoodsDeletion> deleteGoodsBatch(const GoodsIds& ids, const GoodsProgress& progress) {
  using namespace goods_change_detail;
  GoodsDeletion result;
  const bool done = forAll(ids, progress, [&](std::int64_t id) {
    const RowSet rows = openSelect("select g_sn,g_name from jxc_goods where id=?", id);
    if (rows.isEmpty()) return;
    const QString number = rows.text(0, 0);
    const QString who = QStringLiteral("商品编号：%1 商品名称：%2  ").arg(number, rows.text(0, 1));
    if (number == kBalancing) {
      result.refusals << who + QStringLiteral("为系统内置商品，不能删除！");
    } else if (const auto use = firstUse(number)) {
      result.refusals << who + QStringLiteral("已发生过业务，单据号：%1 不能删除！").arg(*use);
    } else if (const Refusal locked = rowsLocked(number)) {
      result.refusals << who + locked.text;
    } else {
      execSql("delete from jxc_goods where id=?", id);
      eraseTraces(number, rows.text(0, 1));
      result.numbers << number;
      ++result.deleted;
    }
  });
  return done ? std::optional(result) : std::nullopt;
}

void setGoodsDisabled(std::int64_t id, bool disabled) {
  if (disabled) {
    execSql("update jxc_goods set g_jy=1 where id=?", id);
  } else {
    execSql("update jxc_goods set g_jy=0 where g_sn<>'00000000' and id=?", id);
  }
}

bool flipGoodsDisabled(const GoodsIds& ids, Prompt& prompt, const GoodsProgress& progress) {
  if (!prompt.ask(QStringLiteral("您的操作将禁用选中的所有商品，\r\n\r\n已禁用的商品将会解除禁用。\r\n\r\n确认吗？"))) {
    return false;
  }
  return goods_change_detail::forAll(ids, progress, [](std::int64_t id) {
    setGoodsDisabled(id, lookupNumber("select g_jy from jxc_goods where id=?", id) == 0);
  });
}

bool changeGoodsMnemonic(std::int64_t id, const QString& mnemonic) {
  return execSql("update jxc_goods set g_jm=? where id=?", sanitizeKeyword(mnemonic.trimmed().toUpper()), id) > 0;
}

bool changeGoodsClass(const GoodsIds& ids, const std::optional<QString>& classNumber, Prompt& prompt,
                      const GoodsProgress& progress) {
  if (refused({{!classNumber, u"请选择商品类别！"_qs, Subject::Class}}, prompt)) return false;
  const QString identity = lookupValue("select gc_cid from jxc_goodsclass where gc_sn=?", *classNumber);
  return goods_change_detail::forAll(ids, progress, [&](std::int64_t id) {
    execSql("update jxc_goods set gc_sn=?,gc_cid=? where id=?", *classNumber, identity, id);
  });
}

bool changeLowestStock(const GoodsIds& ids, int pieces, Prompt& prompt, const GoodsProgress& progress) {
  if (!prompt.ask(QStringLiteral("您确定要修改选中商品的最低库存吗！"))) return false;
  const bool done = goods_change_detail::forAll(
      ids, progress, [pieces](std::int64_t id) { execSql("update jxc_goods set g_zdkc=? where id=?", pieces, id); });
  if (done) {
    prompt.notice(goods_change_detail::countText(QStringLiteral("成功修改："), ids.size(), QStringLiteral("信息。")));
  }
  return done;
}

bool setGoodsFixedCost(const GoodsIds& ids, bool on, Prompt& prompt, const GoodsProgress& progress) {
  if (!prompt.ask(on ? QStringLiteral("您的操作将选中的商品预设进价作为销售成本价，确定修改吗？")
                     : QStringLiteral("您的操作将取消选中的商品预设进价作为销售成本价，确定修改吗？"))) {
    return false;
  }
  const bool done = goods_change_detail::forAll(
      ids, progress, [on](std::int64_t id) { execSql("update jxc_goods set g_gdcbj=? where id=?", on, id); });
  if (done) {
    prompt.notice(goods_change_detail::countText(on ? QStringLiteral("成功设置：") : QStringLiteral("成功取消："),
                                                 ids.size(), QStringLiteral("预设进价作为销售成本价。")));
  }
  return done;
}

bool changeGoodsCell(std::int64_t id, std::string_view column, const QString& typed, Prompt& prompt) {
  const GoodsDraft before = readGoods(id);
  GoodsDraft draft = before;
  bool isNumber = true;
  if (column == "g_sptm")
    draft.barcode = typed;
  else if (column == "g_sj")
    draft.salePrice = roundMoney(typed.toDouble(&isNumber));
  else
    draft.lowestStock = typed.toInt(&isNumber);
  if (refused({{!isNumber, u"请输入正确的数值！"_qs, Subject::Lines, draft.number},
               {draft.lowestStock < 0, u"价格和数量不能小于零！"_qs, Subject::Lines, draft.number}},
              prompt))
    return false;
  draft = cleanGoodsDraft(draft);
  if (!mayKeepGoods(draft, id, prompt, before)) return false;
  // Only this cell: another station may have changed the one beside it.
  Transaction transaction(accountDb());
  if (column == "g_sptm")
    updateRow("jxc_goods", id, {{"g_sptm", draft.barcode}});
  else if (column == "g_sj")
    updateRow("jxc_goods", id, {{"g_sj", draft.salePrice}});
  else
    updateRow("jxc_goods", id, {{"g_zdkc", draft.lowestStock}});
  goods_change_detail::logPrices(before, draft);
  transaction.commit();
  return true;
}

GoodsDraft copyOfGoods(std::int64_t id) {
  GoodsDraft draft = readGoods(id);
  draft.number.clear();
  draft.barcode.clear();
  if (!session().canSeeCost) draft.purchasePrice = 0;
  if (!session().canSeePrice) {
    draft.salePrice = draft.retailPrice = 0;
    draft.levelPrices = {};
  }
  return draft;
}

}  // namespace jxc
