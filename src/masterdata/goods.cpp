#include "masterdata/goods.h"

#include "core/clock.h"
#include "core/letter_search.h"
#include "core/period_lock.h"
#include "core/pinyin.h"
#include "core/rounding.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"
#include "stock/goods_words.h"
#include "stock/opening_row.h"

#include <algorithm>

namespace jxc {
namespace goods_detail {

/// Typed or scanned text: control characters are of no use in any of it.
QString clean(const QString& typed) {
  QString result = sanitizeKeyword(typed.trimmed());
  result.removeIf([](QChar c) { return c < u' ' || c == QChar(0x7F); });
  return result;
}

bool taken(const char* sql, const QString& value, std::int64_t id) {
  return !lookupValue(sql, value, id).isEmpty();
}

/// Opening stock stands in the ledger five years back, so that it sorts before every document. Lenses come to a running
/// shop a range at a time: theirs begins on the day it is keyed in, with the plain amount. Where that day is locked it
/// is the first one that is not.
void writeOpeningStock(const GoodsDraft& draft) {
  const double quantity = draft.openingStock;
  const double price = draft.purchasePrice;
  const double amount = draft.lens ? price * quantity : roundEps(price * quantity, totalDigits());
  const QString openingDate = PeriodLock().openFrom(
      draft.lens ? clock::today() : QStringLiteral("%1-01-01").arg(clock::now().date().year() - 5));

  addToMonth(draft.warehouse, quantity, quantity * price);
  const RowSet goods =
      openSelect("select g_sn,g_name,g_jm,dw_name,gg_name,color_name,g_bz from jxc_goods where g_sn=?", draft.number);
  beginStock({draft.warehouse, openingDate}, goods.front(), quantity, price, amount);
}

/// One word must match one of the six columns; several words must each match somewhere. Powers are compared as numbers.
void addKey(Filter& filter, const QString& key) {
  const GoodsWords wanted = goodsWords(key);
  addPowers(filter, wanted);
  for (const QString& word : wanted.words) {
    const QString like = QLatin1Char('%') + word + QLatin1Char('%');
    Sql any(R"((a.g_sn like ? or a.g_name like ? or a.g_jm like ? or a.g_sptm like ?
      or a.gg_name like ? or a.color_name like ?)",
            like, like, like, like, like, like);
    orOtherReadings(any, "a.g_jm", "a.g_name", word);
    filter.add(any.add(")"));
  }
}

Refusal negativeFigure(const GoodsDraft& draft) {
  const std::pair<double, Subject> figures[] = {
      {draft.purchasePrice, Subject::PurchasePrice}, {draft.salePrice, Subject::SalePrice},
      {draft.retailPrice, Subject::RetailPrice},     {draft.levelPrices[0], Subject::LevelPrice1},
      {draft.levelPrices[1], Subject::LevelPrice2},  {draft.levelPrices[2], Subject::LevelPrice3},
      {draft.levelPrices[3], Subject::LevelPrice4},  {draft.levelPrices[4], Subject::LevelPrice5},
      {draft.openingStock, Subject::OpeningStock}};
  for (const auto& [figure, what] : figures)
    if (figure < 0) return {u"价格和数量不能小于零！"_qs, what};
  return {};
}

}  // namespace goods_detail

void addGoodsConditions(Filter& filter, const GoodsFilter& wanted) {
  if (!wanted.withDisabled) filter.add("a.g_jy=0").add("a.g_sn<>'00000000'");
  if (!wanted.classNumber.isEmpty()) filter.add("a.gc_sn like ?", wanted.classNumber + QLatin1Char('%'));
  if (!wanted.number.isEmpty()) filter.add("a.g_sn=?", wanted.number);
  if (!wanted.lensProduct.isEmpty()) filter.add("a.g_qc=?", wanted.lensProduct).add("a.g_isjp<>0");
  goods_detail::addKey(filter, wanted.key);
}

GoodsDraft cleanGoodsDraft(const GoodsDraft& typed) {
  GoodsDraft draft = typed;
  for (QString GoodsDraft::*text : {&GoodsDraft::number, &GoodsDraft::name, &GoodsDraft::barcode, &GoodsDraft::unit,
                                    &GoodsDraft::model, &GoodsDraft::colour, &GoodsDraft::origin, &GoodsDraft::note})
    draft.*text = goods_detail::clean(typed.*text);
  if (draft.lens) draft.lens->product = goods_detail::clean(draft.lens->product);
  return draft;
}

Refusal missingIn(const GoodsDraft& draft) {
  if (!draft.classNumber) return {u"类别名称必须填写！"_qs, Subject::Class};
  if (draft.number.isEmpty()) return {u"商品编号必须填写！"_qs, Subject::Number};
  if (draft.name.isEmpty() || (draft.lens && draft.lens->product.isEmpty()))
    return {u"商品名称必须填写！"_qs, Subject::Name};
  return {draft.unit.isEmpty(), u"商品单位必须填写！"_qs, Subject::Unit};
}

bool mayKeepGoods(const GoodsDraft& draft, std::int64_t id, Prompt& prompt, const GoodsDraft& before) {
  using goods_detail::taken;
  if (refused({missingIn(draft),
               {taken("select top 1 g_sn from jxc_goods where g_sn=? and id<>?", draft.number, id),
                id == 0 ? u"商品编号已经存在，请重新输入！"_qs : u"商品编号已存在！"_qs, Subject::Number},
               goods_detail::negativeFigure(draft)},
              prompt))
    return false;
  if (!draft.barcode.isEmpty() && draft.barcode != before.barcode &&
      taken("select top 1 g_sn from jxc_goods where g_sptm=? and id<>?", draft.barcode, id) &&
      !prompt.ask(QStringLiteral("商品条码已经存在，确认输入吗？"))) {
    return false;
  }
  return !draft.warnSameName || draft.name == before.name ||
         !taken("select top 1 g_sn from jxc_goods where g_name=? and id<>?", draft.name, id) ||
         prompt.ask(id == 0 ? QStringLiteral("商品名称已经存在，确认输入吗？")
                            : QStringLiteral("商品名称已经存在，确认修改吗？"));
}

void writeGoodsPrices(std::int64_t id, const GoodsDraft& draft) {
  updateRow("jxc_goods", id,
            {{"g_jj", draft.purchasePrice},
             {"g_sj", draft.salePrice},
             {"g_sj1", draft.levelPrices[0]},
             {"g_sj2", draft.levelPrices[1]},
             {"g_sj3", draft.levelPrices[2]},
             {"g_sj4", draft.levelPrices[3]},
             {"g_sj5", draft.levelPrices[4]},
             {"g_lsj", draft.retailPrice}});
}

void startPurchasePrices(std::int64_t id, double price) {
  updateRow("jxc_goods", id, {{"g_scjj", price}, {"g_pjjj", price}});
}

std::int64_t insertGoods(const GoodsDraft& draft) {
  const QString supplier = lookupValue("select ghs_sn from jxc_ghsxx where ghs_default<>0");
  const QString classIdentity = lookupValue("select gc_cid from jxc_goodsclass where gc_sn=?", *draft.classNumber);
  const auto id = insertRow("jxc_goods", {{"g_sn", draft.number},
                                          {"g_name", draft.name},
                                          {"g_qc", (draft.lens ? draft.lens->product : draft.name).left(64)},
                                          {"g_jm", makeJm(draft.name).left(32)},
                                          {"g_sptm", draft.barcode},
                                          {"dw_name", draft.unit},
                                          {"dw_name2", draft.unit},
                                          {"gg_name", draft.model},
                                          {"color_name", draft.colour},
                                          {"gc_sn", *draft.classNumber},
                                          {"gc_cid", classIdentity},
                                          {"ghs_sn", supplier},
                                          {"g_sccs", draft.origin},
                                          {"g_bz", draft.note},
                                          {"g_qgd", draft.lens ? draft.lens->sphere : QString()},
                                          {"g_sgd", draft.lens ? draft.lens->cylinder : QString()},
                                          {"g_tym", ""},
                                          {"g_yjlx", ""}});
  updateRow("jxc_goods", id,
            {{"g_cbj", draft.purchasePrice},
             {"g_hyj", 0},
             {"g_tj", 0},
             {"g_zdkc", draft.lowestStock},
             {"g_kc", draft.openingStock},
             {"g_zhxs", 1},
             {"g_dzll", 1},
             {"g_clxs", 0},
             {"g_zpjf", 0},
             {"g_tsjf", 0},
             {"g_bzq", 0},
             {"g_cgpl", 0},
             {"g_xspl", 0}});
  updateRow("jxc_goods", id,
            {{"g_gdcbj", draft.fixedCost},
             {"g_iszp", draft.mayBeGift},
             {"g_isjp", draft.lens.has_value()},
             {"g_jy", 0},
             {"g_tjsp", 0},
             {"g_tjqx", 0},
             {"g_dxdz", 0},
             {"g_sy", 0},
             {"g_tssp", 0},
             {"g_tclb", draft.commissionKind},
             {"g_tc", draft.commissionKind == 0 ? 0.0 : draft.commission},
             {"g_tcje", 0},
             {"g_ygtc", 0},
             {"g_jgtc", 0},
             {"g_xsytc", 0},
             {"g_ygtc2", 0},
             {"g_jgtc2", 0},
             {"g_xsytc2", 0}});
  writeGoodsPrices(id, draft);
  startPurchasePrices(id, draft.purchasePrice);
  return id;
}

QString nextGoodsSn(std::int64_t classIdentity) {
  const QString head = QString::number(classIdentity);
  const QString highest = lookupValue(
      "select max(g_sn) from jxc_goods where isnumeric(g_sn) and len(g_sn)=8 and g_sn like ?", head + QLatin1Char('%'));
  if (!highest.isEmpty()) return QString::number(highest.toLongLong() + 1);
  return head.leftJustified(8, QLatin1Char('0')).left(7) + QLatin1Char('1');
}

QString proposedGoodsSn(const QString& classNumber) {
  if (!strIsTrue(session().cs_spbh)) return {};
  const QString identity = lookupValue("select gc_cid from jxc_goodsclass where gc_sn=?", classNumber);
  return identity.isEmpty() ? QString() : nextGoodsSn(identity.toLongLong());
}

std::optional<QString> addGoods(const GoodsDraft& typed, Prompt& prompt) {
  const GoodsDraft draft = cleanGoodsDraft(typed);
  if (!mayKeepGoods(draft, 0, prompt)) return {};

  Transaction transaction(accountDb());
  if (goods_detail::taken("select top 1 g_sn from jxc_goods where g_sn=? and id<>?", draft.number, 0)) {
    throw DbError(DbError::Kind::Other, QStringLiteral("商品编号已经存在，请重新输入！"));
  }
  insertGoods(draft);
  if (draft.openingStock > 0) goods_detail::writeOpeningStock(draft);
  transaction.commit();
  return draft.number;
}

Sql goodsListStatement(const GoodsFilter& wanted) {
  Filter filter;
  addGoodsConditions(filter, wanted);
  filter.add("a.gc_sn=b.gc_sn");
  // Only what the list shows and its commands ask for: with 100,000 goods each column left out is a megabyte and more.
  return Sql("select "
             "a.id,a.g_sn,a.g_name,a.g_jm,a.g_sptm,a.gg_name,a.color_name,a.dw_name,a.dw_name2,a.gc_sn,b.gc_name,a.g_"
             "kc,"
             "a.g_jj,a.g_sj,a.g_sj1,a.g_sj2,a.g_sj3,a.g_sj4,a.g_sj5,a.g_lsj,a.g_scjj,a.g_pjjj,a.g_zdkc,a.g_qc,a.g_qgd,"
             "a.g_sgd,a.g_gdcbj,a.g_iszp,a.g_jy,a.g_isjp,a.g_sccs,a.g_bz," +
             roundedExpression("g_kc/iif(g_zhxs=0,1,g_zhxs)", quantityDigits()) +
             " as fzkc from jxc_goods a,jxc_goodsclass b")
      .where(filter)
      .add(" order by a.g_sn");
}

RowSet selectGoods(const GoodsFilter& wanted) {
  return openSelect(goodsListStatement(wanted));
}

}  // namespace jxc
