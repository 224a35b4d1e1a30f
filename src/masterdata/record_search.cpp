#include "masterdata/record_search.h"

#include "core/letter_search.h"
#include "core/statements.h"
#include "core/text.h"
#include "masterdata/partner_side.h"
#include "stock/document_family.h"

#include <algorithm>
#include <string>
#include <utility>

namespace jxc {
namespace record_search_detail {

constexpr int kFewestTyped = 2;

void addGoods(std::vector<FoundRecord>& found, const GoodsToFind& goods, const QString& typed) {
  for (const Row& row : goods.find(typed))
    found.push_back({"btn_Menu6_Btn1", row.text("g_sn"), u"商品 "_qs + row.text("g_sn") + u' ' + row.text("g_name")});
}

void addPartners(std::vector<FoundRecord>& found, const PartnerSide& side, std::string_view command,
                 const QString& typed) {
  const QString begins = typed + u'%';
  Sql partners(compose("select top 3 {} as sn,{} as name from {} where {} like ? or {} like ? or {} like ?",
                       {side.sn, side.name, side.table, side.sn, side.jm, side.name}),
               begins, begins, begins);
  orOtherReadings(partners, side.jm, side.name, typed);
  for (const Row row : openSelect(partners.add(compose(" order by {}", {side.sn}))))
    found.push_back({command, row.text("sn"), words(side.noun) + u' ' + row.text("sn") + u' ' + row.text("name")});
}

void addDocuments(std::vector<FoundRecord>& found, const QString& typed) {
  constexpr int kFewestDigits = 2;
  const QString number = typed.toUpper();
  const auto* family = findFamily(number);
  if (!family || number.size() < words(family->prefix).size() + kFewestDigits) return;
  const RowSet documents = openSelect(compose("select top 4 {} as sn from {} where {} like ? order by {} desc",
                                              {family->number, family->head, family->number, family->number}),
                                      number + u'%');
  for (const Row row : documents)
    found.push_back({"btn_Djcx", row.text("sn"), words(family->name) + u' ' + row.text("sn")});
}

}  // namespace record_search_detail

Sql GoodsToFind::statement() {
  return {
      "select g_sn,g_name,g_jm,g_sptm,gg_name,color_name,gc_sn,g_qgd,g_sgd from jxc_goods where g_jy=0 "
      "order by g_xspl desc,g_sn"};
}

std::vector<Row> GoodsToFind::find(const QString& typed) const {
  constexpr std::size_t kMost = 4;
  // A code that is whole comes before one that begins so, and that before goods that are sold more.
  const auto rank = [&](int row) {
    const QString number = rows_[row].text("g_sn");
    if (number.compare(typed, Qt::CaseInsensitive) == 0 || rows_[row].text("g_sptm") == typed) return 0;
    return number.startsWith(typed, Qt::CaseInsensitive) ? 1 : 2;
  };
  std::vector<std::pair<int, int>> ranked;
  for (const int row : index_.find(typed))
    ranked.emplace_back(rank(row), row);
  const std::size_t count = std::min(kMost, ranked.size());
  std::partial_sort(ranked.begin(), ranked.begin() + static_cast<std::ptrdiff_t>(count), ranked.end());
  std::vector<Row> found;
  for (std::size_t i = 0; i < count; ++i)
    found.push_back(rows_[ranked[i].second]);
  return found;
}

std::vector<FoundRecord> findRecords(const QString& typed, const GoodsToFind& goods) {
  using namespace record_search_detail;
  std::vector<FoundRecord> found;
  const QString plain = sanitizeText(typed.trimmed());
  if (plain.size() < kFewestTyped) return found;
  addDocuments(found, plain);
  addGoods(found, goods, plain);
  addPartners(found, supplierSide, "btn_Menu6_Btn2", plain);
  addPartners(found, customerSide, "btn_Menu6_Btn6", plain);
  return found;
}

}  // namespace jxc
