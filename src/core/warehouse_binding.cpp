#include "core/warehouse_binding.h"

#include "core/statements.h"
#include "core/text.h"

namespace jxc {
namespace warehouse_binding_detail {

constexpr int kWidth = 200;   // of either list, in characters
constexpr int kKeyWidth = 7;  // six digits and the comma
constexpr int kMost = kWidth / kKeyWidth;

RowSet warehousesNaming(std::string_view list, const QString& entry) {
  return openSelect(compose("select id,ck_name,ck_asn,ck_aname from jxc_ckxx where {} like ?", {list}),
                    QStringLiteral("%") + entry + QStringLiteral(",%"));
}

void write(std::int64_t id, const QString& keys, const QString& names) {
  updateRow("jxc_ckxx", id, {{"ck_asn", keys}, {"ck_aname", names}});
}

/// The same of one warehouse among many.
Refusal refusalOf(const Row& warehouse, const QString& keys, const QString& names) {
  auto refusal = bindingRefusal(bindingEntries(keys), bindingEntries(names));
  refusal.text.prepend(QStringLiteral("仓库“%1”：").arg(warehouse.text("ck_name")));
  return refusal;
}

}  // namespace warehouse_binding_detail

QStringList bindingEntries(const QString& list) {
  return list.split(u',', Qt::SkipEmptyParts);
}

QString bindingList(const QStringList& entries) {
  QString list;
  for (const QString& entry : entries)
    list += entry + u',';
  return list;
}

Refusal bindingRefusal(const QStringList& keys, const QStringList& names) {
  using namespace warehouse_binding_detail;
  if (keys.isEmpty()) return {u"必须选择操作员！"_qs, Subject::Operators};
  if (bindingList(keys).size() > kWidth)
    return {QStringLiteral("一个仓库最多选择%1个操作员，现在选择了%2个，请减少%3个！")
                .arg(kMost)
                .arg(keys.size())
                .arg(keys.size() - kMost),
            Subject::Operators};
  if (bindingList(names).size() > kWidth)
    return {
        QStringLiteral("所选操作员的名称合起来太长，一个仓库最多记%1个字，请减少操作员或改短操作员名称！").arg(kWidth),
        Subject::Operators};
  return {};
}

QStringList warehousesOpenTo(const QString& operatorKey) {
  QStringList numbers;
  for (const Row row : openSelect("select ck_sn,ck_asn from jxc_ckxx order by id"))
    if (bindingEntries(row.text("ck_asn")).contains(operatorKey)) numbers << row.text("ck_sn");
  return numbers;
}

Refusal openWarehousesTo(const QString& operatorKey, const QString& name, const QStringList& warehouses) {
  using namespace warehouse_binding_detail;
  for (const Row row : openSelect("select id,ck_sn,ck_name,ck_asn,ck_aname from jxc_ckxx order by id")) {
    const bool isOpen = bindingEntries(row.text("ck_asn")).contains(operatorKey);
    if (isOpen == warehouses.contains(row.text("ck_sn"))) continue;
    const QString keys =
        isOpen ? replaceListEntry(row.text("ck_asn"), operatorKey, {}) : row.text("ck_asn") + operatorKey + u',';
    const QString names =
        isOpen ? replaceListEntry(row.text("ck_aname"), name, {}) : row.text("ck_aname") + name + u',';
    if (auto refusal = refusalOf(row, keys, names)) return refusal;
    write(row.integer("id"), keys, names);
  }
  return {};
}

Refusal renameInBindings(const QString& before, const QString& now) {
  using namespace warehouse_binding_detail;
  for (const Row row : warehousesNaming("ck_aname", before)) {
    const QString keys = row.text("ck_asn"), names = replaceListEntry(row.text("ck_aname"), before, now);
    if (auto refusal = refusalOf(row, keys, names)) return refusal;
    write(row.integer("id"), keys, names);
  }
  return {};
}

void removeFromBindings(const QString& operatorKey, const QString& name) {
  using namespace warehouse_binding_detail;
  for (const Row row : warehousesNaming("ck_asn", operatorKey))
    write(row.integer("id"), replaceListEntry(row.text("ck_asn"), operatorKey, {}),
          replaceListEntry(row.text("ck_aname"), name, {}));
}

}  // namespace jxc
