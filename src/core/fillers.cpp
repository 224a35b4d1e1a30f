#include "core/fillers.h"

#include "core/session.h"

namespace jxc::fillers_detail {

QString ownKeyPattern() {
  return QStringLiteral("%") + session().a_sn + QStringLiteral("%");
}

std::string ownRowsCondition(std::string_view column) {
  return compose("({}='-1' or {} in (select ck_sn from jxc_ckxx where ck_asn like ?))", {column, column});
}

ListItem allItem(const QString& text) {
  return {text, QString::fromUtf16(allKey)};
}

/// Rows of a query of text and key (or text alone).
void append(std::vector<ListItem>& items, const RowSet& rows) {
  items.reserve(items.size() + static_cast<std::size_t>(rows.rowCount()) + 1);
  for (int row = 0; row < rows.rowCount(); ++row) {
    items.push_back({rows.text(row, 0), rows.columnCount() > 1 ? rows.text(row, 1) : QString()});
  }
}

RowSet keyedRows(std::string_view table, std::string_view textField, const Filter& where, std::string_view orderField,
                 std::string_view keyField) {
  return openSelect(Sql(compose("select {},{} from {}", {textField, keyField, table}))
                        .where(where)
                        .add(compose(" order by {}", {orderField})));
}

RowSet plainRows(std::string_view table, std::string_view textField, std::string_view orderField) {
  return openSelect(compose("select {} from {} order by {}", {textField, table, orderField}));
}

std::string_view direction(SortOrder order) {
  return order == SortOrder::Ascending ? "asc" : "desc";
}

}  // namespace jxc::fillers_detail

namespace jxc {

std::vector<ListItem> fillPlainCombo(std::string_view table, std::string_view textField, const QString& firstItem,
                                     bool addEmpty, std::string_view orderField) {
  std::vector<ListItem> items;
  if (addEmpty) items.push_back({});
  if (!firstItem.isEmpty()) items.push_back({firstItem, {}});
  fillers_detail::append(items, fillers_detail::plainRows(table, textField, orderField));
  return items;
}

std::vector<ListItem> fillPlainComboProps(std::string_view table, std::string_view textField, const QString& firstItem,
                                          bool addEmpty, std::string_view orderField) {
  std::vector<ListItem> items = fillPlainCombo(table, textField, firstItem, addEmpty, orderField);
  if (addEmpty && !firstItem.isEmpty()) std::swap(items[0], items[1]);
  return items;
}

std::vector<ListItem> fillKeyedCombo(std::string_view table, std::string_view textField, const QString& firstItem,
                                     std::string_view orderField, std::string_view keyField) {
  return fillKeyedComboWhereTop(table, textField, firstItem, {}, orderField, keyField);
}

std::vector<ListItem> fillKeyedComboWhere(std::string_view table, std::string_view textField, const QString& firstItem,
                                          const Filter& where, std::string_view orderField, std::string_view keyField) {
  std::vector<ListItem> items;
  fillers_detail::append(items, fillers_detail::keyedRows(table, textField, where, orderField, keyField));
  if (!firstItem.isEmpty() && !where.isEmpty()) items.push_back(fillers_detail::allItem(firstItem));
  return items;
}

std::vector<ListItem> fillKeyedComboWhereTop(std::string_view table, std::string_view textField,
                                             const QString& firstItem, const Filter& where, std::string_view orderField,
                                             std::string_view keyField) {
  std::vector<ListItem> items;
  if (!firstItem.isEmpty()) items.push_back(fillers_detail::allItem(firstItem));
  fillers_detail::append(items, fillers_detail::keyedRows(table, textField, where, orderField, keyField));
  return items;
}

std::vector<ListItem> fillWarehouseCombo(const QString& firstItem, const Filter& where) {
  // Offered to a bound operator as well: what he then sees under it is restricted by the query itself.
  const QString top = firstItem == u"所有仓库" ? firstItem : QString();
  return fillKeyedComboWhereTop("jxc_ckxx", "ck_name", top, where, "id", "ck_sn");
}

std::vector<ListItem> fillSeenWarehouses() {
  Filter bound;
  addWarehouseBinding(bound);
  return fillWarehouseCombo(QStringLiteral("所有仓库"), bound);
}

std::vector<ListItem> fillOwnWarehouses() {
  Filter bound;
  addWarehouseBinding(bound);
  return fillWarehouseCombo(isWarehouseBound() ? QString() : QStringLiteral("所有仓库"), bound);
}

std::vector<ListItem> fillOperators(const QString& firstItem) {
  std::vector<ListItem> items;
  if (!firstItem.isEmpty() && isAdministrator()) items.push_back(fillers_detail::allItem(firstItem));
  Filter filter;
  filter.add("a_jyt=0");
  if (areListsBound()) filter.add("a_sn=?", session().a_sn);
  fillers_detail::append(items, fillers_detail::keyedRows("jxc_admin", "a_name", filter, "id", "a_sn"));
  return items;
}

std::vector<ListItem> fillEmployees(std::string_view flagField, const QString& firstItem) {
  std::vector<ListItem> items;
  if (!firstItem.isEmpty() && !areListsBound()) items.push_back(fillers_detail::allItem(firstItem));
  Filter filter;
  filter.add("u_jy=0");
  if (!flagField.empty()) filter.add(compose("{}<>0", {flagField}));
  addListBinding(filter);
  fillers_detail::append(items, fillers_detail::keyedRows("jxc_user", "u_name", filter, "id", "u_sn"));
  return items;
}

std::vector<ListItem> fillSalesmenFor(const QString& khSn, const QString& firstItem) {
  std::vector<ListItem> items;
  if (!firstItem.isEmpty()) items.push_back(fillers_detail::allItem(firstItem));
  const QString boundSalesmen = lookupValue("select kh_usn from jxc_khxx where kh_sn=?", khSn);
  const auto half = [&](std::string_view rank, std::string_view test) {
    Filter filter;
    filter.add("u_jy=0").add("u_xs<>0").add(test, boundSalesmen);
    addListBinding(filter);
    return Sql("select u_name,u_sn,").add(rank).add(" as dsort from jxc_user").where(filter);
  };
  Sql both = half("1", "instr(?,u_sn)>0");
  both.add(" union ").add(half("2", "instr(?,u_sn)=0")).add(" order by dsort,u_sn");
  fillers_detail::append(items, openSelect(both));
  return items;
}

QString keyToPropose(const std::vector<ListItem>& items, const QString& wanted) {
  for (const ListItem& item : items)
    if (item.key == wanted) return wanted;
  return items.empty() ? QString() : items.front().key;
}

std::vector<ListItem> fillSettleModes(const QString& kind) {
  std::vector<ListItem> items{{QStringLiteral("按实付款结算"), QStringLiteral("1")}};
  if (kind == u"cg") items.push_back({QStringLiteral("余款记入应付帐"), QStringLiteral("2")});
  if (kind == u"xs") items.push_back({QStringLiteral("余款记入应收帐"), QStringLiteral("2")});
  return items;
}

RowSet fillSuppliers(SortOrder order) {
  Filter filter;
  filter.add("ghs_forbid=0");
  addListBinding(filter);
  return openSelect(
      Sql("select * from jxc_ghsxx").where(filter).add(" order by id ").add(fillers_detail::direction(order)));
}

RowSet fillCustomers(SortOrder order) {
  Filter filter;
  filter.add("a.kh_forbid=0");
  addListBinding(filter, "a.ck_sn");
  // A customer whose type was deleted stays on the list.
  return openSelect(Sql("select a.*,b.kt_name as ktname from jxc_khxx a left join jxc_khtype b on a.kt_sn=b.kt_sn")
                        .where(filter)
                        .add(" order by a.id ")
                        .add(fillers_detail::direction(order)));
}

void addWarehouseBinding(Filter& filter, std::string_view column) {
  if (isWarehouseBound()) filter.add(compose("{} like ?", {column}), fillers_detail::ownKeyPattern());
}

void addListBinding(Filter& filter, std::string_view column) {
  if (areListsBound()) filter.add(fillers_detail::ownRowsCondition(column), fillers_detail::ownKeyPattern());
}

}  // namespace jxc
