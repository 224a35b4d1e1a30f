// 维护表: backup settings and the identity of this branch.
#include "core/schema/table_definition.h"

#include <array>

namespace jxc::schema {
namespace tables_maintenance_detail {

constexpr std::string_view kBackup = R"(
    back_auto bit
    back_sj int
    back_days int
    back_path nvarchar(200)
    back_exit bit)";

constexpr std::string_view kBranch = R"(
    fd_sn varchar(8)
    fd_name varchar(64)
    fd_dcrq varchar(32))";
constexpr std::array<std::string_view, 1> kBranchSeeds = {"(fd_sn,fd_name,fd_dcrq) values ('100001','旗舰店','')"};

constexpr std::string_view kBranchDetail = R"(
    fd_sn varchar(8)
    fd_name varchar(64)
    fd_lxr varchar(32)
    fd_tele varchar(32)
    fd_address varchar(128)
    fd_note nvarchar(200))";

constexpr TableDefinition kTables[] = {
    {"jxc_backup", kBackup},
    {"jxc_fd", kBranch, kBranchSeeds},
    {"jxc_lsfdxx", kBranchDetail},
};

}  // namespace tables_maintenance_detail

std::span<const TableDefinition> maintenanceTables() {
  return tables_maintenance_detail::kTables;
}

}  // namespace jxc::schema
