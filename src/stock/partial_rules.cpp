#include "stock/partial_rules.h"

#include "core/refusal.h"
#include "core/session.h"
#include "core/small_lookups.h"
#include "core/statements.h"
#include "core/text.h"
#include "stock/ledger.h"

#include <map>

namespace jxc::partial {
namespace partial_rules_detail {

OpenLines openOf(const LinePlace& place) {
  return {.partner = place.partner, .warehouse = place.warehouse};
}

/// Pieces that are still open of a line of the source, whatever waits for it elsewhere.
double openOf(const PartialMovement& m, std::int64_t sourceLine) {
  const DocumentFamily& s = *m.source;
  return lookupNumber("select " + openPieces(m, "b") + compose(" from {} b where b.{}=?", {s.lines, s.line.link}),
                      sourceLine);
}

/// What a line may not take of `open` pieces; refused in the words of the kind.
bool isBeyondOpen(const PartialMovement& m, double pieces, double open, Prompt& prompt) {
  return refused({{pieces <= 0, u"数量必须大于0！"_qs, Subject::Quantity},
                  {pieces - open >= 0.000001, words(m.doing) + u"数量不能大于"_qs + words(m.sourceDeed) + u"数量！"_qs,
                   Subject::Quantity}},
                 prompt);
}

LineDescription descriptionOf(const PartialMovement& m) {
  return {.family = m.family,
          .priceIsTyped = false,
          .quantityRefusal = u"数量必须大于0！",
          .shortRefusal = m.shortRefusal,
          .shortQuestion = m.shortQuestion,
          .everyChangeIsTested = true,
          .repeats = Repeats::Never,
          .takesNewGoods = false};
}

}  // namespace partial_rules_detail

// ---- lines -------------------------------------------------------------------------------------------------------

PartialLines::PartialLines(const PartialMovement& movement)
    : TableLines(partial_rules_detail::descriptionOf(movement)), movement_(movement) {}

LineDraft PartialLines::newLine(const QString& openLine, const LinePlace& place, bool) const {
  LineDraft draft;
  draft.warehouse = place.warehouse;
  OpenLines wanted = partial_rules_detail::openOf(place);
  wanted.id = openLine.toLongLong();
  const RowSet open = openSelect(openLines(movement_, wanted));
  if (open.isEmpty()) return draft;
  const Row row = open.front();
  draft.goods = row.text("g_sn");
  draft.source = row.text("djh");
  draft.sourceLine = row.integer("lid");
  draft.amounts.setQuantity(row.number("opensl") - takenBy(movement_, place.number, draft.sourceLine, 0));
  return draft;
}

bool PartialLines::mayTake(std::int64_t sourceLine, double pieces, Lines where, std::int64_t id, const QString& number,
                           Prompt& prompt) const {
  // What is staged for the document is not on it yet.
  const double others = takenBy(movement_, number, sourceLine, where == Lines::Staging ? 0 : id);
  return !partial_rules_detail::isBeyondOpen(movement_, pieces,
                                             partial_rules_detail::openOf(movement_, sourceLine) - others, prompt);
}

bool PartialLines::mayWrite(const LineDraft& draft, const LinePlace& place, Prompt& prompt) const {
  // The dialog knows neither list nor id: what the line itself holds already is open to it.
  const double pieces = draft.amounts.quantity();
  return !refused({{draft.sourceLine == 0, changedMeanwhile({})}}, prompt) &&
         !partial_rules_detail::isBeyondOpen(movement_, pieces,
                                             partial_rules_detail::openOf(movement_, draft.sourceLine), prompt) &&
         stockAllows(draft.goods, pieces, place, prompt);
}

bool PartialLines::cellAllows(const QString& value, QStringView field, Lines where, std::int64_t id,
                              const LinePlace& place, Prompt& prompt) const {
  if (lineFieldNamed(field) != LineField::Quantity) return true;
  const std::optional<LineDraft> line = loadLine(where, id);
  if (!line) return true;  // told when it is written
  const double pieces = cellValue(LineField::Quantity, value, quantities());
  return mayTake(line->sourceLine, pieces, where, id, place.number, prompt) &&
         stockAllows(line->goods, pieces, place, prompt);
}

std::optional<Row> PartialLines::nextFree(const RowSet& open, const QString& number) const {
  for (const Row row : open)
    if (takenBy(movement_, number, row.integer("lid"), 0) == 0) return row;
  return {};
}

ScanResult PartialLines::enterBarcode(const LinePlace& place, const QString& code, bool oncePerGoods,
                                      Prompt& prompt) const {
  ScanResult result;
  result.number = place.number;
  OpenLines wanted = partial_rules_detail::openOf(place);
  wanted.barcode = sanitizeText(code.trimmed());
  const RowSet open = wanted.barcode.isEmpty() ? RowSet() : openSelect(openLines(movement_, wanted));
  if (open.isEmpty()) {
    result.unknown = !exists("select id from jxc_goods where g_sptm=?", wanted.barcode);
    result.refusal = {result.unknown ? u"没有找到与该条码匹配的商品，请检查！"_qs
                                     : u"当前仓库和往来单位的单据中，该商品没有待"_qs + words(movement_.doing) +
                                           u"的数量，请检查！"_qs,
                      Subject::Barcode};
    return result;
  }
  const bool isThere = goodsOnDocument(family(), place.number, open.front().text("g_sn"), true);
  const std::optional<Row> next = oncePerGoods && isThere ? std::nullopt : nextFree(open, place.number);
  if (!next) {
    result.outcome = Scan::AlreadyThere;
    result.refusal = alreadyOnDocument(open.front().text("g_sn"));
    return result;
  }
  LinePlace here = place;
  here.partner = next->text("partner");
  const LineDraft line = newLine(next->text("lid"), here, false);
  if (!stockAllows(line.goods, line.amounts.quantity(), place, prompt)) return result;
  const LineResult added = addLine(Lines::Draft, here, line, prompt);
  result.id = added.id;
  result.number = added.number;
  result.outcome = Scan::Added;
  return result;
}

Sql PartialLines::goodsToPick(const LinePlace& place, const PickFilter& filter) const {
  OpenLines wanted = partial_rules_detail::openOf(place);
  wanted.key = filter.key;
  wanted.source = filter.classNumber;
  return openLines(movement_, wanted);
}

bool PartialLines::mayStage(const QString& openLine, const LinePlace& place, Lines, PickingMemory& memory,
                            Prompt&) const {
  const LineDraft line = newLine(openLine, place, true);
  const bool isStaged = exists("select id from jxc_tempspxf where ghs_sn=? and a_name=?", openLine, session().a_name);
  if (line.sourceLine != 0 && line.amounts.quantity() > 0 && !isStaged) return true;
  memory.passedOver << line.source + u' ' + line.goods;
  return false;
}

std::int64_t PartialLines::stageGoods(const QString& openLine, double, const LinePlace& place, Lines target,
                                      PickingMemory& memory, Prompt& prompt) const {
  if (!mayStage(openLine, place, target, memory, prompt)) return 0;
  const LineDraft line = newLine(openLine, place, true);
  if (!stockAllows(line.goods, line.amounts.quantity(), place, prompt, &memory)) return 0;
  return addLine(Lines::Staging, place, line, prompt).id;
}

// ---- documents ---------------------------------------------------------------------------------------------------

SaveResult PartialRules::save(const DraftOfPartner& draft, Prompt& prompt) const {
  const DocumentFamily& f = family();
  const QString noun = words(partnerOf(f).noun);
  if (isIncomplete(draft, prompt, {draft.partner.isEmpty(), u"请选择%1！"_qs.arg(noun), Subject::Partner}) ||
      !mayGoShort(checkStockShort(draft.number, draft.warehouse, QStringView(f.shortageAtAudit)), prompt))
    return {.saved = false, .number = draft.number};
  return saveDocument(f,
                      {.number = draft.number,
                       .date = draft.date,
                       .warehouse = movement_.testsShelf() ? draft.warehouse : QString(),
                       .writeHead =
                           [&](const QString& number) {
                             const std::int64_t head = insertWaitingHead(f, draft, number);
                             updateRow(f.head, head, {{f.partner, draft.partner}});
                             refreshWaitingTotals(f, number);
                           }},
                      prompt);
}

std::optional<DraftOfPartner> PartialRules::takeWhole(const QString& source, const DraftOfPartner& current,
                                                      Prompt& prompt) const {
  const DocumentFamily &f = family(), &s = *movement_.source;
  const RowSet heads =
      openSelect(compose("select * from {} where {}=1 and {}=? order by id", {s.head, s.status, s.number}), source);
  const QString doing = words(movement_.doing);
  const RowSet open = openSelect(openLines(movement_, {.source = source}));
  if (refused({{heads.isEmpty(), changedMeanwhile(source)},
               {open.isEmpty(), u"单据"_qs + source + u"没有待"_qs + doing + u"的商品！"_qs}},
              prompt))
    return {};
  if (draftLineCount(f, current.number) > 0 &&
      !prompt.ask(u"当前单据的商品将被清除，换成单据"_qs + source + u"所有未"_qs + doing + u"的商品，确认吗？"_qs))
    return {};
  DraftOfPartner draft = current;
  const Row head = heads.front();
  draft.partner = head.text(s.partner);
  draft.warehouse = head.text(s.warehouse);
  draft.salesperson = head.text("u_sn");
  draft.note = head.text(s.note);

  // What is not there of it, by goods: asked about once for all.
  if (movement_.testsShelf()) {
    std::map<QString, double> pieces;
    for (const Row row : open)
      pieces[row.text("g_sn")] += row.number("opensl");
    const LinePlace place{.number = draft.number, .warehouse = draft.warehouse};
    PickingMemory memory;
    for (const auto& [goods, sum] : pieces)
      if (!lines_.stockAllows(goods, sum, place, prompt, &memory)) return {};
  }
  std::int64_t taken = 0;
  {
    Transaction transaction(accountDb());
    discardDraft(f, draft.number);
    draft.number = usableDraftNumber(f, draft.number, draft.date);
    taken = execSql(
        Sql(compose("insert into {} ({},a_name,{},g_sn,{},{})",
                    {f.lines, f.number, f.line.columns->quantity, f.line.source, f.line.sourceLine}) +
                " select ?,?," + openPieces(movement_, "b") +
                compose(",b.g_sn,b.{},b.{} from {} b where b.{}=? and ", {s.number, s.line.link, s.lines, s.number}) +
                isOpen(movement_, "b") + " order by b.id",
            draft.number, session().a_name, source));
    if (taken > 0) transaction.commit();
  }
  // Another station may have moved the last of it since it was looked at.
  if (refused({{taken == 0, changedMeanwhile(source)}}, prompt)) return {};
  return draft;
}

void PartialRules::followLines(DraftOfPartner& draft) const {
  const DocumentFamily &f = family(), &s = *movement_.source;
  const RowSet source =
      openSelect(compose("select top 1 c.{} as partner,c.{} as warehouse from {} a,{} c where a.{}=c.{} and a.{}=? and "
                         "a.a_name=? and c.{}=1 order by a.id",
                         {s.partner, s.warehouse, f.lines, s.head, f.line.source, s.number, f.number, s.status}),
                 draft.number, session().a_name);
  if (source.isEmpty()) return;
  draft.partner = source.text(0, 0);
  draft.warehouse = source.text(0, 1);
}

const PartialRules& putawayRules() {
  static const PartialRules all(putaway);
  return all;
}
const PartialRules& issueRules() {
  static const PartialRules all(issue);
  return all;
}

}  // namespace jxc::partial
