// 维护表: backup settings, how the backups stand, and the identity of this branch.
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

// What the window tells of the backups, and where a second one goes: one row.
constexpr std::string_view kBackupState = R"(
    bz_path nvarchar(200)     -- second folder, on another disk
    bz_days int               -- the last good backup may be so many days old
    bz_time varchar(32)       -- of the last good one
    bz_file nvarchar(255)
    bz_fail nvarchar(255)     -- why the last one was not made; empty when it was
    bz_trytime varchar(32)    -- of the last rehearsal
    bz_tryfile nvarchar(255)
    bz_tryfail nvarchar(255)  -- what it found; empty: the backup proved
    bz_set varchar(36)        -- made with the first backup; by it a set knows its own again)";
constexpr std::array<std::string_view, 1> kBackupStateSeeds = {
    "(bz_path,bz_days,bz_time,bz_file,bz_fail,bz_trytime,bz_tryfile,bz_tryfail,bz_set) values "
    "('',3,'','','','','','','')"};

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
    {"jxc_backupzk", kBackupState, kBackupStateSeeds},
    {"jxc_fd", kBranch, kBranchSeeds},
    {"jxc_lsfdxx", kBranchDetail},
};

}  // namespace tables_maintenance_detail

std::span<const TableDefinition> maintenanceTables() {
  return tables_maintenance_detail::kTables;
}

}  // namespace jxc::schema
