// 列表填充: what stands in the lists of the screens, without any list: texts, each with its key.
#pragma once

#include "core/reading.h"

#include <QString>

#include <string_view>
#include <vector>

namespace jxc {

/// One entry of a list or combo. The key "-1" means all, or no restriction, everywhere.
struct ListItem {
  QString text;
  QString key;
  bool operator==(const ListItem&) const = default;
};

inline constexpr const char16_t* allKey = u"-1";

enum class SortOrder { Ascending, Descending };

/// Plain items: an empty one when asked for, `firstItem` if given, then all rows by `orderField`.
std::vector<ListItem> fillPlainCombo(std::string_view table, std::string_view textField, const QString& firstItem,
                                     bool addEmpty, std::string_view orderField);
/// The same for a property combo: `firstItem` stands before the empty one.
std::vector<ListItem> fillPlainComboProps(std::string_view table, std::string_view textField, const QString& firstItem,
                                          bool addEmpty, std::string_view orderField);

/// Keyed items of a whole table; `firstItem`, when given, is the first, with key "-1".
std::vector<ListItem> fillKeyedCombo(std::string_view table, std::string_view textField, const QString& firstItem,
                                     std::string_view orderField, std::string_view keyField);
/// Keyed items of the rows of a filter; `firstItem`, when given and the filter is not empty, is the LAST, with key
/// "-1".
std::vector<ListItem> fillKeyedComboWhere(std::string_view table, std::string_view textField, const QString& firstItem,
                                          const Filter& where, std::string_view orderField, std::string_view keyField);
/// The same with `firstItem`, when given, at the top.
std::vector<ListItem> fillKeyedComboWhereTop(std::string_view table, std::string_view textField,
                                             const QString& firstItem, const Filter& where, std::string_view orderField,
                                             std::string_view keyField);
/// Warehouses of a filter; the item for all of them only when `firstItem` is "所有仓库".
std::vector<ListItem> fillWarehouseCombo(const QString& firstItem, const Filter& where = {});
/// Warehouses that an enquiry offers: "所有仓库" (of a bound operator: all of his), and each that he may see.
std::vector<ListItem> fillSeenWarehouses();
/// The same without "所有仓库" for a bound operator, who chooses one of his.
std::vector<ListItem> fillOwnWarehouses();

/// Operators who may log in, keyed by `a_sn`; `firstItem` only for the administrator's role. With bound lists the
/// operator sees himself alone.
std::vector<ListItem> fillOperators(const QString& firstItem = {});
/// Active employees, keyed by `u_sn`: with a flag field (`u_cg`, `u_xs`, `u_kc`) only those of that duty. With bound
/// lists those of the operator's warehouses, and no `firstItem`.
std::vector<ListItem> fillEmployees(std::string_view flagField = {}, const QString& firstItem = {});
/// Active salesmen, those bound to the customer first.
std::vector<ListItem> fillSalesmenFor(const QString& khSn, const QString& firstItem = {});
/// The key that a list proposes: `wanted` where it stands there, else the first; empty for an empty list.
QString keyToPropose(const std::vector<ListItem>& items, const QString& wanted);
/// Settlement modes: "1" by what is paid; for kind "cg" or "xs" also "2", the rest on account.
std::vector<ListItem> fillSettleModes(const QString& kind);

/// All columns of the active suppliers, by entry order; with bound lists those of the operator's warehouses.
RowSet fillSuppliers(SortOrder order = SortOrder::Ascending);
/// The same of the active customers, with the name of the customer type as `ktname`.
RowSet fillCustomers(SortOrder order = SortOrder::Ascending);

/// Adds to a filter: warehouses that this operator is bound to (`ck_asn` holds his key), when binding is on
/// (`cs_cgyh`). `column` is the list column, with its alias: "ck_asn", "d.ck_asn".
void addWarehouseBinding(Filter& filter, std::string_view column = "ck_asn");
/// Adds to a filter: rows for all warehouses or for one of the operator's, when lists are bound (`cs_shtc`).
/// `column` is the row's warehouse, with its alias: "ck_sn", "a.ck_sn".
void addListBinding(Filter& filter, std::string_view column = "ck_sn");

}  // namespace jxc
