// 往来单位: rules of the customer and supplier lists: adding, changing, disabling, deleting.
#pragma once

#include "core/prompt.h"
#include "core/reading.h"
#include "core/refusal.h"
#include "masterdata/partner_side.h"

#include <QString>

#include <cstdint>
#include <functional>
#include <optional>
#include <span>

namespace jxc {

/// What the operator keys in for one partner. Amounts are yuan.
struct PartnerDraft {
  std::int64_t id = 0;  // 0 for a new one
  QString name, contact, phone, address, note;
  QString zone;                                 // region by name, may be empty
  QString kindName, kindKey;                    // level or type
  QString warehouseKey = QStringLiteral("-1");  // bound warehouse, "-1" for all
  QString warehouseName = QStringLiteral("所有仓库");
  QString employeeNames, employeeKeys;  // customers only: joined and ended with ","
  double opening = 0;                   // what was owed when the books began
  bool isDefault = false;               // at most one a side
};

/// Reads the row with this id into a draft; throws DbError when it is gone.
PartnerDraft readPartner(const PartnerSide& side, std::int64_t id);

/// Saves a new or changed partner. Asks when the name stands already. Returns its number, or nothing when it was
/// refused or the operator said no.
std::optional<QString> savePartner(const PartnerSide& side, const PartnerDraft& draft, Prompt& prompt);

/// Name of a partner by its number; empty when there is none.
QString partnerName(const PartnerSide& side, const QString& number);

/// Why nothing new is entered for a partner that was chosen a moment ago: deleted or disabled at another station since.
Refusal partnerLeft(const PartnerSide& side, const QString& number);

/// True when the opening amount may still be changed: no document and no other ledger line names the partner.
bool openingIsOpen(const PartnerSide& side, const QString& number);

/// Deletes a partner that never did business, its ledger lines with it. Asks. False when refused.
bool deletePartner(const PartnerSide& side, std::int64_t id, Prompt& prompt);

/// Flips 禁用 of a partner; a disabled one leaves the pick lists and stays in history.
void togglePartnerForbidden(const PartnerSide& side, std::int64_t id);

/// Employees that a customer can be bound to, `u_sn` and `u_name`: the active ones, and those bound already
/// (`boundKeys`), so that a change of the telephone number unbinds nobody.
RowSet selectBindableEmployees(const QString& boundKeys);

/// Sets the search letters, at most 128 characters.
void setPartnerMnemonic(const PartnerSide& side, std::int64_t id, const QString& mnemonic);

/// What a list is narrowed by; everything empty shows all.
struct PartnerConditions {
  enum class State : char { All, InUse, Forbidden, Owing };
  State state = State::All;
  QString key;                            // anywhere: number, name, mnemonic, contact, telephone, address, kind, region
  QString name, contact, phone, address;  // each in its own column; `name` also in the mnemonic
  QString kind, zone;                     // exactly these words
  bool operator==(const PartnerConditions&) const = default;
};
enum class PartnerOrder : char { Entry, MostUsedFirst };

/// The list under these conditions, limited to the operator's warehouses where lists are bound to them (`cs_shtc`).
Sql partnerListStatement(const PartnerSide& side, const PartnerConditions& conditions,
                         PartnerOrder order = PartnerOrder::Entry);
RowSet selectPartners(const PartnerSide& side, const PartnerConditions& conditions);

/// Makes suppliers of these customers (`id` of jxc_khxx), each with a number of its own and nothing owed. All or none;
/// `progress` gets percent and may stop it by returning false. How many were copied.
int copyCustomersToSuppliers(std::span<const std::int64_t> customers, const std::function<bool(int)>& progress,
                             Prompt& prompt);

}  // namespace jxc
