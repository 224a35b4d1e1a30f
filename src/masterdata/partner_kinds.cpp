#include "masterdata/partner_kinds.h"

namespace jxc {
namespace partner_kinds_detail {
constexpr std::string_view kLevelRenames[] = {"update jxc_khxx set kt_name=? where kt_name=?"};
constexpr std::string_view kKindRenames[] = {"update jxc_ghsxx set gt_name=? where gt_name=?"};
constexpr std::string_view kKindUses[] = {"select top 1 gt_name from jxc_ghsxx where gt_name=?"};
}  // namespace partner_kinds_detail

constexpr NamedList customerLevelList{.table = "jxc_khtype",
                                      .sn = "kt_sn",
                                      .name = "kt_name",
                                      .needsName = u"级别名称必须填写！",
                                      .nameTaken = u"级别名称已经存在，请重新输入！",
                                      .deleteQuestion = u"",
                                      .renames = partner_kinds_detail::kLevelRenames};

constexpr NamedList supplierKindList{.table = "jxc_ghstype",
                                     .sn = "gt_sn",
                                     .name = "gt_name",
                                     .needsName = u"类别名称必须填写！",
                                     .nameTaken = u"类别名称已经存在，请重新输入！",
                                     .deleteQuestion = u"您确定要删除该类别信息吗！",
                                     .inUse = u"该类别供货商在使用，不能删除！",
                                     .usedByName = partner_kinds_detail::kKindUses,
                                     .renames = partner_kinds_detail::kKindRenames};

}  // namespace jxc
