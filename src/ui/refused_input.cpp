#include "ui/refused_input.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace jxc::ui {
namespace refused_input_detail {

constexpr std::size_t kMost = 6;
struct Inputs {
  Subject subject;
  std::array<std::string_view, kMost> names;
};

constexpr Inputs kInputs[] = {
    {Subject::Name, {"tname", "g_qc", "g_name"}},
    {Subject::Barcode, {"tSptm", "g_sptm"}},
    {Subject::Number, {"g_sn", "tsn"}},
    {Subject::Class, {"gc_name", "treeLb"}},
    {Subject::Unit, {"dw_name"}},
    {Subject::Brand, {"tlxmc"}},
    {Subject::Sphere, {"g_qgd", "tqgd"}},
    {Subject::Cylinder, {"g_sgd", "tsgd"}},
    {Subject::PurchasePrice, {"g_jj"}},
    {Subject::SalePrice, {"g_sj"}},
    {Subject::RetailPrice, {"g_lsj"}},
    {Subject::LevelPrice1, {"g_sj1"}},
    {Subject::LevelPrice2, {"g_sj2"}},
    {Subject::LevelPrice3, {"g_sj3"}},
    {Subject::LevelPrice4, {"g_sj4"}},
    {Subject::LevelPrice5, {"g_sj5"}},
    {Subject::OpeningStock, {"g_kc"}},
    {Subject::OptometristsShare, {"tygtc"}},
    {Subject::WorkshopsShare, {"tjgtc"}},
    {Subject::SalesmansShare, {"txsytc"}},
    {Subject::Partner, {"tghs", "tkh", "tKhName", "tKh", "tGhs", "tKhName1"}},
    {Subject::Warehouse, {"comCk"}},
    {Subject::WarehouseInto, {"comCk2"}},
    {Subject::Employee, {"comUser"}},
    {Subject::Employees, {"treeUser"}},
    {Subject::Operators, {"treeAdmin"}},
    {Subject::TillDuties, {"chkYg"}},
    {Subject::Date, {"dateCg", "dateLx", "dateRz", "dateBj", "dateJh", "tdate1"}},
    {Subject::Note, {"tnote"}},
    {Subject::Lines, {"tSptm", "gridLines"}},
    {Subject::Goods, {"tgname", "tkey"}},
    {Subject::Quantity, {"tsl", "tslcf"}},
    {Subject::Price, {"tdj"}},
    {Subject::Cost, {"tcbj"}},
    {Subject::Points, {"tjf"}},
    {Subject::Discount, {"tdzl"}},
    {Subject::Total, {"tzje"}},
    {Subject::Account, {"comYhzh"}},
    {Subject::AccountInto, {"comYhzh1"}},
    {Subject::AccountKind, {"ttype"}},
    {Subject::ExpenseType, {"comFylx"}},
    {Subject::Department, {"comDept"}},
    {Subject::Amount, {"tje", "tfyje", "tgsj"}},
    {Subject::Rent, {"tzj", "tzzj"}},
    {Subject::Deposit, {"tyj"}},
    {Subject::Refund, {"tthyj"}},
    {Subject::Role, {"comRole"}},
    {Subject::Password, {"tpwd"}},
    {Subject::PasswordAgain, {"tpwd1", "tnewpwd2"}},
    {Subject::OldPassword, {"toldpwd"}},
};

}  // namespace refused_input_detail

std::span<const std::string_view> inputsOf(Subject subject) {
  using namespace refused_input_detail;
  const auto* found = std::ranges::find(kInputs, subject, &Inputs::subject);
  if (found == std::end(kInputs)) return {};
  const auto& names = found->names;
  return {names.begin(), std::ranges::find(names, std::string_view())};
}

}  // namespace jxc::ui
