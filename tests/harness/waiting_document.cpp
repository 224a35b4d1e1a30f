#include "harness/waiting_document.h"

#include "accounts/partner_ledger.h"
#include "core/session.h"
#include "engine/transaction.h"
#include "stock/document.h"
#include "stock/ledger.h"
#include "stock/posting.h"

namespace jxc::test {
namespace waiting_document_detail {

bool movesLater(const DocumentFamily& family) {
  bool (*const later)() = family.line.columns->movedLater;
  return later && later();
}
bool isOfLoans(const DocumentFamily& family) {
  return family.head == families::loan.head;
}

void put(std::string_view table, std::int64_t id, const std::vector<Field>& fields) {
  for (const Field& field : fields)
    if (!field.first.empty()) updateRow(table, id, {field});
}

}  // namespace waiting_document_detail

std::int64_t writeLine(const DocumentFamily& family, const QString& number, const QString& date, const Pieces& line,
                       const QString& warehouse) {
  using namespace waiting_document_detail;
  const LineTable& table = family.line;
  const LineColumns& c = *table.columns;
  const RowSet stock = openSelect("select kc_sl,kc_zsl from jxc_kcsp where g_sn=? and ck_sn=?", line.goods, warehouse);
  const double shelf = stock.isEmpty() ? 0 : stock.number(0, 0), books = stock.isEmpty() ? 0 : stock.number(0, 1);
  const double amount = (line.quantity - (family.isCount() ? shelf : 0)) * line.price;
  const double cost = c.cost.empty() ? 0 : getGoodsCost(line.goods, warehouse, date);
  const std::int64_t id = insertRow(family.lines, {{family.number, number},
                                                   {"a_name", session().a_name},
                                                   {"g_sn", line.goods},
                                                   {c.quantity, line.quantity},
                                                   {c.price, line.price},
                                                   {c.net, amount},
                                                   {c.tax, 0.0},
                                                   {c.taxedPrice, line.price},
                                                   {c.taxAmount, 0.0},
                                                   {c.total, amount},
                                                   {c.discount, 1.0},
                                                   {c.moved, movesLater(family) ? 0.0 : line.quantity},
                                                   {c.cost, cost},
                                                   {c.costAmount, cost * line.quantity},
                                                   {table.retail, line.price},
                                                   {table.gift, u""},
                                                   {table.warehouse, warehouse},
                                                   {table.countedShelf, shelf},
                                                   {table.countedBook, books}});
  for (const std::string_view zero : table.zeros)
    updateRow(family.lines, id, {{zero, 0}});
  if (isOfLoans(family))
    put(family.lines, id,
        {{"jh_sl2", line.quantity}, {"jh_hhsl", 0.0}, {"jh_xssl", 0.0}, {"jh_yj2", 0.0}, {"jh_flag", u"借货"}});
  put(family.lines, id, line.more);
  return id;
}

QString waitingDocument(const DocumentFamily& family, const QString& date, const std::vector<Field>& head,
                        const std::vector<Pieces>& lines) {
  using namespace waiting_document_detail;
  const QString number = newDocumentNumber(family, date);
  QString warehouse = QStringLiteral("100001");
  for (const auto& [name, value] : head)
    if (name == family.warehouse) warehouse = value.text();
  Transaction transaction(accountDb());  // as a save: whole or not at all
  double due = 0;
  for (const Pieces& line : lines) {
    writeLine(family, number, date, line, warehouse);
    due += line.quantity * line.price;
  }
  const std::int64_t id = insertRow(
      family.head,
      {{family.number, number},
       {family.date, date},
       {family.status, 0},
       {family.checker, u""},
       {family.checkDate, u""},
       {"u_sn", u"100001"},
       {"a_name", session().a_name},
       {family.note, u""},
       {family.warehouse, warehouse},
       {family.partner, family.side == PartnerType::Supplier
                            ? u"100001"_qs
                            : lookupValue("select top 1 kh_sn from jxc_khxx order by id")},
       {family.due, family.headSign * due},
       {family.paid, 0.0},
       {family.discount, 0.0},
       {family.collected, 0.0},
       {family.settlement, 1},
       {family.account, u"现金"},
       {family.allMoved, !movesLater(family)},
       {family.fromTill, 0},
       {isOfLoans(family) ? "jh_flag" : "", QString::fromUtf8(family.flag.data(), qsizetype(family.flag.size()))}});
  put(family.head, id, head);
  transaction.commit();
  return number;
}

QString returnLoan(const QString& date, std::int64_t line, double back, double kept, double price, double rent,
                   const QString& account) {
  const RowSet rows = openSelect(
      "select a.kh_sn,a.ck_sn,b.g_sn,b.jh_sl from jxc_khjh a,jxc_khjhsp b where a.gl_djh=b.gl_djh and b.id=?", line);
  const Row lent = rows.front();
  Transaction transaction(accountDb());
  const QString number = waitingDocument(families::loanReturn, date,
                                         {{"kh_sn", lent.text("kh_sn")},
                                          {"ck_sn", lent.text("ck_sn")},
                                          {"jh_status", 1},
                                          {"jh_checker", session().a_name},
                                          {"jh_chkrq", date}},
                                         {{lent.text("g_sn"),
                                           lent.number("jh_sl"),
                                           price,
                                           {{"jh_zje", price * (back + kept)},
                                            {"jh_hhsl", back},
                                            {"jh_xssl", kept},
                                            {"jh_zzj", rent},
                                            {"jh_kmmc", account},
                                            {"jh_flag", kept > 0 ? u"销售" : u"还货"},
                                            {"id2", line}}}});
  postLoanReturn(number);
  transaction.commit();
  return number;
}

QString waitingPart(const PartialMovement& movement, const QString& date, const QString& source,
                    const std::vector<double>& pieces) {
  const DocumentFamily &f = *movement.family, &s = *movement.source;
  const RowSet heads = openSelect(
      compose("select {} as partner,{} as warehouse from {} where {}=?", {s.partner, s.warehouse, s.head, s.number}),
      source);
  std::vector<Pieces> lines;
  double sum = 0;
  std::size_t at = 0;
  for (const Row line : openSelect("select b.g_sn,b.id2," + partial::openPieces(movement, "b") +
                                       compose(" as opensl from {} b where b.{}=? order by b.id", {s.lines, s.number}),
                                   source)) {
    const double part = at < pieces.size() ? pieces[at] : line.number("opensl");
    ++at;
    if (part == 0) continue;
    lines.push_back({line.text("g_sn"), part, 0, {{f.line.source, source}, {f.line.sourceLine, line.integer("id2")}}});
    sum += part;
  }
  return waitingDocument(f, date, {{f.partner, heads.text(0, 0)}, {f.warehouse, heads.text(0, 1)}, {f.pieces, sum}},
                         lines);
}

}  // namespace jxc::test
