#include "masterdata/partner_kinds.h"

namespace jxc {
namespace partner_kinds_detail {
constexpr KeyColumn kLevels[] = {{"jxc_khxx", "kt_name"}};
constexpr KeyColumn kKinds[] = {{"jxc_ghsxx", "gt_name"}};
}  // namespace partner_kinds_detail

constexpr NamedList customerLevelList{.table = "jxc_khtype",
                                      .sn = "kt_sn",
                                      .name = "kt_name",
                                      .needsName = u"级别名称必须填写！",
                                      .nameTaken = u"级别名称已经存在，请重新输入！",
                                      .deleteQuestion = u"",
                                      .namedIn = partner_kinds_detail::kLevels};

constexpr NamedList supplierKindList{.table = "jxc_ghstype",
                                     .sn = "gt_sn",
                                     .name = "gt_name",
                                     .needsName = u"类别名称必须填写！",
                                     .nameTaken = u"类别名称已经存在，请重新输入！",
                                     .deleteQuestion = u"您确定要删除该类别信息吗！",
                                     .inUse = u"该类别供货商在使用，不能删除！",
                                     .namedIn = partner_kinds_detail::kKinds};

}  // namespace jxc
