#include "masterdata/zones.h"

#include "core/pinyin.h"
#include "core/statements.h"

namespace jxc {
namespace zones_detail {

// Partners hold the name itself: under the old one they would belong to no region of the list.
constexpr KeyColumn kUses[] = {{"jxc_ghsxx", "z_name"}, {"jxc_khxx", "z_name"}};

}  // namespace zones_detail

constexpr NamedList zoneList{.table = "jxc_zone",
                             .sn = "z_sn",
                             .name = "z_name",
                             .needsName = u"地区名称必须填写！",
                             .nameTaken = u"地区名称已经存在，请重新输入！",
                             .deleteQuestion = u"您确定要删除该地区信息吗！",
                             .inUse = u"该地区供货商在使用，不能删除！",
                             .namedIn = zones_detail::kUses};

ZoneDraft readZone(std::int64_t id) {
  return {.id = id,
          .name = nameOf(zoneList, id),
          .isDefault = lookupNumber("select z_default from jxc_zone where id=?", id) != 0};
}

bool saveZone(const ZoneDraft& draft, Prompt& prompt) {
  const auto name = checkedName(zoneList, draft.id, draft.name, prompt);
  if (!name) return false;
  Transaction transaction(accountDb());
  const std::int64_t id = writeName(zoneList, draft.id, *name);
  if (draft.isDefault) execSql("update jxc_zone set z_default=0");
  updateRow("jxc_zone", id, {{"z_jm", makeJm(*name).left(32)}, {"z_default", draft.isDefault}});
  transaction.commit();
  return true;
}

}  // namespace jxc
