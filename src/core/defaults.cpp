#include "core/defaults.h"

#include "core/session.h"
#include "core/statements.h"

namespace jxc::defaults_detail {

/// Where a default comes from: the marked row of the table, else the first one that may be used at all.
struct Source {
  std::string_view table;
  std::string_view marked;  // condition of the marked row
  std::string_view usable;  // condition of any row, or empty
};

inline constexpr Source employee{"jxc_user", "u_name='' or u_name is null", ""};
inline constexpr Source supplier{"jxc_ghsxx", "ghs_default<>0 and ghs_forbid=0", "ghs_forbid=0"};
inline constexpr Source customer{"jxc_khxx", "kh_default<>0 and kh_forbid=0", "kh_forbid=0"};
inline constexpr Source warehouse{"jxc_ckxx", "ck_default<>0", ""};

/// The row is found by its `id` first: the name of a marked row may be empty, and is then the answer all the same.
QString fieldOfDefault(const Source& source, std::string_view field) {
  const auto firstWhere = [&](std::string_view condition) {
    Filter filter;
    if (!condition.empty()) filter.add(condition);
    return openSelect(Sql(compose("select top 1 {} from {}", {field, source.table})).where(filter).add(" order by id"));
  };
  RowSet rows = firstWhere(source.marked);
  if (rows.isEmpty()) rows = firstWhere(source.usable);
  return rows.isEmpty() ? QString() : rows.text(0, 0);
}

/// Who works here acts for himself, where he is an employee too.
QString fieldOfEmployee(std::string_view field) {
  const RowSet own = openSelect(compose("select top 1 {} from jxc_user where u_name=? and u_jy=0 order by id", {field}),
                                session().a_name);
  return own.isEmpty() ? fieldOfDefault(employee, field) : own.text(0, 0);
}

}  // namespace jxc::defaults_detail

namespace jxc {

QString defaultEmployeeSn() {
  return defaults_detail::fieldOfEmployee("u_sn");
}
QString defaultEmployeeName() {
  return defaults_detail::fieldOfEmployee("u_name");
}
QString defaultSupplierSn() {
  return defaults_detail::fieldOfDefault(defaults_detail::supplier, "ghs_sn");
}
QString defaultSupplierName() {
  return defaults_detail::fieldOfDefault(defaults_detail::supplier, "ghs_name");
}
QString defaultCustomerSn() {
  return defaults_detail::fieldOfDefault(defaults_detail::customer, "kh_sn");
}
QString defaultCustomerName() {
  return defaults_detail::fieldOfDefault(defaults_detail::customer, "kh_name");
}
QString defaultWarehouseSn() {
  return defaults_detail::fieldOfDefault(defaults_detail::warehouse, "ck_sn");
}
QString defaultWarehouseName() {
  return defaults_detail::fieldOfDefault(defaults_detail::warehouse, "ck_name");
}

}  // namespace jxc
