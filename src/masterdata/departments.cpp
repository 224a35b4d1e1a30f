#include "masterdata/departments.h"

namespace jxc {
namespace departments_detail {
constexpr KeyColumn kUses[] = {{"jxc_yyfy", "de_sn"}};
}

constexpr NamedList departmentList{.table = "jxc_dept",
                                   .sn = "de_sn",
                                   .name = "de_name",
                                   .needsName = u"部门名称必须填写！",
                                   .nameTaken = u"部门名称已经存在，请重新输入！",
                                   .deleteQuestion = u"您确定要删除该部门信息吗！",
                                   .builtIn = u"该部门是系统内置部门，不能删除！",
                                   .inUse = u"该部门已经在使用，不能删除！",
                                   .numberedIn = departments_detail::kUses};

}  // namespace jxc
