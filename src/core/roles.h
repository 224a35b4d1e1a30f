// 角色: the rights of the system as one table, and the rules of roles: adding, changing, deleting.
#pragma once

#include "core/fillers.h"
#include "core/prompt.h"
#include "core/sql.h"

#include <QString>

#include <array>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace jxc {

/// One group of rights. The place of a right in `rights` plus one is its position in the column of the role: the order
/// is fixed for ever, new rights go to the end.
struct RightsGroup {
  std::string_view column;  // of jxc_role: "cggl"
  std::string_view caption;
  std::span<const std::string_view> rights;
};

inline constexpr std::size_t kRightsGroups = 7;
std::span<const RightsGroup, kRightsGroups> rightsGroups();

struct RoleDraft {
  std::int64_t id = 0;  // 0 for a new one
  QString name;
  std::array<QString, kRightsGroups> rights;  // in step with the groups, a "0" or "1" for each right
};

/// Whether a role has this right by its strings; beyond their end: no.
bool isGranted(const RoleDraft& role, std::size_t group, std::size_t right);

/// The role with this id; throws DbError when it is gone.
RoleDraft readRole(std::int64_t id);
/// All roles of the shop.
std::vector<RoleDraft> allRoles();
/// False, and told, for the administrator's role: it can do everything, and nobody changes that.
bool mayModifyRole(std::int64_t id, Prompt& prompt);
/// Roles that most shops need, ready to begin from: 店长, 采购员, 营业员, 会计.
std::vector<RoleDraft> readyMadeRoles();
/// Roles that an operator can be given, by their keys; for the administrator also the ready-made ones that the shop has
/// not made yet, each under its name.
std::vector<ListItem> rolesToChoose();
/// The role behind such a key; a ready-made one is made.
QString roleOf(const QString& key);
/// Roles are made, changed and deleted by the administrator's role only.
/// Saves a new or changed role; the strings replace the old ones whole. Asks when it has no right at all. False when
/// refused.
bool saveRole(const RoleDraft& role, Prompt& prompt);
/// Deletes a role that no operator has. Asks. False when refused.
bool deleteRole(std::int64_t id, Prompt& prompt);
/// All roles with the number of their operators (`operators`).
Sql roleListStatement();

}  // namespace jxc
