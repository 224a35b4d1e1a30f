#include "masterdata/record_search.h"

#include "core/statements.h"
#include "core/text.h"
#include "masterdata/partner_side.h"
#include "stock/document_family.h"

#include <string>

namespace jxc {
namespace record_search_detail {

constexpr int kFewestTyped = 2;

void addGoods(std::vector<FoundRecord>& found, const QString& begins, const QString& typed) {
  const RowSet goods = openSelect(
      "select top 4 g_sn,g_name from jxc_goods where g_jy=0 and (g_sn like ? or g_sptm=? or g_jm like ? or g_name like "
      "?) order by g_xspl desc,g_sn",
      begins, typed, begins, begins);
  for (const Row row : goods)
    found.push_back({"btn_Menu6_Btn1", row.text("g_sn"), u"商品 "_qs + row.text("g_sn") + u' ' + row.text("g_name")});
}

void addPartners(std::vector<FoundRecord>& found, const PartnerSide& side, std::string_view command,
                 const QString& begins) {
  const RowSet partners = openSelect(
      compose("select top 3 {} as sn,{} as name from {} where {} like ? or {} like ? or {} like ? order by {}",
              {side.sn, side.name, side.table, side.sn, side.jm, side.name, side.sn}),
      begins, begins, begins);
  for (const Row row : partners)
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

std::vector<FoundRecord> findRecords(const QString& typed) {
  using namespace record_search_detail;
  std::vector<FoundRecord> found;
  const QString plain = sanitizeText(typed.trimmed());
  if (plain.size() < kFewestTyped) return found;
  const QString begins = plain + u'%';
  addDocuments(found, plain);
  addGoods(found, begins, plain);
  addPartners(found, supplierSide, "btn_Menu6_Btn2", begins);
  addPartners(found, customerSide, "btn_Menu6_Btn6", begins);
  return found;
}

}  // namespace jxc
